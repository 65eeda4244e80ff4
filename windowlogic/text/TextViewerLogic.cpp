#include "windowlogic/text/TextViewerLogic.h"

#include "app/Session.h"

namespace tav {

QString TextViewerLogic::text() const { return session_.report.text; }

QString TextViewerLogic::title() const { return session_.report.title; }

QRect TextViewerLogic::placement(const QRect& screen, int width)
{
    return QRect(screen.right() + 1 - width, screen.top(), width,
                 screen.height() - twipsToPixels(450));
}

}  // namespace tav
