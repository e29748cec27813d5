// SPDX-License-Identifier: GPL-3.0-or-later
#include "Dsp/ZephrinMDSP.h"

#include "CheckedConnect.h"
#include "Dsp/FilterTapsClass.h"
#include "DspCore/NoDenormals.h"
#include "signal_primitives/ipps.h"

#include <algorithm>

namespace
{
constexpr double kFirstDdsHz = 1900000.0;
constexpr double kSoundCardRateHz = 48000.0;
constexpr unsigned kSpectrumId = 0; // of the receiver
constexpr int kSpectrumSize = 4096;

// What the device's filter takes from either end of the band, and at which rate. It is the same
// share at all rates.
constexpr double kSlopeHz = 2500.0;
constexpr double kSlopeRateHz = 48000.0;

// Linear gains into the two taps.
constexpr double kLineOutGain = 0.4;
constexpr double kVacGain = 0.3;

// The reader wakes the engine from this many waiting samples on, whatever the read block is.
constexpr std::size_t kWakeLevel = EngineLimits::kBlock;

// Gate thresholds of the receiver's rings, in stereo pairs.
constexpr unsigned kSoundCardGate = 512;
constexpr unsigned kTapGate = EngineLimits::kOutletChunk;

static_assert(DspCore::Receiver::kOutletSize == EngineLimits::kAudioRing);

// kBlock samples, shifted left by the low five bits of the rate: the usual sound card rates are
// multiples of 32 and keep kBlock, 44100 gives the maximum.
std::size_t readBlockSize(double soundCardRate)
{
    const auto shift = static_cast<long long>(soundCardRate) & 31;
    return std::size_t(
        std::min<long long>(SIGNAL_MAX_SIZE, (long long)(EngineLimits::kBlock) << shift));
}

void rewind(CircularBuffer<COMPLEX> &ring, unsigned gate)
{
    ring.clear();
    ring.armGate();
    ring.setThresholds(std::min(ring.capacity() / 2, gate), 0);
    ring.setOneShot();
}
} // namespace

ZephrinMDSP::ZephrinMDSP(tp::ThreadPool &pool, BridgeAbstract &bridge,
    std::shared_ptr<ZephrinMFunctions> functions, QObject *parent)
    : QObject(parent), m_bridge(bridge), m_functions(std::move(functions)), m_dds{kFirstDdsHz},
      m_spectrum(pool, kSpectrumId, nullptr), m_filterTaps(kFilterTapsClasses, kDefaultFilterTaps),
      m_receiver(nullptr), m_chunk(SIGNAL_MAX_SIZE),
      m_iqFile(vm::memory::make_safe_ptr<vm::file::IQFile>()),
      m_notches{vm::memory::make_safe_ptr<IQNotchFilter>(kNotches)}, m_lineOut(kLineOutGain),
      m_vac(kVacGain)
{
    ippInit();
    m_input.resize(EngineLimits::kInputRing);
    m_audio.reserve(SIGNAL_MAX_SIZE);
    m_lineOut.setSampleRates(m_soundCardRate, m_lineOutRate);
    m_vac.setSampleRates(m_soundCardRate, m_vacRate);
    setSampleRateSC(kSoundCardRateHz);
    m_spectrum.setSize(kSpectrumSize);
    m_spectrum.removeEdges(kSlopeHz, kSlopeRateHz);
    m_receiver.setSoundCardCallback([this](gsl::span<COMPLEX> audio) { feedSoundCard(audio); });
    CHECKED_CONNECT(&m_spectrum, SIGNAL(spectrum(uint)), this, SIGNAL(spectrum(quint32)));
}

ZephrinMDSP::~ZephrinMDSP()
{
    close();
}

void ZephrinMDSP::processIQ(gsl::span<COMPLEX> block)
{
    if (stopping())
        return;
    m_input.write(block);
    if (m_input.size() >= kWakeLevel && !stopping())
        wake();
}

void ZephrinMDSP::readSpectrum(
    unsigned int receiver, std::vector<float> &spectrum, std::vector<float> &waterfall)
{
    if (receiver == kSpectrumId && !stopping())
        m_spectrum.read(spectrum, waterfall);
}

void ZephrinMDSP::before()
{
    m_inputFade.reset();
    m_bridge.audioServer()->setEnabled(true);
    m_noiseBlanker.clear();
    m_spectrum.open();
    m_receiver.clear();
    m_lineOut.clearHistory();
    m_vac.clearHistory();
    m_lineOut.clearRing();
    m_vac.clearRing();
    m_iqTap.clear();
    rewind(m_receiver.buffer(), kSoundCardGate);
    rewind(m_receiver.vac(), kTapGate);
    rewind(m_receiver.lineout(), kTapGate);
    m_readBlock.resize(readBlockSize(m_soundCardRate));
    m_input.clear();
}

void ZephrinMDSP::after()
{
    m_spectrum.close();
    m_bridge.audioServer()->setEnabled(false);
}

void ZephrinMDSP::run()
{
    const DspCore::NoDenormals scope;
    while (m_input.read(m_readBlock))
        dspProcess(m_readBlock);
}

void ZephrinMDSP::dspProcess(std::vector<COMPLEX> &block)
{
    Lock lock(m_mutex);
    m_inputFade.process(block);
    m_noiseBlanker.process(block.data(), int(block.size()));
    m_notches.at(0)->process(block.data(), int(block.size()));
    feedIqTap(block);
    feedIqServer(block);
    feedRecorder(block);
    m_spectrum.append(block.data(), int(block.size()));
    m_receiver.process(block.data(), int(block.size()));
    feedLineOut();
    feedVac();
    feedSensors();
}

void ZephrinMDSP::feedIqTap(std::vector<COMPLEX> &block)
{
    if (block.size() <= m_iqTap.freeCount())
        m_iqTap.write(block.data(), int(block.size()));
}

void ZephrinMDSP::feedIqServer(std::vector<COMPLEX> &block)
{
    IqServerAbstract *server = m_iqServer;
    if (server && server->isOpen())
        server->write(0, block.data(), int(block.size()));
}

bool ZephrinMDSP::takeChunk(CircularBuffer<COMPLEX> &ring)
{
    if (ring.count() < unsigned(AudioTap::kChunk))
        return false;
    return ring.read(m_chunk.data(), AudioTap::kChunk);
}

void ZephrinMDSP::feedLineOut()
{
    if (m_lineOutEnabled && takeChunk(m_receiver.lineout()))
        m_lineOut.push(m_chunk.data());
}

// The ring is drained while the VAC is closed too: the audio server lives from it.
void ZephrinMDSP::feedVac()
{
    if (!takeChunk(m_receiver.vac()))
        return;
    AudioServerAbstract *server = m_audioServer;
    if (server && server->isOpen(0))
        server->write(0, m_chunk.data(), AudioTap::kChunk);
    if (m_vacEnabled)
        m_vac.push(m_chunk.data());
}

void ZephrinMDSP::feedSensors()
{
    if (!m_sensors)
        return;
    double first = 0.0;
    double second = 0.0;
    m_receiver.getAdc(0, first, second);
    m_sensors->rxAdc(0, float(first), float(second));
    m_receiver.getDbm(0, first, second);
    m_sensors->rxDbm(0, 0, float(first));
    m_sensors->rxDbm(0, 1, float(second));
    m_sensors->wfmStereo(0, m_receiver.wfmIsStereo());
}
