// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <cstdint>

namespace tav {

// Makes realistic GEDCOM files of any size, the same bytes for the same
// options: people with names, dates, places, occupations and notes, families
// chained over a dozen or more generations, source and note records.
struct GeneratorOptions {
    int individuals = 1000;
    uint64_t seed = 1;
    bool crlf = true;
    // Records in a random order (the same for the same seed) instead of
    // ascending numbers, as files sorted by name or grouped by branch are;
    // the header stays first and the trailer last.
    bool shuffled = false;
    // How records are cross-referenced: "@I12@"; twelve digits, as large
    // websites export ("@I100000000012@"); or text ("@PERSON_AL@").
    enum class Xrefs { Numbered, Long, Text };
    Xrefs xrefs = Xrefs::Numbered;
};

QByteArray generateGedcom(const GeneratorOptions& options);

}  // namespace tav
