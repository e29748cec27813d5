// SPDX-License-Identifier: GPL-3.0-or-later
#include "panel/PanelText.h"
#include "panel/PanelMap.h"

#include <functional>
#include <gtest/gtest.h>

namespace
{
using host::PanelRow;
using host::PanelText;
using Kind = PanelRow::Kind;

const QString kText = "# remark\n"
                      "device Power Mate # on the desk\n"
                      "\n"
                      "knob REL_DIAL tune  # the big one\n"
                      "nonsense\n"
                      "turn Alt+Up Alt+Down volume fixed 2\n"
                      "# end\n";

TEST(PanelTextTest, ReadsAsTheMappingDoes)
{
    const PanelText text(kText);
    EXPECT_EQ(text.text(), kText);
    EXPECT_EQ(text.device(), host::PanelMap(kText).device());
    ASSERT_EQ(text.count(), 2);
    EXPECT_EQ(text.row(0), (PanelRow{Kind::Knob, "REL_DIAL", "tune", ""}));
    EXPECT_EQ(text.row(1), (PanelRow{Kind::Turn, "Alt+Up Alt+Down", "volume", "fixed 2"}));
    EXPECT_EQ(PanelText(host::PanelMap::explanation()).count(), 0);
    EXPECT_EQ(PanelText("device one\ndevice two\n").device(),
        host::PanelMap("device one\ndevice two\n").device());
}

TEST(PanelTextTest, ChangesItsLinesAndNoOthers)
{
    const PanelRow mute{Kind::Key, "KEY_F1", "mute", ""};
    struct Case
    {
        const char *name;
        std::function<void(PanelText &)> edit;
        std::function<void(QString &)> expected;
    };
    const auto replaced = [](const char *from, const char *to) {
        return [from, to](QString &text) { text.replace(from, to); };
    };
    const Case cases[] = {
        {"row", [&](PanelText &text) { text.setRow(0, mute); },
            replaced("knob REL_DIAL tune  # the", "key KEY_F1 mute  # the")},
        {"add", [&](PanelText &text) { EXPECT_EQ(text.add(mute), 2); },
            replaced("# end", "key KEY_F1 mute\n# end")},
        {"remove", [](PanelText &text) { text.remove(1); },
            replaced("turn Alt+Up Alt+Down volume fixed 2\n", "")},
        {"device", [](PanelText &text) { text.setDevice("Other # 2"); },
            replaced("device Power Mate # on the desk", "device Other")},
        {"no device", [](PanelText &text) { text.setDevice({}); },
            replaced("device Power Mate # on the desk\n", "")},
        {"the same device", [](PanelText &text) { text.setDevice("Power Mate"); },
            [](QString &) {}},
        {"grab", [](PanelText &text) { text.setGrabbing(true); },
            replaced("knob REL", "grab\nknob REL")},
        {"grab and back",
            [](PanelText &text) {
                text.setGrabbing(true);
                text.setGrabbing(false);
            },
            [](QString &) {}},
    };
    for (const Case &c : cases) {
        PanelText text(kText);
        c.edit(text);
        QString expected = kText;
        c.expected(expected);
        EXPECT_EQ(text.text().toStdString(), expected.toStdString()) << c.name;
    }
    PanelText empty;
    empty.setDevice("Dial");
    empty.add(mute);
    EXPECT_EQ(empty.text(), "device Dial\nkey KEY_F1 mute\n");
}

TEST(PanelTextTest, TellsWhyARowCannotBeUsed)
{
    PanelText text("key KEY_A mute\nkey KEY_A lock\nshortcut Ctrl+M mute\n"
                   "turn Ctrl+M Ctrl+N tune\nturn F2 F2 tune\n");
    const char *problems[] = {"", "already", "", "already", "same"};
    for (int i = 0; i < text.count(); ++i) {
        const QString problem = text.problemOf(i);
        EXPECT_TRUE(problem.contains(problems[i])) << i << problem.toStdString();
        EXPECT_EQ(problem.isEmpty(), *problems[i] == '\0') << i;
    }
}
} // namespace
