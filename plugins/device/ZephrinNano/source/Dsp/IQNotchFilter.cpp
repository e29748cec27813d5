// SPDX-License-Identifier: GPL-3.0-or-later
#include "Dsp/IQNotchFilter.h"

#include <QtGlobal>

#include <algorithm>

using zephrinnano::NotchCascade;

namespace
{
// Limits of the half width.
constexpr double kMinWidthHz = 10.0;
constexpr double kMaxWidthHz = 10000.0;
} // namespace

IQNotchFilter::IQNotchFilter(unsigned long count) : m_frequencies(count), m_filters(count)
{
    for (zephrinnano::TrackingNotchFilter &filter : m_filters) {
        filter.setSampleRate(m_sampleRate);
        filter.update();
    }
}

void IQNotchFilter::setDds(double hz)
{
    if (qFuzzyCompare(m_dds, hz))
        return;
    m_dds = hz;
    update();
}

void IQNotchFilter::setSampleRate(double hz)
{
    if (qFuzzyCompare(m_sampleRate, hz))
        return;
    m_sampleRate = hz;
    for (zephrinnano::TrackingNotchFilter &filter : m_filters) {
        filter.setSampleRate(hz);
        filter.update();
    }
}

void IQNotchFilter::setFrequency(unsigned long index, double hz)
{
    double &frequency = m_frequencies.at(index);
    if (qFuzzyCompare(frequency, hz))
        return;
    frequency = hz;
    m_filters[index].setFrequency(hz - m_dds);
    m_filters[index].update();
}

void IQNotchFilter::setWidth(unsigned long index, double hz)
{
    zephrinnano::TrackingNotchFilter &filter = m_filters.at(index);
    filter.setWidth(std::clamp(hz * 0.5, kMinWidthHz, kMaxWidthHz));
    filter.update();
}

void IQNotchFilter::update()
{
    for (std::size_t i = 0; i < m_filters.size(); ++i) {
        m_filters[i].setFrequency(m_frequencies[i] - m_dds);
        m_filters[i].update();
    }
}

void IQNotchFilter::process(COMPLEX *data, int length)
{
    if (!m_active)
        return;
    zephrinnano::NotchSection *acting[NotchCascade::kMost];
    int count = 0;
    for (zephrinnano::TrackingNotchFilter &filter : m_filters) {
        if (!filter.acts())
            continue;
        acting[count++] = &filter.section();
        if (count == NotchCascade::kMost) {
            NotchCascade::process(acting, count, data, length);
            count = 0;
        }
    }
    if (count > 0)
        NotchCascade::process(acting, count, data, length);
}
