// SPDX-License-Identifier: GPL-3.0-or-later
#include "WindowTexts.h"

#include "window/controls/ChoiceGrid.h"
#include "window/frame/MainWindow.h"

#include "radio/TestRadio.h"

#include "host_interfaces/DeviceFunctionsAbstract.h"

#include "settings/Language.h"

#include <QAccessible>
#include <QApplication>
#include <QDialog>
#include <QFile>
#include <QTest>
#include <QToolButton>

#include <gtest/gtest.h>

namespace
{
using namespace host;

constexpr char kBand[] = "band centre=7.1M noise=-140\n";
constexpr int kMostTabs = 300;

class AccessibilityTest : public testing::Test
{
protected:
    void SetUp() override
    {
        test::useUsualFont();
        ASSERT_TRUE(m_bench.start()) << m_bench.radio().error().toStdString();
        m_window = std::make_unique<MainWindow>(m_bench.radio(), m_bench.path("bookmarks.csv"));
        m_window->resize(1280, 800);
        m_window->show();
        QApplication::setActiveWindow(m_window.get());
        test::serve(200);
    }

    ~AccessibilityTest() override
    {
        m_window.reset();
        Language::instance().choose("en");
    }

    void openDialogs()
    {
        for (QAction *action : m_window->findChildren<QAction *>())
            if (QStringList{"Ctrl+,", "Ctrl+E", "Ctrl+N", "Ctrl+B", "Ctrl+K"}.contains(
                    action->shortcut().toString())
                || action->text().startsWith("Remote"))
                action->trigger();
    }

    /// What a key can stand on, internals of Qt's own widgets left out.
    QVector<QWidget *> stops(const QWidget &window) const
    {
        QVector<QWidget *> found;
        for (QWidget *widget : window.findChildren<QWidget *>())
            if ((widget->focusPolicy() & Qt::TabFocus) && !widget->focusProxy()
                && !widget->objectName().startsWith("qt_") && !widget->inherits("QComboBoxListView")
                && !qobject_cast<QMenu *>(
                    widget->window())) // the device's menu has tests of its own
                found += widget;
        return found;
    }

    test::TestRadio m_bench{kBand};
    std::unique_ptr<MainWindow> m_window; // ends first
};

std::string describe(const QWidget &widget)
{
    return QString("%1 \"%2\" %3")
        .arg(widget.metaObject()->className(), widget.accessibleName(), widget.objectName())
        .toStdString();
}
} // namespace

TEST_F(AccessibilityTest, EachControlHasANameAndARole)
{
    openDialogs();
    const QVector<QAccessible::Role> kNothing = {
        QAccessible::NoRole, QAccessible::Client, QAccessible::Pane, QAccessible::Window};
    for (const char *language : {"en", "de"}) {
        Language::instance().choose(language);
        test::serve(100);
        const auto all = stops(*m_window);
        EXPECT_GT(all.size(), 150);
        for (QWidget *widget : all) {
            const QAccessibleInterface *seen = QAccessible::queryAccessibleInterface(widget);
            ASSERT_NE(seen, nullptr) << describe(*widget);
            EXPECT_FALSE(seen->text(QAccessible::Name).isEmpty()) << describe(*widget);
            EXPECT_FALSE(kNothing.contains(seen->role())) << describe(*widget);
        }
        RecordProperty("controls", int(all.size()));
        std::printf("%d controls\n", int(all.size()));
    }
}

TEST_F(AccessibilityTest, TheFrequencyIsANumberThatCanBeSet)
{
    QWidget *display = nullptr;
    for (QWidget *widget : stops(*m_window))
        if (widget->accessibleName() == "Frequency of VFO A")
            display = widget;
    ASSERT_NE(display, nullptr);
    QAccessibleInterface *seen = QAccessible::queryAccessibleInterface(display);
    EXPECT_EQ(seen->role(), QAccessible::SpinBox);
    QAccessibleValueInterface *value = seen->valueInterface();
    ASSERT_NE(value, nullptr);
    value->setCurrentValue(7.0875e6);
    EXPECT_EQ(m_bench.radio().frequencyHz(), 7.0875e6);
    EXPECT_EQ(value->currentValue(), 7.0875e6);
    EXPECT_EQ(value->minimumValue(), m_bench.radio().lowestHz());
    EXPECT_EQ(value->maximumValue(), m_bench.radio().highestHz());
}

/// By the key itself, round the window: rows from the top, each from the left, and the panels in
/// the order in which they stand.
TEST_F(AccessibilityTest, TabReachesEverythingInReadingOrder)
{
    QVector<QWidget *> wanted;
    for (QWidget *widget : stops(*m_window))
        if (widget->isVisible() && widget->isEnabled() && widget->window() == m_window.get())
            wanted += widget;
    ASSERT_GT(wanted.size(), 30);
    QVector<QWidget *> reached;
    wanted.first()->setFocus();
    for (int i = 0; i < kMostTabs; ++i) {
        QWidget *now = QApplication::focusWidget();
        if (!now || (!reached.isEmpty() && now == reached.first()))
            break;
        EXPECT_FALSE(reached.contains(now)) << "a ring: " << describe(*now);
        if (reached.contains(now))
            break;
        reached += now;
        QTest::keyClick(now, Qt::Key_Tab);
    }
    for (const QWidget *widget : qAsConst(wanted))
        EXPECT_TRUE(reached.contains(const_cast<QWidget *>(widget))) << describe(*widget);

    // From the top left one on.
    const auto placeOf = [this](const QWidget *widget) {
        return QRect(widget->mapTo(m_window.get(), QPoint()), widget->size());
    };
    const auto isTopLeft = [&](const QWidget *a, const QWidget *b) {
        return placeOf(a).top() + placeOf(a).left() < placeOf(b).top() + placeOf(b).left();
    };
    std::rotate(reached.begin(), std::min_element(reached.begin(), reached.end(), isTopLeft),
        reached.end());
    for (int i = 1; i < reached.size(); ++i) {
        const QRect before = placeOf(reached[i - 1]), after = placeOf(reached[i]);
        const bool isRight = after.left() >= before.right();
        const bool isBelow = after.top() >= before.bottom();
        EXPECT_TRUE(isRight || isBelow)
            << describe(*reached[i]) << " comes after " << describe(*reached[i - 1]);
    }
    std::printf("%d tab stops\n", int(reached.size()));
}

TEST_F(AccessibilityTest, ArrowsReachEachButtonOfAChoiceAndSpaceChooses)
{
    const auto grids = m_window->findChildren<ChoiceGrid *>();
    EXPECT_EQ(grids.size(), 4); // bands, modes, filters, gain control
    const auto key = [](Qt::Key key) { QTest::keyClick(QApplication::focusWidget(), key); };
    m_bench.radio().setFrequency(5e6); // in no band: no button is down
    test::serve(50);
    for (ChoiceGrid *grid : grids) {
        grid->button(0).setFocus();
        const Mode before = m_bench.radio().mode();
        for (int i = 1; i < grid->count(); ++i) {
            key(Qt::Key_Right);
            EXPECT_TRUE(grid->button(i).hasFocus()) << describe(grid->button(i));
        }
        for (int i = grid->count() - 2; i >= 0; --i)
            key(Qt::Key_Left);
        EXPECT_TRUE(grid->button(0).hasFocus());
        EXPECT_EQ(m_bench.radio().mode(), before); // nothing was chosen on the way
    }
    grids[1]->button(1).setFocus();
    key(Qt::Key_Space);
    EXPECT_EQ(m_bench.radio().mode(), m_bench.radio().functions().listModes()[1].mode);
}

TEST_F(AccessibilityTest, NoLetterIsTwiceInAMenuOrADialog)
{
    openDialogs();
    for (const char *language : {"en", "de"}) {
        Language::instance().choose(language);
        test::serve(100);
        QVector<QWidget *> menus{m_window->menuBar()};
        for (QMenu *menu : m_window->findChildren<QMenu *>()) {
            emit menu->aboutToShow();
            menus += menu;
        }
        for (const QWidget *menu : menus) {
            QStringList texts;
            for (const QAction *action : menu->actions())
                texts += action->text();
            EXPECT_EQ(test::twice(texts), QString())
                << language << ": " << texts.join(", ").toStdString();
        }
        for (const QDialog *dialog : m_window->findChildren<QDialog *>()) {
            QStringList texts;
            for (const QWidget *widget : dialog->findChildren<QWidget *>())
                if (widget->isVisible() && !qobject_cast<const QMenu *>(widget))
                    texts += widget->property("text").toString();
            EXPECT_EQ(test::twice(texts), QString())
                << language << ": " << texts.join(", ").toStdString();
        }
    }
}

/// The menus are the table of keys; the help and the guide say the same.
TEST_F(AccessibilityTest, EachKeyIsOnceInTheHelpAndInTheGuide)
{
    const auto rows = m_window->shortcuts();
    QStringList keys;
    for (const QAction *action : m_window->findChildren<QAction *>())
        if (!action->shortcut().isEmpty())
            keys += action->shortcut().toString(QKeySequence::NativeText);
    EXPECT_EQ(keys.removeDuplicates(), 0);
    QString table;
    for (const auto &row : rows) {
        keys.removeAll(row.second);
        table += "| " + row.first + " | " + row.second + " |\n";
    }
    EXPECT_TRUE(keys.isEmpty()) << "not in the help: " << keys.join(' ').toStdString();
    QFile guide(SOURCE_FOLDER "/docs/guide/keys.md");
    ASSERT_TRUE(guide.open(QIODevice::ReadOnly));
    EXPECT_TRUE(QString::fromUtf8(guide.readAll()).contains(table)) << "docs/guide/keys.md lacks:\n"
                                                                    << table.toStdString();
}
