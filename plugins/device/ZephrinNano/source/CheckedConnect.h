// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>

/// A connection by text that must succeed: one that does not match would leave a control without
/// effect and nobody would notice. Stops the program in every build and names the row and the
/// place. `signal` and `method` come from SIGNAL() and SLOT(); one that is null fails, too.
inline void checkedConnect(const char *function, const char *file, int line, const QObject *source,
    const char *signal, const QObject *target, const char *method,
    Qt::ConnectionType type = Qt::AutoConnection)
{
    if (QObject::connect(source, signal, target, method, type))
        return;
    // The first character of either text is Qt's mark of its kind.
    const auto name = [](const QObject *object, const char *member) {
        return QByteArray(object ? object->metaObject()->className() : "null")
            + "::" + (member && *member ? member + 1 : "null");
    };
    const QByteArray what =
        "CHECKED_CONNECT failed: " + name(source, signal) + " to " + name(target, method);
    qt_assert_x(function, what, file, line);
}

#define CHECKED_CONNECT(...) checkedConnect(Q_FUNC_INFO, __FILE__, __LINE__, __VA_ARGS__)
