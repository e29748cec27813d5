// SPDX-License-Identifier: GPL-3.0-or-later
#include "WindowTexts.h"

#include "window/frame/MainWindow.h"
#include "window/frequency/FrequencyDisplay.h"
#include "window/meter/HealthBar.h"

#include "radio/Readings.h"
#include "radio/TestRadio.h"

#include "host_interfaces/DeviceFunctionsAbstract.h"

#include "settings/Language.h"
#include "translations/Catalogue.h"

#include <QApplication>
#include <QDialog>
#include <QFile>
#include <QTest>

#include <gtest/gtest.h>

namespace
{
using namespace host;

constexpr char kBand[] = "band centre=7.1M noise=-140\n";
constexpr int kSettleMs = 400;     // some readings, which write their labels
constexpr int kTellAgainMs = 2500; // in which device and sound card tell how they are

class LanguageTest : public testing::Test
{
protected:
    void SetUp() override
    {
        test::useUsualFont();
        ASSERT_TRUE(m_bench.start()) << m_bench.radio().error().toStdString();
    }

    ~LanguageTest() override
    {
        m_window.reset();
        Language::instance().choose("en");
    }

    void open(const QSize &size)
    {
        m_window = std::make_unique<MainWindow>(m_bench.radio(), m_bench.path("bookmarks.csv"));
        m_window->resize(size);
        m_window->show();
        test::serve(kSettleMs);
    }

    /// Every dialog that stays open, and every menu that is filled when it is shown.
    void openAll()
    {
        for (QAction *action : m_window->findChildren<QAction *>())
            if (QStringList{"Ctrl+,", "Ctrl+E", "Ctrl+N", "Ctrl+B", "Ctrl+K"}.contains(
                    action->shortcut().toString())
                || action->text().startsWith("Remote"))
                action->trigger();
        for (QMenu *menu : m_window->findChildren<QMenu *>())
            emit menu->aboutToShow();
    }

    test::TestRadio m_bench{kBand};
    std::unique_ptr<MainWindow> m_window; // ends first
};

/// Those of the catalogues that read otherwise in German.
QStringList englishTexts()
{
    QStringList texts;
    for (const char *file : {"velmora_de", "ZephrinNano_de"}) {
        const auto catalogue =
            test::Catalogue::read(QString(SOURCE_FOLDER "/translations/%1.ts").arg(file));
        QStringList same; // a word that is German, too, in another place
        for (auto text = catalogue.texts.begin(); text != catalogue.texts.end(); ++text)
            same += text->forms;
        for (const auto &text : catalogue.texts.keys())
            if (!same.contains(text.source))
                texts += text.source;
    }
    return texts;
}
} // namespace

TEST_F(LanguageTest, AnotherLanguageTakesHoldInTheOpenWindow)
{
    open({1024, 700});
    openAll();
    m_bench.radio().setFrequency(7.0912e6);
    const auto hasText = [this](const QString &text) {
        return test::textsIn(*m_window).contains(text);
    };
    EXPECT_TRUE(hasText("&File") && hasText("Volume") && hasText("Noise reduction"));
    Language::instance().choose("de");
    test::serve(kTellAgainMs);
    openAll(); // menus that are filled anew
    test::serve(kSettleMs);
    for (const char *text :
        {"&Datei", "Lautstärke", "Betriebsart USB", "Lesezeichen", "Notchfilter", "Rauschminderung",
            "Frequenz von VFO A", "Tasten und Maus", "Schließen", "2,5 MHz"})
        EXPECT_TRUE(hasText(QString::fromUtf8(text)) || hasText('&' + QString::fromUtf8(text))
            || m_window->shortcuts().contains({text, "F1"}))
            << text;
    const QStringList english = englishTexts();
    ASSERT_GT(english.size(), 300);
    const QStringList ofDevice(m_bench.radio().functions().listAgc());
    for (const QString &text : test::textsIn(*m_window)) {
        EXPECT_FALSE(english.contains(text) && !ofDevice.contains(text))
            << "still English: " << text.toStdString();
    }
    for (const auto &row : m_window->shortcuts())
        EXPECT_FALSE(english.contains(row.first) || english.contains(row.second))
            << row.first.toStdString();
    EXPECT_EQ(m_bench.radio().frequencyHz(), 7.0912e6);
    Language::instance().choose("en");
    test::serve(kSettleMs);
    EXPECT_TRUE(hasText("&File") && hasText("Volume") && hasText("Noise reduction"));
}

TEST_F(LanguageTest, ItIsKeptAndItsNumbersHaveItsComma)
{
    Language::instance().choose("de");
    open({1024, 700});
    EXPECT_EQ(numberText(1234.5, 1), "1234,5");
    EXPECT_FALSE(test::textsIn(*m_window).filter(QRegExp("^7,000 bis 7,\\d{3} MHz")).isEmpty());
    m_window.reset();
    EXPECT_EQ(m_bench.radio().settings().value("Window/language"), "de");
    Language::instance().choose("nonsense");
    EXPECT_EQ(Language::instance().chosen(), QString());
    EXPECT_EQ(Language::instance().code(), "en"); // of the desktop of the tests
}

namespace
{
void expectLabelsWhole(const MainWindow &window)
{
    int seen = 0;
    for (const QWidget *widget : window.findChildren<QWidget *>()) {
        if (!widget->isVisible() || widget->sizePolicy().horizontalPolicy() == QSizePolicy::Ignored)
            continue;
        const auto *label = qobject_cast<const QLabel *>(widget);
        const bool isText = (label && !label->wordWrap())
            || qobject_cast<const QAbstractButton *>(widget)
            || qobject_cast<const QComboBox *>(widget);
        if (!isText)
            continue;
        ++seen;
        EXPECT_GE(widget->width(), widget->minimumSizeHint().width())
            << widget->property("text").toString().toStdString();
        if (label) {
            EXPECT_GE(widget->width(), widget->sizeHint().width()) << label->text().toStdString();
        }
    }
    EXPECT_GT(seen, 40);
}

/// Buttons that share a row evenly may be narrower than they would be, but not than the text.
void expectButtonsWhole(const MainWindow &window)
{
    constexpr int kEdges = 2; // of the button
    for (const QAbstractButton *button : window.findChildren<QAbstractButton *>()) {
        QFont font = button->font();
        font.setBold(button->isCheckable()); // while it is down
        const int text = QFontMetrics(font).size(Qt::TextShowMnemonic, button->text()).width();
        if (button->isVisible()) {
            EXPECT_GE(button->width(), text + kEdges) << button->text().toStdString();
        }
    }
}
} // namespace

/// In the smallest window that the program is made for, also when more was lost than one reads.
TEST_F(LanguageTest, NothingIsCutOff)
{
    Readings bad;
    bad.droppedSamples = 123'456'789'012;
    bad.lostSamples = 98'765'432'109;
    for (const char *language : {"en", "de"}) {
        SCOPED_TRACE(language);
        Language::instance().choose(language);
        open({1024, 700});
        EXPECT_LE(m_window->width(), 1024);
        expectLabelsWhole(*m_window);
        expectButtonsWhole(*m_window);
        auto *losses = m_window->findChild<QLabel *>("losses");
        QObject::disconnect(
            &m_bench.radio(), nullptr, losses->parent(), nullptr); // which has lost nothing
        losses->setText("<b>" + HealthBar::lossesText(bad) + "</b>");
        test::serve(kSettleMs);
        EXPECT_LE(m_window->width(), 1024);
        expectLabelsWhole(*m_window);
        m_window.reset();
    }
}

/// Each with a file that it is said of.
TEST_F(LanguageTest, WhatTheReceiverSaysOfAFileIsTranslated)
{
    const QByteArray band = "band centre=7.1M\n";
    const QByteArray station = band + "station offset=0 level=-20 ";
    const QByteArray riff("RIFF\x24\0\0\0WAVEfmt \x10\0\0\0", 20);
    const QByteArray rate("\x80\xbb\0\0\0\0\0\0\0\0", 10); // 48 kHz
    const struct
    {
        const char *name;
        QByteArray content;
    } files[] = {
        {"text.wav", "no header"},
        {"empty.wav", QByteArray("RIFF\x04\0\0\0WAVE", 12)},
        {"mono.wav",
            riff + QByteArray("\1\0\1\0", 4) + rate + QByteArray("\x10\0data\4\0\0\0abcd", 14)},
        {"bits.wav",
            riff + QByteArray("\1\0\2\0", 4) + rate + QByteArray("\x0c\0data\4\0\0\0abcd", 14)},
        {"none.band", ""},
        {"unknown.band", "tower\n"},
        {"late.band", "station offset=0\n"},
        {"twice.band", band + band},
        {"nowhere.band", "band noise=-100\n"},
        {"place.band", band + "station level=-20\n"},
        {"level.band", band + "station offset=0\n"},
        {"mode.band", station + "mode=xyz\n"},
        {"keys.band", station + "mode=cw\n"},
        {"silent.band", station + "mode=cw text=\"\"\n"},
        {"voice.band", station + "mode=usb\n"},
        {"clip.band", station + "mode=usb audio=missing.wav\n"},
        {"high.band", station + "mode=usb tone=9000\n"},
        {"flag.band", "band centre=7.1M repeat=maybe\n"},
        {"range.band", "band centre=7.1M noise=5\n"},
        {"number.band", "band centre=abc\n"},
        {"value.band", "band centre\n"},
        {"quote.band", station + "mode=cw text=\"CQ\n"},
        {"double.band", "band centre=1M centre=2M\n"},
        {"foreign.band", "band centre=7.1M colour=red\n"},
    };
    for (const auto &[name, content] : files) {
        SCOPED_TRACE(name);
        const QString path = m_bench.path(name);
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
        file.close();
        const auto said = [&](const char *language) {
            Language::instance().choose(language);
            EXPECT_FALSE(m_bench.radio().openScene(path));
            return QString(m_bench.radio().error()).remove(path);
        };
        const QString english = said("en"), german = said("de");
        EXPECT_NE(english, german) << english.toStdString();
        EXPECT_FALSE(german.contains('%')) << german.toStdString();
    }
}
