// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/Language.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QLibraryInfo>
#include <QTranslator>

#include <algorithm>

/// The texts of a library come in by hand; a namespace would hide the name that is called.
static void useTranslations()
{
    Q_INIT_RESOURCE(translations);
}

namespace host
{
/// A translation in use. The translator reads in the bytes all the time, and those of a plugin's
/// resource would go with the plugin.
struct Language::Words
{
    QByteArray bytes;
    QTranslator translator;
};

namespace
{
const QString kFolder = QStringLiteral(":/translations");
const QString kProgram = QStringLiteral("velmora_");
const QString kEnglish = QStringLiteral("en");

QString languageOf(const QString &code)
{
    return QString(code).replace('-', '_').section('_', 0, 0);
}

bool isThere(const QString &code)
{
    const auto all = Language::choices();
    return std::any_of(
        all.begin(), all.end(), [&code](const auto &choice) { return choice.code == code; });
}

QString ofDesktop()
{
    for (const QString &name : QLocale::system().uiLanguages())
        if (const QString code = languageOf(name); isThere(code))
            return code;
    return kEnglish;
}

/// With the desktop's country, if it is one where the language is spoken: they differ in numbers.
QLocale localeOf(const QString &code)
{
    QLocale locale = QLocale::system();
    if (languageOf(locale.name()) != code)
        locale = QLocale(code);
    locale.setNumberOptions(QLocale::OmitGroupSeparator);
    return locale;
}
} // namespace

Language::Language()
{
    useTranslations();
}

Language::~Language() = default;

Language &Language::instance()
{
    static Language language;
    return language;
}

QVector<Language::Choice> Language::choices()
{
    useTranslations();
    QVector<Choice> choices{{kEnglish, QStringLiteral("English")}};
    for (const QString &file : QDir(kFolder).entryList({kProgram + "*.qm"}, QDir::Files)) {
        const QString code = file.mid(kProgram.size()).remove(".qm");
        if (code != kEnglish) // of which the file has the plurals
            choices.append({code, QLocale(code).nativeLanguageName()});
    }
    return choices;
}

void Language::choose(const QString &code)
{
    m_chosen = isThere(code) ? code : QString();
    m_code = m_chosen.isEmpty() ? ofDesktop() : m_chosen;
    QLocale::setDefault(localeOf(m_code));
    m_translators.clear(); // each takes itself out
    install(QLibraryInfo::location(QLibraryInfo::TranslationsPath) + "/qtbase_" + m_code + ".qm");
    const QDir ours(kFolder);
    for (const QString &file : ours.entryList({"*_" + m_code + ".qm"}, QDir::Files))
        install(ours.filePath(file));
    emit changed();
}

void Language::install(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return;
    auto words = std::make_unique<Words>();
    words->bytes = file.readAll();
    const auto *data = reinterpret_cast<const uchar *>(words->bytes.constData());
    if (words->translator.load(data, words->bytes.size())
        && QCoreApplication::installTranslator(&words->translator))
        m_translators.push_back(std::move(words));
}
} // namespace host
