// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Dsp/TrackingNotchFilter.h"
#include "DspCore/types.h"

#include <vector>

/// A list of notches at fixed absolute frequencies, taken out of the whole IQ stream. When the
/// device is tuned elsewhere they move inside the stream and stay on their frequencies.
///
/// An index beyond the list throws std::out_of_range. Not thread-safe: the engine holds the list in
/// a vm::memory::safe_ptr, so that tuning (GUI thread) and process() (engine thread) take turns.
/// Every setter below that changes a filter's tones or pole restarts that filter's history.
class IQNotchFilter
{
public:
    /// A list of that many filters, all off.
    explicit IQNotchFilter(unsigned long count);

    /// Frequency of the centre of the stream in hertz. The same one again does nothing.
    void setDds(double hz);
    double dds() const { return m_dds; }

    /// Rate of the stream in hertz. The same one again does nothing.
    void setSampleRate(double hz);
    double sampleRate() const { return m_sampleRate; }

    /// Switch of the whole list.
    void setActive(bool state) { m_active = state; }
    bool active() const { return m_active; }

    /// Switch of one filter.
    void setEnable(unsigned long index, bool state) { m_filters.at(index).setEnable(state); }
    bool enable(unsigned long index) const { return m_filters.at(index).enable(); }

    /// Absolute frequency in hertz. The same one again does nothing.
    void setFrequency(unsigned long index, double hz);
    double frequency(unsigned long index) const { return m_frequencies.at(index); }

    /// Takes the whole width in hertz; width() gives the half of it that the filter has, limited to
    /// 10..10000.
    void setWidth(unsigned long index, double hz);
    double width(unsigned long index) const { return m_filters.at(index).width(); }

    /// Places every filter anew and restarts its history.
    void update();

    /// Filters in place, in list order; at most TrackingNotchFilter::kMaxBlock samples. Allocates
    /// nothing.
    void process(COMPLEX *data, int length);

private:
    double m_dds = 1900000.0;          // Hz
    double m_sampleRate = 48000.0;     // Hz
    std::vector<double> m_frequencies; // Hz, by filter
    std::vector<zephrinnano::TrackingNotchFilter> m_filters;
    bool m_active = false;
};
