// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLocale>
#include <QObject>
#include <QString>
#include <QVector>

#include <memory>
#include <vector>

namespace host
{
/// The language of everything that a person reads in the window, and the way numbers are written
/// there. A change takes hold at once: translations are put in place, the default QLocale becomes
/// the language's, and changed() is told; widgets get Qt's own event of it besides.
///
/// Texts are English in the sources. Translations are resources of the program and of its plugin,
/// :/translations/NAME_CODE.qm; those of Qt's own buttons come with Qt, where they are installed.
///
/// What is written for programs (settings, tables, reports) is the same in each language. GUI
/// thread.
class Language : public QObject
{
    Q_OBJECT

public:
    static Language &instance();

    struct Choice
    {
        QString code; ///< "de"
        QString name; ///< in the language itself: "Deutsch"
    };

    /// Those that there are, English first.
    static QVector<Choice> choices();

    /// A code of choices(); anything else is the first of the desktop's languages that is there.
    void choose(const QString &code);

    /// What was chosen; empty for the desktop's.
    const QString &chosen() const { return m_chosen; }

    /// The code of the one in use.
    const QString &code() const { return m_code; }

    /// Once more what was chosen: a plugin has come that brings words of its own.
    void renew() { choose(m_chosen); }

signals:
    void changed();

private:
    Language();
    ~Language() override;

    struct Words;
    void install(const QString &path);

    QString m_chosen;
    QString m_code = QStringLiteral("en");
    std::vector<std::unique_ptr<Words>> m_translators;
};

/// Calls `words` now and after each change of language as long as the listener lives: how a text
/// that stays is set.
template <typename Words>
void say(QObject *listener, Words words)
{
    words();
    QObject::connect(&Language::instance(), &Language::changed, listener, words);
}

/// A number for a reader, in the way of the language and without groups of digits: "7,125".
inline QString numberText(double value, int decimals)
{
    return QLocale().toString(value, 'f', decimals);
}
} // namespace host
