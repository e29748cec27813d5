// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "window/frame/Theme.h"
#include "window/panorama/SpectrumLines.h"
#include "window/panorama/VisibleBand.h"

#include <QMainWindow>
#include <QPointer>
#include <QVector>

class QActionGroup;
class QLabel;
class QSplitter;
class QToolButton;

namespace host
{
class BookmarkDialog;
class ControlPanel;
class EqualizerDialog;
class NotchDialog;
class PanelDialog;
class OptionsDialog;
class PanoramaView;
class Radio;
class RadioMemory;
class RadioRig;
class RecordBar;
class RecordingPlayer;
class RemoteDialog;
class RigServer;
class SoundChoice;
class VfoPanel;
class WaterfallView;

/// The receiver to sit in front of: frequencies, meter and sound on top, below the bands with
/// panorama and waterfall, to the right what the device's tables offer, at the bottom how the
/// stream does. Settings of the window are kept in the radio's settings file, group "Window". GUI
/// thread.
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    /// The radio is loaded, and outlives the window.
    MainWindow(Radio &radio, const QString &bookmarkFile);
    ~MainWindow() override;

    /// What can be done by a key, for the help: what it does, the key.
    QVector<QPair<QString, QString>> shortcuts() const;

    PanoramaView &panorama() { return *m_panorama; }
    WaterfallView &waterfall() { return *m_waterfall; }
    VfoPanel &vfos() { return *m_vfos; }
    RecordBar &recordBar() { return *m_recordBar; }
    RecordingPlayer &player() { return *m_player; }
    VisibleBand &band() { return m_band; }
    ControlPanel &controlPanel() { return *m_controls; }
    RigServer &remote() { return *m_rig; }
    SpectrumLines &lines() { return m_lines; }
    SoundChoice &sound() { return *m_sound; }

    /// A recording of IQ or audio, or a band; without a name the built-in band.
    void openScene(const QString &file);

    /// Rig control at a port of the loopback address, for this run; a person is told if it cannot
    /// be.
    void openRemote(int port);

    /// Keys and knobs by the mapping in the file, see ControlPanel.
    void loadPanel(const QString &file);

protected:
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    void build();
    QWidget *newTop();
    QWidget *newBands();
    QWidget *newSide();
    QWidget *newBottom();
    void showWelcome();

    void buildMenus();
    void buildFileMenu();
    void buildReceiverMenu();
    void fillDeviceMenu(QMenu &menu);
    void buildTuningMenu();
    void buildViewMenu();
    void buildHelpMenu();

    /// A row of a menu. The menus are the one table of what keys do: the help lists their rows.
    QAction *addAction(QMenu &menu, const char *text, const QString &key, std::function<void()> f);
    QMenu &addMenu(QWidget &parent, const char *title);
    template <typename Value, typename Set>
    void addChoices(
        QMenu &menu, const QVector<QPair<QString, Value>> &choices, const Value &now, Set set);

    void chooseScene();
    void closeRecording();
    void showOptions();
    void showEqualizer();
    void showNotches();
    void showBookmarks();
    void showPanel();
    void showRemote();
    void showStations();
    void showShortcuts();
    void setTheme(Theme::Choice choice);
    void stepFilter(int by);
    void stepStep(int by);
    void moveSplit(int by);
    void tell(const QString &text);
    void showState();
    void showSound();

    void readSettings();
    void writeSettings();

    Radio &m_radio;
    VisibleBand m_band;
    SpectrumLines m_lines;
    std::unique_ptr<RadioMemory> m_memory;
    std::unique_ptr<SoundChoice> m_sound;
    std::unique_ptr<RecordingPlayer> m_player;
    std::unique_ptr<RadioRig> m_rigTarget;
    std::unique_ptr<RigServer> m_rig;
    std::unique_ptr<ControlPanel> m_controls;
    Theme::Choice m_theme = Theme::Choice::Desktop;
    int m_scalePercent = 0;  ///< 0: the desktop's
    bool m_isRemote = false; ///< kept; --rig-port is not
    int m_remotePort;

    // Children.
    PanoramaView *m_panorama = nullptr;
    WaterfallView *m_waterfall = nullptr;
    QSplitter *m_views = nullptr;
    VfoPanel *m_vfos = nullptr;
    RecordBar *m_recordBar = nullptr;
    QToolButton *m_power = nullptr;
    QLabel *m_message = nullptr;
    QLabel *m_soundText = nullptr;
    QWidget *m_welcome = nullptr;
    QAction *m_builtinBand = nullptr;
    QPointer<EqualizerDialog> m_equalizer;
    QPointer<NotchDialog> m_notches;
    QPointer<BookmarkDialog> m_bookmarks;
    QPointer<OptionsDialog> m_options;
    QPointer<PanelDialog> m_panelDialog;
    QPointer<RemoteDialog> m_remoteDialog;
};
} // namespace host
