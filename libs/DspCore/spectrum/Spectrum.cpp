// SPDX-License-Identifier: GPL-3.0-or-later
#include "DspCore/spectrum/Spectrum.h"

#include "DspCore/NoDenormals.h"
#include "DspCore/spectrum/AveragerCommon.h"
#include "DspCore/spectrum/LineKernels.h"
#include "vm_library/source/log/Log.h"

#include <algorithm>
#include <bit>
#include <cerrno>
#include <cstdint>
#include <ctime>
#include <utility>

namespace DspCore
{
namespace
{
constexpr int kSmallestSize = 256;
constexpr int kFirstSize = 512;
constexpr int kShortestInterval = 10; // ms
constexpr int kLongestInterval = 40;  // ms
constexpr std::size_t kWaterfallAveraging = 5;
constexpr long kRestNs = 10'000'000;
constexpr REAL32 kThirdLineDb = -140.0f;

template <typename T>
T *checked(T *array)
{
    if (!array)
        qBadAlloc();
    return array;
}

// Rounded to nearest. A ratio outside 0..1 hides everything or nothing, so that the visible bins
// always lie inside the line.
int visibleBins(int size, double ratio)
{
    const double bins = ratio * size;
    return bins > 0.0 ? int(std::min(bins, double(size)) + 0.5) : 0;
}

void rest()
{
    timespec remaining{0, kRestNs};
    while (nanosleep(&remaining, &remaining) != 0 && errno == EINTR) { }
}
} // namespace

Spectrum::Arrays::Arrays(int size)
    : spectrum(checked(ippsMalloc_32f(size))), waterfall(checked(ippsMalloc_32f(size))),
      third(checked(ippsMalloc_32f(size))), work(checked(ippsMalloc_32fc(size))),
      bins(checked(ippsMalloc_32fc(size))), fourth(checked(ippsMalloc_32f(size)))
{
    ippsSet_32f(kNoLineDb, spectrum.get(), size);
    ippsSet_32f(kNoLineDb, waterfall.get(), size);
    ippsSet_32f(kThirdLineDb, third.get(), size);
}

Spectrum::Spectrum(tp::ThreadPool &pool, unsigned int receiver, QObject *parent)
    : QObject(parent), mPool(pool), mReceiver(receiver)
{
    mWaterfallAverager.setAveragingSize(kWaterfallAveraging);
    setSize(kFirstSize);
    mFrameTimer.start();
}

Spectrum::~Spectrum()
{
    mJobs.end();
}

void Spectrum::open()
{
    if (mOpen.exchange(true))
        return;
    // A job posted before the last close() may be at its frame.
    const SpinLocker locker(mFrameLock);
    mAverager.reset();
}

void Spectrum::close()
{
    mOpen = false;
}

void Spectrum::setSize(int size)
{
    if (size < kSmallestSize || size == mSize)
        return;
    const bool wasOpen = isOpen();
    close();
    resize(int(std::bit_ceil(unsigned(size))));
    if (!wasOpen)
        return;
    open();
    // Again, for a frame that a job from before made since.
    const SpinLocker locker(mFrameLock);
    mAverager.reset();
}

// Everything slow comes before the locks, so that a job or an append() in progress, which the
// closing does not wait for, finds either all of the old or all of the new size. The old arrays go
// after the locks.
void Spectrum::resize(int size)
{
    Arrays arrays(size);
    WindowedTransform transform;
    transform.init(size, Window::BlackmanNuttall);

    const SpinLocker frameLocker(mFrameLock);
    {
        const SpinLocker inputLocker(mInputLock);
        mSize = size;
        std::swap(mArrays, arrays);
        mInput.resize(size);
    }
    mVisibleSize = visibleBins(size, mVisibleRatio);
    std::swap(mTransform, transform);
    mSpare.resize(unsigned(size));
    mAverager.setSpectrumSize(std::size_t(size));
    mWaterfallAverager.setSpectrumSize(std::size_t(size));
    mAverager.reset();
    mWaterfallAverager.reset();
}

void Spectrum::setAveraging(int size)
{
    const SpinLocker locker(mFrameLock);
    mAverager.setAveragingSize(std::size_t(size));
}

void Spectrum::setAveragingType(int type)
{
    const SpinLocker locker(mFrameLock);
    mAverager.setType(SpectrumAverager::Type(type));
}

void Spectrum::setUpdateInterval(int ms)
{
    mUpdateInterval = std::clamp(ms, kShortestInterval, kLongestInterval);
}

void Spectrum::setWaterfallAveraging(bool enable)
{
    const SpinLocker locker(mFrameLock);
    mWaterfallFilter = enable;
}

void Spectrum::setRemoveSide(bool enable)
{
    const SpinLocker locker(mFrameLock);
    mRemoveSide = enable;
}

void Spectrum::removeEdges(double edge, double sampleRate)
{
    const SpinLocker locker(mFrameLock);
    mVisibleRatio = (sampleRate - 2.0 * edge) / sampleRate;
    mVisibleSize = visibleBins(mSize, mVisibleRatio);
}

void Spectrum::clear()
{
    const SpinLocker locker(mFrameLock);
    mInput.clear();
    mSpare.clear();
}

void Spectrum::append(COMPLEX *samples, int count)
{
    if (count == 0 || !mOpen || !store(samples, count))
        return;
    mNewData = true;
    if (mFrameTimer.elapsed() <= mUpdateInterval)
        return;
    mFrameTimer.restart();
    post();
}

bool Spectrum::store(COMPLEX *samples, int count)
{
    constexpr int kLine = 175; // what readers of the log look for
    const SpinLocker locker(mInputLock);
    const int taken = std::min(count, mSize);
    const auto convert = [&](COMPLEX32 *to, int first, int n) {
        return ippsConvert_64f32f(&samples[first].re, &to->re, 2 * n);
    };
    mStatus = samples == nullptr ? ippStsNullPtrErr : taken < 0 ? ippStsSizeErr : ippStsNoErr;
    if (mStatus != ippStsNoErr) {
        vm::log::warning("void DspCore::Spectrum::append(COMPLEX *, int)", kLine,
            ippGetStatusString(IppStatus(mStatus)), taken);
        return false;
    }
    mInput.append(taken, convert);
    return true;
}

void Spectrum::post()
{
    auto job = mJobs.make([this] { run(); });
    if (!mDropsRefused)
        return mPool.post(std::move(job));
    const bool isRefused = !mPool.tryPost(std::move(job));
    if (isRefused && !mWasRefused)
        vm::log::warning("void DspCore::Spectrum::append(COMPLEX *, int)",
            " the thread pool takes no jobs, the panorama stands");
    mWasRefused = isRefused;
}

void Spectrum::run()
{
    if (!mOpen)
        return;
    makeFrame();
    emit spectrum(mReceiver);
    emit spectrum();
    // Bounds how much of the pool the display takes, however short the interval.
    rest();
}

void Spectrum::makeFrame()
{
    const NoDenormals scope; // the averagers fade out as well
    // Held from the copy out of the stream on: the work buffer is one for all jobs.
    const SpinLocker locker(mFrameLock);
    mInput.read([this](const COMPLEX32 *ring, int oldest) {
        mTransform.take(ring, oldest, mArrays.work.get());
    });
    mNewData = false;
    // Both lines are made from the power; it stands where the spectrum line will.
    mTransform.power(mArrays.work.get(), mArrays.bins.get(), mArrays.spectrum.get());
    finishWaterfall();
    finishSpectrum();
}

void Spectrum::finishWaterfall()
{
    float *power = mArrays.spectrum.get();
    float *line = mArrays.waterfall.get();
    if (mWaterfallFilter) {
        mWaterfallAverager.write(power, std::size_t(mSize));
        mWaterfallAverager.read(line, std::size_t(mSize));
    } else {
        powerToDb(power, line, mSize);
    }
    if (mRemoveSide)
        stretch(line);
}

void Spectrum::finishSpectrum()
{
    float *line = mArrays.spectrum.get();
    mAverager.write(line, std::size_t(mSize));
    mAverager.read(line, std::size_t(mSize));
    if (mRemoveSide)
        stretch(line);
}

void Spectrum::stretch(float *line)
{
    mInterpolator.process(
        line + (mSize - mVisibleSize) / 2, unsigned(mVisibleSize), line, unsigned(mSize));
}

void Spectrum::read(std::vector<float> &spectrum, std::vector<float> &waterfall)
{
    const SpinLocker locker(mFrameLock);
    spectrum.resize(std::size_t(mSize));
    waterfall.resize(std::size_t(mSize));
    ippsCopy_32f(mArrays.spectrum.get(), spectrum.data(), mSize);
    ippsCopy_32f(mArrays.waterfall.get(), waterfall.data(), mSize);
}

// The exponential of N. N. Schraudolph, "A Fast, Compact Approximation of the Exponential
// Function", Neural Computation 11 (1999): written into the exponent bits of a double, x / ln(2)
// gives 2 to that power, and the mantissa fills in along straight lines.
float Spectrum::calcGain(float x)
{
    constexpr double kHighWordPerUnit = 1512775.0;  // 2^20 / ln(2)
    constexpr double kHighWordOfOne = 1072632447.0; // less than 1.0 by the least mean error
    const auto high = std::int64_t((-0.35f * x) * kHighWordPerUnit + kHighWordOfOne);
    return float(1.0 - std::bit_cast<double>(std::uint64_t(high) << 32));
}
} // namespace DspCore
