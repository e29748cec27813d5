// SPDX-License-Identifier: GPL-3.0-or-later
#include "BandFile.h"

#include "BandLine.h"
#include "BandScene.h"
#include "CwModulator.h"
#include "SpeechSynthesis.h"
#include "StationKind.h"
#include "TextScanner.h"

#include <cmath>
#include <filesystem>
#include <fstream>
#include <numbers>

namespace vr
{
namespace
{
constexpr double kToneClipSeconds = 10.0; // a tone is rounded to whole cycles in it: 0.1 Hz

const StationKind &parseKind(const std::string &name)
{
    const StationKind *kind = StationKind::find(name);
    if (!kind)
        throw LineError("unknown mode " + inQuotes(name) + " (" + StationKind::names(", ") + ")");
    return *kind;
}

std::shared_ptr<const AudioClip> toneClip(const std::string &tones)
{
    std::vector<double> cycles; // per sample
    TextScanner scan(tones);
    do {
        const double hz = BandLine::parseNumber("tone", scan.takeUntil(","));
        if (hz <= 0.0 || hz > 5000.0)
            throw LineError("\"tone\" must be above 0 and at most 5000 Hz, not " + inQuotes(tones));
        cycles.push_back(std::round(hz * kToneClipSeconds) / kToneClipSeconds / kAudioRateHz);
    } while (scan.take(","));

    auto clip = std::make_shared<AudioClip>();
    clip->samples.resize(std::size_t(kToneClipSeconds * kAudioRateHz));
    const double amplitude = 1.0 / double(cycles.size());
    for (std::size_t i = 0; i < clip->samples.size(); ++i) {
        double sum = 0.0;
        for (double tone : cycles)
            sum += amplitude * std::sin(2.0 * std::numbers::pi * std::fmod(tone * double(i), 1.0));
        clip->samples[i] = float(sum);
    }
    clip->activeRms = amplitude * std::sqrt(double(cycles.size()) / 2.0);
    return clip;
}

class BandReader
{
public:
    explicit BandReader(std::string folder) : m_folder(std::move(folder)) { }

    void readLine(std::string line)
    {
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        const auto begin = line.find_first_not_of(" \t");
        if (begin == std::string::npos || line[begin] == '#')
            return;
        const auto end = std::min(line.find_first_of(" \t", begin), line.size());
        const std::string keyword = line.substr(begin, end - begin);
        if (keyword != "band" && keyword != "station")
            throw LineError("unknown line " + inQuotes(keyword) + " (band, station)");
        BandLine words(std::string_view(line).substr(end));
        keyword == "band" ? readBandLine(words) : readStation(words);
        words.finish(keyword);
    }

    BandDescription finish()
    {
        if (!m_bandSeen)
            throw LineError("no band line");
        return std::move(m_band);
    }

private:
    void readBandLine(BandLine &words)
    {
        if (m_bandSeen)
            throw LineError("a second band line");
        m_bandSeen = true;
        if (!words.has("centre"))
            throw LineError("a band needs centre=HERTZ");
        m_band.centreHz = words.number("centre", 0.0, 0.0, 122.88e6);
        if (words.has("noise"))
            m_band.noiseDb = words.number("noise", 0.0, -300.0, 0.0);
        m_band.seconds = words.number("seconds", 0.0, 0.0, 1e6);
        m_band.seed = std::uint64_t(words.number("seed", 1.0, 0.0, 1e9));
        m_repeat = words.flag("repeat", true);
    }

    void readStation(BandLine &words)
    {
        if (!m_bandSeen)
            throw LineError("the band line must come before the first station");
        StationDescription station;
        if (words.has("frequency") == words.has("offset"))
            throw LineError("a station needs either frequency=HERTZ or offset=HERTZ");
        station.frequencyHz = words.has("frequency")
            ? words.number("frequency", 0.0)
            : m_band.centreHz + words.number("offset", 0.0);
        if (!words.has("level"))
            throw LineError("a station needs level=DBFS");
        station.levelDb = words.number("level", 0.0, -200.0, 20.0);
        if (!words.has("mode"))
            throw LineError("a station needs mode=" + StationKind::names("|"));
        const StationKind &kind = parseKind(words.text("mode"));
        station.kind = &kind;
        if (kind.programme != Programme::None)
            readProgramme(words, station);
        if (const auto &own = kind.ownKey; own.name)
            station.*own.value = words.number(own.name, station.*own.value, own.low, own.high);
        m_band.stations.push_back(std::move(station));
    }

    void readProgramme(BandLine &words, StationDescription &station)
    {
        const bool cw = station.kind->programme == Programme::Keying;
        if (cw && !words.has("text"))
            throw LineError("a cw station needs text=\"...\"");
        if (!cw && words.has("audio") + words.has("tone") + words.has("speech") != 1)
            throw LineError("this station needs one of audio=FILE, tone=HERTZ, speech=NUMBER");
        station.pauseSeconds = words.has("tone") ? 0.0 : station.pauseSeconds;
        station.startSeconds = words.number("start", 0.0, 0.0, 1e6);
        station.pauseSeconds = words.number("pause", station.pauseSeconds, 0.0, 1e6);
        station.repeat = words.flag("repeat", m_repeat);
        station.clip = cw ? keyed(words) : audio(words);
    }

    static std::shared_ptr<const AudioClip> keyed(BandLine &words)
    {
        auto clip = std::make_shared<AudioClip>();
        clip->samples =
            CwModulator::keying(words.text("text"), words.number("wpm", 20.0, 1.0, 100.0));
        if (clip->samples.empty())
            throw LineError("the text of a cw station is empty");
        clip->activeRms = 1.0;
        return clip;
    }

    std::shared_ptr<const AudioClip> audio(BandLine &words) const
    {
        if (words.has("tone"))
            return toneClip(words.text("tone"));
        if (words.has("speech"))
            return AudioClip::make(
                synthesiseSpeech(unsigned(words.number("speech", 0.0, 0.0, 1e6))), kAudioRateHz);
        std::string error;
        const auto path = std::filesystem::path(m_folder) / words.text("audio");
        auto clip = AudioClip::load(path.string(), error);
        if (!clip)
            throw LineError(error);
        return clip;
    }

    std::string m_folder;
    BandDescription m_band;
    bool m_bandSeen = false;
    bool m_repeat = true;
};
} // namespace

std::optional<BandDescription> readBand(
    std::istream &text, const std::string &name, const std::string &folder, std::string &error)
{
    BandReader reader(folder);
    int number = 0;
    try {
        for (std::string line; std::getline(text, line);) {
            ++number;
            reader.readLine(line);
        }
        return reader.finish();
    } catch (const LineError &problem) {
        error = name + ":" + std::to_string(number) + ": " + problem.what();
        return std::nullopt;
    }
}

std::shared_ptr<Scene> loadBandScene(const std::string &path, std::string &error)
{
    std::ifstream file(path);
    if (!file.is_open() || std::filesystem::is_directory(path)) {
        error = path + ": cannot open the band file";
        return nullptr;
    }
    const auto folder = std::filesystem::path(path).parent_path().string();
    const auto band = readBand(file, path, folder, error);
    return band ? std::make_shared<BandScene>(*band) : nullptr;
}
} // namespace vr
