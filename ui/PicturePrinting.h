// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "draw/Picture.h"

#include <QString>

class QPrintPreviewDialog;
class QWidget;

namespace tav {

// Readies a print preview dialog: its page view keeps both scroll bars,
// for at some sizes, fitting the page to the width, a scroll bar that comes
// and goes makes the view fit again without end, and the window freezes.
void steadyPreview(QPrintPreviewDialog& preview);

// The print preview of a drawing, with the choice between fitting it on one
// page (the first choice) and printing it at full size across as many pages
// as it needs; the page setup's paper size and orientation are the preview's.
void previewAndPrint(QWidget* parent, const Picture& picture, const QString& title);

}  // namespace tav
