// SPDX-License-Identifier: GPL-3.0-or-later
#include "BuiltinScene.h"

#include "BandScene.h"
#include "CwModulator.h"
#include "SpeechSynthesis.h"
#include "StationKind.h"

namespace vr
{
namespace
{
constexpr double kCentreHz = 7.1e6;
constexpr double kNoiseDb = -115.0; // dBFS in one hertz: 20 to 50 dB below the stations
constexpr double kWordsPerMinute = 18.0;

// Speech samples of the ALSA utilities, where they are installed.
const std::string kVoiceFolder = "/usr/share/sounds/alsa/";

std::shared_ptr<const AudioClip> voice(const char *file, unsigned substitute)
{
    std::string error;
    auto clip = AudioClip::load(kVoiceFolder + file, error);
    return clip ? clip : AudioClip::make(synthesiseSpeech(substitute), kAudioRateHz);
}

StationDescription station(double offsetHz, double levelDb, const char *kind,
    std::shared_ptr<const AudioClip> clip, double pauseSeconds)
{
    StationDescription station;
    station.frequencyHz = kCentreHz + offsetHz;
    station.levelDb = levelDb;
    station.kind = StationKind::find(kind);
    station.clip = std::move(clip);
    station.pauseSeconds = pauseSeconds;
    return station;
}

BandDescription describe()
{
    auto call = std::make_shared<AudioClip>();
    call->samples = CwModulator::keying("CQ CQ DE ZN1RX ZN1RX K", kWordsPerMinute);
    BandDescription band;
    band.centreHz = kCentreHz;
    band.noiseDb = kNoiseDb;
    band.stations = {
        station(5e3, -35, "usb", voice("Front_Center.wav", 1), 1.0),
        station(-4e3, -40, "lsb", voice("Rear_Left.wav", 2), 0.7),
        station(12e3, -30, "am", voice("Side_Right.wav", 3), 0.5),
        station(-9e3, -50, "carrier", nullptr, 0.0),
        station(-15e3, -40, "cw", call, 2.0),
        station(18e3, -45, "nfm", voice("Front_Right.wav", 4), 1.5),
    };
    return band;
}
} // namespace

std::shared_ptr<Scene> makeBuiltinScene()
{
    static const BandDescription band = describe();
    return std::make_shared<BandScene>(band);
}
} // namespace vr
