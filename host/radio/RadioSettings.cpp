// SPDX-License-Identifier: GPL-3.0-or-later
// What the radio keeps on the disk, and what it hands to the device.
#include "radio/Radio.h"

#include "settings/ToolLimits.h"

#include "host_interfaces/DeviceAbstract.h"
#include "host_interfaces/DeviceFunctionsAbstract.h"

#include <QSettings>

#include <cmath>

namespace host
{
namespace
{
constexpr int kReceiver = 0;
constexpr unsigned kActiveChannel = 0;
constexpr unsigned kOtherChannel = 1;

const QString kGroup = QStringLiteral("Radio");
const char *const kVfoNames[] = {"vfoA", "vfoB"};

// The built-in band has a station there, and it is the middle of a band that is never empty.
constexpr double kFirstFrequencyHz = 7.105e6;
constexpr double kFirstCenterHz = 7.1e6;

double number(const QSettings &settings, const QString &key, double otherwise)
{
    bool ok = false;
    const double value = settings.value(key).toDouble(&ok);
    return ok && std::isfinite(value) ? value : otherwise;
}

QVariantList toVariants(const QList<int> &values)
{
    QVariantList list;
    for (const int value : values)
        list += value;
    return list;
}
} // namespace

QSettings &Radio::settings()
{
    return m_receiver->store().settings();
}

bool Radio::save()
{
    emit aboutToSave();
    writeSettings(settings());
    return m_receiver->saveSettings() || fail(m_receiver->error());
}

bool Radio::saveLater()
{
    emit aboutToSave();
    writeSettings(settings());
    return m_receiver->saveSettingsLater() || fail(m_receiver->error());
}

void Radio::writeSettings(QSettings &settings) const
{
    settings.beginGroup(kGroup);
    for (std::size_t i = 0; i < m_vfos.size(); ++i) {
        settings.setValue(QString(kVfoNames[i]) + "/frequency", m_vfos[i].frequencyHz);
        settings.setValue(QString(kVfoNames[i]) + "/mode", int(m_vfos[i].mode));
    }
    settings.setValue("active", int(m_active));
    settings.setValue("split", m_isSplit);
    settings.setValue("locked", m_isLocked);
    settings.setValue("step", m_step);
    settings.setValue("center", m_centerHz);
    for (const SwitchRow &row : switchTable())
        if (row.id != Switch::AutoPreamp && row.id != Switch::Mute) // the device's; a surprise
            settings.setValue(QString("switches/") + row.key, isOn(row.id));
    for (const DialRow &row : dialTable())
        settings.setValue(QString("dials/") + row.key, value(row.id));
    for (const auto &[mode, agc] : m_agcModes)
        settings.setValue(QString("agc/%1").arg(int(mode)), agc);
    settings.setValue("equalizer", toVariants(m_equalizerGains));
    m_filters->writeSettings(settings);
    settings.endGroup();
    notches().writeSettings(settings);
}

void Radio::readSettings(QSettings &settings)
{
    settings.beginGroup(kGroup);
    const auto modes = functions().listModes();
    for (std::size_t i = 0; i < m_vfos.size(); ++i) {
        Vfo &vfo = m_vfos[i];
        vfo.frequencyHz =
            limited(number(settings, QString(kVfoNames[i]) + "/frequency", kFirstFrequencyHz));
        const int stored = settings.value(QString(kVfoNames[i]) + "/mode", int(vfo.mode)).toInt();
        for (const auto &item : modes)
            if (int(item.mode) == stored)
                vfo.mode = item.mode;
    }
    m_active = settings.value("active", 0).toInt() == int(VfoId::B) ? VfoId::B : VfoId::A;
    m_isSplit = settings.value("split", false).toBool();
    m_isLocked = settings.value("locked", false).toBool();
    if (const int step = settings.value("step", m_step).toInt(); steps().contains(step))
        m_step = step;
    m_centerHz = limited(number(settings, "center", kFirstCenterHz));
    for (const SwitchRow &row : switchTable())
        if (row.id != Switch::AutoPreamp)
            m_switches[std::size_t(row.id)] =
                settings.value(QString("switches/") + row.key, row.standard).toBool();
    for (const DialRow &row : dialTable()) {
        const auto [low, high, step] = rangeOf(row.id);
        const double value = number(settings, QString("dials/") + row.key, row.standard);
        m_dials[std::size_t(row.id)] = std::clamp(std::round(value / step) * step, low, high);
    }
    for (const auto &item : modes) {
        const int agc = settings.value(QString("agc/%1").arg(int(item.mode)), -1).toInt();
        if (agc >= 0 && agc < functions().listAgc().size())
            m_agcModes[item.mode] = agc;
    }
    const QVariantList gains = settings.value("equalizer").toList();
    if (gains.size() == limits::kEqualizerBands)
        for (int i = 0; i < gains.size(); ++i)
            m_equalizerGains[i] =
                std::clamp(gains[i].toInt(), -limits::kMostEqualizerDb, limits::kMostEqualizerDb);
    m_filters->readSettings(settings);
    settings.endGroup();
}

void Radio::sendAll()
{
    device().setRxFreq(kReceiver, m_centerHz);
    sendMode();
    sendTuning();
    for (const SwitchRow &row : switchTable())
        send(row.id);
    for (const DialRow &row : dialTable())
        send(row.id);
    device().setEqualizerGains(kReceiver, m_equalizerGains);
    manager().preamp().resend();
    sendNotches();
}

void Radio::sendMode()
{
    for (const unsigned channel : {kActiveChannel, kOtherChannel})
        device().setDspMode(kReceiver, channel, unsigned(mode()));
    sendFilter();
    sendAgc();
    sendChannels();
}

void Radio::sendFilter()
{
    const auto [low, high] = filterEdges();
    for (const unsigned channel : {kActiveChannel, kOtherChannel})
        device().setBandFilterIf(kReceiver, channel, low, high);
}

void Radio::sendTuning()
{
    const double otherHz = vfo(other(m_active)).frequencyHz;
    device().setDownConverter(kReceiver, kActiveChannel, frequencyHz() - m_centerHz);
    device().setDownConverter(kReceiver, kOtherChannel, otherHz - m_centerHz);
    device().setRit(kReceiver, kActiveChannel, receivedHz() - frequencyHz());
    sendChannels();
}

/// Volume and balance of the channels act only while the second one is in use, so it may be in use
/// and mute.
void Radio::sendChannels()
{
    const bool isPossible = limits::kWithChannelB.has(mode());
    const bool isShaped =
        value(Dial::Balance) != 0.0 || value(Dial::VolumeA) != 0.0 || value(Dial::VolumeB) != 0.0;
    device().receiverChannelEnable(kReceiver, kOtherChannel, isPossible && (m_isSplit || isShaped));
    device().setMute(kReceiver, int(kOtherChannel), !isOtherHeard());
    const bool isA = m_active == VfoId::A;
    const int volumeA = int(value(Dial::VolumeA));
    const int volumeB = int(value(Dial::VolumeB));
    device().setVolume(kReceiver, kActiveChannel, isA ? volumeA : volumeB);
    device().setVolume(kReceiver, kOtherChannel, isA ? volumeB : volumeA);
    for (const unsigned channel : {kActiveChannel, kOtherChannel})
        device().setBalance(kReceiver, channel, int(value(Dial::Balance)));
}

/// A new engine calls its mode Off while its receiver's control is on, and takes the mode it has
/// for nothing new. Of several changes only the last one is heard.
void Radio::sendAgc()
{
    const unsigned agc = unsigned(agcMode());
    device().setAgcMode(kReceiver, kActiveChannel, agc == 0 ? 1 : 0);
    device().setAgcMode(kReceiver, kActiveChannel, agc);
    send(Dial::AgcGain);
}

/// A device takes notches of the present band only.
void Radio::sendNotches()
{
    m_notchBand = notchBand();
    notches().resend(m_notchBand);
}

void Radio::send(Switch id)
{
    if (id == Switch::Rit)
        sendTuning();
    else if (rowOf(id).apply)
        rowOf(id).apply(device(), manager(), isOn(id));
}

void Radio::send(Dial id)
{
    if (id == Dial::Rit)
        sendTuning();
    else if (id == Dial::VolumeA || id == Dial::VolumeB || id == Dial::Balance)
        sendChannels();
    else if (rowOf(id).apply)
        rowOf(id).apply(device(), value(id));
}
} // namespace host
