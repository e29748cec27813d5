// SPDX-License-Identifier: GPL-3.0-or-later
#include "rig/RigSession.h"

#include "rig/RigVfo.h"

#include <cctype>
#include <cstring>

namespace host
{
namespace
{
constexpr char kPlain = 0; // no separator: the answer has no names

QByteArray reportOf(RigError error)
{
    return "RPRT " + QByteArray::number(int(error));
}

bool isOneOf(char letter, const char *letters)
{
    return letter && std::strchr(letters, letter);
}

/// "Name: value" for each answer, between echo and report.
QByteArray extended(
    const RigCommand &command, const RigCall &call, bool isListing, RigError error, char separator)
{
    QByteArray text = command.name + QByteArray(":");
    for (const QByteArray &argument : call.arguments)
        text += ' ' + argument;
    text += separator;
    for (int i = 0; i < call.answers.size(); ++i) {
        if (!isListing && *command.answers[std::size_t(i)])
            text += command.answers[std::size_t(i)] + QByteArray(": ");
        text += call.answers[i] + separator;
    }
    return text + reportOf(error) + '\n';
}

QByteArray plain(const RigCommand &command, const RigCall &call, RigError error)
{
    QByteArray text;
    if (error == RigError::None)
        for (const QByteArray &answer : call.answers)
            text += answer + '\n';
    if (error != RigError::None || command.answers.empty())
        text += reportOf(error) + '\n';
    return text;
}
} // namespace

/// A line, read from left to right.
class RigSession::Words
{
public:
    explicit Words(const QByteArray &line) : m_line(line) { }

    /// The next sign that is no blank, 0 at the end. It stays.
    char peek()
    {
        while (m_at < m_line.size() && std::isspace(uchar(m_line[m_at])))
            ++m_at;
        return m_at < m_line.size() ? m_line[m_at] : '\0';
    }

    char take()
    {
        const char letter = peek();
        m_at += m_at < m_line.size();
        return letter;
    }

    /// Up to the next blank; empty at the end.
    QByteArray word()
    {
        peek();
        return takeWhile([](uchar letter) { return !std::isspace(letter); });
    }

    /// The letters of a long name.
    QByteArray name()
    {
        return takeWhile([](uchar letter) { return std::isalnum(letter) || letter == '_'; });
    }

    /// The VFO that the next word names; else the active one, and the word stays.
    VfoId vfo(VfoId active)
    {
        peek();
        const int begin = m_at;
        const auto id = rigvfo::find(word(), active);
        if (!id)
            m_at = begin;
        return id.value_or(active);
    }

    void drop() { m_at = m_line.size(); }

private:
    template <typename Belongs>
    QByteArray takeWhile(Belongs belongs)
    {
        const int begin = m_at;
        while (m_at < m_line.size() && belongs(uchar(m_line[m_at])))
            ++m_at;
        return m_line.mid(begin, m_at - begin);
    }

    const QByteArray &m_line;
    int m_at = 0;
};

QByteArray RigSession::answer(const QByteArray &line)
{
    Words words(line);
    QByteArray text;
    while (!m_isOver && words.peek() && words.peek() != '#')
        text += execute(words);
    return text;
}

QByteArray RigSession::execute(Words &words)
{
    char separator = kPlain;
    if (isOneOf(words.peek(), "+;|,")) {
        separator = words.take();
        if (separator == '+')
            separator = '\n';
    }
    const char letter = words.take();
    const RigCommand *command =
        letter == '\\' ? RigCommand::find(words.name()) : RigCommand::find(letter);
    if (command)
        return run(*command, words, separator);
    words.drop(); // what follows may be its arguments
    return reportOf(RigError::Invalid) + '\n';
}

QByteArray RigSession::run(const RigCommand &command, Words &words, char separator)
{
    RigCall call{m_target, m_target.active(), {}};
    RigError error = RigError::None;
    if (command.byVfo)
        call.vfo = words.vfo(call.vfo);
    bool isListing = false;
    while (call.arguments.size() < int(command.arguments.size()) && !isListing) {
        call.arguments.append(words.word());
        isListing = command.choices && call.arguments.first() == "?";
        if (call.arguments.last().isEmpty()) {
            call.arguments.removeLast();
            error = RigError::Invalid;
            break;
        }
    }
    if (isListing)
        call.answers.append(command.choices());
    else if (error == RigError::None)
        error = command.run(call);
    if (error != RigError::None)
        words.drop();
    m_isOver = call.isOver;
    return separator == kPlain ? plain(command, call, error)
                               : extended(command, call, isListing, error, separator);
}
} // namespace host
