// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "settings/ReceptionMode.h"

#include <QString>
#include <QVector>

#include <map>

class DeviceFunctionsAbstract;
class QSettings;

namespace host
{
/// The filters of each mode, and which edges are in use: at first the device's table, to which a
/// person adds and from which he removes. Edges are hertz relative to the carrier.
///
/// What a device says of a mode holds for all edges: limits, edges that move together, a filter
/// that is fixed. GUI thread.
class FilterMemory
{
public:
    static constexpr double kNarrowestHz = 20.0; ///< arbitrary; telegraphy begins at 50

    struct Edges
    {
        double lowHz = 0.0;
        double highHz = 0.0;

        bool operator==(const Edges &) const = default;
    };

    struct Filter
    {
        QString name;
        Edges edges;
    };

    /// functions must outlive the memory.
    explicit FilterMemory(DeviceFunctionsAbstract &functions);

    const QVector<Filter> &filters(Mode mode) const { return m_modes.at(mode).filters; }

    /// In use. At first the filter of the table whose width is next to what the mode usually needs.
    const Edges &edges(Mode mode) const { return m_modes.at(mode).edges; }

    /// The filter that has the edges in use, -1 if none has.
    int chosen(Mode mode) const;

    // Each gives whether the edges in use have changed by it.

    bool choose(Mode mode, int filter);

    /// Brought inside the limits; of a symmetric filter the width counts.
    bool setEdges(Mode mode, Edges edges);

    /// One edge; of a symmetric filter the other follows.
    bool moveLow(Mode mode, double hertz);
    bool moveHigh(Mode mode, double hertz);

    /// Puts the edges in use among the filters, by their width, under a name that tells it. False
    /// if they are there already or the mode has but one filter.
    bool add(Mode mode);

    /// False for the last filter of a mode.
    bool remove(Mode mode, int filter);

    /// Back to the device's table.
    void restore(Mode mode);

    /// Group "Filters".
    void writeSettings(QSettings &settings) const;

    /// What is no filter of the mode is left out.
    void readSettings(QSettings &settings);

private:
    struct OfMode
    {
        QVector<Filter> filters;
        Edges edges;
    };

    Edges limited(Mode mode, Edges edges) const;
    QVector<Filter> table(Mode mode) const;
    bool take(Mode mode, const Edges &edges);

    DeviceFunctionsAbstract &m_functions;
    std::map<Mode, OfMode> m_modes;
};

/// "2.7K", "250".
QString filterName(const FilterMemory::Edges &edges);
} // namespace host
