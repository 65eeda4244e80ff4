// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "settings/RegistryStore.h"
#include "tests/TestSupport.h"
#include "tree/TreeDrawing.h"

#include <QTest>

#include <memory>

namespace tav::test {

// A session whose settings are kept in the test's own folder.
class WindowTestBase : public SessionTest {
protected:
    WindowTestBase() : store(dir.filePath(QStringLiteral("config/Tav.reg"))) {}

    // A window of its own on an individual, shown and active, its canvas in
    // focus.
    template <class Window>
    std::unique_ptr<Window> openActive(int32_t individual, QSize size = {})
    {
        session.curInd = individual;
        auto window = std::make_unique<Window>(session);
        window->setAttribute(Qt::WA_DeleteOnClose, false);
        if (size.isValid())
            window->resize(size);
        window->show();
        window->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(window.get()));
        window->activateRequest();
        return window;
    }

    // A point of a box of a chart window in its canvas's viewport: its
    // middle, or in its fill, between its frame and its label.
    template <class Window>
    static QPoint boxPoint(Window& window, int32_t box, bool inFill = false)
    {
        const TreeBox* drawn = window.logic().drawing().box(box);
        EXPECT_NE(drawn, nullptr) << box;
        if (!drawn)
            return QPoint();
        const QRectF frame = drawn->frame;
        return window.canvas()
            ->viewportPoint(inFill ? QPointF(frame.left() + 1.5, frame.center().y())
                                   : frame.center())
            .toPoint();
    }

    RegistryStore store;
};

}  // namespace tav::test
