// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "services/PreampControl.h"
#include "settings/HostSettings.h"

#include <QString>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace host
{
/// Processor seconds by thread.
struct CpuTimes
{
    double reader = 0.0; ///< without what the device library does inside its reads
    double device = 0.0; ///< inside the device library's reads: the virtual receiver's work
    double engine = 0.0;
    double sound = 0.0;
    double main = 0.0;
    double process = 0.0; ///< everything, threads that are not named here included

    CpuTimes operator-(const CpuTimes &start) const
    {
        return {reader - start.reader, device - start.device, engine - start.engine,
            sound - start.sound, main - start.main, process - start.process};
    }
};

/// What came out of a run beside the sound card's audio. What is empty was not asked for.
struct OutputResults
{
    struct Preamp
    {
        double db = 0.0; ///< in the end
        std::uint64_t overflows = 0;
        std::vector<PreampControl::Step> steps; ///< of the automatic preamp
    };

    struct Recording
    {
        QString file;
        std::uint64_t samples = 0;
        std::uint64_t lostBlocks = 0; ///< of the engine, refused by the recorder
    };

    struct Outlet
    {
        std::uint64_t frames = 0;
        double rmsDbfs = 0.0;
        double peakDbfs = 0.0;
    };

    struct Spectrum
    {
        std::size_t lines = 0;
        std::size_t points = 0;
        double widthHz = 0.0;
    };

    Preamp preamp;
    std::optional<Recording> recording;
    std::optional<Outlet> vac;
    std::optional<Outlet> lineOut;
    std::optional<Spectrum> spectrum;
};
/// What was measured between the start and the end of a stream.
struct Measurement
{
    QString scene;
    QString plugin;   ///< file
    QString d2xxFile; ///< file of the device library
    QString ending;   ///< "scene ended", "duration reached", "interrupted", "receiver lost"

    bool isVirtual = true; ///< else nobody knows what the receiver sent, and what got lost of it
    std::uint64_t samplesSent = 0;      ///< by the receiver
    std::uint64_t samplesProcessed = 0; ///< by the engine
    std::uint64_t samplesLostInShortReads = 0;
    std::uint64_t samplesDropped = 0; ///< sent and read, but refused by the engine's input ring
    std::uint64_t blocksDropped = 0;  ///< the same in blocks of the reader
    std::uint64_t shortReads = 0;
    std::uint64_t fifoOverruns = 0;
    std::uint64_t clippedSamples = 0;
    double inputRmsDbfs = 0.0;
    double inputPeakDbfs = 0.0;

    // The receiver's own meters after the last block.
    double channelDbm = 0.0;
    double channelBDbm = 0.0;
    double inputReDb = 0.0;
    double inputImDb = 0.0;
    bool isStereo = false; ///< wide FM

    std::uint64_t audioFrames = 0;
    std::uint64_t audioFramesLost = 0; ///< refused by the engine's audio ring
    std::uint64_t shortBlocks = 0;     ///< asked for in real time and not there
    double audioRmsDbfs = 0.0;
    double audioPeakDbfs = 0.0;
    std::optional<double> audioDelayMs; ///< after the IQ; empty where it is not known

    OutputResults outputs;

    double wallSeconds = 0.0;
    CpuTimes cpu;

    double iqSeconds(const HostSettings &settings) const
    {
        return double(samplesProcessed) / settings.deviceRateHz;
    }
};
} // namespace host
