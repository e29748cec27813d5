// SPDX-License-Identifier: GPL-3.0-or-later
#include "memory/BookmarkField.h"

#include "settings/Numbers.h"

#include <QCoreApplication>
#include <QLocale>
#include <QStringList>

namespace host
{
namespace
{
constexpr double kHighestHz = 1e12; // no radio reaches there

struct Text
{
    Q_DECLARE_TR_FUNCTIONS(BookmarkField)
};

QString exact(double hertz)
{
    return QString::number(hertz, 'f', QLocale::FloatingPointShortest);
}

QString frequency(const Bookmark &bookmark)
{
    return exact(bookmark.reception.frequencyHz);
}

void setFrequency(Bookmark &bookmark, const QString &text)
{
    const auto hertz = parseNumber(text.trimmed());
    if (!hertz)
        throw Text::tr("the frequency '%1' is no number").arg(text);
    if (*hertz < 0.0 || *hertz > kHighestHz)
        throw Text::tr("the frequency %1 is out of range").arg(text);
    bookmark.reception.frequencyHz = *hertz;
}

QString mode(const Bookmark &bookmark)
{
    const ReceptionMode *mode = findMode(bookmark.reception.mode);
    return mode ? mode->name : QString();
}

void setMode(Bookmark &bookmark, const QString &text)
{
    const ReceptionMode *mode = findMode(text.trimmed());
    if (!mode)
        throw Text::tr("unknown mode '%1'").arg(text);
    Reception &reception = bookmark.reception;
    if (reception.mode != mode->mode || reception.filterLowHz >= reception.filterHighHz)
        reception = {reception.frequencyHz, mode->mode, mode->filterLowHz, mode->filterHighHz};
}

double width(const Bookmark &bookmark)
{
    return bookmark.reception.filterHighHz - bookmark.reception.filterLowHz;
}

QString filter(const Bookmark &bookmark)
{
    return exact(bookmark.reception.filterLowHz) + ':' + exact(bookmark.reception.filterHighHz);
}

void setFilter(Bookmark &bookmark, const QString &text)
{
    const QStringList edges = text.split(':');
    const auto low = parseNumber(edges.first().trimmed());
    const auto high = parseNumber(edges.last().trimmed());
    if (edges.size() != 2 || !low || !high)
        throw Text::tr("the filter '%1' is not two numbers as 300:2700").arg(text);
    if (*low >= *high)
        throw Text::tr("the filter %1 does not rise").arg(text);
    bookmark.reception.filterLowHz = *low;
    bookmark.reception.filterHighHz = *high;
}

template <QString Bookmark::*member>
QString plain(const Bookmark &bookmark)
{
    return bookmark.*member;
}

template <QString Bookmark::*member>
void setPlain(Bookmark &bookmark, const QString &text)
{
    bookmark.*member = text;
}

template <QString (*text)(const Bookmark &)>
QVariant byText(const Bookmark &bookmark)
{
    return text(bookmark);
}
} // namespace

const std::array<BookmarkField, 5> &bookmarkFields()
{
    constexpr auto name = plain<&Bookmark::name>;
    constexpr auto note = plain<&Bookmark::note>;
    static const std::array<BookmarkField, 5> kFields{{
        {"name", QT_TRANSLATE_NOOP("BookmarkField", "Name"), name, name, byText<name>,
            setPlain<&Bookmark::name>},
        {"frequency", QT_TRANSLATE_NOOP("BookmarkField", "Frequency"), frequency,
            [](const Bookmark &bookmark) { return formatHertz(bookmark.reception.frequencyHz); },
            [](const Bookmark &bookmark) { return QVariant(bookmark.reception.frequencyHz); },
            setFrequency},
        {"mode", QT_TRANSLATE_NOOP("BookmarkField", "Mode"), mode, mode, byText<mode>, setMode},
        {"filter", QT_TRANSLATE_NOOP("BookmarkField", "Filter"), filter,
            [](const Bookmark &bookmark) { return formatHertz(width(bookmark)); },
            [](const Bookmark &bookmark) { return QVariant(width(bookmark)); }, setFilter},
        {"note", QT_TRANSLATE_NOOP("BookmarkField", "Note"), note, note, byText<note>,
            setPlain<&Bookmark::note>},
    }};
    return kFields;
}

QString BookmarkField::titleText() const
{
    return Text::tr(title);
}
} // namespace host
