// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "DspCore/spectrum/PoolJobs.h"
#include "DspCore/spectrum/SpectrumAverager.h"
#include "DspCore/spectrum/SpectrumExpAverager.h"
#include "DspCore/spectrum/SpectrumInterpolator.h"
#include "DspCore/spectrum/WindowedTransform.h"
#include "DspCore/types.h"
#include "signal_primitives/ipps.h"
#include "thread_pool/ThreadPool.h"
#include "vm_library/source/containers/AccumulatedBuffer.h"
#include "vm_library/source/containers/SpectrumRingBuffer.h"
#include "vm_library/source/containers/SpinLock.h"

#include <QElapsedTimer>
#include <QObject>

#include <atomic>
#include <memory>
#include <vector>

namespace DspCore
{
/// Turns the IQ stream into two display lines in dB, the spectrum and the newest row of the
/// waterfall.
///
///     append ─ window on the last size() samples ─ Blackman-Nuttall ─ FFT ─ |.|^2 ─┐
///        ┌────────────────────────────────────── zero frequency to the middle ─────┘
///        ├─ chosen averager, dB ─────────────┬─ (slopes hidden) stretch ─> spectrum line
///        └─ dB, or one-pole average of 5, dB ┴─ (slopes hidden) stretch ─> waterfall line
///
/// A line has size() bins from minus to plus half the sample rate, zero at size() / 2. A full-scale
/// tone on a bin reads 0.01 dB and the averager's offset.
///
/// Threads:
/// 1. Engine: append(). Takes the input lock, which only setSize() ever holds against it.
/// 2. Pool workers: run(), posted by append(). Several at once are fine; they share the work buffer
///    one after the other under the frame lock.
/// 3. Owner (GUI): construction, destruction, setSize(), size().
/// 4. Any: read(), the other setters, open(), close(), isOpen(), clear(). Those that meet a frame
///    wait for it on the frame lock, at the largest sizes for some ms.
/// The signals are emitted on the pool worker.
class Spectrum : public QObject
{
    Q_OBJECT

public:
    /// The pool must outlive the last append(). Closed, with a size of 512.
    Spectrum(tp::ThreadPool &pool, unsigned int receiver, QObject *parent = nullptr);

    /// Waits for a frame in progress, not for the pool: a job that it has yet to begin will do
    /// nothing. Not to be called by a job.
    ~Spectrum() override;

    /// Frames are made while open. Opening starts the averager of the spectrum line anew. A frame
    /// in progress at close() is still finished and signalled.
    void open();
    void close();
    bool isOpen() const { return mOpen; }

    /// Bins of a line, a power of two.
    int size() const { return mSize; }

    /// Rounded up to a power of two; below 256 and the present size are ignored. Both averagers
    /// start anew, and so does the window on the stream. Throws std::bad_alloc, then closed and at
    /// the old size.
    void setSize(int size);

    /// Lines that the spectrum line is averaged over, limited to 1..30.
    void setAveraging(int size);

    /// Number of SpectrumAverager::Type, limited to them.
    void setAveragingType(int type);

    /// Least time between two frames in ms, limited to 10..40.
    void setUpdateInterval(int ms);

    /// A frame whose job the pool refuses is left out, with a warning for the first of a row,
    /// instead of an exception.
    void setDropsRefused(bool drops) { mDropsRefused = drops; }

    /// The waterfall line through its averager or as it is.
    void setWaterfallAveraging(bool enable);

    /// Hides the outer bins, where the receiver's filter falls off, and stretches the rest over the
    /// line.
    void setRemoveSide(bool enable);

    /// Width of what setRemoveSide() hides at each end, in the unit of the sample rate.
    void removeEdges(double edge, double sampleRate);

    /// Empties the window on the stream. Its old samples count until new ones have replaced them.
    void clear();

    /// Takes a block and, when it is time, has a pool worker make a frame. Of a block longer than
    /// size() only the first size() samples are seen. Allocates nothing. Throws std::runtime_error
    /// if the pool refuses the job, unless refused frames are dropped.
    void append(COMPLEX *samples, int count);

    /// One job: makes a frame, signals it and keeps the worker for a rest of 10 ms. Nothing while
    /// closed.
    void run();

    /// The frame of run() without the signals and the rest, open or not.
    void makeFrame();

    /// Copies the two lines of the last frame, size() bins each; before the first one -180.0.
    void read(std::vector<float> &spectrum, std::vector<float> &waterfall);

    /// 1 - exp(-0.35 x), the exponential to about 4 %, for x of 0..2000.
    static float calcGain(float x);

signals:
    void spectrum(unsigned int receiver);
    void spectrum();

private:
    struct Free
    {
        void operator()(void *array) const { ippsFree(array); }
    };
    template <typename T>
    using Array = std::unique_ptr<T[], Free>;

    /// Everything whose length is that of the line. No frame touches the third and fourth line.
    struct Arrays
    {
        explicit Arrays(int size);
        Arrays() = default;

        Array<float> spectrum;
        Array<float> waterfall;
        Array<float> third;
        Array<COMPLEX32> work;
        Array<COMPLEX32> bins;
        Array<float> fourth;
    };

    bool store(COMPLEX *samples, int count);
    void post();
    void resize(int size);
    void finishWaterfall();
    void finishSpectrum();
    void stretch(float *line);

    tp::ThreadPool &mPool;
    std::atomic<int> mUpdateInterval = 16; // ms
    std::atomic<bool> mOpen = false;
    const unsigned int mReceiver;

    // Written by 3 under both locks.
    int mSize = 256;

    std::atomic<bool> mNewData = false; // samples have come since the last frame

    // Guarded by mFrameLock, except for mStatus, which is the engine's.
    bool mWaterfallFilter = false;
    int mStatus = 0;
    double mVisibleRatio = 0.8958333333333334; // 5 of 48 kHz hidden
    int mVisibleSize = 0;                      // bins, follows size and ratio
    bool mRemoveSide = false;
    SpinLock mFrameLock;
    WindowedTransform mTransform;
    SpectrumAverager mAverager;
    SpectrumExpAverager mWaterfallAverager;
    SpectrumInterpolator mInterpolator;
    Arrays mArrays;

    // Each has a lock of its own.
    AccumulatedBuffer<COMPLEX32> mInput;
    Velmora::SpectrumRingBuffer<COMPLEX32> mSpare;
    PoolJobs mJobs;

    bool mDropsRefused = false; // ahead of the first append()
    bool mWasRefused = false;   // the last frame; the engine's
    QElapsedTimer mFrameTimer;  // the engine's
    SpinLock mInputLock;        // always taken after mFrameLock
};
} // namespace DspCore
