// SPDX-License-Identifier: GPL-3.0-or-later
#include "memory/BandMemory.h"

#include "memory/BookmarkField.h"

#include "host_interfaces/DeviceFunctionsAbstract.h"

#include <QSettings>

#include <cmath>

namespace host
{
namespace
{
const QString kGroup = QStringLiteral("BandMemory");
constexpr double kRoundHz = 1e3;
} // namespace

QVector<BandMemory::Band> BandMemory::bands() const
{
    QVector<Band> bands;
    for (const auto &band : m_functions.listAmatureBands())
        bands.append({band.name, double(band.low), double(band.high)});
    return bands;
}

int BandMemory::bandOf(double hertz) const
{
    const auto all = bands();
    for (int i = 0; i < all.size(); ++i)
        if (hertz >= all[i].lowHz && hertz <= all[i].highHz)
            return i;
    return -1;
}

int BandMemory::neighbour(double hertz, int direction) const
{
    // Distance upwards to the nearest one, in the direction asked for; those on the other side come
    // after the end of the spectrum.
    constexpr double kRoundTheEndHz = 1e12;
    const auto all = bands();
    const int here = bandOf(hertz);
    int nearest = -1;
    double least = 0.0;
    for (int i = 0; i < all.size(); ++i) {
        if (i == here)
            continue;
        double distance = direction * (all[i].lowHz - hertz);
        if (distance < 0.0)
            distance += kRoundTheEndHz;
        if (nearest < 0 || distance < least) {
            nearest = i;
            least = distance;
        }
    }
    return nearest;
}

void BandMemory::remember(const Reception &reception)
{
    if (const int band = bandOf(reception.frequencyHz); band >= 0)
        m_last[bands()[band].name] = reception;
}

Reception BandMemory::recall(int band) const
{
    const Band here = bands()[band];
    if (const auto kept = m_last.find(here.name);
        kept != m_last.end() && bandOf(kept->frequencyHz) == band)
        return *kept;
    const double middleHz = std::round((here.lowHz + here.highHz) / 2.0 / kRoundHz) * kRoundHz;
    const Mode mode = m_functions.defaultMode(unsigned(band));
    const ReceptionMode *usual = findMode(mode);
    if (!usual)
        return {middleHz, mode, 0.0, 0.0};
    return {middleHz, mode, usual->filterLowHz, usual->filterHighHz};
}

void BandMemory::writeSettings(QSettings &settings) const
{
    settings.beginGroup(kGroup);
    for (auto kept = m_last.begin(); kept != m_last.end(); ++kept) {
        QStringList texts;
        for (const std::size_t field : kReceptionFields)
            texts += bookmarkFields()[field].text({{}, kept.value(), {}});
        settings.setValue(kept.key(), texts);
    }
    settings.endGroup();
}

void BandMemory::readSettings(QSettings &settings)
{
    settings.beginGroup(kGroup);
    for (const QString &band : settings.childKeys()) {
        const QStringList texts = settings.value(band).toStringList();
        Bookmark bookmark;
        try {
            for (std::size_t i = 0; i < kReceptionFields.size(); ++i)
                bookmarkFields()[kReceptionFields[i]].set(bookmark, texts.value(int(i)));
            m_last[band] = bookmark.reception;
        } catch (const QString &) {
            // Somebody has been at the file; the band begins anew.
        }
    }
    settings.endGroup();
}
} // namespace host
