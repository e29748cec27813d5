// SPDX-License-Identifier: GPL-3.0-or-later
#include "radio/DeviceKnobs.h"

#include <QCheckBox>
#include <QComboBox>

namespace host
{
DeviceKnobs::DeviceKnobs(const QWidget &page)
    : m_rates(page.findChild<QComboBox *>("cbSampleRate")),
      m_autoPreamp(page.findChild<QCheckBox *>("chbPreamp"))
{
    if (m_autoPreamp)
        connect(m_autoPreamp, &QCheckBox::toggled, this, &DeviceKnobs::autoPreampChanged);
}

bool DeviceKnobs::setRateCode(int code)
{
    if (!m_rates || code < 0 || code >= m_rates->count())
        return false;
    m_rates->setCurrentIndex(code);
    return true;
}

bool DeviceKnobs::setAutoPreamp(bool on)
{
    if (m_autoPreamp)
        m_autoPreamp->setChecked(on);
    return m_autoPreamp;
}

bool DeviceKnobs::isAutoPreamp() const
{
    return m_autoPreamp && m_autoPreamp->isChecked();
}
} // namespace host
