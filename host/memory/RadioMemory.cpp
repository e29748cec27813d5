// SPDX-License-Identifier: GPL-3.0-or-later
#include "memory/RadioMemory.h"

#include "radio/Radio.h"

#include "host_interfaces/Common.h"

namespace host
{
QString RadioMemory::defaultPath()
{
    return Common::settingsPath() + "/bookmarks.csv";
}

RadioMemory::RadioMemory(Radio &radio, const QString &bookmarkFile)
    : m_radio(radio), m_bands(radio.functions()), m_file(m_bookmarks, bookmarkFile)
{
    m_file.load();
    m_bands.readSettings(radio.settings());
    connect(&m_file, &BookmarkFile::problem, this, &RadioMemory::message);
    connect(&radio, &Radio::aboutToSave, this, &RadioMemory::keep);
    // Frequency, mode and filter change one after the other; together they are a reception.
    m_settle.setSingleShot(true);
    connect(&m_settle, &QTimer::timeout, this, &RadioMemory::settle);
    const auto begin = [this] { m_settle.start(0); };
    connect(&radio, &Radio::frequencyChanged, this, begin);
    connect(&radio, &Radio::modeChanged, this, begin);
    connect(&radio, &Radio::filterChanged, this, begin);
    connect(&radio, &Radio::activeChanged, this, begin);
    settle();
}

RadioMemory::~RadioMemory()
{
    keep();
}

void RadioMemory::keep()
{
    settle();
    m_bands.writeSettings(m_radio.settings());
}

int RadioMemory::currentBand() const
{
    return m_bands.bandOf(m_radio.frequencyHz());
}

void RadioMemory::settle()
{
    m_bands.remember(m_radio.reception());
    const int band = currentBand();
    if (band == m_currentBand)
        return;
    m_currentBand = band;
    emit currentBandChanged(band);
}

bool RadioMemory::goToBand(int band)
{
    if (band < 0 || band >= m_bands.bands().size())
        return false;
    settle();
    return m_radio.setReception(m_bands.recall(band));
}

bool RadioMemory::goToNextBand(int direction)
{
    return goToBand(m_bands.neighbour(m_radio.frequencyHz(), direction));
}

bool RadioMemory::goTo(const Bookmark &bookmark)
{
    return m_radio.setReception(bookmark.reception);
}

Bookmark RadioMemory::here(const QString &name) const
{
    return {name, m_radio.reception(), {}};
}
} // namespace host
