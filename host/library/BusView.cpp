// SPDX-License-Identifier: GPL-3.0-or-later
#include "library/BusView.h"

#include "library/ProgramFolder.h"

#include <QFileInfo>
#include <QStringList>

#include <algorithm>

namespace host
{
namespace
{
const QString kRule = QStringLiteral("72-zephrin-nano.rules");

/// Where udev looks.
bool isRuleInPlace()
{
    const QStringList folders = {
        "/etc/udev/rules.d/", "/run/udev/rules.d/", "/usr/lib/udev/rules.d/", "/lib/udev/rules.d/"};
    return std::any_of(folders.begin(), folders.end(),
        [](const QString &folder) { return QFileInfo::exists(folder + kRule); });
}

/// The rule that came with the program, installed or in the sources.
QString ownRule()
{
    return findBesideProgram({"../lib/udev/rules.d/" + kRule, "../../../packaging/" + kRule})
        .value_or(kRule);
}
} // namespace

QString BusView::reason() const
{
    if (status != FT_OK)
        return tr("The USB cannot be looked at (status %1 of the library): is /dev/bus/usb there?")
            .arg(status);
    if (nameless > 0 && isRuleInPlace())
        return tr("There is a device with a receiver's chip on the USB that you may not open. "
                  "Plug the receiver in again; the rule %1 lets who sits at the computer use it, "
                  "but nobody from afar.")
            .arg(kRule);
    if (nameless > 0)
        return tr("There is a device with a receiver's chip on the USB that you may not open: "
                  "as root, copy %1 to /etc/udev/rules.d and run \"udevadm control --reload\"; "
                  "then plug the receiver in again.")
            .arg(ownRule());
    if (devices > 0)
        return tr("Of the devices with a receiver's chip on the USB none is called ZephrinNano: "
                  "plug the receiver in.");
    return tr("There is no receiver on the USB: plug it in.");
}
} // namespace host
