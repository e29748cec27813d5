// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "settings/ReceptionMode.h"

#include "host_interfaces/Repairs.h"
#include "vm_library/source/file/IQFile.h"

#include <QString>
#include <QStringList>
#include <QVariantMap>
#include <QVector>

#include <optional>

namespace host
{
inline const QString kStandardOutput = "/dev/stdout";

/// A radio notch filter at a frequency of the band.
struct NotchSettings
{
    double frequencyHz = 0.0;
    double widthHz = 100.0;
};

/// The pictures of a run; empty: none.
struct SpectrumSettings
{
    QString panoramaFile; ///< PNG
    QString waterfallFile;
    QString audioSpectrumFile;

    /// Whether the device's spectrum is needed.
    bool isWanted() const { return !panoramaFile.isEmpty() || !waterfallFile.isEmpty(); }
};

/// The IQ stream on disk, by the receiver's own recorder.
struct RecordingSettings
{
    std::optional<vm::file::IQFile::Format> format; ///< empty: no recording
    QString folder = ".";

    bool isOn() const { return format.has_value(); }
};

/// An outlet beside the sound card, and where its audio goes.
struct OutletSettings
{
    QString file; ///< WAV; empty: the outlet stays closed
    int rateHz = 48000;

    bool isOn() const { return !file.isEmpty(); }
};

/// What a run of the listener is to do. Frequencies and rates in hertz.
struct HostSettings
{
    QString pluginFile;   ///< empty: the plugin that came with the program
    QString device;       ///< key of deviceKinds(); empty: as chosen last, see DeviceChoice
    QString d2xxFile;     ///< a device library of one's own, which no kind stands for; mostly empty
    QString settingsFile; ///< empty: the user's own

    QStringList repairs = Repairs::all().names(); ///< names of the table

    QString sceneFile;             ///< empty: the band built into the virtual receiver
    QString sceneFormat;           ///< empty: told by the file's name
    double sceneRateHz = 0.0;      ///< 0: from the file's header
    double sceneFrequencyHz = 0.0; ///< 0: from the file's header

    int deviceRateHz = 192000;     ///< one of the receiver's nine
    double centerHz = 7.1e6;       ///< the receiver's frequency, 0 Hz of its IQ
    double tuneHz = 7.1e6;         ///< the station's (VFO A)
    std::optional<double> tuneBHz; ///< the second station's (VFO B); empty: it is not heard
    const ReceptionMode *mode = findMode("USB");
    double filterLowHz = 300.0; ///< relative to tuneHz
    double filterHighHz = 2700.0;
    double preampDb = 0.0;
    bool autoPreamp = false;
    QVector<NotchSettings> notches; ///< of the band of tuneHz; empty: as stored

    double seconds = 0.0; ///< 0: a finite scene as long as it is, else kDefaultSeconds
    bool freeRun = false; ///< as fast as the machine can instead of real time

    std::optional<quint16> rigPort; ///< of the loopback address, for rig control; empty: none

    SpectrumSettings spectrum;
    RecordingSettings recording;
    OutletSettings vac;
    OutletSettings lineOut;

    QString outFile;                    ///< empty: audio is received and measured but not kept
    bool isInverted = false;            ///< the audio of all files
    std::optional<double> deemphasisUs; ///< time constant of the audio of all files
    QString reportFile;
    QString eepromFile; ///< empty: an EEPROM in memory
    bool verbose = false;
    QString fault; ///< faults that the virtual receiver is to produce; empty: none

    /// The options that were given and the defaults of the others, by name, with their values as
    /// the rows of optionTable() read them.
    QVariantMap given;
    QVariantMap standard;

    /// Of an option given or not; invalid without a default.
    QVariant valueOf(const QString &option) const
    {
        return given.value(option, standard.value(option));
    }

    /// A line on each option that has no effect in this run.
    QStringList notices;

    static constexpr double kDefaultSeconds = 10.0;
};
} // namespace host
