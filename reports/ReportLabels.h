// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <cstdint>

// How the reports write people, families, cross-references and shares.
namespace tav {

class Session;

// "NAME (slot)": the name as the lists show it, then the slot.
QString personLabel(const Session& session, int32_t slot);

// "HUSBAND & WIFE (slot)", with "?" for a spouse the family does not name.
QString familyLabel(const Session& session, int32_t slot);

// A cross-reference as the file writes it: "@I12@" for "I12".
QString crossReference(const QString& xref);

// A number with its noun: "1 child", "3 children".
QString counted(int64_t n, const char* one, const char* many);

// "K of N (P%)", the share rounded to a whole percent (0% of nothing).
QString shareText(int64_t part, int64_t whole);

}  // namespace tav
