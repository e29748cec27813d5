// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <cstddef>

/// The host's table of radio notch filters: for each amateur band the same number of filters at
/// absolute frequencies, and one switch. GUI thread.
///
/// The reserved operations are the host's own and hold their places in its table of virtual
/// operations.
class RadioNotchFilterControlAbstract : public QObject
{
    Q_OBJECT

public:
    struct Filter
    {
        double width = 0.0; // Hz
        double freq = 0.0;  // Hz, absolute
        bool enable = false;
    };

    using QObject::QObject;

    virtual void reserved1() = 0;

    virtual std::size_t bandCount() = 0;

    /// Filters in each band.
    virtual std::size_t filterCount() = 0;

    virtual void reserved4() = 0;

    /// The switch of a band, from 0.
    virtual bool bandEnabled(std::size_t band) = 0;

    virtual void reserved6() = 0;

    /// A filter of a band, both from 0.
    virtual Filter filter(std::size_t band, std::size_t id) = 0;

Q_SIGNALS:
    void paramChanged(size_t band, size_t id, bool enable, double freq, double width);
    void enableFiltersChanged(size_t band, bool state);
};
