// SPDX-License-Identifier: GPL-3.0-or-later
// Widget tests run on the offscreen platform with one application object,
// the viewer's own.
#include "ui/FaultCatchingApplication.h"

#include <gtest/gtest.h>

int main(int argc, char* argv[])
{
    qputenv("QT_QPA_PLATFORM",
            qgetenv("QT_QPA_PLATFORM").isEmpty() ? "offscreen" : qgetenv("QT_QPA_PLATFORM"));
    tav::FaultCatchingApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
