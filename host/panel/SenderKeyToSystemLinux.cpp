// SPDX-License-Identifier: GPL-3.0-or-later
#include "panel/SenderKeyToSystemLinux.h"

#include <QHash>
#include <QStringList>

#include <memory>
#include <vector>

#include <X11/XKBlib.h>
#include <X11/Xlib.h>
#include <X11/extensions/XTest.h>
#include <X11/keysym.h>

namespace host
{
namespace
{
constexpr int kShifted = 1; // column of a key's signs in the server's table

KeySym keySymOf(const QString &name)
{
    static const QHash<QString, KeySym> kShort = {
        {"ctrl", XK_Control_L},
        {"shift", XK_Shift_L},
        {"alt", XK_Alt_L},
        {"super", XK_Super_L},
    };
    const auto known = kShort.find(name.toLower());
    return known != kShort.end() ? *known : XStringToKeysym(name.toLatin1().constData());
}

/// A sign that is the second one of its key.
bool needsShift(Display *display, KeyCode code, KeySym sign)
{
    return XkbKeycodeToKeysym(display, code, 0, 0) != sign
        && XkbKeycodeToKeysym(display, code, 0, kShifted) == sign;
}
} // namespace

bool SenderKeyToSystemLinux::send(const QString &keys)
{
    const std::unique_ptr<Display, int (*)(Display *)> display(
        XOpenDisplay(nullptr), XCloseDisplay);
    if (!display)
        return fail(tr("There is no X server to send %1 to.").arg(keys));
    int event = 0, error = 0, major = 0, minor = 0;
    if (!XTestQueryExtension(display.get(), &event, &error, &major, &minor))
        return fail(tr("The X server takes no keys from programs; %1 is not sent.").arg(keys));
    std::vector<KeyCode> codes;
    for (const QString &name : keys.split('+')) {
        const KeySym sign = keySymOf(name.trimmed());
        if (sign == NoSymbol)
            return fail(tr("%1 is not sent: there is no key '%2'.").arg(keys, name.trimmed()));
        const KeyCode code = XKeysymToKeycode(display.get(), sign);
        if (code == 0)
            return fail(tr("%1 is not sent: the keyboard has no '%2'.").arg(keys, name.trimmed()));
        if (needsShift(display.get(), code, sign))
            codes.push_back(XKeysymToKeycode(display.get(), XK_Shift_L));
        codes.push_back(code);
    }
    for (auto code = codes.begin(); code != codes.end(); ++code)
        XTestFakeKeyEvent(display.get(), *code, True, CurrentTime);
    for (auto code = codes.rbegin(); code != codes.rend(); ++code)
        XTestFakeKeyEvent(display.get(), *code, False, CurrentTime);
    XSync(display.get(), False);
    return true;
}
} // namespace host
