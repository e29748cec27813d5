// SPDX-License-Identifier: GPL-3.0-or-later
#include "stream/BandPictures.h"

#include "settings/Numbers.h"

#include "pictures/SpectrumPicture.h"

#include "host_interfaces/DeviceAbstract.h"

#include <algorithm>

namespace host
{
namespace
{
constexpr uint kReceiver = 0;
} // namespace

BandPictures::BandPictures(DeviceAbstract &device, const HostSettings &settings,
    const StreamLedger &ledger, double widthHz)
    : m_device(device), m_settings(settings), m_ledger(ledger), m_axis{settings.centerHz, widthHz}
{
    if (!settings.spectrum.isWanted())
        return;
    if (!settings.spectrum.waterfallFile.isEmpty())
        m_waterfall.emplace(m_axis);
    connect(&device, &DeviceAbstract::rxSpectrum, this, &BandPictures::onSpectrum);
}

void BandPictures::onSpectrum(uint receiver)
{
    if (receiver != kReceiver || m_ledger.isGoalReached())
        return;
    const SpectrumView view = m_device.receiverSpectrum(receiver);
    // Until the window is full there is a step in it, whose spectrum is all over the band.
    if (view.count == 0 || m_ledger.processedSamples() < 2 * view.count)
        return;
    m_levels.assign(view.spectrum, view.spectrum + view.count);
    if (m_highest.size() != view.count)
        m_highest = m_levels;
    std::transform(m_highest.begin(), m_highest.end(), view.spectrum, m_highest.begin(),
        [](float a, float b) { return std::max(a, b); });
    ++m_lines;
    if (m_waterfall)
        m_waterfall->addLine(double(m_ledger.processedSamples()) / m_settings.deviceRateHz,
            {view.waterfall, view.count});
}

void BandPictures::save()
{
    if (!m_settings.spectrum.isWanted())
        return;
    if (m_lines == 0) {
        m_problems += "the run was too short for a spectrum of the band";
        return;
    }
    savePanorama();
    saveWaterfall();
}

QString BandPictures::title(const QString &what) const
{
    return QString("%1, %2 wide around %3")
        .arg(what, formatHertz(m_axis.spanHz), formatHertz(m_axis.centerHz));
}

void BandPictures::savePanorama()
{
    if (m_settings.spectrum.panoramaFile.isEmpty())
        return;
    SpectrumPicture picture(m_axis);
    picture.setTitle(title("Panorama"));
    picture.setLine(m_levels, "last");
    picture.setSecondLine(m_highest);
    const double tune = m_settings.tuneHz;
    picture.addBand({tune + m_settings.filterLowHz, tune + m_settings.filterHighHz});
    picture.addMark({tune, QString(m_settings.mode->name) + ' ' + formatHertz(tune)});
    if (const auto &tuneB = m_settings.tuneBHz)
        picture.addMark({*tuneB, "B " + formatHertz(*tuneB)});
    for (const NotchSettings &notch : m_settings.notches)
        picture.addMark({notch.frequencyHz, "notch", PictureMark::Kind::Notch});
    if (QString error; !picture.save(m_settings.spectrum.panoramaFile, &error))
        m_problems += error;
}

void BandPictures::saveWaterfall()
{
    if (!m_waterfall)
        return;
    m_waterfall->setTitle(title("Waterfall"));
    if (QString error; !m_waterfall->save(m_settings.spectrum.waterfallFile, &error))
        m_problems += error;
}
} // namespace host
