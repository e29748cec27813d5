// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/controls/BandBar.h"

#include "radio/Radio.h"

#include "host_interfaces/DeviceFunctionsAbstract.h"

#include <QSettings>
#include <QToolButton>

#include <cmath>

namespace host
{
namespace
{
constexpr int kMostBands = 16;
constexpr double kRoundHz = 1000.0;
} // namespace

BandBar::BandBar(Radio &radio, QWidget *parent)
    : ChoiceGrid(tr("Band"),
        std::max(1, std::min(kMostBands, int(radio.functions().listAmatureBands().size()))),
        parent),
      m_radio(radio)
{
    const auto bands = radio.functions().listAmatureBands();
    QStringList names;
    for (const auto &band : bands)
        names += band.name;
    setTexts(names);
    for (int i = 0; i < bands.size(); ++i)
        button(i).setToolTip(tr("%1 to %2 MHz, as last used")
                                 .arg(double(bands[i].low) / 1e6, 0, 'f', 3)
                                 .arg(double(bands[i].high) / 1e6, 0, 'f', 3));
    readSettings();
    connect(this, &ChoiceGrid::clicked, this, &BandBar::recall);
    connect(&radio, &Radio::frequencyChanged, this, &BandBar::remember);
    connect(&radio, &Radio::modeChanged, this, &BandBar::remember);
    connect(&radio, &Radio::filterChanged, this, &BandBar::remember);
    connect(&radio, &Radio::activeChanged, this, &BandBar::remember);
    connect(&radio, &Radio::aboutToSave, this, &BandBar::writeSettings);
    remember();
}

void BandBar::remember()
{
    const int band = m_radio.functions().getBandFromFreq(m_radio.frequencyHz());
    const bool isBand = band >= 0 && band < count();
    setChosen(isBand ? band : -1);
    if (isBand)
        m_last[band] = m_radio.reception();
}

void BandBar::recall(int band)
{
    const auto last = m_last.find(band);
    if (last != m_last.end()) {
        const Reception reception = last->second;
        m_radio.setReception(reception);
    } else {
        const auto &edges = m_radio.functions().listAmatureBands()[band];
        const double middle = (double(edges.low) + double(edges.high)) / 2.0;
        m_radio.setMode(m_radio.functions().defaultMode(unsigned(band)));
        m_radio.setFrequency(std::round(middle / kRoundHz) * kRoundHz);
    }
    remember();
}

void BandBar::writeSettings()
{
    QSettings &settings = m_radio.settings();
    settings.beginGroup("Bands");
    for (const auto &[band, last] : m_last)
        settings.setValue(m_radio.functions().listAmatureBands()[band].name,
            QStringList{QString::number(last.frequencyHz, 'f', 0), QString::number(int(last.mode)),
                QString::number(last.filterLowHz), QString::number(last.filterHighHz)});
    settings.endGroup();
}

void BandBar::readSettings()
{
    const auto bands = m_radio.functions().listAmatureBands();
    QSettings &settings = m_radio.settings();
    settings.beginGroup("Bands");
    for (int band = 0; band < bands.size(); ++band) {
        const QStringList texts = settings.value(bands[band].name).toStringList();
        if (texts.size() != 4)
            continue;
        const double hertz = texts[0].toDouble();
        if (m_radio.functions().getBandFromFreq(hertz) == band)
            m_last[band] = {
                hertz, Mode(texts[1].toInt()), texts[2].toDouble(), texts[3].toDouble()};
    }
    settings.endGroup();
}
} // namespace host
