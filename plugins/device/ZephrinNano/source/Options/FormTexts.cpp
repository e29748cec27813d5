// SPDX-License-Identifier: GPL-3.0-or-later
#include "Options/FormTexts.h"

#include "Options/combo_boxes.h"

#include <QLabel>

void FormTexts::setStatus(const QString &text)
{
    m_text = text;
    m_status.setText(text);
}

void FormTexts::widenRates()
{
    widenItems(m_rates);
    ++m_widenings;
}

void FormTexts::restore()
{
    for (int i = 0; i < m_widenings; ++i)
        widenItems(m_rates);
    if (!m_text.isNull())
        m_status.setText(m_text);
}
