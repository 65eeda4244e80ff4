// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "cli/CliApp.h"
#include "cli/CliCommands.h"
#include "tests/TestSupport.h"

// What one tav-cli run printed, and its exit status.
struct CliResult {
    int status;
    QStringList out;
    QStringList err;
};

// Every run reads its settings from a file of the test's own and takes
// 21 November 2026 as today.
class CliTest : public tav::test::SessionTest {
protected:
    QString settingsFile() const { return dir.filePath(QStringLiteral("config/Tav.reg")); }

    CliResult runTavCli(const QStringList& arguments, const QString& programFolder = {}) const
    {
        CliResult result{0, {}, {}};
        tav::CliContext context{{[&](const QString& line) { result.out << line; },
                                 [&](const QString& line) { result.err << line; }},
                                settingsFile(),
                                QDate(2026, 11, 21),
                                programFolder};
        context.drawing = &tav::drawingCommands();
        result.status = tav::runCli(arguments, context);
        return result;
    }
};
