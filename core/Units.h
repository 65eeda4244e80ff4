// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace tav {

// The window system's measures: twips (1/1440 inch) in the described window
// sizes, device-independent pixels (96 per inch) everywhere else, so 15 twips
// to the pixel.
constexpr int twipsPerPixel = 15;
constexpr int pixelsPerInch = 96;

// Twips to pixels, rounded to the nearest pixel.
constexpr int twipsToPixels(int twips) { return (twips + twipsPerPixel / 2) / twipsPerPixel; }
constexpr int pixelsToTwips(int pixels) { return pixels * twipsPerPixel; }

}  // namespace tav
