// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "draw/Picture.h"

#include <QString>

class QWidget;

namespace tav {

// The print preview of a drawing, with the choice between fitting it on one
// page (the first choice) and printing it at full size across as many pages
// as it needs; the page setup's paper size and orientation are the preview's.
void previewAndPrint(QWidget* parent, const Picture& picture, const QString& title);

}  // namespace tav
