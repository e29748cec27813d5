// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

class QComboBox;
class QLabel;

/// What a page of the device shows beside the words of its form: how the device is, and items that
/// were widened. A form that is translated anew has lost both. GUI thread.
class FormTexts
{
public:
    /// Both must outlive the object.
    FormTexts(QLabel &status, QComboBox &rates) : m_status(status), m_rates(rates) { }

    void setStatus(const QString &text);

    /// For a desktop of a high resolution; each call widens further.
    void widenRates();

    /// Shows all that again.
    void restore();

private:
    QLabel &m_status;
    QComboBox &m_rates;
    QString m_text; // null before the first
    int m_widenings = 0;
};
