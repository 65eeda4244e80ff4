// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringView>
#include <memory>
#include <vector>

namespace tav {

// The texts of a file's records, written one after another into a few
// large blocks that the store owns: reading 40000 people makes a handful
// of allocations instead of one string per value, and a new file frees
// them at once. The records hold views of these texts, valid while the
// store holds the file; what keeps a text longer makes its own copy
// (toString). Blocks ask the system for large pages where it has them, so
// filling them costs few page faults.
class TextArena {
public:
    // Room for `length` UTF-16 units: write the text there, then `take`
    // what was written (at most `length`).
    char16_t* reserve(qsizetype length);
    QStringView take(qsizetype written);
    // A copy of a text made elsewhere.
    QStringView add(QStringView text);

    // Frees every block: the views taken before are gone.
    void clear();

private:
    // Large enough that a 12 MB file fills a few blocks; each is allocated
    // only as the texts need it.
    static constexpr qsizetype blockUnits = qsizetype(1) << 21;

    // Blocks start on a large page, so that all of them can be one.
    struct BlockDeleter {
        void operator()(char16_t* block) const;
    };
    std::vector<std::unique_ptr<char16_t[], BlockDeleter>> blocks_;
    char16_t* next_ = nullptr;  // the free room of the last block
    qsizetype room_ = 0;
};

}  // namespace tav
