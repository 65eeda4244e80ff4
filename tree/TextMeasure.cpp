// SPDX-License-Identifier: GPL-3.0-or-later
#include "tree/TextMeasure.h"

namespace tav {

namespace {

struct FontStep {
    double points;
    int gap;
};

// FontSize 1 to 4; any other value is first reset to the 8.25-point font.
FontStep fontStep(int fontSize)
{
    switch (fontSize) {
    case 1: return {6.0, 60};
    case 3: return {9.75, 100};
    case 4: return {12.0, 125};
    default: return {8.25, 80};
    }
}

}  // namespace

double treeFontPoints(int fontSize) { return fontStep(fontSize).points; }

int generationGap(int fontSize) { return fontStep(fontSize).gap; }

}  // namespace tav
