// SPDX-License-Identifier: GPL-3.0-or-later
#include "Options/StoredControls.h"

#include <QCheckBox>
#include <QComboBox>
#include <QSettings>
#include <QSpinBox>
#include <algorithm>
#include <cmath>

namespace
{
double toNumber(const QVariant &stored, double defaultValue)
{
    bool ok = false;
    const double value = stored.toDouble(&ok);
    return ok && !std::isnan(value) ? value : defaultValue;
}

// Limited before it is converted: an int cannot hold every number that a file can.
int toInt(const QVariant &stored, int defaultValue, int minimum, int maximum)
{
    return int(std::clamp(toNumber(stored, defaultValue), double(minimum), double(maximum)));
}

// Files hold words; QVariant by itself takes every word but "false" for true.
bool toBool(const QVariant &stored, bool defaultState)
{
    const QString text = stored.toString().toLower();
    if (text == "true" || text == "1")
        return true;
    return text == "false" || text == "0" ? false : defaultState;
}
} // namespace

void StoredControls::add(const char *key, QComboBox *box, int defaultIndex)
{
    add(
        key,
        [=](const QVariant &stored) {
            box->setCurrentIndex(toInt(stored, defaultIndex, 0, box->count() - 1));
        },
        [=] { return box->currentIndex(); });
}

void StoredControls::add(const char *key, QCheckBox *box, bool defaultState)
{
    add(
        key, [=](const QVariant &stored) { box->setChecked(toBool(stored, defaultState)); },
        [=] { return box->isChecked(); });
}

void StoredControls::add(const char *key, QSpinBox *box, int defaultValue)
{
    add(
        key,
        [=](const QVariant &stored) {
            box->setValue(toInt(stored, defaultValue, box->minimum(), box->maximum()));
        },
        [=] { return box->value(); });
}

void StoredControls::add(const char *key, QDoubleSpinBox *box, double defaultValue)
{
    add(
        key,
        [=](const QVariant &stored) {
            const double value = toNumber(stored, defaultValue);
            box->setValue(std::clamp(value, box->minimum(), box->maximum()));
        },
        [=] { return box->value(); });
}

void StoredControls::addTruncated(const char *key, QDoubleSpinBox *box, double defaultValue)
{
    add(
        key,
        [=](const QVariant &stored) {
            const double value = std::trunc(toNumber(stored, defaultValue));
            box->setValue(std::clamp(value, box->minimum(), box->maximum()));
        },
        [=] { return box->value(); });
}

void StoredControls::addWriteOnly(const char *key, QSpinBox *box)
{
    add(key, Read(), [=] { return box->value(); });
}

void StoredControls::add(const char *key, Read read, Write write)
{
    m_entries.push_back({key, std::move(read), std::move(write)});
}

void StoredControls::read(const QSettings &settings) const
{
    for (const Entry &entry : m_entries) {
        if (entry.read)
            entry.read(settings.value(entry.key));
    }
}

void StoredControls::write(QSettings &settings) const
{
    for (const Entry &entry : m_entries)
        settings.setValue(entry.key, entry.write());
}
