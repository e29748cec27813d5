// SPDX-License-Identifier: GPL-3.0-or-later
#include "program/DialogGuard.h"

#include "support/LogCapture.h"

#include <QApplication>
#include <QMessageBox>
#include <QTimer>
#include <gtest/gtest.h>

namespace
{
/// Each of these would wait for ever without the guard, and the whole test with it: a watchdog ends
/// what is still open. It is no answer of the guard, which the tests count.
class DialogGuardTest : public testing::Test
{
protected:
    DialogGuardTest()
    {
        m_watchdog.callOnTimeout([] {
            if (auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget()))
                dialog->done(-1);
        });
        m_watchdog.start(3000);
    }

    host::DialogGuard m_guard;
    test::LogCapture m_log;

private:
    QTimer m_watchdog;
};
} // namespace

TEST_F(DialogGuardTest, AWarningIsLoggedAndLeft)
{
    const auto reply = QMessageBox::warning(
        nullptr, "Receiver", "Failed to open\nthe file", QMessageBox::Ok, QMessageBox::NoButton);
    EXPECT_EQ(reply, QMessageBox::Ok);
    EXPECT_EQ(m_guard.answered(), 1);
    for (const char *text : {"Receiver", "Failed to open the file", "answered with OK"})
        EXPECT_TRUE(m_log.warned(text)) << text;
}

TEST_F(DialogGuardTest, AQuestionIsAnsweredWithWhatDoesNothing)
{
    const auto buttons = QMessageBox::Yes | QMessageBox::No;
    EXPECT_EQ(
        QMessageBox::question(nullptr, "", "Erase?", buttons, QMessageBox::Yes), QMessageBox::No);
    // Two buttons that both accept: there is nothing to escape by.
    QMessageBox box(QMessageBox::Question, "", "Which?", QMessageBox::Yes | QMessageBox::YesToAll);
    box.setDefaultButton(QMessageBox::YesToAll);
    EXPECT_EQ(box.exec(), QMessageBox::YesToAll);
    EXPECT_EQ(m_guard.answered(), 2);
}
