// SPDX-License-Identifier: GPL-3.0-or-later
#include "Dsp/ZephrinMDSP.h"

#include "CheckedConnect.h"
#include "DspCore/NoDenormals.h"
#include "ZephrinMFunctions.h"
#include "signal_primitives/ipps.h"
#include "vm_library/source/log/Log.h"

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

// Linear gains of the ways out. The sound card's is applied on its own thread, the others ahead of
// their rings.
constexpr float kSoundCardGain = 0.7f;
constexpr double kLineOutGain = 0.4;
constexpr double kVacGain = 0.3;

// Log readers look for this text, which the compiler spells in another way.
constexpr auto kBlockSignature = "void ZephrinMDSP::dspProcess(std::vector<COMPLEX> &)";

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

bool silence(std::vector<float> &out)
{
    std::fill(out.begin(), out.end(), 0.0f);
    return true;
}
} // namespace

ZephrinMDSP::ZephrinMDSP(tp::ThreadPool &pool, BridgeAbstract &bridge,
    std::shared_ptr<ZephrinMFunctions> functions, QObject *parent)
    : QObject(parent), m_bridge(bridge), m_functions(std::move(functions)), m_dds{kFirstDdsHz},
      m_spectrum(pool, kSpectrumId, nullptr), m_receiver(nullptr), m_chunk(SIGNAL_MAX_SIZE),
      m_iqFile(vm::memory::make_safe_ptr<vm::file::IQFile>()),
      m_notches{vm::memory::make_safe_ptr<IQNotchFilter>(kNotches)}, m_lineOut(kLineOutGain),
      m_vac(kVacGain)
{
    ippInit();
    m_input.resize(EngineLimits::kInputRing, kLongestRun);
    m_audio.reserve(SIGNAL_MAX_SIZE);
    m_recorded.reserve(SIGNAL_MAX_SIZE);
    m_lineOut.setSampleRates(m_soundCardRate, m_lineOut.outputRate());
    m_vac.setSampleRates(m_soundCardRate, m_vac.outputRate());
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

void ZephrinMDSP::setRepairs(const Repairs &repairs)
{
    const Lock lock(m_mutex);
    m_agc.requireChoice(repairs.has(Repair::Agc));
    m_spectrum.setDropsRefused(repairs.has(Repair::Spectrum));
    m_receiver.setRepairs({
        .meter = repairs.has(Repair::Meter),
        .agc = repairs.has(Repair::Agc),
        .numbers = repairs.has(Repair::Numbers),
        .ctcss = repairs.has(Repair::Ctcss),
        .pace = repairs.has(Repair::Pace),
        .cable = repairs.has(Repair::Cable),
        .fade = repairs.has(Repair::Fade),
        .wfm = repairs.has(Repair::Wfm),
    });
}

void ZephrinMDSP::processIQ(gsl::span<COMPLEX> block)
{
    if (stopping())
        return;
    m_input.write(block);
    wakeForInput();
}

void ZephrinMDSP::wakeForInput()
{
    if (!stopping() && m_input.size() >= kWakeLevel && !stopping())
        wake();
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
    m_readBlock = readBlockSize(m_soundCardRate);
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
    while (COMPLEX *const block = m_input.take(m_readBlock))
        dspProcess({block, m_readBlock});
}

void ZephrinMDSP::dspProcess(gsl::span<COMPLEX> block)
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

void ZephrinMDSP::feedIqTap(gsl::span<COMPLEX> block)
{
    if (block.size() <= m_iqTap.freeCount())
        m_iqTap.write(block.data(), int(block.size()));
}

void ZephrinMDSP::feedIqServer(gsl::span<COMPLEX> block)
{
    IqServerAbstract *server = m_iqServer;
    if (server && server->isOpen())
        server->write(0, block.data(), int(block.size()));
}

void ZephrinMDSP::feedRecorder(gsl::span<COMPLEX> block)
{
    if (!m_iqFile->isOpen())
        return;
    m_recorded.assign(block.begin(), block.end());
    if (!m_iqFile->write(m_recorded))
        vm::log::debug(kBlockSignature, " failed to write IQ to file");
}

// Called by the receiver, inside its process(), with the block that also goes to the sound card.
void ZephrinMDSP::feedSoundCard(gsl::span<COMPLEX> audio)
{
    m_audio.resize(audio.size());
    ippsConvert_64f32f(reinterpret_cast<const double *>(audio.data()),
        reinterpret_cast<float *>(m_audio.data()), 2 * int(audio.size()));
    vm::log::debug("write audio to audioServer(), ", audio.size(), " samples");
    m_bridge.audioServer()->write(int(m_audio.size()), m_audio.data());
}

void ZephrinMDSP::feedLineOut()
{
    if (m_lineOut.enabled() && takeChunk(m_receiver.lineout()))
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
    if (m_vac.enabled())
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

bool ZephrinMDSP::takeChunk(CircularBuffer<COMPLEX> &ring)
{
    if (ring.count() < unsigned(AudioTap::kChunk))
        return false;
    return ring.read(m_chunk.data(), AudioTap::kChunk);
}

void ZephrinMDSP::readSpectrum(
    unsigned int receiver, std::vector<float> &spectrum, std::vector<float> &waterfall)
{
    if (receiver == kSpectrumId && !stopping())
        m_spectrum.read(spectrum, waterfall);
}

bool ZephrinMDSP::soundCardIO(
    std::vector<float> &, std::vector<float> &out, unsigned long, unsigned long channels)
{
    if (stopping() || !m_soundCard.read(m_receiver.buffer(), out, channels))
        return silence(out);
    ippsMulC_32f_I(kSoundCardGain, out.data(), int(out.size()));
    return true;
}

bool ZephrinMDSP::vacIO(
    std::vector<float> &, std::vector<float> &out, unsigned long, unsigned long channels)
{
    if (stopping() || !m_vac.pull(out, channels))
        return silence(out);
    return true;
}

bool ZephrinMDSP::lineOutIO(
    std::vector<float> &, std::vector<float> &out, unsigned long, unsigned long channels)
{
    return !stopping() && m_lineOut.pull(out, channels);
}

void ZephrinMDSP::setSensors(SensorsAbstract *sensors)
{
    Lock lock(m_mutex);
    m_sensors = sensors;
}

void ZephrinMDSP::setSampleRate(double rate)
{
    Lock lock(m_mutex);
    const bool changes = !qFuzzyCompare(rate, m_receiver.inputSampleRate());
    m_sampleRate = rate;
    m_receiver.setInputSampleRate(rate);
    if (changes)
        tuneReceiver();
    m_notches.at(0)->setSampleRate(rate);
}

// A new rate leaves the receiver at the middle of the band, and its wide filter with edges that
// count in samples of the rate before.
void ZephrinMDSP::tuneReceiver()
{
    for (unsigned channel = 0; channel < m_downConverter.size(); ++channel)
        m_receiver.setDownConverter(channel, m_downConverter[channel]);
    if (m_bandEdges)
        m_receiver.setBandFilterIf(0, m_bandEdges->low, m_bandEdges->high);
}

void ZephrinMDSP::setSampleRateSC(double rate)
{
    Lock lock(m_mutex);
    m_soundCardRate = rate;
    m_receiver.setOutputSampleRate(rate);
    m_lineOut.setSampleRates(rate, m_lineOut.outputRate());
}

void ZephrinMDSP::setDds(unsigned int receiver, double hz)
{
    m_dds.at(receiver) = hz;
    m_notches.at(receiver)->setDds(hz);
}

int ZephrinMDSP::currentBand(unsigned long receiver) const
{
    const double hz = m_dds.at(receiver) + m_receiver.downConverter(0);
    return m_functions->getBandFromFreq(hz);
}

bool ZephrinMDSP::isCurrentBand(unsigned long band) const
{
    return static_cast<unsigned long>(currentBand(0)) == band;
}

void ZephrinMDSP::onRnfParam(
    unsigned long band, unsigned long index, bool enable, double frequency, double width)
{
    if (!isCurrentBand(band))
        return;
    auto &notch = m_notches.at(0);
    notch->setEnable(index, enable);
    notch->setFrequency(index, frequency);
    notch->setWidth(index, width);
}

void ZephrinMDSP::onRnfEnabled(unsigned long band, bool enabled)
{
    if (isCurrentBand(band))
        m_notches.at(0)->setActive(enabled);
}

void ZephrinMDSP::setDownConverter(unsigned int channel, double hz)
{
    Lock lock(m_mutex);
    if (channel < m_downConverter.size())
        m_downConverter[channel] = hz;
    m_receiver.setDownConverter(channel, hz);
}

void ZephrinMDSP::setBandFilterIf(unsigned int channel, double low, double high)
{
    Lock lock(m_mutex);
    m_bandEdges = {low, high};
    m_receiver.setBandFilterIf(channel, low, high);
}

void ZephrinMDSP::setModulation(unsigned int, DspCore::Modulation modulation)
{
    Lock lock(m_mutex);
    m_receiver.setModulation(modulation);
    m_receiver.setFilterTaps(m_filterTaps.setModulation(modulation));
}

void ZephrinMDSP::setFilterTaps(FilterTaps::Class modes, int taps)
{
    Lock lock(m_mutex);
    if (const auto acting = m_filterTaps.set(modes, taps))
        m_receiver.setFilterTaps(*acting);
}

void ZephrinMDSP::setAgcMode(AgcMode mode)
{
    if (!m_agc.isChange(mode))
        return;
    Lock lock(m_mutex);
    applyAgc(m_agc.setMode(mode));
}

void ZephrinMDSP::setAgcTime(AgcMode mode, double AgcParam::*field, double ms)
{
    Lock lock(m_mutex);
    if (const auto setting = m_agc.setTime(mode, field, ms))
        applyAgc(*setting);
}

void ZephrinMDSP::applyAgc(const AgcTable::Setting &setting)
{
    const AgcParam &times = setting.times;
    m_receiver.setAgcParam(setting.on, times.attack, times.decay, times.hangTime);
}

void ZephrinMDSP::setLineOutEnable(bool on)
{
    Lock lock(m_mutex);
    m_lineOut.setEnabled(on);
    if (on)
        m_receiver.lineout().clear();
}

void ZephrinMDSP::setLineOutSampleRate(double rate)
{
    Lock lock(m_mutex);
    m_lineOut.setSampleRates(m_soundCardRate, rate);
}

void ZephrinMDSP::vacOpen()
{
    Lock lock(m_mutex);
    m_vac.setEnabled(true);
    m_receiver.vac().clear();
}

void ZephrinMDSP::vacClose()
{
    Lock lock(m_mutex);
    m_vac.setEnabled(false);
}

void ZephrinMDSP::setVacSampleRate(double rate)
{
    Lock lock(m_mutex);
    m_vac.setSampleRates(m_soundCardRate, rate);
}

bool ZephrinMDSP::iqRecorderStart(const QString &path)
{
    Lock lock(m_mutex);
    m_iqFile->setSampleRate(m_sampleRate);
    return m_iqFile->open(path);
}

void ZephrinMDSP::iqRecorderStop()
{
    Lock lock(m_mutex);
    m_iqFile->close();
}

void ZephrinMDSP::setIQFormat(vm::file::IQFile::Format format)
{
    Lock lock(m_mutex);
    m_iqFile->setFormat(format);
}
