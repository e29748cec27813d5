// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QVariant>
#include <functional>
#include <vector>

class QCheckBox;
class QComboBox;
class QDoubleSpinBox;
class QSettings;
class QSpinBox;

/// Ties keys of a settings group to the controls that show them, in the order in which they are
/// read and written.
///
/// A value is limited to the range of its control. A missing key takes the default, and so does a
/// text that is no number, or no truth value where one is wanted. Only a value that differs from
/// the one shown raises the signal of its control. The controls are not owned and outlive this.
class StoredControls
{
public:
    using Read = std::function<void(const QVariant &)>;
    using Write = std::function<QVariant()>;

    /// Keys are literals; numbers may be stored with or without a fraction whatever the control.
    void add(const char *key, QComboBox *box, int defaultIndex);
    void add(const char *key, QCheckBox *box, bool defaultState);
    void add(const char *key, QSpinBox *box, int defaultValue);
    void add(const char *key, QDoubleSpinBox *box, double defaultValue);

    /// Written as shown, read without its fraction.
    void addTruncated(const char *key, QDoubleSpinBox *box, double defaultValue);

    /// Written as shown, never read.
    void addWriteOnly(const char *key, QSpinBox *box);

    /// What is no plain control. Read gets an invalid variant for a missing key.
    void add(const char *key, Read read, Write write);

    /// Within the group that the caller has opened.
    void read(const QSettings &settings) const;
    void write(QSettings &settings) const;

private:
    struct Entry
    {
        const char *key;
        Read read; // empty: never read
        Write write;
    };

    std::vector<Entry> m_entries;
};
