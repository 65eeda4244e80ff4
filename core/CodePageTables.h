// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace tav::codepages {

// Unicode code points of bytes 0x80..0xFF.
extern const char16_t windows1252[128];
extern const char16_t ibm437[128];
extern const char16_t ibm850[128];
// ANSEL bytes 0xA0..0xFF: spacing characters, and the combining marks at
// 0xE0..0xFE. 0xFFFD marks a byte ANSEL leaves undefined.
extern const char16_t ansel[96];

inline bool isAnselCombining(unsigned char byte) { return byte >= 0xE0 && byte <= 0xFE; }

}  // namespace tav::codepages
