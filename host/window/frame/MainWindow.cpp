// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/frame/MainWindow.h"

#include "window/controls/AudioPanel.h"
#include "window/controls/BandBar.h"
#include "window/controls/BookmarkDialog.h"
#include "window/controls/EqualizerDialog.h"
#include "window/controls/ModePanel.h"
#include "window/controls/NotchDialog.h"
#include "window/controls/PanelDialog.h"
#include "window/controls/PlayBar.h"
#include "window/controls/RecordBar.h"
#include "window/controls/RemoteDialog.h"
#include "window/controls/ToolPanel.h"
#include "window/controls/VfoPanel.h"
#include "window/frame/Accessibility.h"
#include "window/frame/DeviceNotice.h"
#include "window/frame/OptionsDialog.h"
#include "window/frame/SoundChoice.h"
#include "window/frame/TabOrder.h"
#include "window/meter/HealthBar.h"
#include "window/meter/SMeter.h"
#include "window/panorama/PanoramaView.h"
#include "window/panorama/WaterfallView.h"

#include "memory/RadioMemory.h"
#include "panel/ControlPanel.h"
#include "radio/Radio.h"
#include "recording/RecordingPlayer.h"
#include "rig/RadioRig.h"
#include "rig/RigServer.h"

#include "settings/Language.h"

#include "host_interfaces/DeviceAbstract.h"

#include <QApplication>
#include <QDragEnterEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QGuiApplication>
#include <QLabel>
#include <QMimeData>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QSettings>
#include <QSplitter>
#include <QToolButton>
#include <QVBoxLayout>

namespace host
{
namespace
{
constexpr QSize kFirstSize{1280, 800};
constexpr QSize kFrame{8, 40};      // what a desktop puts around a window, at most
constexpr double kFirstShare = 0.6; // of a large screen, to either side
constexpr int kSideWidth = 262;
const QString kGroup = QStringLiteral("Window");
const QString kOpenFolder = QStringLiteral("Window/openFolder");

/// As wide as its content needs, at any size of letters and in any language, and the bar that it
/// has in a low window.
class SideArea : public QScrollArea
{
public:
    using QScrollArea::QScrollArea;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (watched == widget() && event->type() == QEvent::LayoutRequest)
            fit();
        return QScrollArea::eventFilter(watched, event);
    }

    void showEvent(QShowEvent *event) override
    {
        fit(); // only now the style is in place
        QScrollArea::showEvent(event);
    }

private:
    void fit()
    {
        setFixedWidth(std::max(kSideWidth, widget()->minimumSizeHint().width())
            + verticalScrollBar()->sizeHint().width());
    }
};
} // namespace

MainWindow::MainWindow(Radio &radio, const QString &bookmarkFile)
    : m_radio(radio), m_band(radio), m_lines(radio),
      m_memory(std::make_unique<RadioMemory>(radio, bookmarkFile)),
      m_sound(std::make_unique<SoundChoice>(radio)),
      m_player(std::make_unique<RecordingPlayer>(radio, m_sound->pump())),
      m_rigTarget(std::make_unique<RadioRig>(radio)),
      m_rig(std::make_unique<RigServer>(*m_rigTarget)),
      m_controls(std::make_unique<ControlPanel>(radio, *m_memory)),
      m_remotePort(RigServer::kUsualPort)
{
    installAccessibility();
    say(this, [this] {
        setWindowTitle(tr("Velmora receiver"));
        // Numbers in fields; a page of the device that nobody shows is a window, too.
        for (QWidget *window : QApplication::topLevelWidgets())
            window->setLocale(QLocale());
        m_radio.device().retranslate();
    });
    setAcceptDrops(true);
    build();
    buildMenus();
    readSettings();
    connect(&radio, &Radio::message, this, &MainWindow::tell);
    connect(&radio, &Radio::stateChanged, this, &MainWindow::showState);
    connect(&radio, &Radio::aboutToSave, this, &MainWindow::writeSettings);
    connect(&radio, &Radio::deviceKindChanging, &*m_player, &RecordingPlayer::stop);
    connect(&radio, &Radio::deviceKindChanged, this,
        [this] { m_builtinBand->setEnabled(m_radio.virtualReceiver()); });
    connect(&m_sound->output(), &SoundOutput::stateChanged, this, [this] { showSound(); });
    connect(&*m_memory, &RadioMemory::message, this, &MainWindow::tell);
    connect(&*m_controls, &ControlPanel::message, this, &MainWindow::tell);
    for (const QString &notice : radio.notices() + m_memory->notices())
        tell(notice);
    const auto mark = [this] { showStations(); };
    connect(&m_memory->bookmarks(), &QAbstractItemModel::dataChanged, this, mark);
    connect(&m_memory->bookmarks(), &QAbstractItemModel::rowsInserted, this, mark);
    connect(&m_memory->bookmarks(), &QAbstractItemModel::rowsRemoved, this, mark);
    connect(&m_memory->bookmarks(), &QAbstractItemModel::rowsMoved, this, mark);
    connect(&m_memory->bookmarks(), &QAbstractItemModel::modelReset, this, mark);
    connect(&m_band, &VisibleBand::changed, this, mark);
    showStations();
    showState();
    m_panorama->setFocus();
}

MainWindow::~MainWindow()
{
    delete m_options;     // gives the page back
    delete m_bookmarks;   // looks at the memory
    delete m_panelDialog; // looks at the panel
    delete m_remoteDialog;
    delete m_recordBar; // ends what it records
    writeSettings();
    disconnect(&m_radio, nullptr, this, nullptr);
}

void MainWindow::build()
{
    auto *whole = new QWidget(this);
    auto *layout = new QVBoxLayout(whole);
    layout->setContentsMargins(8, 6, 8, 4);
    layout->setSpacing(6);
    layout->addWidget(newTop());
    auto *middle = new QHBoxLayout;
    middle->setSpacing(8);
    middle->addWidget(newBands(), 1);
    middle->addWidget(newSide());
    layout->addLayout(middle, 1);
    auto *player = new PlayBar(*m_player, whole);
    connect(player, &PlayBar::closed, this, &MainWindow::closeRecording);
    layout->addWidget(player);
    layout->addWidget(newBottom());
    setCentralWidget(whole);
    orderTabs(*whole);
    if (const QScreen *screen = QGuiApplication::primaryScreen())
        resize(kFirstSize.expandedTo(screen->availableSize() * kFirstShare)
                   .boundedTo(screen->availableSize() - kFrame));
}

QWidget *MainWindow::newTop()
{
    auto *top = new QWidget(this);
    auto *layout = new QHBoxLayout(top);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(8);
    m_power = new QToolButton(top);
    m_power->setCheckable(true);
    m_power->setFocusPolicy(Qt::StrongFocus);
    say(m_power, [this] {
        m_power->setAccessibleName(tr("Receiver on"));
        m_power->setToolTip(tr("Starts and stops the receiver"));
        showState();
    });
    m_power->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
    connect(m_power, &QToolButton::toggled, &m_radio, &Radio::setPower);
    layout->addWidget(m_power);
    m_vfos = new VfoPanel(m_radio, top);
    layout->addWidget(m_vfos, 3);
    auto *meter = new SMeter(m_radio, top);
    meter->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Expanding);
    layout->addWidget(meter, 1);
    top->setFixedHeight(76);
    return top;
}

QWidget *MainWindow::newBands()
{
    auto *left = new QWidget(this);
    auto *layout = new QVBoxLayout(left);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(6);
    auto *bands = new BandBar(*m_memory, left);
    layout->addWidget(bands);
    m_welcome = new QWidget(left);
    layout->addWidget(m_welcome);
    m_welcome->hide();
    layout->addWidget(new DeviceNotice(m_radio, left));
    m_views = new QSplitter(Qt::Vertical, left);
    m_panorama = new PanoramaView(m_radio, m_band, m_lines, m_views);
    m_waterfall = new WaterfallView(m_radio, m_band, m_lines, m_views);
    m_views->setChildrenCollapsible(false);
    m_views->setHandleWidth(5);
    m_views->setStretchFactor(0, 2);
    m_views->setStretchFactor(1, 3);
    layout->addWidget(m_views, 1);
    connect(m_panorama, &PanoramaView::rangeChanged, this,
        [this] { m_waterfall->setRange(m_panorama->range()); });
    m_waterfall->setRange(m_panorama->range());
    connect(m_panorama, &BandWidget::pointed, m_panorama, &PanoramaView::setPointer);
    connect(m_waterfall, &BandWidget::pointed, m_panorama, &PanoramaView::setPointer);
    return left;
}

QWidget *MainWindow::newSide()
{
    auto *area = new SideArea(this);
    area->setFrameShape(QFrame::NoFrame);
    area->setWidgetResizable(true);
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area->setFocusPolicy(Qt::NoFocus);
    auto *side = new QWidget(area);
    auto *layout = new QVBoxLayout(side);
    layout->setContentsMargins(0, 0, 4, 0);
    layout->setSpacing(8);
    layout->addWidget(new AudioPanel(m_radio, side));
    layout->addWidget(new ModePanel(m_radio, side));
    auto *tools = new ToolPanel(m_radio, side);
    connect(tools, &ToolPanel::equalizerWanted, this, &MainWindow::showEqualizer);
    connect(tools, &ToolPanel::notchesWanted, this, &MainWindow::showNotches);
    layout->addWidget(tools);
    layout->addStretch(1);
    area->setWidget(side);
    return area;
}

QWidget *MainWindow::newBottom()
{
    auto *bottom = new QWidget(this);
    auto *layout = new QHBoxLayout(bottom);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(new HealthBar(m_radio, bottom));
    m_recordBar = new RecordBar(m_radio, m_sound->pump(), bottom);
    connect(m_recordBar, &RecordBar::message, this, &MainWindow::tell);
    layout->addWidget(m_recordBar);
    m_message = new QLabel(bottom);
    m_message->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_message->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    say(m_message, [this] { m_message->setAccessibleName(tr("Messages")); });
    layout->addWidget(m_message, 1);
    m_soundText = new QLabel(bottom);
    say(m_soundText, [this] { showSound(); });
    m_soundText->setProperty("role", "heading");
    layout->addWidget(m_soundText);
    return bottom;
}

/// The first time there is more to say than a line of status holds.
void MainWindow::showWelcome()
{
    auto *layout = new QHBoxLayout(m_welcome);
    layout->setContentsMargins(8, 4, 4, 4);
    auto *text = new QLabel(m_welcome);
    say(text, [text] {
        text->setText(
            tr("<b>This is a band built into the program.</b> Each peak in the picture is a "
               "station; the yellow mark is where you listen. Click on another peak or turn the "
               "wheel to tune, choose its mode to the right. Real recordings open with File, "
               "Open."));
    });
    text->setWordWrap(true);
    layout->addWidget(text, 1);
    auto *close = new QToolButton(m_welcome);
    say(close, [close] { close->setText(tr("Understood")); });
    connect(close, &QToolButton::clicked, m_welcome, &QWidget::hide);
    layout->addWidget(close);
    m_welcome->setAutoFillBackground(true);
    m_welcome->setBackgroundRole(QPalette::Base);
    m_welcome->show();
    orderTabs(*centralWidget());
}

void MainWindow::showState()
{
    const QSignalBlocker quiet(m_power);
    m_power->setChecked(m_radio.isPowered());
    m_power->setText(m_radio.state() == Radio::State::Searching ? tr("…")
            : m_radio.isPowered()                               ? tr("On")
                                                                : tr("Off"));
    update();
}

void MainWindow::showSound()
{
    const SoundOutput &output = m_sound->output();
    m_soundText->setText(output.isPlaying() ? tr("sound: %1").arg(output.text()) : output.text());
}

void MainWindow::tell(const QString &text)
{
    m_message->setText(text);
    m_message->setToolTip(text);
}

void MainWindow::openScene(const QString &file)
{
    if (file.isEmpty() || file.endsWith(".band")) {
        m_player->stop();
        if (!m_radio.openScene(file))
            tell(m_radio.error());
        else
            tell(file.isEmpty() ? tr("The built-in band") : tr("Playing %1").arg(file));
        return;
    }
    const bool wasOnAir = m_player->kind() == RecordingPlayer::Kind::Iq;
    if (!m_player->open(file)) {
        tell(m_player->error());
        return;
    }
    if (wasOnAir && m_player->kind() == RecordingPlayer::Kind::Audio)
        m_radio.openScene({}); // or an ended recording would stay on the air
    tell(tr("Playing %1").arg(file));
}

void MainWindow::closeRecording()
{
    const bool isOnAir = m_player->kind() == RecordingPlayer::Kind::Iq;
    m_player->stop();
    if (isOnAir)
        openScene({});
}

void MainWindow::chooseScene()
{
    const QString used = m_radio.settings().value(kOpenFolder).toString();
    const QString file = QFileDialog::getOpenFileName(this, tr("Open a recording or a band"),
        used.isEmpty() ? m_recordBar->folder() : used,
        tr("Recordings and bands (*.wav *.band *.f64 *.f32 *.s16 *.u8 *.cf32 *.cu8 *.flac);;All "
           "files "
           "(*)"));
    if (file.isEmpty())
        return;
    m_radio.settings().setValue(kOpenFolder, QFileInfo(file).absolutePath());
    openScene(file);
}

void MainWindow::dragEnterEvent(QDragEnterEvent *event)
{
    if (event->mimeData()->hasUrls() && m_radio.virtualReceiver())
        event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent *event)
{
    const QString file = event->mimeData()->urls().first().toLocalFile();
    if (!file.isEmpty())
        openScene(file);
}

void MainWindow::showOptions()
{
    if (!m_options)
        m_options = new OptionsDialog(m_radio, this);
    m_options->show();
    m_options->raise();
}

void MainWindow::showEqualizer()
{
    if (!m_equalizer)
        m_equalizer = new EqualizerDialog(m_radio, this);
    m_equalizer->show();
    m_equalizer->raise();
}

void MainWindow::showNotches()
{
    if (!m_notches)
        m_notches = new NotchDialog(m_radio, this);
    m_notches->show();
    m_notches->raise();
}

void MainWindow::showBookmarks()
{
    if (!m_bookmarks)
        m_bookmarks = new BookmarkDialog(*m_memory, this);
    m_bookmarks->show();
    m_bookmarks->raise();
}

void MainWindow::showPanel()
{
    if (!m_panelDialog) {
        QStringList bands;
        for (const auto &band : m_memory->bands().bands())
            bands += band.name;
        m_panelDialog = new PanelDialog(m_controls->panel(), bands, this);
        m_panelDialog->setAttribute(Qt::WA_DeleteOnClose); // the file may change meanwhile
    }
    m_panelDialog->show();
    m_panelDialog->raise();
}

void MainWindow::showRemote()
{
    if (!m_remoteDialog) {
        m_remoteDialog =
            new RemoteDialog(*m_rig, m_rig->isOpen() ? m_rig->port() : m_remotePort, this);
        connect(m_remoteDialog, &RemoteDialog::wanted, this, [this](bool on, int port) {
            m_isRemote = on;
            m_remotePort = port;
            if (on)
                openRemote(port);
            else
                m_rig->close();
        });
    }
    m_remoteDialog->show();
    m_remoteDialog->raise();
}

void MainWindow::showStations()
{
    std::vector<PictureMark> marks;
    for (const Bookmark &bookmark : m_memory->bookmarks().between(m_band.lowHz(), m_band.highHz()))
        marks.push_back({bookmark.reception.frequencyHz, bookmark.name});
    m_panorama->setMarks(marks);
}

void MainWindow::loadPanel(const QString &file)
{
    m_controls->load(file, this);
}

void MainWindow::openRemote(int port)
{
    if (m_rig->open(quint16(port)))
        tell(tr("Remote control by rigctld's protocol on localhost:%1").arg(m_rig->port()));
    else
        tell(m_rig->error());
}

void MainWindow::writeSettings()
{
    QSettings &settings = m_radio.settings();
    settings.beginGroup(kGroup);
    settings.setValue("geometry", saveGeometry());
    settings.setValue("views", m_views->saveState());
    settings.setValue("palette", int(m_waterfall->palette()));
    settings.setValue("linesPerSecond", m_lines.perSecond());
    settings.setValue("averaging", m_lines.averaging());
    settings.setValue("peakHold", m_lines.isPeakHold());
    settings.setValue("automaticRange", m_panorama->isAutomatic());
    settings.setValue("lowDb", m_panorama->range().lowDb);
    settings.setValue("highDb", m_panorama->range().highDb);
    settings.setValue("theme", int(m_theme));
    settings.setValue("scale", m_scalePercent);
    settings.setValue("language", Language::instance().chosen());
    settings.setValue("remote", m_isRemote);
    settings.setValue("remotePort", m_remotePort);
    settings.setValue("welcomed", true);
    settings.endGroup();
}

void MainWindow::readSettings()
{
    QSettings &settings = m_radio.settings();
    settings.beginGroup(kGroup);
    const bool isFirst = !settings.contains("welcomed");
    restoreGeometry(settings.value("geometry").toByteArray());
    m_views->restoreState(settings.value("views").toByteArray());
    m_lines.setPerSecond(settings.value("linesPerSecond", m_lines.perSecond()).toInt());
    m_lines.setAveraging(settings.value("averaging", m_lines.averaging()).toInt());
    m_lines.setPeakHold(settings.value("peakHold", false).toBool());
    const int palette = settings.value("palette", 0).toInt();
    if (palette >= 0 && palette < ColourMap::kPalettes)
        m_waterfall->setPalette(ColourMap::Palette(palette));
    if (!settings.value("automaticRange", true).toBool())
        m_panorama->setRange(
            {settings.value("lowDb").toDouble(), settings.value("highDb").toDouble()});
    m_theme = Theme::Choice(std::clamp(settings.value("theme", 0).toInt(), 0, 2));
    m_scalePercent = settings.value("scale", 0).toInt();
    m_isRemote = settings.value("remote", false).toBool();
    m_remotePort = std::clamp(settings.value("remotePort", m_remotePort).toInt(),
        RemoteDialog::kLeastPort, RemoteDialog::kMostPort);
    settings.endGroup();
    setTheme(m_theme);
    if (m_isRemote)
        openRemote(m_remotePort);
    if (isFirst && m_radio.virtualReceiver() && m_radio.sceneName() == "built-in")
        showWelcome();
}
} // namespace host
