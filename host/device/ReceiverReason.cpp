// SPDX-License-Identifier: GPL-3.0-or-later
#include "device/ReceiverReason.h"

#include <QCoreApplication>
#include <QRegularExpression>
#include <QStringList>

#include <optional>

namespace host
{
namespace
{
/// %1 and so on stand for what is different each time. Where two fit the first one counts, so the
/// one that says more comes first.
const char *const kTexts[] = {
    // Recordings.
    QT_TRANSLATE_NOOP("ReceiverReason", "cannot open the recording"),
    QT_TRANSLATE_NOOP("ReceiverReason", "not a WAV file"),
    QT_TRANSLATE_NOOP("ReceiverReason", "no \"fmt \" chunk"),
    QT_TRANSLATE_NOOP("ReceiverReason", "no samples"),
    QT_TRANSLATE_NOOP("ReceiverReason", "%1 channels, an IQ recording has 2"),
    QT_TRANSLATE_NOOP("ReceiverReason", "WAV format %1 with %2 bits is not supported"),
    QT_TRANSLATE_NOOP("ReceiverReason", "unknown recording format \"%1\" (%2)"),
    QT_TRANSLATE_NOOP("ReceiverReason", "a sample rate is needed"),
    QT_TRANSLATE_NOOP(
        "ReceiverReason", "a sample rate of %1 Hz, it must be %2 to %3, in audio file %4"),
    QT_TRANSLATE_NOOP("ReceiverReason", "a sample rate of %1 Hz, it must be %2 to %3"),
    QT_TRANSLATE_NOOP("ReceiverReason", "a frequency of %1 Hz, it must be %2 to %3"),
    QT_TRANSLATE_NOOP(
        "ReceiverReason", "its header has another rate than the %1 Hz that are given: %2 Hz"),
    QT_TRANSLATE_NOOP("ReceiverReason", "the file is shorter than its header says"),
    QT_TRANSLATE_NOOP("ReceiverReason", "the file is longer than its header says"),
    QT_TRANSLATE_NOOP(
        "ReceiverReason", "the header was never written: the recording was broken off"),
    // Descriptions of a band.
    QT_TRANSLATE_NOOP("ReceiverReason", "cannot open the band file"),
    QT_TRANSLATE_NOOP("ReceiverReason", "unknown line \"%1\" (%2)"),
    QT_TRANSLATE_NOOP("ReceiverReason", "no band line"),
    QT_TRANSLATE_NOOP("ReceiverReason", "a second band line"),
    QT_TRANSLATE_NOOP("ReceiverReason", "the band line must come before the first station"),
    QT_TRANSLATE_NOOP("ReceiverReason", "a band needs %1"),
    QT_TRANSLATE_NOOP("ReceiverReason", "a station needs either %1 or %2"),
    QT_TRANSLATE_NOOP("ReceiverReason", "a station needs %1"),
    QT_TRANSLATE_NOOP("ReceiverReason", "a cw station needs %1"),
    QT_TRANSLATE_NOOP("ReceiverReason", "the text of a cw station is empty"),
    QT_TRANSLATE_NOOP("ReceiverReason", "this station needs one of %1"),
    QT_TRANSLATE_NOOP("ReceiverReason", "unknown mode \"%1\" (%2)"),
    QT_TRANSLATE_NOOP("ReceiverReason", "\"%1\" needs a value: %2"),
    QT_TRANSLATE_NOOP("ReceiverReason", "the text of \"%1\" has no closing quote"),
    QT_TRANSLATE_NOOP("ReceiverReason", "\"%1\" is given twice"),
    QT_TRANSLATE_NOOP("ReceiverReason", "\"%1\" must be above 0 and at most 5000 Hz, not \"%2\""),
    QT_TRANSLATE_NOOP("ReceiverReason", "\"%1\" must be yes or no, not \"%2\""),
    QT_TRANSLATE_NOOP("ReceiverReason", "\"%1\" must be %2 to %3, not \"%4\""),
    QT_TRANSLATE_NOOP("ReceiverReason", "\"%1\" is not a number: \"%2\""),
    QT_TRANSLATE_NOOP("ReceiverReason", "a %1 has no \"%2\" here"),
    QT_TRANSLATE_NOOP("ReceiverReason", "cannot read audio file %1"),
    QT_TRANSLATE_NOOP("ReceiverReason", "no samples in audio file %1"),
};

/// The text with what stands for its %1 and so on as groups, after a file's name or nothing.
QRegularExpression patternOf(const QString &text)
{
    const QRegularExpression place(R"(%\d)");
    QStringList parts;
    for (const QString &part : text.split(place))
        parts += QRegularExpression::escape(part);
    return QRegularExpression("^(|.*?: )" + parts.join("(.+?)") + '$');
}

std::optional<QString> translated(const char *text, const QString &english)
{
    const auto match = patternOf(text).match(english);
    if (!match.hasMatch())
        return std::nullopt;
    QString own = QCoreApplication::translate("ReceiverReason", text);
    // At once: what is put in may have a %1 of its own.
    for (int i = match.lastCapturedIndex(); i > 1; --i)
        own.replace('%' + QString::number(i - 1), match.captured(i));
    return match.captured(1) + own;
}

QString translatedPart(const QString &english)
{
    for (const char *text : kTexts)
        if (const auto own = translated(text, english))
            return *own;
    return english;
}
} // namespace

QString receiverReason(const QString &english)
{
    // As a whole first: a file's name may have a "; " of its own.
    if (const QString own = translatedPart(english); own != english)
        return own;
    QStringList parts = english.split("; ");
    for (QString &part : parts)
        part = translatedPart(part);
    return parts.join("; ");
}
} // namespace host
