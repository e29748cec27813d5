// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/applicationOffscreen.h"

#include <gtest/gtest.h>

/// For programs that test widgets: no display is needed.
int main(int argc, char **argv)
{
    testing::InitGoogleTest(&argc, argv);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const auto application = test::applicationOffscreen(argc, argv);
    return RUN_ALL_TESTS();
}
