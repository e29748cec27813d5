// SPDX-License-Identifier: GPL-3.0-or-later
#include "Options/combo_boxes.h"

#include <QComboBox>
#include <QSignalBlocker>
#include <algorithm>

namespace
{
bool shows(const QComboBox &box, const std::list<DiscoverZephrinNANO::DevId> &devices)
{
    int i = 0;
    return std::size_t(box.count()) == devices.size()
        && std::all_of(devices.begin(), devices.end(), [&](const auto &device) {
               const int item = i++;
               return box.itemText(item) == device.serial
                   && box.itemData(item).toInt() == device.index;
           });
}
} // namespace

void fillDevices(QComboBox &box, const std::list<DiscoverZephrinNANO::DevId> &devices)
{
    if (shows(box, devices))
        return;
    const QSignalBlocker quiet(box);
    const QString chosen = box.currentText();
    box.clear();
    for (const auto &device : devices)
        box.addItem(device.serial, device.index);
    if (const int index = box.findText(chosen); index >= 0)
        box.setCurrentIndex(index);
}

void widenItems(QComboBox &box)
{
    for (int i = 0; i < box.count(); ++i)
        box.setItemText(i, box.itemText(i) + "  ");
}
