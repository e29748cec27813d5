// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "settings/OutputSettings.h"
#include "settings/ReceptionMode.h"
#include "settings/ToolSettings.h"

#include <QString>
#include <QVector>

#include <optional>

namespace host
{
/// A radio notch filter at a frequency of the band.
struct NotchSettings
{
    double frequencyHz = 0.0;
    double widthHz = 100.0;
};

/// What a run of the listener is to do. Frequencies and rates in hertz.
struct HostSettings
{
    QString pluginFile;   ///< empty: the plugin that came with the program
    QString d2xxFile;     ///< empty: the virtual receiver that came with the program
    QString settingsFile; ///< empty: the user's own

    QString sceneFile;             ///< empty: the band built into the virtual receiver
    QString sceneFormat;           ///< empty: told by the file's name
    double sceneRateHz = 0.0;      ///< 0: from the file's header
    double sceneFrequencyHz = 0.0; ///< 0: from the file's header

    int deviceRateHz = 192000; ///< one of the receiver's nine
    double centerHz = 7.1e6;   ///< the receiver's frequency, 0 Hz of its IQ
    double tuneHz = 7.1e6;     ///< the station's (VFO A)
    const ReceptionMode *mode = findMode("USB");
    double filterLowHz = 300.0; ///< relative to tuneHz
    double filterHighHz = 2700.0;
    double preampDb = 0.0;
    bool autoPreamp = false;
    QVector<NotchSettings> notches; ///< of the band of tuneHz; empty: as stored
    ToolSettings tools;

    double seconds = 0.0; ///< 0: a finite scene as long as it is, else kDefaultSeconds
    bool freeRun = false; ///< as fast as the machine can instead of real time

    SpectrumSettings spectrum;
    RecordingSettings recording;
    OutletSettings vac;
    OutletSettings lineOut;

    QString outFile; ///< empty: audio is received and measured but not kept
    QString reportFile;
    QString eepromFile; ///< empty: an EEPROM in memory
    QString fault;      ///< faults that the virtual receiver is to produce; empty: none

    static constexpr double kDefaultSeconds = 10.0;
};
} // namespace host
