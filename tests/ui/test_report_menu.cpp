// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/ui/WindowTestSupport.h"
#include "ui/WindowManager.h"
#include "ui/find/FindWindow.h"
#include "ui/main/MainWindow.h"
#include "ui/text/TextViewer.h"

#include <QAction>
#include <QComboBox>
#include <QDir>
#include <QPlainTextEdit>

using namespace tav;

class ReportMenuTest : public tav::test::WindowTestBase {};

TEST_F(ReportMenuTest, ReportsOpenInTheTextViewerOnceAFileIsOpen)
{
    const ReportKind kinds[] = {ReportKind::Basic, ReportKind::GivenNames, ReportKind::ChildNaming,
                                ReportKind::GedcomIntegrity};
    MainWindow empty(session, store, dir.path());
    empty.startUp(QString());
    for (const ReportKind kind : kinds)
        EXPECT_FALSE(empty.reportAction(kind)->isEnabled());
    EXPECT_FALSE(empty.moreStatisticsAction()->isEnabled());

    const QString path = writeFile(
        tav::test::gedcomText({"0 @I1@ INDI", "1 NAME Al /Ash/", "1 SEX M", "1 FAMS @F9@"}),
        "one.ged");
    MainWindow window(session, store, dir.path());
    window.startUp(path);
    for (const ReportKind kind : kinds) {
        ASSERT_TRUE(window.reportAction(kind)->isEnabled());
        window.reportAction(kind)->trigger();
        TextViewer* viewer = window.windows().textViewer();
        ASSERT_NE(viewer, nullptr);
        EXPECT_EQ(viewer->windowTitle(), reportTitle(kind));
        EXPECT_TRUE(viewer->textBox()->toPlainText().startsWith("File: " + path + "\n"));
    }
    EXPECT_TRUE(window.windows().textViewer()->textBox()->toPlainText().endsWith(
        "ASH, Al (1) @I1@: FAMS @F9@ names no family"));

    ASSERT_TRUE(window.moreStatisticsAction()->isEnabled());
    window.moreStatisticsAction()->trigger();
    FindWindow* find = window.windows().findWindow();
    ASSERT_NE(find, nullptr);
    EXPECT_TRUE(find->querySelector()->isVisible()) << "opened with its queries shown";
    window.moreStatisticsAction()->trigger();
    EXPECT_TRUE(find->querySelector()->isVisible()) << "a second time does not hide them";
}
