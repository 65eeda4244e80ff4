// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <new>

namespace tav {

// The size of a large page of memory where the system has them (2 MB on
// x86-64 Linux).
constexpr size_t largePageBytes = size_t(2) << 20;

// Asks the system to back a large block of memory (a file's bytes, the
// record tables, the record texts) with large pages: filling 12 MB then
// costs six page faults instead of three thousand, which is most of the
// time a fresh process spends reading a big file. Only the whole large
// pages inside the block are asked for; elsewhere, and where the system
// has no such pages, nothing changes.
void adviseLargePages(void* data, size_t bytes);

// For a block that is about to be written whole (a file's bytes, a block of
// texts): large pages as above, and every page of it made ready in one
// call to the system rather than one fault at a time as it is written.
void prepareForWriting(void* data, size_t bytes);

// An allocator for the few large tables of a load (the records, their
// links): each block starts on a large page and asks for large pages, so
// the whole of it can be backed by them. Not for small or many blocks:
// each takes at least a large page of address space.
template <typename T>
struct LargePageAllocator {
    using value_type = T;

    LargePageAllocator() = default;
    template <typename U>
    LargePageAllocator(const LargePageAllocator<U>&) noexcept
    {}

    T* allocate(size_t count)
    {
        void* block = ::operator new(count * sizeof(T), std::align_val_t(largePageBytes));
        adviseLargePages(block, count * sizeof(T));
        return static_cast<T*>(block);
    }
    void deallocate(T* block, size_t) noexcept
    {
        ::operator delete(block, std::align_val_t(largePageBytes));
    }
    template <typename U>
    bool operator==(const LargePageAllocator<U>&) const noexcept
    {
        return true;
    }
};

}  // namespace tav
