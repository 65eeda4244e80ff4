// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/TextArena.h"

#include "core/LargePages.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace tav {

void TextArena::BlockDeleter::operator()(char16_t* block) const
{
    ::operator delete[](block, std::align_val_t(largePageBytes));
}

char16_t* TextArena::reserve(qsizetype length)
{
    if (room_ < length) {
        const qsizetype units = std::max(blockUnits, length);
        blocks_.emplace_back(static_cast<char16_t*>(::operator new[](
            size_t(units) * sizeof(char16_t), std::align_val_t(largePageBytes))));
        next_ = blocks_.back().get();
        room_ = units;
        adviseLargePages(next_, size_t(units) * sizeof(char16_t));
    }
    return next_;
}

QStringView TextArena::take(qsizetype written)
{
    if (written <= 0)
        return {};
    const QStringView text(next_, written);
    next_ += written;
    room_ -= written;
    return text;
}

QStringView TextArena::add(QStringView text)
{
    if (text.isEmpty())
        return {};
    std::memcpy(reserve(text.size()), text.utf16(), size_t(text.size()) * sizeof(char16_t));
    return take(text.size());
}

void TextArena::clear()
{
    blocks_.clear();
    next_ = nullptr;
    room_ = 0;
}

}  // namespace tav
