// SPDX-License-Identifier: GPL-3.0-or-later
#include "Catalogue.h"

#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace
{
using test::Catalogue;

const QString kRoot = QStringLiteral(SOURCE_FOLDER "/");

struct Case
{
    const char *file;
    const char *sources;
    bool isPluralOnly; ///< English, of which the sources have the rest
    int least;         ///< texts, so that a look at the wrong place is seen
};

const Case kCases[] = {
    {"velmora_de", "host", false, 300},
    {"velmora_en", "host", true, 4},
    {"ZephrinNano_de", "plugins/device/ZephrinNano/source", false, 150},
};

class TranslationsTest : public testing::TestWithParam<Case>
{
protected:
    static Catalogue ours()
    {
        return Catalogue::read(kRoot + "translations/" + GetParam().file + ".ts");
    }

    /// What a translator would get now.
    static Catalogue fresh()
    {
        const QTemporaryDir folder;
        const QString file = folder.filePath("fresh.ts");
        QStringList arguments{"-silent", kRoot + GetParam().sources, "-ts", file};
        if (GetParam().isPluralOnly)
            arguments.prepend("-pluralonly");
        QProcess lupdate;
        lupdate.start(LUPDATE, arguments);
        EXPECT_TRUE(lupdate.waitForFinished(60000));
        EXPECT_EQ(lupdate.exitCode(), 0) << lupdate.readAllStandardError().toStdString();
        return Catalogue::read(file);
    }
};

/// In the order of the text, so that a translation may have them in another one.
QStringList placeholdersOf(const QString &text)
{
    static const QRegularExpression kPlaceholder("%L?(\\d|n)|</?\\w+");
    QStringList found;
    for (auto match = kPlaceholder.globalMatch(text); match.hasNext();)
        found += match.next().captured();
    found.sort();
    return found;
}

bool hasMnemonic(const QString &text)
{
    return QString(text).remove("&&").contains('&');
}

/// What a text is joined with stands before and after it.
QString endsOf(const QString &text)
{
    const bool isAfter = text.startsWith(' ') || text.startsWith(", ");
    const bool isBefore = text.endsWith(' ') || text.endsWith(':') || text.endsWith(QChar(0x2026));
    return (isAfter ? text.left(1) : QString()) + '|' + (isBefore ? text.right(1) : QString());
}
} // namespace

TEST_P(TranslationsTest, EachTextOfTheSourcesIsThereAndNoOther)
{
    const auto wanted = fresh().texts.keys();
    const auto translated = ours().texts;
    ASSERT_GE(wanted.size(), GetParam().least);
    for (const auto &text : wanted)
        EXPECT_TRUE(translated.contains(text)) << "new, run lupdate: " << text.context.toStdString()
                                               << ": " << text.source.toStdString();
    for (const auto &text : translated.keys())
        EXPECT_TRUE(wanted.contains(text))
            << "gone: " << text.context.toStdString() << ": " << text.source.toStdString();
}

TEST_P(TranslationsTest, EachIsFinishedAndKeepsWhatTheProgramPutsIn)
{
    const auto texts = ours().texts;
    for (auto text = texts.begin(); text != texts.end(); ++text) {
        const QString &source = text.key().source;
        EXPECT_TRUE(text->isFinished) << source.toStdString();
        const bool isPlural = source.contains("%n");
        EXPECT_EQ(text->forms.size(), isPlural ? 2 : 1) << source.toStdString();
        for (const QString &form : text->forms) {
            EXPECT_FALSE(form.isEmpty()) << source.toStdString();
            EXPECT_EQ(hasMnemonic(form), hasMnemonic(source)) << form.toStdString();
            EXPECT_EQ(endsOf(form), endsOf(source)) << form.toStdString();
            QStringList expected = placeholdersOf(source);
            if (isPlural && &form == &text->forms.first() && !form.contains("%n"))
                expected.removeAll("%n"); // of one thing its number need not be said
            EXPECT_EQ(placeholdersOf(form), expected) << form.toStdString();
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Files, TranslationsTest, testing::ValuesIn(kCases),
    [](const auto &info) { return std::string(info.param.file); });
