// SPDX-License-Identifier: GPL-3.0-or-later
#include "SoakKnobs.h"

#include "SoakScene.h"
#include "SoakStream.h"
#include "plugin/PluginRig.h"

#include <QApplication>
#include <QCheckBox>
#include <QDoubleSpinBox>
#include <QSlider>
#include <QSpinBox>

#include <algorithm>
#include <cmath>
#include <functional>
#include <iterator>
#include <stdexcept>

namespace soak
{
namespace
{
constexpr double kPitchHz = 1000.0;
constexpr double kTunedHz = kCentreHz + 5e3; // elsewhere than the scene, so that it is shifted
constexpr int kModes = 11;
constexpr int kEqualizerBands = 18;
constexpr int kTapsLow = 500;
constexpr int kTapsHigh = 7681;
constexpr int kKnownFftSize = 4096;
constexpr int kCableRates[] = {8000, 11025, 12000, 16000, 22050, 44100, 48000, 96000, 192000};

// Parts of the options page that are left alone: what belongs to the device and not to its stream.
constexpr const char *kLeftAlone[] = {"gbUserCalibration", "tabAdvanced"};

QWidget &optionsPage()
{
    for (QWidget *widget : QApplication::allWidgets())
        if (widget->objectName() == "ZephrinMOptions")
            return *widget;
    throw std::runtime_error("no options page");
}

bool isLeftAlone(const QWidget &page, const QObject *control)
{
    for (; control && control != &page; control = control->parent())
        if (std::find(std::begin(kLeftAlone), std::end(kLeftAlone), control->objectName())
            != std::end(kLeftAlone))
            return true;
    return false;
}

double shown(const QCheckBox *box)
{
    return box->isChecked();
}

template <typename Box>
double shown(const Box *box)
{
    return box->value();
}

void show(QCheckBox *box, double value)
{
    box->setChecked(value != 0.0);
}

void show(QDoubleSpinBox *box, double value)
{
    box->setValue(value);
}

template <typename Box>
void show(Box *box, double value)
{
    box->setValue(int(std::lround(value)));
}

std::pair<double, double> limits(const QCheckBox *)
{
    return {0.0, 1.0};
}

template <typename Box>
std::pair<double, double> limits(const Box *box)
{
    return {box->minimum(), box->maximum()};
}
} // namespace

SoakKnobs::SoakKnobs(test::PluginRig &rig, SoakStream &stream, double rateHz, unsigned seed)
    : m_rig(rig), m_stream(stream), m_rateHz(rateHz), m_random(seed)
{
    QWidget &page = optionsPage();
    const auto add = [&](const auto &controls) {
        for (auto *control : controls)
            if (!isLeftAlone(page, control))
                m_options.emplace_back(control, shown(control));
    };
    add(page.findChildren<QSpinBox *>());
    add(page.findChildren<QDoubleSpinBox *>());
    add(page.findChildren<QCheckBox *>());
    add(page.findChildren<QSlider *>());
}

void SoakKnobs::turnSome()
{
    for (int left = whole(1, 4); left > 0; --left)
        turnOne();
}

void SoakKnobs::turnOne()
{
    DeviceAbstract &device = m_rig.device();
    const auto channel = unsigned(whole(0, 1));
    const double reach = 0.45 * m_rateHz;
    const std::function<void()> knobs[] = {
        [&] { device.setRxFreq(0, kCentreHz + real(-1e6, 1e6)); },
        [&] { device.setRxFreq(0, real(0.0, 61e6)); },
        [&] { device.setDownConverter(0, channel, real(-reach, reach)); },
        [&] { device.setDownConverter(0, channel, real(-25e3, 25e3)); }, // where stations are
        [&] { device.setRit(0, channel, real(-10e3, 10e3)); },
        [&] { setMode(whole(0, kModes - 1)); },
        [&] { setMode(whole(0, kModes - 1)); },
        [&] { device.setBandFilterIf(0, channel, real(-12e3, 2e3), real(2001.0, 12e3)); },
        [&] { setTaps(whole(kTapsLow, kTapsHigh)); },
        [&] { device.receiverChannelEnable(0, 1, flag()); },
        [&] { device.setAgcMode(0, channel, unsigned(whole(0, 5))); },
        [&] { device.setAgcGain(0, channel, whole(-20, 120)); },
        [&] { device.setNb1(0, flag()); },
        [&] { device.setNb2(0, flag()); },
        [&] { device.setNr(0, flag()); },
        [&] { device.setAnf(0, flag()); },
        [&] { device.setBin(0, flag()); },
        [&] { Q_EMIT m_rig.manager().apfChanged(0, flag()); },
        [&] { Q_EMIT m_rig.manager().dseChanged(0, flag()); },
        [&] { device.setEqualizerEnable(0, flag()); },
        [&] {
            QList<int> gains;
            for (int band = 0; band < kEqualizerBands; ++band)
                gains.push_back(whole(-20, 20));
            device.setEqualizerGains(0, gains);
        },
        [&] { device.setSqlEnable(0, channel, flag()); },
        [&] { device.setSqlValue(0, channel, whole(-160, 20)); },
        [&] { device.setEnableCTCSS(0, flag()); },
        [&] { device.setToneCTCSS(0, whole(0, 41)); },
        [&] { device.setWfmStereo(0, flag()); },
        [&] { device.setMainVolume(whole(-60, 0)); },
        [&] { device.setVolume(0, channel, whole(-60, 0)); },
        [&] { device.setBalance(0, channel, whole(-60, 60)); },
        [&] { device.setMute(0, whole(-1, 1), flag()); },
        [&] { device.setFftSize(256u << whole(0, 8)); },
        [&] { device.setFftAveragingType(unsigned(whole(0, 2))); },
        [&] { device.setFftAveragingNum(unsigned(whole(1, 30))); },
        [&] { device.setFftUpdateTime(unsigned(whole(10, 40))); },
        [&] { Q_EMIT m_rig.manager().waterfallFilterChanged(flag()); },
        [&] { Q_EMIT m_rig.manager().hideSpectrumSlopesChanged(flag()); },
        [&] { m_rig.manager().preamp().setDb(float(whole(-63, 12)) * 0.5f); },
        [&] { openCable(flag() ? kCableRates[whole(0, int(std::size(kCableRates)) - 1)] : 0); },
        [&] {
            const bool isOpen = flag();
            if (isOpen)
                m_rig.bridge().lineOut().open(48000);
            else
                m_rig.bridge().lineOut().close();
            m_stream.setLineOutOpen(isOpen);
        },
        [&] { turnNotch(); },
        [&] { turnNotch(); },
        [&] { turnOption(); },
        [&] { turnOption(); },
        [&] { turnOption(); },
        [&] { turnOption(); },
    };
    knobs[whole(0, int(std::size(knobs)) - 1)]();
    ++m_turned;
}

void SoakKnobs::turnOption()
{
    const auto &option = m_options[std::size_t(whole(0, int(m_options.size()) - 1))];
    std::visit(
        [this](auto *control) {
            const auto [low, high] = limits(control);
            // Rates span decades and their ends are where an algorithm is driven hardest.
            const bool isRate = high <= 1.0 && low > 0.0;
            show(control,
                isRate ? low * std::pow(high / low, real(0.0, 1.0))
                       : std::round(real(low, high) * 10.0) / 10.0);
        },
        option.first);
}

void SoakKnobs::turnNotch()
{
    auto &notches = *m_rig.bridge().radioNotchControl();
    const auto band = std::size_t(whole(0, int(notches.bandCount()) - 1));
    const auto here =
        std::size_t(m_rig.device().getAvalibleFunctions()->getBandFromFreq(kCentreHz));
    const auto id = std::size_t(whole(0, int(notches.filterCount()) - 1));
    if (flag())
        notches.setFilter(flag() ? band : here, id,
            {real(10.0, 1000.0), kCentreHz + real(-0.5, 0.5) * m_rateHz, flag()});
    else
        notches.setBandEnabled(flag() ? band : here, flag());
}

void SoakKnobs::setMode(int mode)
{
    DeviceAbstract &device = m_rig.device();
    auto &functions = *device.getAvalibleFunctions();
    device.setDspMode(0, 0, unsigned(mode));
    const auto limits = functions.filterLimits(DeviceFunctionsAbstract::Mode(mode));
    const double low = double(limits.first), high = double(limits.second);
    const double width = real(0.05, 1.0) * (high - low);
    const double from = low + real(0.0, 1.0) * (high - low - width);
    device.setBandFilterIf(0, 0, from, from + width);
}

void SoakKnobs::setTaps(int taps)
{
    for (const char *name :
        {"sbFilterTapsSsb", "sbFilterTapsAm", "sbFilterTapsDig", "sbFilterTapsCw"})
        optionsPage().findChild<QSpinBox *>(name)->setValue(taps);
}

void SoakKnobs::openCable(int rateHz)
{
    if (rateHz > 0)
        m_rig.bridge().vac().open(quint64(rateHz));
    else
        m_rig.bridge().vac().close();
    m_stream.setCableRate(rateHz);
}

void SoakKnobs::switchTools(bool on)
{
    DeviceAbstract &device = m_rig.device();
    device.receiverChannelEnable(0, 1, on);
    device.setNb1(0, on);
    device.setNb2(0, on);
    device.setNr(0, on);
    device.setAnf(0, on);
    device.setBin(0, on);
    Q_EMIT m_rig.manager().apfChanged(0, on);
    Q_EMIT m_rig.manager().dseChanged(0, on);
    device.setEqualizerGains(0, QVector<int>(kEqualizerBands, on ? 3 : 0).toList());
    device.setEqualizerEnable(0, on);
    device.setEnableCTCSS(0, on);
    for (const unsigned channel : {0u, 1u})
        device.setSqlEnable(0, channel, on);
    openCable(on ? 192000 : 0);
    if (on)
        m_rig.bridge().lineOut().open(48000);
    else
        m_rig.bridge().lineOut().close();
    m_stream.setLineOutOpen(on);
}

void SoakKnobs::tour(int step)
{
    constexpr int kTaps[] = {kTapsLow, 1200, 1570, 5000, kTapsHigh}; // a transform size each
    constexpr int kFftSizes = 9;
    static_assert(kTourSteps == kModes * int(std::size(kTaps)));
    setMode(step % kModes);
    setTaps(kTaps[step / kModes]);
    m_rig.device().setFftSize(256u << (step % kFftSizes));
    m_rig.device().setFftAveragingNum(30);
    Q_EMIT m_rig.manager().hideSpectrumSlopesChanged(step % 2 == 0);
    switchTools(step % 4 != 0);
    ++m_turned;
}

void SoakKnobs::setKnownState()
{
    DeviceAbstract &device = m_rig.device();
    switchTools(false);
    openCable(48000); // its resampler keeps the tables of the last rate
    openCable(0);
    for (const auto &[control, value] : m_options)
        std::visit([value = value](auto *box) { show(box, value); }, control);
    m_rig.manager().preamp().setDb(0.0f);
    m_rig.manager().preamp().resend();
    auto &notches = *m_rig.bridge().radioNotchControl();
    for (std::size_t band = 0; band < notches.bandCount(); ++band) {
        for (std::size_t id = 0; id < notches.filterCount(); ++id)
            notches.setFilter(band, id, host::HostNotchControl::kUnused);
        notches.setBandEnabled(band, false);
    }
    device.setRxFreq(0, kTunedHz);
    // What was sent for another band than the current one was not taken.
    notches.resend(std::size_t(device.getAvalibleFunctions()->getBandFromFreq(kTunedHz)));
    device.setDspMode(0, 0, DeviceFunctionsAbstract::USB);
    setTaps(1570);
    for (const unsigned channel : {0u, 1u}) {
        device.setBandFilterIf(0, channel, 200.0, 3500.0);
        device.setDownConverter(0, channel, carrierHz(m_rateHz) - kPitchHz - kTunedHz);
        device.setRit(0, channel, 0.0);
        device.setVolume(0, channel, 0);
        device.setBalance(0, channel, 0);
    }
    for (const int channel : {-1, 0, 1})
        device.setMute(0, channel, false);
    device.setMainVolume(0);
    device.setAgcGain(0, 0, 0);
    device.setAgcMode(0, 0, 1); // so that the next is a change
    device.setAgcMode(0, 0, 0);
    device.setFftSize(kKnownFftSize);
    device.setFftAveragingType(0);
    device.setFftAveragingNum(10);
    device.setFftUpdateTime(16);
    Q_EMIT m_rig.manager().waterfallFilterChanged(false);
    Q_EMIT m_rig.manager().hideSpectrumSlopesChanged(false);
    device.setWfmStereo(0, true);
}

double SoakKnobs::pitchHz() const
{
    return kPitchHz + kTunedHz - m_rig.receiver().frequency_hz;
}
} // namespace soak
