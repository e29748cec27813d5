// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QCommandLineParser>
#include <optional>

namespace host
{
/// Turns the texts of parsed options into numbers. What does not fit is thrown as a UsageError that
/// names the option.
class OptionReader
{
public:
    /// parser must outlive the reader.
    explicit OptionReader(const QCommandLineParser &parser) : m_parser(parser) { }

    bool isSet(const char *option) const { return m_parser.isSet(option); }
    QString text(const char *option) const { return m_parser.value(option); }

    /// A name of a file or folder, empty if the option is not given.
    QString file(const char *option) const;

    double number(const char *option, double fallback) const;
    double numberIn(const char *option, double fallback, double lowest, double highest) const;

    /// Empty if the option is not given.
    std::optional<double> find(const char *option, double lowest, double highest) const;
    std::optional<int> findInteger(const char *option, int lowest, int highest) const;

    /// Refuses an option that is given without the one that it belongs to.
    void require(const char *option, const char *needed) const;

private:
    const QCommandLineParser &m_parser;
};
} // namespace host
