// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/Outcome.h"
#include "core/Units.h"

#include <QRect>
#include <QString>

namespace tav {

class Session;

// The text viewer's rules, without the window: it shows the shared report
// text under the report title each time it is activated, lies along the
// right-hand edge of the screen.
class TextViewerLogic {
public:
    explicit TextViewerLogic(Session& session) : session_(session) {}

    QString text() const;
    QString title() const;

    // "Save as...": the text in UTF-8, its lines as shown (a newline each).
    Outcome saveAs(const QString& path) const;
    // The file name offered: the title made safe for a file, ".txt".
    QString suggestedFileName() const;

    // The window's place for a screen: top 0, full height less 450 twips,
    // against the right-hand edge.
    static QRect placement(const QRect& screen, int width);

private:
    Session& session_;
};

}  // namespace tav
