// SPDX-License-Identifier: GPL-3.0-or-later
// The menus of the main window, and what their keys do.
#include "window/frame/MainWindow.h"

#include "window/controls/RecordBar.h"
#include "window/controls/VfoPanel.h"
#include "window/frame/SoundChoice.h"
#include "window/panorama/PanoramaView.h"
#include "window/panorama/WaterfallView.h"

#include "library/DeviceKind.h"
#include "memory/RadioMemory.h"
#include "radio/Radio.h"
#include "settings/Language.h"

#include "host_interfaces/EngineLimits.h"

#include <QActionGroup>
#include <QApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QMenuBar>
#include <QMessageBox>
#include <QSplitter>
#include <QTableWidget>
#include <QVBoxLayout>

namespace host
{
QAction *MainWindow::addAction(
    QMenu &menu, const char *text, const QString &key, std::function<void()> f)
{
    QAction *action = menu.addAction(QString());
    say(action, [action, text] { action->setText(tr(text)); });
    action->setShortcut(QKeySequence(key));
    connect(action, &QAction::triggered, this, [f = std::move(f)] { f(); });
    return action;
}

QMenu &MainWindow::addMenu(QWidget &parent, const char *title)
{
    auto *menu = new QMenu(&parent);
    parent.addAction(menu->menuAction());
    say(menu, [menu, title] { menu->setTitle(tr(title)); });
    return *menu;
}

/// Actions of which one is checked.
template <typename Value, typename Set>
void MainWindow::addChoices(
    QMenu &menu, const QVector<QPair<QString, Value>> &choices, const Value &now, Set set)
{
    auto *group = new QActionGroup(&menu);
    for (const auto &choice : choices) {
        QAction *action = menu.addAction(choice.first);
        action->setCheckable(true);
        action->setChecked(choice.second == now);
        action->setData(QVariant::fromValue(choice.second));
        group->addAction(action);
        const Value value = choice.second;
        connect(action, &QAction::triggered, this, [set, value] { set(value); });
    }
}

void MainWindow::buildMenus()
{
    buildFileMenu();
    buildReceiverMenu();
    buildTuningMenu();
    buildViewMenu();
    buildHelpMenu();
}

void MainWindow::buildFileMenu()
{
    QMenu &menu = addMenu(*menuBar(), QT_TR_NOOP("&File"));
    addAction(menu, QT_TR_NOOP("&Open recording or band…"), "Ctrl+O", [this] { chooseScene(); });
    m_builtinBand = addAction(menu, QT_TR_NOOP("&Built-in band"), "", [this] { openScene({}); });
    m_builtinBand->setEnabled(m_radio.virtualReceiver());
    menu.addSeparator();
    m_recordBar->serve(menu);
    menu.addSeparator();
    addAction(menu, QT_TR_NOOP("&Quit"), "Ctrl+Q", [this] { close(); });
}

void MainWindow::buildReceiverMenu()
{
    QMenu &menu = addMenu(*menuBar(), QT_TR_NOOP("&Receiver"));
    addAction(menu, QT_TR_NOOP("&On or off"), "Ctrl+P",
        [this] { m_radio.setPower(!m_radio.isPowered()); });
    QMenu &rates = addMenu(menu, QT_TR_NOOP("&Band width"));
    connect(&rates, &QMenu::aboutToShow, this, [this, &rates] {
        rates.clear();
        QVector<QPair<QString, int>> choices;
        for (const int hertz : EngineLimits::kRatesHz)
            choices += {tr("%1 kHz").arg(hertz / 1000), hertz};
        addChoices<int>(
            rates, choices, int(m_radio.rateHz()), [this](int hertz) { m_radio.setRate(hertz); });
    });
    QMenu &devices = addMenu(menu, QT_TR_NOOP("&Device"));
    connect(&devices, &QMenu::aboutToShow, this, [this, &devices] { fillDeviceMenu(devices); });
    addAction(menu, QT_TR_NOOP("O&ptions of the device…"), "Ctrl+,", [this] { showOptions(); });
    menu.addSeparator();
    m_sound->serve(addMenu(menu, QT_TR_NOOP("&Sound card")));
    addAction(menu, QT_TR_NOOP("Remote &control…"), "", [this] { showRemote(); });
    addAction(menu, QT_TR_NOOP("&Keys and knobs…"), "Ctrl+K", [this] { showPanel(); });
    menu.addSeparator();
    addAction(menu, QT_TR_NOOP("&Equalizer…"), "Ctrl+E", [this] { showEqualizer(); });
    addAction(menu, QT_TR_NOOP("&Notch filters…"), "Ctrl+N", [this] { showNotches(); });
}

/// The ways to a receiver, and the device's own menu, which comes half a second after the device.
void MainWindow::fillDeviceMenu(QMenu &menu)
{
    menu.clear();
    QVector<QPair<QString, QString>> choices;
    for (const DeviceKind &kind : deviceKinds())
        choices += {kind.name(), kind.key};
    if (!m_radio.ownLibrary().isEmpty())
        choices += {m_radio.ownLibrary(), QString()};
    const DeviceKind *now = m_radio.deviceKind();
    addChoices<QString>(menu, choices, now ? now->key : QString(),
        [this](const QString &key) { m_radio.setDeviceKind(findDeviceKind(key)); });
    if (QMenu *device = m_radio.manager().deviceMenu()) {
        menu.addSeparator();
        device->setTitle(tr("Receiver, &rate and preamplifier"));
        menu.addMenu(device);
    }
}

void MainWindow::buildTuningMenu()
{
    QMenu &menu = addMenu(*menuBar(), QT_TR_NOOP("&Tuning"));
    addAction(menu, QT_TR_NOOP("&Type a frequency"), "F", [this] { m_vfos->editFrequency(); });
    addAction(menu, QT_TR_NOOP("Step &up"), "PgUp", [this] { m_radio.tune(1); });
    addAction(menu, QT_TR_NOOP("Step &down"), "PgDown", [this] { m_radio.tune(-1); });
    addAction(menu, QT_TR_NOOP("Lar&ger step"), "Ctrl+PgUp", [this] { stepStep(1); });
    addAction(menu, QT_TR_NOOP("Smaller st&ep"), "Ctrl+PgDown", [this] { stepStep(-1); });
    menu.addSeparator();
    addAction(menu, QT_TR_NOOP("The other &VFO"), "V",
        [this] { m_radio.setActive(other(m_radio.active())); });
    addAction(menu, QT_TR_NOOP("Sw&ap A and B"), "X", [this] { m_radio.swapVfos(); });
    addAction(menu, QT_TR_NOOP("&Copy to the other VFO"), "C", [this] { m_radio.copyToOther(); });
    addAction(menu, QT_TR_NOOP("&Split listening"), "S",
        [this] { m_radio.setSplit(!m_radio.isSplit()); });
    addAction(menu, QT_TR_NOOP("&Lock"), "L", [this] { m_radio.setLocked(!m_radio.isLocked()); });
    addAction(menu, QT_TR_NOOP("&RIT"), "R", [this] { m_radio.toggle(Switch::Rit); });
    addAction(menu, QT_TR_NOOP("&Bookmarks…"), "Ctrl+B", [this] { showBookmarks(); });
    addAction(menu, QT_TR_NOOP("Ne&xt amateur band"), "Ctrl+Right",
        [this] { m_memory->goToNextBand(1); });
    addAction(menu, QT_TR_NOOP("&Previous amateur band"), "Ctrl+Left",
        [this] { m_memory->goToNextBand(-1); });
    menu.addSeparator();
    addAction(menu, QT_TR_NOOP("&Wider filter"), "]", [this] { stepFilter(1); });
    addAction(menu, QT_TR_NOOP("&Narrower filter"), "[", [this] { stepFilter(-1); });
    addAction(menu, QT_TR_NOOP("S&quelch"), "Q", [this] { m_radio.toggle(Switch::Squelch); });
    addAction(menu, QT_TR_NOOP("&Mute"), "M", [this] { m_radio.toggle(Switch::Mute); });
    addAction(menu, QT_TR_NOOP("L&ouder"), "Ctrl+Up",
        [this] { m_radio.setValue(Dial::Volume, m_radio.value(Dial::Volume) + 2.0); });
    addAction(menu, QT_TR_NOOP("Qu&ieter"), "Ctrl+Down",
        [this] { m_radio.setValue(Dial::Volume, m_radio.value(Dial::Volume) - 2.0); });
}

void MainWindow::buildViewMenu()
{
    QMenu &menu = addMenu(*menuBar(), QT_TR_NOOP("&View"));
    addAction(menu, QT_TR_NOOP("Zoom &in"), "Ctrl++",
        [this] { m_band.zoom(0.5, m_radio.frequencyHz()); });
    addAction(menu, QT_TR_NOOP("Zoom &out"), "Ctrl+-",
        [this] { m_band.zoom(2.0, m_radio.frequencyHz()); });
    addAction(menu, QT_TR_NOOP("&Whole band"), "Ctrl+0", [this] { m_band.fit(); });
    addAction(menu, QT_TR_NOOP("&Automatic level range"), "Ctrl+R",
        [this] { m_panorama->setAutomatic(!m_panorama->isAutomatic()); });
    addAction(menu, QT_TR_NOOP("Larger pa&norama"), "Ctrl+Shift+Down", [this] { moveSplit(1); });
    addAction(menu, QT_TR_NOOP("Larger wa&terfall"), "Ctrl+Shift+Up", [this] { moveSplit(-1); });
    addAction(menu, QT_TR_NOOP("&Peak hold"), "H",
        [this] { m_lines.setPeakHold(!m_lines.isPeakHold()); });
    const auto addList = [this, &menu](const char *text, auto fill) {
        QMenu &list = addMenu(menu, text);
        connect(&list, &QMenu::aboutToShow, this, [&list, fill] {
            list.clear();
            fill(list);
        });
    };
    addList(QT_TR_NOOP("A&veraging"), [this](QMenu &list) {
        QVector<QPair<QString, int>> choices;
        for (const int lines : {1, 2, 4, 8, 16, 30})
            choices += {lines == 1 ? tr("none") : tr("%n lines", "", lines), lines};
        addChoices<int>(
            list, choices, m_lines.averaging(), [this](int lines) { m_lines.setAveraging(lines); });
    });
    addList(QT_TR_NOOP("&Lines a second"), [this](QMenu &list) {
        QVector<QPair<QString, int>> choices;
        for (const int lines : {5, 10, 25, 40, 60})
            choices += {QString::number(lines), lines};
        addChoices<int>(
            list, choices, m_lines.perSecond(), [this](int lines) { m_lines.setPerSecond(lines); });
    });
    addList(QT_TR_NOOP("&Colours of the waterfall"), [this](QMenu &list) {
        using Palette = ColourMap::Palette;
        addChoices<int>(list,
            {{tr("&Fire"), int(Palette::Inferno)}, {tr("&Sea"), int(Palette::Viridis)},
                {tr("&Grey"), int(Palette::Grey)}},
            int(m_waterfall->palette()),
            [this](int palette) { m_waterfall->setPalette(Palette(palette)); });
    });
    addList(QT_TR_NOOP("Win&dow colours"), [this](QMenu &list) {
        addChoices<int>(list,
            {{tr("As the &desktop"), int(Theme::Choice::Desktop)},
                {tr("D&ark"), int(Theme::Choice::Dark)}, {tr("&Light"), int(Theme::Choice::Light)}},
            int(m_theme), [this](int choice) { setTheme(Theme::Choice(choice)); });
    });
    addList(QT_TR_NOOP("&Size of everything"), [this](QMenu &list) {
        QVector<QPair<QString, int>> choices{{tr("as the desktop"), 0}};
        for (const int percent : {100, 125, 150, 200})
            choices += {tr("%1 %").arg(percent), percent};
        addChoices<int>(list, choices, m_scalePercent, [this](int percent) {
            m_scalePercent = percent;
            tell(tr("The size changes at the next start of the program."));
        });
    });
    addList(QT_TR_NOOP("Lan&guage"), [this](QMenu &list) {
        QVector<QPair<QString, QString>> choices{{tr("as the desktop"), QString()}};
        for (const auto &choice : Language::choices())
            choices += {choice.name, choice.code};
        addChoices<QString>(list, choices, Language::instance().chosen(),
            [](const QString &code) { Language::instance().choose(code); });
    });
}

void MainWindow::buildHelpMenu()
{
    QMenu &menu = addMenu(*menuBar(), QT_TR_NOOP("&Help"));
    addAction(menu, QT_TR_NOOP("&Keys and mouse"), "F1", [this] { showShortcuts(); });
    addAction(menu, QT_TR_NOOP("&About"), "", [this] {
        QMessageBox::about(this, tr("About"),
            tr("<b>%1 %2</b><p>A receiver for %3.</p><p>GPL-3.0-or-later</p>")
                .arg(QApplication::applicationName(), QApplication::applicationVersion(),
                    m_radio.deviceName()));
    });
}

void MainWindow::setTheme(Theme::Choice choice)
{
    m_theme = choice;
    Theme::apply(*qApp, choice);
    for (QWidget *widget : findChildren<QWidget *>())
        widget->update();
}

void MainWindow::stepFilter(int by)
{
    const auto &filters = m_radio.filters().filters(m_radio.mode());
    int next = m_radio.filters().chosen(m_radio.mode()) + by;
    if (m_radio.filters().chosen(m_radio.mode()) < 0) {
        // Of free edges the next filter of the list that is wider, or narrower.
        const auto now = m_radio.filterEdges();
        const auto isNarrower = [&now](const FilterMemory::Filter &filter) {
            return filter.edges.highHz - filter.edges.lowHz < now.highHz - now.lowHz;
        };
        const int narrower = int(std::count_if(filters.begin(), filters.end(), isNarrower));
        next = by > 0 ? narrower : narrower - 1;
    }
    m_radio.chooseFilter(std::clamp(next, 0, int(filters.size()) - 1));
}

void MainWindow::stepStep(int by)
{
    const auto &steps = Radio::steps();
    const int next = steps.indexOf(m_radio.step()) + by;
    if (next >= 0 && next < steps.size())
        m_radio.setStep(steps[next]);
}

void MainWindow::moveSplit(int by)
{
    constexpr int kPixels = 40;
    const auto sizes = m_views->sizes();
    m_views->setSizes({sizes[0] + by * kPixels, sizes[1] - by * kPixels});
}

QVector<QPair<QString, QString>> MainWindow::shortcuts() const
{
    QVector<QPair<QString, QString>> rows;
    for (const QAction *menu : menuBar()->actions())
        for (const QAction *action : menu->menu()->actions())
            if (!action->shortcut().isEmpty())
                rows += {action->text().remove('&').remove(QStringLiteral("…")),
                    action->shortcut().toString(QKeySequence::NativeText)};
    rows += {tr("Panorama: tune by the step, by ten steps"), tr("Wheel or ←→, with Shift")};
    rows += {tr("Panorama: zoom about the pointer"), tr("Ctrl+Wheel, + and -")};
    rows += {tr("Panorama: tune here, to the very place"), tr("Click, with Shift")};
    rows += {tr("Panorama: move the view, an edge, a VFO, a notch"), tr("Drag")};
    rows += {tr("Panorama: set a notch, take it out"), tr("Right click, Ins and Del")};
    rows += {tr("Panorama: move and widen the level range"), tr("Drag and wheel on the numbers")};
    rows += {tr("Panorama: move the level range, widen it"), tr("↑↓, with Shift")};
    rows += {tr("Panorama: automatic range, whole band"), tr("Double click on the numbers, Home")};
    rows += {tr("Frequency: choose a digit, count, write"), tr("←→, ↑↓ or wheel, 0 to 9")};
    return rows;
}

void MainWindow::showShortcuts()
{
    QDialog dialog(this);
    dialog.setWindowTitle(tr("Keys and mouse"));
    dialog.resize(560, 560);
    auto *layout = new QVBoxLayout(&dialog);
    const auto rows = shortcuts();
    auto *table = new QTableWidget(rows.size(), 2, &dialog);
    table->setHorizontalHeaderLabels({tr("What"), tr("How")});
    table->verticalHeader()->hide();
    table->horizontalHeader()->setSectionResizeMode(0, QHeaderView::Stretch);
    table->horizontalHeader()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setTabKeyNavigation(false); // else Tab would never leave it
    table->setAccessibleName(tr("Keys and mouse"));
    for (int row = 0; row < rows.size(); ++row) {
        table->setItem(row, 0, new QTableWidgetItem(rows[row].first));
        table->setItem(row, 1, new QTableWidgetItem(rows[row].second));
    }
    layout->addWidget(table);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Close, &dialog);
    connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    layout->addWidget(buttons);
    dialog.exec();
}
} // namespace host
