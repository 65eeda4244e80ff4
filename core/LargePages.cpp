// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/LargePages.h"

#include <cstdint>

#if defined(__linux__)
#include <sys/mman.h>
#endif

namespace tav {

void adviseLargePages(void* data, size_t bytes)
{
#if defined(__linux__) && defined(MADV_HUGEPAGE)
    const auto start = reinterpret_cast<uintptr_t>(data);
    const uintptr_t first = (start + largePageBytes - 1) & ~uintptr_t(largePageBytes - 1);
    const uintptr_t end = (start + bytes) & ~uintptr_t(largePageBytes - 1);
    if (end > first)
        madvise(reinterpret_cast<void*>(first), end - first, MADV_HUGEPAGE);
#else
    (void)data;
    (void)bytes;
#endif
}

void prepareForWriting(void* data, size_t bytes)
{
    adviseLargePages(data, bytes);
#if defined(__linux__) && defined(MADV_POPULATE_WRITE)
    // Systems before Linux 5.14 refuse it, and the pages come as written.
    constexpr uintptr_t page = 4096;
    const auto start = reinterpret_cast<uintptr_t>(data);
    const uintptr_t first = start & ~(page - 1);
    const uintptr_t end = (start + bytes + page - 1) & ~(page - 1);
    if (bytes > 0)
        madvise(reinterpret_cast<void*>(first), end - first, MADV_POPULATE_WRITE);
#endif
}

}  // namespace tav
