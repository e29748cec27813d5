// SPDX-License-Identifier: GPL-3.0-or-later
#include "radio/Radio.h"

#include "library/DeviceKind.h"
#include "library/FtReadMeter.h"
#include "library/FtRelay.h"
#include "settings/DeviceChoice.h"
#include "settings/DeviceRates.h"
#include "settings/ToolLimits.h"

#include "host_interfaces/DeviceAbstract.h"
#include "host_interfaces/DeviceFunctionsAbstract.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace host
{
namespace
{
// The device has one receiver with two channels.
constexpr int kReceiver = 0;
constexpr unsigned kActiveChannel = 0;
constexpr unsigned kOtherChannel = 1;

constexpr int kSearchMs = 250; // between looks; the device itself looks at the bus every 2 s
constexpr int kTryMs = 2000;   // before a receiver that did not start is tried again
constexpr int kOverflowMs = 1000;

// Of the rate, to either side of the centre: beyond it the input filter of a receiver rolls off.
constexpr double kUsable = 0.46;

constexpr int kShortestLineMs = 10; // what the device can do
constexpr int kLongestLineMs = 40;

double decibels(double amplitude)
{
    return amplitude > 0.0 ? std::max(Readings::kNothingDb, 20.0 * std::log10(amplitude))
                           : Readings::kNothingDb;
}

/// A level of the device; silence reads minus infinity there.
double level(double db)
{
    return std::isfinite(db) ? std::max(Readings::kNothingDb, db) : Readings::kNothingDb;
}
/// In reads of the driver that came back short.
std::uint64_t shortReadSamples()
{
    return FtReadMeter::instance().lostBytes / EngineLimits::kFrameBytes
        * EngineLimits::kFrameSamples;
}
} // namespace

Radio::Radio()
{
    for (const SwitchRow &row : switchTable())
        m_switches[std::size_t(row.id)] = row.standard;
    for (const DialRow &row : dialTable())
        m_dials[std::size_t(row.id)] = row.standard;
    for (int i = 0; i < limits::kEqualizerBands; ++i)
        m_equalizerGains += 0;
    connect(&m_readingsTimer, &QTimer::timeout, this, [this] {
        look();
        readMeters();
    });
    connect(&m_saveTimer, &QTimer::timeout, this, [this] {
        if (m_controls)
            m_controls->forgetCalls(); // a log for checks, which would grow with each change
        if (!saveLater())
            emit message(m_error);
    });
}

Radio::~Radio()
{
    if (!m_filters)
        return;
    setPower(false);
    save();
    // What the device still says on its way out is said to nobody.
    disconnect(&device(), nullptr, this, nullptr);
    disconnect(&*m_knobs, nullptr, this, nullptr);
    m_audio.reset();
    m_receiver.reset();
}

bool Radio::load(const HostSettings &settings)
{
    m_settings = settings;
    if (!loadLibrary())
        return false;
    if (!m_scene->open(settings))
        return fail(m_scene->error());
    m_notices += m_scene->notices();
    m_receiver.emplace(m_ledger);
    if (!m_receiver->load(settings) || !m_receiver->initialise(settings))
        return fail(m_receiver->error());
    m_knobs = std::make_unique<DeviceKnobs>(m_receiver->optionsPage());
    m_audio = std::make_unique<AudioOutlet>(*bridge().soundOut(), m_ledger);
    m_filters = std::make_unique<FilterMemory>(functions());
    join();
    begin(settings);
    m_readingsTimer.start(kReadingsMs);
    m_saveTimer.start(kSaveMs);
    return true;
}

namespace
{
bool loadKind(D2xxLibrary &library, const DeviceKind *kind, const QString &ownLibrary)
{
    return kind ? library.load(*kind) : library.load(ownLibrary);
}
} // namespace

/// A choice of another day that cannot be had any more does not keep the program from starting.
bool Radio::loadLibrary()
{
    const DeviceKind *const standard = &deviceKinds().front();
    auto [kind, isStored] = DeviceChoice::of(m_settings);
    D2xxLibrary library;
    bool isLoaded = loadKind(library, kind, m_settings.d2xxFile);
    if (!isLoaded && isStored && kind != standard) {
        m_notices += library.error();
        kind = standard;
        isLoaded = library.load(*kind);
    }
    if (!isLoaded)
        return fail(library.error());
    take(library, kind);
    return true;
}

void Radio::take(const D2xxLibrary &library, const DeviceKind *kind)
{
    library.use();
    m_d2xx = library;
    m_kind = kind;
    m_controls = ReceiverControls::of(m_d2xx);
    m_scene.emplace(virtualReceiver());
}

bool Radio::setDeviceKind(const DeviceKind *kind)
{
    D2xxLibrary library;
    if (kind == m_kind)
        return true;
    if (!loadKind(library, kind, m_settings.d2xxFile)) {
        emit message(library.error());
        return fail(library.error());
    }
    emit deviceKindChanging();
    const bool wasPowered = m_isPowered;
    setPower(false);
    take(library, kind);
    m_isListNew = false;
    openSceneAnew();
    if (kind)
        DeviceChoice::store(settings(), *kind);
    emit deviceKindChanged();
    emit sceneChanged(m_scene->name());
    setPower(wasPowered);
    return true;
}

/// What only the virtual receiver has waits until that is in use again. If its recording has gone
/// meanwhile it begins with the built-in band.
void Radio::openSceneAnew()
{
    HostSettings settings = m_settings;
    if (!m_controls) {
        settings.sceneFile.clear();
        settings.eepromFile.clear();
        settings.fault.clear();
        settings.freeRun = false;
    }
    if (m_scene->open(settings))
        return;
    emit message(m_scene->error());
    m_settings.sceneFile.clear();
    m_scene->change(m_settings);
}

void Radio::join()
{
    const auto bands = functions().listBands();
    m_lowestHz = m_highestHz = 0.0;
    for (const auto &band : bands) {
        m_lowestHz = std::min(m_lowestHz, double(band.low));
        m_highestHz = std::max(m_highestHz, double(band.high));
    }
    connect(&device(), &DeviceAbstract::changedSampleRate, this, &Radio::onRate);
    connect(&device(), &DeviceAbstract::rxSpectrum, this, [this](uint receiver) {
        if (receiver == uint(kReceiver) && m_state == State::Receiving)
            emit spectrumReady();
    });
    connect(&device(), &DeviceAbstract::sDigOffset, this, [this](int digl, int digu) {
        m_digitalOffsets = {digl, digu};
        emit filterChanged();
    });
    // The device is still in the middle of it.
    connect(&*m_receiver, &PluginReceiver::lost, this, &Radio::onLost, Qt::QueuedConnection);
    connect(&manager().preamp(), &PreampControl::preampValueChanged, this, &Radio::onPreamp);
    connect(&*m_knobs, &DeviceKnobs::autoPreampChanged, this, [this](bool on) {
        m_switches[std::size_t(Switch::AutoPreamp)] = on;
        emit switchChanged(Switch::AutoPreamp, on);
    });
    connect(&notches(), &HostNotchControl::paramChanged, this, [this] { emit notchesChanged(); });
    connect(&notches(), &HostNotchControl::enableFiltersChanged, this,
        [this] { emit notchesChanged(); });
}

/// What is stored, and the command line laid over it.
void Radio::begin(const HostSettings &settings)
{
    SettingsStore &store = m_receiver->openStore(settings.settingsFile);
    if (!m_receiver->notice().isEmpty())
        m_notices += m_receiver->notice();
    // Of the device's own defaults these are not what a listener likes.
    store.setDefault("ZephrinMOptions/SampleRate", deviceRateCode(settings.deviceRateHz));
    store.setDefault("ZephrinMOptions/dsp_nr_rate", 0.0007);
    if (settings.given.contains("rate"))
        store.overlay("ZephrinMOptions/SampleRate", deviceRateCode(settings.deviceRateHz));
    if (settings.autoPreamp)
        store.overlay("ZephrinMOptions/PreampAuto", true);
    m_receiver->readStored(settings);
    m_switches[std::size_t(Switch::AutoPreamp)] = m_knobs->isAutoPreamp();
    readSettings(store.settings());
    if (settings.given.contains("mode"))
        m_vfos[std::size_t(m_active)].mode = settings.mode->mode;
    if (settings.given.contains("tune") || settings.given.contains("mode")
        || settings.given.contains("center"))
        m_vfos[std::size_t(m_active)].frequencyHz = limited(settings.tuneHz);
    if (settings.given.contains("tune") || settings.given.contains("center"))
        m_centerHz = limited(settings.centerHz);
    if (settings.given.contains("filter"))
        m_filters->setEdges(mode(), {settings.filterLowHz, settings.filterHighHz});
    if (settings.given.contains("preamp"))
        m_dials[std::size_t(Dial::Preamp)] = settings.preampDb;
    if (!isReceivable(frequencyHz()))
        m_centerHz = frequencyHz();
    m_notchBand = notchBand();
    manager().preamp().setDb(float(value(Dial::Preamp)));
    sendAll();
}

DeviceFunctionsAbstract &Radio::functions() const
{
    return *device().getAvalibleFunctions();
}

QString Radio::deviceName() const
{
    return device().name();
}

// Power.

void Radio::setPower(bool on)
{
    if (on == m_isPowered)
        return;
    m_isPowered = on;
    if (on) {
        setState(State::Searching);
        m_sinceTry.invalidate();
        look();
        return;
    }
    if (device().isStart())
        device().stop();
    device().close();
    setState(State::Off);
}

/// A receiver that is wanted and there is started.
void Radio::look()
{
    if (m_state != State::Searching || (m_sinceTry.isValid() && !m_sinceTry.hasExpired(m_pauseMs)))
        return;
    m_sinceTry.start();
    m_pauseMs = kSearchMs;
    const BusView bus = FtRelay::instance().bus();
    if (!bus.isKnown)
        return;
    // The device takes its list over in the event loop, so the first look comes too early.
    if (!std::exchange(m_isListNew, true))
        return;
    if (manager().isDeviceAvailable())
        tryStart();
    else
        setSearchText(m_controls ? tr("The virtual receiver is unplugged.") : bus.reason());
}

void Radio::tryStart()
{
    // A start reports true even if the device refused its stream.
    if (!device().start() || !device().isStart()) {
        device().close();
        const QString text = tr("The receiver does not start its stream; trying again.");
        emit message(text);
        setSearchText(m_controls ? text : text + ' ' + tr("Another program may have it."));
        m_sinceTry.start();
        m_pauseMs = kTryMs;
        return;
    }
    const double seconds = m_scene->seconds();
    if (virtualReceiver() && seconds > 0.0)
        emit message(tr("Playing %1, %2 s").arg(m_scene->name()).arg(seconds, 0, 'f', 1));
    sendAll();
    setState(State::Receiving);
}

void Radio::onLost()
{
    device().close();
    if (!m_isPowered)
        return;
    emit message(tr("The receiver is gone; waiting for one."));
    FtRelay::instance().forgetBus();
    setState(State::Searching);
}

void Radio::setState(State state)
{
    if (state == m_state)
        return;
    m_state = state;
    restartHealth();
    setSearchText({});
    emit stateChanged(state);
}

void Radio::setSearchText(const QString &text)
{
    if (text == m_searchText)
        return;
    m_searchText = text;
    emit searchChanged(text);
}

/// What was on its way when the stream was begun anew is not lost.
void Radio::restartHealth()
{
    if (!m_controls)
        return;
    vr_status status{};
    m_controls->getStatus(&status);
    m_health.restart(status.samples_sent, m_ledger.processedSamples() + shortReadSamples());
}

// Tuning.

const QVector<int> &Radio::steps()
{
    static const QVector<int> kSteps = {1, 5, 10, 50, 100, 500, 1000, 2500, 5000, 9000, 10000,
        12500, 25000, 50000, 100000, 500000, 1000000};
    return kSteps;
}

double Radio::limited(double hertz) const
{
    return std::clamp(hertz, m_lowestHz, m_highestHz);
}

double Radio::receivedHz() const
{
    return frequencyHz() + (isOn(Switch::Rit) ? value(Dial::Rit) : 0.0);
}

double Radio::widestReachHz() const
{
    return kUsable * rateHz();
}

/// Whether the filter at that frequency lies in the sampled band; of one that is wider than the
/// band its carrier counts.
bool Radio::isReceivable(double hertz) const
{
    const auto [low, high] = filterOnAir();
    const double reach = widestReachHz();
    const double offset = hertz - m_centerHz;
    if (high - low >= 2.0 * reach)
        return std::abs(offset) < 0.5 * reach;
    return offset + std::min(low, 0.0) >= -reach && offset + std::max(high, 0.0) <= reach;
}

bool Radio::store(VfoId id, double hertz)
{
    if (m_isLocked || !std::isfinite(hertz))
        return false;
    Vfo &vfo = m_vfos[std::size_t(id)];
    hertz = limited(hertz);
    if (vfo.frequencyHz == hertz)
        return true;
    vfo.frequencyHz = hertz;
    if (id == m_active && !isReceivable(hertz))
        moveCenter(hertz);
    sendTuning();
    emit frequencyChanged(id, hertz);
    return true;
}

bool Radio::setFrequency(VfoId id, double hertz)
{
    return store(id, hertz);
}

bool Radio::tune(int steps)
{
    if (steps == 0)
        return !m_isLocked;
    const double place = frequencyHz() / m_step;
    constexpr double kRounding = 1e-6; // of a step
    const double from = steps > 0 ? std::floor(place + kRounding) : std::ceil(place - kRounding);
    return store(m_active, (from + steps) * m_step);
}

void Radio::setStep(int hertz)
{
    if (hertz == m_step || !steps().contains(hertz))
        return;
    m_step = hertz;
    emit stepChanged(hertz);
}

void Radio::setLocked(bool locked)
{
    if (locked == m_isLocked)
        return;
    m_isLocked = locked;
    emit lockedChanged(locked);
}

void Radio::setActive(VfoId id)
{
    if (id == m_active)
        return;
    m_active = id;
    if (!isReceivable(frequencyHz()))
        moveCenter(frequencyHz());
    sendMode();
    sendTuning();
    emit activeChanged(id);
    emit modeChanged(id, mode());
    emit filtersChanged();
    emit filterChanged();
    emit agcModeChanged(agcMode());
}

void Radio::setSplit(bool split)
{
    if (split == m_isSplit)
        return;
    m_isSplit = split;
    sendChannels();
    emit splitChanged(split);
}

bool Radio::isOtherHeard() const
{
    const double offset = vfo(other(m_active)).frequencyHz - m_centerHz;
    return m_isSplit && limits::kWithChannelB.has(mode()) && std::abs(offset) <= widestReachHz();
}

bool Radio::swapVfos()
{
    if (m_isLocked)
        return false;
    const std::array<Vfo, 2> before = m_vfos;
    setMode(VfoId::A, before[1].mode);
    setMode(VfoId::B, before[0].mode);
    return store(VfoId::A, before[1].frequencyHz) && store(VfoId::B, before[0].frequencyHz);
}

void Radio::copyToOther()
{
    setMode(other(m_active), mode());
    store(other(m_active), frequencyHz());
}

bool Radio::isKnown(Mode mode) const
{
    const auto modes = functions().listModes();
    return std::any_of(
        modes.begin(), modes.end(), [mode](const auto &item) { return item.mode == mode; });
}

void Radio::setMode(VfoId id, Mode mode)
{
    Vfo &vfo = m_vfos[std::size_t(id)];
    if (vfo.mode == mode || !isKnown(mode))
        return;
    vfo.mode = mode;
    if (id == m_active) {
        if (!isReceivable(frequencyHz()))
            moveCenter(frequencyHz());
        sendMode();
        sendTuning();
    }
    emit modeChanged(id, mode);
    if (id != m_active)
        return;
    emit filtersChanged();
    emit filterChanged();
    emit agcModeChanged(agcMode());
}

Reception Radio::reception() const
{
    const auto [low, high] = filterEdges();
    return {frequencyHz(), mode(), low, high};
}

bool Radio::setReception(const Reception &reception)
{
    if (m_isLocked || !std::isfinite(reception.frequencyHz))
        return false;
    const FilterMemory::Edges edges{reception.filterLowHz, reception.filterHighHz};
    if (reception.mode == mode() || !isKnown(reception.mode)) {
        setFilterEdges(edges);
    } else {
        m_filters->setEdges(reception.mode, edges); // the mode takes them along
        setMode(reception.mode);
    }
    return store(m_active, reception.frequencyHz);
}

// The sampled band.

double Radio::rateHz() const
{
    return functions().getCurrentSampleRateRX();
}

double Radio::spanHz() const
{
    return m_receiver->panoramaHz();
}

bool Radio::setRate(int hertz)
{
    const int code = deviceRateCode(hertz);
    return code >= 0 && m_knobs->setRateCode(code);
}

bool Radio::setCenter(double hertz)
{
    if (!std::isfinite(hertz))
        return false;
    hertz = limited(hertz);
    // As far as the filter must be moved to lie in the new band, the frequency moves.
    const auto [low, high] = filterOnAir();
    const double reach = widestReachHz();
    const double lowest = hertz - reach - std::min(low, 0.0);
    const double highest = std::max(lowest, hertz + reach - std::max(high, 0.0));
    const double frequency = limited(std::clamp(frequencyHz(), lowest, highest));
    if (frequency != frequencyHz() && m_isLocked)
        return false;
    moveCenter(hertz);
    if (frequency == frequencyHz()) {
        sendTuning();
        return true;
    }
    return store(m_active, frequency);
}

void Radio::moveCenter(double hertz)
{
    if (hertz == m_centerHz)
        return;
    m_centerHz = hertz;
    device().setRxFreq(kReceiver, hertz);
    if (notchBand() != m_notchBand)
        sendNotches();
    emit centerChanged(hertz);
}

void Radio::onRate(double spanHz)
{
    m_ledger.dropWaiting();
    restartHealth();
    if (!isReceivable(frequencyHz()))
        moveCenter(frequencyHz());
    sendAll();
    emit rateChanged(spanHz);
}

// Filters.

FilterMemory::Edges Radio::filterOnAir() const
{
    const FilterMemory::Edges edges = filterEdges();
    const double carrier = carrierHz(mode());
    return {edges.lowHz + carrier, edges.highHz + carrier};
}

double Radio::carrierHz(Mode mode) const
{
    return mode == Mode::DIGL ? -m_digitalOffsets[0]
        : mode == Mode::DIGU  ? -m_digitalOffsets[1]
                              : 0.0;
}

void Radio::filterMoved(bool moved)
{
    if (!moved)
        return;
    if (!isReceivable(frequencyHz()))
        moveCenter(frequencyHz());
    sendFilter();
    sendTuning();
    emit filterChanged();
}

void Radio::setFilterEdges(const FilterMemory::Edges &edges)
{
    filterMoved(m_filters->setEdges(mode(), edges));
}

void Radio::moveFilterLow(double hertz)
{
    filterMoved(m_filters->moveLow(mode(), hertz));
}

void Radio::moveFilterHigh(double hertz)
{
    filterMoved(m_filters->moveHigh(mode(), hertz));
}

void Radio::chooseFilter(int filter)
{
    filterMoved(m_filters->choose(mode(), filter));
}

void Radio::addFilter()
{
    if (m_filters->add(mode()))
        emit filtersChanged();
}

void Radio::removeFilter(int filter)
{
    if (m_filters->remove(mode(), filter))
        emit filtersChanged();
}

void Radio::restoreFilters()
{
    m_filters->restore(mode());
    emit filtersChanged();
    filterMoved(true);
}

// Switches and dials.

Radio::Range Radio::rangeOf(Dial dial) const
{
    if (dial == Dial::Preamp) {
        DeviceFunctionsAbstract &can = functions();
        return {can.minimumPreamp(), can.maximumPreamp(), can.stepPreamp()};
    }
    const DialRow &row = rowOf(dial);
    return {row.low, row.high, row.step};
}

void Radio::setOn(Switch id, bool on)
{
    if (isOn(id) == on)
        return;
    if (id == Switch::AutoPreamp) {
        m_knobs->setAutoPreamp(on); // which tells of the change
        return;
    }
    m_switches[std::size_t(id)] = on;
    send(id);
    emit switchChanged(id, on);
}

void Radio::setValue(Dial id, double value)
{
    if (!std::isfinite(value))
        return;
    if (id == Dial::Preamp) {
        manager().preamp().setDb(float(value)); // which tells of the change
        return;
    }
    const auto [low, high, step] = rangeOf(id);
    const double stepped = std::clamp(std::round(value / step) * step + 0.0, low, high);
    double &kept = m_dials[std::size_t(id)];
    if (kept == stepped)
        return;
    kept = stepped;
    send(id);
    emit dialChanged(id, stepped);
}

void Radio::onPreamp(float db)
{
    m_dials[std::size_t(Dial::Preamp)] = double(db);
    emit dialChanged(Dial::Preamp, double(db));
}

int Radio::agcMode() const
{
    const auto kept = m_agcModes.find(mode());
    return kept != m_agcModes.end() ? kept->second : functions().defaultAgcMode(unsigned(mode()));
}

void Radio::setAgcMode(int agc)
{
    if (agc == agcMode() || agc < 0 || agc >= functions().listAgc().size())
        return;
    m_agcModes[mode()] = agc;
    sendAgc();
    emit agcModeChanged(agc);
}

void Radio::setEqualizerGains(const QList<int> &gains)
{
    if (gains.size() != limits::kEqualizerBands || gains == m_equalizerGains)
        return;
    for (int i = 0; i < gains.size(); ++i)
        m_equalizerGains[i] =
            std::clamp(gains[i], -limits::kMostEqualizerDb, limits::kMostEqualizerDb);
    device().setEqualizerGains(kReceiver, m_equalizerGains);
    emit equalizerChanged();
}

// Notches.

HostNotchControl &Radio::notches() const
{
    return *bridge().radioNotchControl();
}

std::size_t Radio::notchBand() const
{
    return std::size_t(functions().getBandFromFreq(m_centerHz));
}

bool Radio::addNotch(double frequencyHz, double widthHz)
{
    const std::size_t band = notchBand();
    for (std::size_t id = 0; id < notches().filterCount(); ++id) {
        if (notches().filter(band, id).enable)
            continue;
        return notches().setFilter(band, id, {widthHz, frequencyHz, true})
            && notches().setBandEnabled(band, true);
    }
    return false;
}

void Radio::removeNotch(std::size_t id)
{
    notches().setFilter(notchBand(), id, HostNotchControl::kUnused);
}

// What comes out.

SpectrumView Radio::spectrum() const
{
    return device().receiverSpectrum(kReceiver);
}

void Radio::setSpectrumRate(int linesPerSecond)
{
    device().setFftUpdateTime(
        unsigned(std::clamp(1000 / std::max(1, linesPerSecond), kShortestLineMs, kLongestLineMs)));
}

void Radio::setSpectrumSize(int bins)
{
    device().setFftSize(unsigned(std::max(0, bins)));
}

void Radio::setSpectrumAveraging(int lines)
{
    device().setFftAveragingNum(unsigned(std::max(1, lines)));
}

void Radio::readMeters()
{
    const HostSensors &meters = m_receiver->meters();
    m_readings.signalDbm = level(meters.channelDbm(kActiveChannel));
    m_readings.signalBDbm = level(meters.channelDbm(kOtherChannel));
    m_readings.inputDb = level(std::max(meters.inputReDb(), meters.inputImDb()));
    m_readings.audioPeakDb = decibels(bridge().audioServer()->takePeak());
    m_readings.isStereo = meters.isStereo();
    const quint64 overflows = manager().preamp().overflows();
    if (overflows != m_overflows)
        m_sinceOverflow.start();
    m_overflows = overflows;
    m_readings.isOverflow = m_sinceOverflow.isValid() && !m_sinceOverflow.hasExpired(kOverflowMs);
    m_readings.lostSamples = shortReadSamples();
    m_readings.lostFrames = m_ledger.lostFrames();
    if (m_controls && m_state == State::Receiving) {
        vr_status status{};
        m_controls->getStatus(&status);
        m_readings.shortReads = status.short_reads;
        m_health.look(status.samples_sent, m_ledger.processedSamples(), m_readings.lostSamples);
        m_readings.droppedSamples = m_health.dropped();
        m_readings.lostSamples += status.fifo_overruns * EngineLimits::kFrameSamples;
    }
    emit readingsChanged();
}

bool Radio::openScene(const QString &file)
{
    HostSettings settings = m_settings;
    settings.sceneFile = file;
    if (file != m_settings.sceneFile) {
        settings.sceneFormat.clear(); // those were of the other one
        settings.sceneRateHz = settings.sceneFrequencyHz = 0.0;
    }
    settings.deviceRateHz = int(rateHz());
    if (!m_scene->change(settings))
        return fail(m_scene->error());
    m_settings = settings;
    for (const QString &notice : m_scene->notices())
        emit message(notice);
    emit sceneChanged(m_scene->name());
    const double middle = m_controls ? m_controls->sceneFrequency() : 0.0;
    const double reach = m_controls ? m_controls->sceneWidth() / 2.0 : 0.0;
    if (middle == 0.0)
        return true;
    moveCenter(limited(middle));
    if (std::abs(frequencyHz() - middle) > reach || !isReceivable(frequencyHz()))
        store(m_active, middle);
    sendTuning();
    return true;
}

bool Radio::fail(const QString &text)
{
    m_error = text;
    return false;
}
} // namespace host
