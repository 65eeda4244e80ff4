// SPDX-License-Identifier: GPL-3.0-or-later
#include "windowlogic/text/TextViewerLogic.h"

#include "app/Session.h"
#include "core/AtomicFile.h"
#include "core/DisplayText.h"

namespace tav {

QString TextViewerLogic::text() const { return session_.report.text; }

QString TextViewerLogic::title() const { return session_.report.title; }

Outcome TextViewerLogic::saveAs(const QString& path) const
{
    QString lines = withNewlines(text());
    if (!lines.isEmpty() && !lines.endsWith(QLatin1Char('\n')))
        lines += QLatin1Char('\n');
    return writeFileAtomically(path, lines.toUtf8());
}

QString TextViewerLogic::suggestedFileName() const
{
    return fileNameFrom(title(), QStringLiteral("report")) + QStringLiteral(".txt");
}

QRect TextViewerLogic::placement(const QRect& screen, int width)
{
    return QRect(screen.right() + 1 - width, screen.top(), width,
                 screen.height() - twipsToPixels(450));
}

}  // namespace tav
