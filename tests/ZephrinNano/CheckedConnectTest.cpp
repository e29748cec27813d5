// SPDX-License-Identifier: GPL-3.0-or-later
#include "CheckedConnect.h"

#include <gtest/gtest.h>

namespace
{
TEST(CheckedConnectTest, NamesTheRowThatFailed)
{
    QObject source, target;
    CHECKED_CONNECT(&source, SIGNAL(objectNameChanged(QString)), &target, SLOT(deleteLater()));
    EXPECT_DEATH(
        CHECKED_CONNECT(&source, SIGNAL(objectNameChanged(QString)), &target, SLOT(nothing(int))),
        "CHECKED_CONNECT failed: QObject::objectNameChanged.QString. to QObject::nothing.int.");
    EXPECT_DEATH(CHECKED_CONNECT(nullptr, SIGNAL(told()), &target, nullptr),
        "null::told.. to QObject::null");
}
} // namespace
