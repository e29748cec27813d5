// SPDX-License-Identifier: GPL-3.0-or-later
// The dialogs of the window, and what happens to the receiver while nobody touches it.
#include "WindowFixture.h"

#include "window/controls/PanelRowDialog.h"
#include "window/controls/ShortcutField.h"

#include "panel/ControlPanel.h"
#include "panel/EventPipe.h"
#include "rig/RigServer.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QSpinBox>
#include <QTableView>
#include <QTableWidget>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTimer>

namespace
{
using namespace host;
using test::EventPipe;

constexpr int kWaitMs = 5000; // a busy machine

class DialogTest : public test::WindowTest
{
protected:
    /// The dialog with that title, after its menu entry was chosen.
    QDialog *open(const QString &title)
    {
        for (QAction *action : m_window->findChildren<QAction *>())
            if (action->text().remove('&') == title + "…")
                action->trigger();
        for (QDialog *dialog : m_window->findChildren<QDialog *>())
            if (dialog->windowTitle() == title)
                return dialog;
        ADD_FAILURE() << "no dialog " << title.toStdString();
        return nullptr;
    }

    static void press(QWidget &dialog, const QString &text)
    {
        for (auto *button : dialog.findChildren<QAbstractButton *>())
            if (button->text().remove('&') == text)
                return button->click();
        ADD_FAILURE() << "no button " << text.toStdString();
    }

    /// What is done with the next modal dialog, once it is there; returns by `begin`.
    template <typename Dialog, typename Work>
    void whileAsked(const std::function<void()> &begin, Work work)
    {
        bool isDone = false;
        QTimer look;
        QObject::connect(&look, &QTimer::timeout, [&] {
            auto *dialog = qobject_cast<Dialog *>(QApplication::activeModalWidget());
            if (!dialog || isDone)
                return;
            isDone = true;
            work(*dialog);
        });
        look.start(20);
        begin();
        EXPECT_TRUE(isDone) << "nothing was asked";
    }

    /// Chooses a file in the next file dialog.
    void withFile(const QString &file, const std::function<void()> &begin)
    {
        whileAsked<QFileDialog>(begin, [&file](QFileDialog &dialog) {
            dialog.findChild<QLineEdit *>("fileNameEdit")->setText(file);
            QMetaObject::invokeMethod(&dialog, "accept");
        });
    }
};

TEST_F(DialogTest, BookmarksAreAddedFoundRecalledAndCarriedOver)
{
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    QDialog *dialog = open("Bookmarks");
    ASSERT_TRUE(dialog);
    auto *table = dialog->findChild<QTableView *>();
    auto *search = dialog->findChild<QLineEdit *>();
    const int before = table->model()->rowCount();
    radio().setFrequency(7.0431e6);
    radio().setMode(Mode::LSB);
    search->setText("a name that none has");
    press(*dialog, "Add what is heard");
    ASSERT_EQ(table->model()->rowCount(), before + 1);
    table->model()->setData(table->currentIndex(), "Evening round");

    radio().setMode(Mode::USB);
    radio().setFrequency(7.104e6);
    search->setText("round");
    ASSERT_EQ(table->model()->rowCount(), 1);
    table->selectRow(0);
    press(*dialog, "Go");
    EXPECT_EQ(radio().frequencyHz(), 7.0431e6);
    EXPECT_EQ(radio().mode(), Mode::LSB);

    const QString file = m_bench.path("mine.csv");
    withFile(file, [&] { press(*dialog, "Export…"); });
    press(*dialog, "Remove");
    EXPECT_EQ(table->model()->rowCount(), 0);
    QString told;
    whileAsked<QMessageBox>([&] { withFile(file, [&] { press(*dialog, "Import…"); }); },
        [&told](QMessageBox &box) {
            told = box.text();
            box.accept();
        });
    EXPECT_TRUE(told.startsWith("1 ")) << told.toStdString();
    ASSERT_EQ(table->model()->rowCount(), 1) << "the search goes on";
    EXPECT_EQ(table->model()->index(0, 0).data().toString(), "Evening round");
}

TEST_F(DialogTest, AKeyIsLearntByPressingItAndWorks)
{
    EventPipe pipe;
    QFile file(m_bench.path("panel.conf"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("# my panel\ndevice " + pipe.path().toUtf8() + "\nknob REL_DIAL tune fixed 1\n");
    file.close();
    m_window->loadPanel(file.fileName());
    ASSERT_TRUE(QTest::qWaitFor([&] { return pipe.appear(); }, kWaitMs));
    QDialog *dialog = open("Keys and knobs");
    ASSERT_TRUE(dialog);
    auto *table = dialog->findChild<QTableWidget *>();
    ASSERT_EQ(table->rowCount(), 1);

    const double before = radio().frequencyHz();
    const auto choose = [](QDialog &row, const QString &action, const QString &argument) {
        const auto boxes = row.findChildren<QComboBox *>();
        for (QComboBox *box : boxes)
            if (box->findData(action) >= 0)
                box->setCurrentIndex(box->findData(action));
        for (QComboBox *box : boxes)
            if (box->isEditable())
                box->setEditText(argument);
    };
    const auto ok = [](QDialog &row) {
        return row.findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Ok);
    };
    whileAsked<PanelRowDialog>([&] { press(*dialog, "Add…"); },
        [&](PanelRowDialog &row) {
            EXPECT_FALSE(ok(row)->isEnabled()) << "no key yet";
            pipe.write(EventPipe::event(EV_REL, REL_DIAL, 1));
            EXPECT_TRUE(QTest::qWaitFor([&] { return row.row().control == "REL_DIAL"; }, kWaitMs));
            EXPECT_FALSE(ok(row)->isEnabled()) << "it has an action";
            pipe.write(EventPipe::event(EV_KEY, BTN_0, 1) + EventPipe::event(EV_KEY, BTN_0, 0));
            EXPECT_TRUE(QTest::qWaitFor([&] { return row.row().control == "BTN_0"; }, kWaitMs));
            choose(row, "mode", "XYZ");
            EXPECT_FALSE(ok(row)->isEnabled()) << "no such mode";
            choose(row, "mode", "CW");
            ok(row)->click();
        });
    EXPECT_EQ(radio().frequencyHz(), before) << "what is learnt is not done";
    ASSERT_EQ(table->rowCount(), 2);
    ASSERT_TRUE(QTest::qWaitFor(
        [&] { return pipe.write(EventPipe::event(EV_REL, REL_DIAL, 3)); }, kWaitMs));
    pipe.write(EventPipe::event(EV_KEY, BTN_0, 1));
    EXPECT_TRUE(QTest::qWaitFor([&] { return radio().mode() == Mode::CW; }, kWaitMs));
    EXPECT_EQ(radio().frequencyHz(), before + 3 * radio().step());

    whileAsked<PanelRowDialog>([&] { press(*dialog, "Add…"); },
        [&](PanelRowDialog &row) {
            row.findChildren<QComboBox *>().first()->setCurrentIndex(int(PanelRow::Kind::Shortcut));
            auto *keys = row.findChildren<ShortcutField *>().first();
            choose(row, "mute", {});
            QTest::keyClick(keys, Qt::Key_B, Qt::ControlModifier);
            EXPECT_FALSE(ok(row)->isEnabled()) << "that of the bookmarks";
            QTest::keyClick(keys, Qt::Key_M, Qt::ControlModifier | Qt::ShiftModifier);
            EXPECT_EQ(row.row().control, "Ctrl+Shift+M");
            ok(row)->click();
        });
    table->selectRow(0);
    press(*dialog, "Remove");
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(QString(file.readAll()),
        QString("# my panel\ndevice %1\nkey BTN_0 mode CW\nshortcut Ctrl+Shift+M mute\n")
            .arg(pipe.path()));
}

TEST_F(DialogTest, RemoteControlTellsPortAndPrograms)
{
    QDialog *dialog = open("Remote control");
    ASSERT_TRUE(dialog);
    auto *on = dialog->findChild<QCheckBox *>();
    auto *port = dialog->findChild<QSpinBox *>();
    const auto says = [dialog](const QString &text) {
        return QTest::qWaitFor(
            [&] {
                for (const QLabel *label : dialog->findChildren<QLabel *>())
                    if (label->text().contains(text))
                        return true;
                return false;
            },
            kWaitMs);
    };
    QTcpServer other;
    ASSERT_TRUE(other.listen(QHostAddress::LocalHost));
    port->setValue(other.serverPort());
    on->click();
    EXPECT_FALSE(on->isChecked()) << "somebody else has the port";
    EXPECT_TRUE(says(QString::number(other.serverPort())));
    other.close();
    on->click();
    EXPECT_TRUE(on->isChecked());
    QTcpSocket client;
    client.connectToHost(QHostAddress::LocalHost, quint16(port->value()));
    EXPECT_TRUE(says("1 of 8"));
    client.write("F 7090000\n");
    EXPECT_TRUE(QTest::qWaitFor([&] { return radio().frequencyHz() == 7.09e6; }, kWaitMs));
    on->click();
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return client.state() == QAbstractSocket::UnconnectedState; }, kWaitMs));
    EXPECT_TRUE(says("Off"));
}

TEST_F(DialogTest, AReceiverThatWasPulledOutGoesOnWhenItIsBack)
{
    const auto shows = [this](const QString &text) {
        return QTest::qWaitFor(
            [&] {
                for (const QLabel *label : m_window->findChildren<QLabel *>())
                    if (label->text().contains(text))
                        return true;
                return false;
            },
            2 * kWaitMs);
    };
    EXPECT_TRUE(becomes(true, 1000.0));
    ASSERT_EQ(radio().virtualReceiver()->fault("unplug@0.1"), 0);
    EXPECT_TRUE(shows("Looking for a receiver"));
    EXPECT_TRUE(shows("The receiver is gone; waiting for one."));
    EXPECT_TRUE(named<QAbstractButton>("Receiver on")->isChecked()) << "it is still wanted";
    radio().setFrequency(7.1035e6);
    ASSERT_EQ(radio().virtualReceiver()->fault("replug@0.1"), 0);
    EXPECT_TRUE(shows("192 kHz"));
    EXPECT_TRUE(becomes(true, 1500.0)) << "with what was set meanwhile";
}
} // namespace
