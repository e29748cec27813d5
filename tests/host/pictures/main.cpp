// SPDX-License-Identifier: GPL-3.0-or-later
#include <QGuiApplication>
#include <gtest/gtest.h>

/// Fonts need a GUI application, which is to work on machines without a screen.
int main(int argc, char **argv)
{
    testing::InitGoogleTest(&argc, argv);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
