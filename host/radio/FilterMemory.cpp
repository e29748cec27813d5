// SPDX-License-Identifier: GPL-3.0-or-later
#include "radio/FilterMemory.h"

#include <QSettings>

#include <algorithm>
#include <cmath>

namespace host
{
namespace
{
using Edges = FilterMemory::Edges;
using Filter = FilterMemory::Filter;

double widthOf(const Edges &edges)
{
    return edges.highHz - edges.lowHz;
}

QString textOf(const Edges &edges)
{
    return QString("%1:%2").arg(edges.lowHz).arg(edges.highHz);
}

Edges fromText(const QString &text)
{
    const QStringList parts = text.split(':');
    return {parts.first().toDouble(), parts.last().toDouble()};
}

const char *nameOf(Mode mode)
{
    const ReceptionMode *row = findMode(mode);
    return row ? row->name : "other";
}
} // namespace

QString filterName(const Edges &edges)
{
    const double width = widthOf(edges);
    return width < 1000.0 ? QString::number(width, 'f', 0)
                          : QString::number(width / 1000.0, 'g', 4) + 'K';
}

FilterMemory::FilterMemory(DeviceFunctionsAbstract &functions) : m_functions(functions)
{
    for (const auto &item : functions.listModes())
        restore(item.mode);
}

QVector<Filter> FilterMemory::table(Mode mode) const
{
    QVector<Filter> filters;
    for (int i = 0; i < m_functions.filterNum(mode); ++i) {
        const auto [low, high] = m_functions.listFilterNum(mode, unsigned(i));
        filters += {m_functions.filterName(mode, unsigned(i)), {low, high}};
    }
    return filters;
}

void FilterMemory::restore(Mode mode)
{
    OfMode &kept = m_modes[mode];
    kept.filters = table(mode);
    const int standard = std::clamp(m_functions.defaultFilterId(mode), 0, kept.filters.size() - 1);
    kept.edges = kept.filters[standard].edges;
    const ReceptionMode *needs = findMode(mode);
    if (!needs)
        return;
    const double width = needs->filterHighHz - needs->filterLowHz;
    const auto distance = [width](const Filter &filter) {
        return std::abs(widthOf(filter.edges) - width);
    };
    kept.edges = std::ranges::min_element(kept.filters, {}, distance)->edges;
}

int FilterMemory::chosen(Mode mode) const
{
    const OfMode &kept = m_modes.at(mode);
    for (int i = 0; i < kept.filters.size(); ++i)
        if (kept.filters[i].edges == kept.edges)
            return i;
    return -1;
}

bool FilterMemory::take(Mode mode, const Edges &edges)
{
    Edges &kept = m_modes.at(mode).edges;
    if (kept == edges)
        return false;
    kept = edges;
    return true;
}

bool FilterMemory::choose(Mode mode, int filter)
{
    const auto &all = filters(mode);
    return filter >= 0 && filter < all.size() && take(mode, all[filter].edges);
}

Edges FilterMemory::limited(Mode mode, Edges edges) const
{
    const auto [lowest, highest] = m_functions.filterLimits(mode);
    if (m_functions.isSimmetricFilter(mode)) {
        const double half =
            std::clamp(std::round(widthOf(edges) / 2.0), kNarrowestHz / 2.0, highest);
        return {-half, half};
    }
    edges.lowHz = std::clamp(std::round(edges.lowHz), lowest, highest - kNarrowestHz);
    edges.highHz = std::clamp(std::round(edges.highHz), edges.lowHz + kNarrowestHz, highest);
    return edges;
}

bool FilterMemory::setEdges(Mode mode, Edges edges)
{
    if (!std::isfinite(edges.lowHz) || !std::isfinite(edges.highHz)
        || m_functions.isLockFilter(mode))
        return false;
    return take(mode, limited(mode, edges));
}

bool FilterMemory::moveLow(Mode mode, double hertz)
{
    const Edges now = edges(mode);
    if (m_functions.isSimmetricFilter(mode))
        return setEdges(mode, {std::min(hertz, 0.0), -std::min(hertz, 0.0)});
    return setEdges(mode, {std::min(hertz, now.highHz - kNarrowestHz), now.highHz});
}

bool FilterMemory::moveHigh(Mode mode, double hertz)
{
    const Edges now = edges(mode);
    if (m_functions.isSimmetricFilter(mode))
        return setEdges(mode, {-std::max(hertz, 0.0), std::max(hertz, 0.0)});
    return setEdges(mode, {now.lowHz, std::max(hertz, now.lowHz + kNarrowestHz)});
}

bool FilterMemory::add(Mode mode)
{
    if (chosen(mode) >= 0 || m_functions.isLockFilter(mode))
        return false;
    OfMode &kept = m_modes.at(mode);
    const auto isWider = [&kept](const Filter &filter) {
        return widthOf(filter.edges) > widthOf(kept.edges);
    };
    const auto place = std::find_if(kept.filters.begin(), kept.filters.end(), isWider);
    kept.filters.insert(place, {filterName(kept.edges), kept.edges});
    return true;
}

bool FilterMemory::remove(Mode mode, int filter)
{
    auto &all = m_modes.at(mode).filters;
    if (filter < 0 || filter >= all.size() || all.size() == 1)
        return false;
    all.removeAt(filter);
    return true;
}

void FilterMemory::writeSettings(QSettings &settings) const
{
    settings.beginGroup("Filters");
    for (const auto &[mode, kept] : m_modes) {
        QStringList texts;
        for (const Filter &filter : kept.filters)
            texts += textOf(filter.edges);
        settings.setValue(QString(nameOf(mode)) + "/filters", texts);
        settings.setValue(QString(nameOf(mode)) + "/edges", textOf(kept.edges));
    }
    settings.endGroup();
}

void FilterMemory::readSettings(QSettings &settings)
{
    settings.beginGroup("Filters");
    for (auto &[mode, kept] : m_modes) {
        const QVector<Filter> standard = table(mode);
        QVector<Filter> read;
        const QStringList texts = settings.value(QString(nameOf(mode)) + "/filters").toStringList();
        for (const QString &text : texts) {
            const Edges edges = fromText(text);
            if (!(edges == limited(mode, edges)))
                continue;
            const auto named = std::ranges::find(standard, edges, &Filter::edges);
            read += named == standard.end() ? Filter{filterName(edges), edges} : *named;
        }
        if (!read.isEmpty())
            kept.filters = read;
        const Edges edges = fromText(settings.value(QString(nameOf(mode)) + "/edges").toString());
        if (edges == limited(mode, edges))
            kept.edges = edges;
    }
    settings.endGroup();
}
} // namespace host
