// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/controls/RecordBar.h"

#include "window/controls/TimeText.h"

#include "host_interfaces/IQRecorderConfigure.h"

#include "radio/Radio.h"
#include "settings/Language.h"
#include "sound/AudioPump.h"

#include <QActionGroup>
#include <QDir>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QMenu>
#include <QSettings>
#include <QStandardPaths>
#include <QToolButton>

namespace host
{
namespace
{
const QString kFolder = QStringLiteral("Recording/folder");
const QString kAudioType = QStringLiteral("Recording/audio");
const QString kIqLayout = QStringLiteral("Recording/iq");

// The one layout that plays as it was received. The others are louder and break what is strong.
constexpr int kUsualLayout = vm::file::IQFile::VelmoraSDR2;

QToolButton *newButton(const char *text, const char *name, QWidget *parent)
{
    auto *button = new QToolButton(parent);
    button->setCheckable(true);
    button->setFocusPolicy(Qt::StrongFocus);
    say(button, [button, text, name] {
        button->setText(RecordBar::tr(text));
        button->setAccessibleName(RecordBar::tr(name));
        button->setToolTip(RecordBar::tr(name));
    });
    return button;
}
} // namespace

RecordBar::RecordBar(Radio &radio, AudioPump &pump, QWidget *parent)
    : QWidget(parent), m_radio(radio), m_pump(pump),
      m_audioButton(newButton(QT_TR_NOOP("● Audio"), QT_TR_NOOP("Record what is heard"), this)),
      m_iqButton(newButton(QT_TR_NOOP("● IQ"), QT_TR_NOOP("Record the whole received band"), this)),
      m_text(new QLabel(this))
{
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(6);
    for (QWidget *widget : {(QWidget *)m_audioButton, (QWidget *)m_iqButton, (QWidget *)m_text})
        layout->addWidget(widget);
    say(m_text, [this] { m_text->setAccessibleName(tr("Recording")); });
    m_pump.add(m_audio);
    m_radio.iqServer().setListener(&m_iq);
    join(m_audio, *m_audioButton, &RecordBar::setRecordingAudio);
    join(m_iq, *m_iqButton, &RecordBar::setRecordingIq);
    connect(&radio, &Radio::centerChanged, this, [this](double hz) { m_iq.setFrequency(hz); });
    // A file has one rate: what comes at another one goes into the next.
    connect(&radio, &Radio::rateChanged, this, [this] {
        if (m_iq.isRecording()) {
            m_iq.stop();
            setRecordingIq(true);
        }
    });
}

RecordBar::~RecordBar()
{
    m_radio.iqServer().setListener(nullptr);
    m_pump.remove(m_audio);
}

void RecordBar::join(Recorder &recorder, QToolButton &button, void (RecordBar::*set)(bool))
{
    connect(&button, &QToolButton::clicked, this, set);
    connect(&recorder, &Recorder::recordingChanged, this, [this, &recorder, &button](bool on) {
        button.setChecked(on);
        if (on)
            return;
        showIdle();
        emit message(tr("Recorded %1").arg(recorder.progress().file));
    });
    connect(&recorder, &Recorder::progressed, this, &RecordBar::show);
    connect(&recorder, &Recorder::failed, this, &RecordBar::message);
}

void RecordBar::setRecordingAudio(bool on)
{
    if (!on) {
        m_audio.stop();
        return;
    }
    QDir().mkpath(folder());
    const auto type = AudioRecorder::FileType(setting(kAudioType, 0).toInt());
    begin(m_audio.start(folder(), type), m_audio, *m_audioButton);
}

void RecordBar::setRecordingIq(bool on)
{
    if (!on) {
        m_iq.stop();
        return;
    }
    QDir().mkpath(folder());
    IQRecorderConfigure where;
    where.path = folder();
    where.format = vm::file::IQFile::Format(setting(kIqLayout, kUsualLayout).toInt());
    begin(m_iq.start(where, m_radio.deviceName(), m_radio.rateHz(), m_radio.centerHz()), m_iq,
        *m_iqButton);
}

void RecordBar::begin(bool isBegun, Recorder &recorder, QToolButton &button)
{
    button.setChecked(isBegun);
    emit message(isBegun ? tr("Recording into %1").arg(folder()) : recorder.error());
}

void RecordBar::show(const Recorder::Progress &progress)
{
    QString text = tr("%1, %2").arg(
        timeText(progress.seconds), QLocale().formattedDataSize(qint64(progress.bytes)));
    if (progress.freeBytes >= 0)
        text += tr(", %1 free").arg(QLocale().formattedDataSize(progress.freeBytes));
    if (progress.files > 1)
        text += tr(", %n files", "", progress.files);
    if (progress.lostFrames > 0)
        text += tr(", %n samples LOST", "", int(progress.lostFrames));
    m_text->setText(text);
    m_text->setToolTip(progress.file);
}

void RecordBar::showIdle()
{
    if (!m_audio.isRecording() && !m_iq.isRecording())
        m_text->clear();
}

void RecordBar::serve(QMenu &menu)
{
    for (QToolButton *button : {m_audioButton, m_iqButton}) {
        QAction *action = menu.addAction(QString());
        say(action, [action, button] { action->setText(button->accessibleName()); });
        action->setShortcut(
            QKeySequence(button == m_audioButton ? "Ctrl+Shift+A" : "Ctrl+Shift+I"));
        connect(action, &QAction::triggered, button, &QToolButton::click);
    }
    const auto addChoices = [this, &menu](const char *title, const QString &key, int now,
                                const QVector<const char *> &names) {
        QMenu &list = *menu.addMenu(QString());
        say(&list, [&list, title] { list.setTitle(tr(title)); });
        auto *group = new QActionGroup(&list);
        for (int i = 0; i < names.size(); ++i) {
            QAction *action = list.addAction(QString());
            say(action, [action, name = names[i]] { action->setText(tr(name)); });
            action->setCheckable(true);
            action->setChecked(i == setting(key, now).toInt());
            group->addAction(action);
            connect(action, &QAction::triggered, this, [this, key, i] { keep(key, i); });
        }
    };
    addChoices(QT_TR_NOOP("&Audio files"), kAudioType, 0,
        {QT_TR_NOOP("&WAV, 32-bit float"), QT_TR_NOOP("&FLAC, 24 bits")});
    addChoices(QT_TR_NOOP("&IQ files"), kIqLayout, kUsualLayout,
        {QT_TR_NOOP("&1: with a header of its own"),
            QT_TR_NOOP("&2: plain WAV, 40 dB louder, for weak bands"),
            QT_TR_NOOP("&3: WAV with auxi header, 30 dB louder, for weak bands")});
    QAction *folder = menu.addAction(QString(), this, &RecordBar::chooseFolder);
    say(folder, [folder] { folder->setText(tr("&Folder of recordings…")); });
}

void RecordBar::chooseFolder()
{
    const QString folder =
        QFileDialog::getExistingDirectory(this, tr("Folder of recordings"), this->folder());
    if (!folder.isEmpty())
        setFolder(folder);
}

QString RecordBar::folder() const
{
    return setting(
        kFolder, QStandardPaths::writableLocation(QStandardPaths::MusicLocation) + "/velmora")
        .toString();
}

void RecordBar::setFolder(const QString &folder)
{
    keep(kFolder, folder);
}

QVariant RecordBar::setting(const QString &key, const QVariant &otherwise) const
{
    return m_radio.settings().value(key, otherwise);
}

void RecordBar::keep(const QString &key, const QVariant &value)
{
    m_radio.settings().setValue(key, value);
}
} // namespace host
