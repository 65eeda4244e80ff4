// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace tav {

// What the last find or query found: up to 200 slots of each kind in the
// order found, which outlive the find window.
struct FindResults {
    static constexpr int32_t capacity = 200;
    enum Kind { Individuals, Families, Sources, Notes };

    struct Table {
        std::array<int32_t, capacity + 2> entries{};  // 1..count used
        int32_t count = 0;
    };

    std::array<Table, 4> tables;
    int32_t total = 0;
    int32_t selected = 0;  // the result the browser steps from

    Table& operator[](Kind kind) { return tables[size_t(kind)]; }
    const Table& operator[](Kind kind) const { return tables[size_t(kind)]; }
    int32_t sum() const
    {
        return tables[0].count + tables[1].count + tables[2].count + tables[3].count;
    }
};

}  // namespace tav
