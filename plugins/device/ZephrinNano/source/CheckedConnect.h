// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>

/// QObject::connect() that must succeed: a connection by text that does not match would leave a
/// control without effect and nobody would notice. Stops the program in every build and names the
/// place.
#define CHECKED_CONNECT(...)                                                                       \
    do {                                                                                           \
        if (!QObject::connect(__VA_ARGS__))                                                        \
            qt_assert_x(Q_FUNC_INFO, "CHECKED_CONNECT failed", __FILE__, __LINE__);                \
    } while (false)
