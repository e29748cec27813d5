// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/controls/EqualizerDialog.h"

#include "window/controls/EqualizerCurve.h"
#include "window/controls/SwitchButton.h"

#include "radio/Radio.h"
#include "settings/Language.h"
#include "settings/ToolLimits.h"

#include "DspCore/audio/Equalizer18.h"

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QSlider>

namespace host
{
namespace
{
QString bandText(double hertz)
{
    return hertz < 1000.0 ? QLocale().toString(hertz)
                          : EqualizerDialog::tr("%1k").arg(QLocale().toString(hertz / 1000.0));
}
} // namespace

EqualizerDialog::EqualizerDialog(Radio &radio, QWidget *parent)
    : QDialog(parent), m_radio(radio), m_curve(new EqualizerCurve(this))
{
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_curve, 1);
    auto *grid = new QGridLayout;
    grid->setHorizontalSpacing(2);
    for (int band = 0; band < DspCore::Equalizer18::kBands; ++band) {
        const double hertz = DspCore::Equalizer18::kCentresHz[std::size_t(band)];
        auto *slider = new QSlider(Qt::Vertical, this);
        slider->setRange(-limits::kMostEqualizerDb, limits::kMostEqualizerDb);
        slider->setMinimumHeight(110);
        slider->setPageStep(3);
        connect(slider, &QSlider::valueChanged, this, &EqualizerDialog::takeGains);
        m_sliders += slider;
        grid->addWidget(slider, 0, band, Qt::AlignHCenter);
        auto *label = new QLabel(this);
        say(slider, [slider, label, hertz] {
            slider->setAccessibleName(tr("Gain at %1 Hz, dB").arg(QLocale().toString(hertz)));
            label->setText(bandText(hertz));
        });
        label->setProperty("role", "heading");
        grid->addWidget(label, 1, band, Qt::AlignHCenter);
        auto *value = new QLabel(this);
        value->setObjectName(QString("gain%1").arg(band));
        value->setMinimumWidth(value->fontMetrics().horizontalAdvance("+40"));
        value->setAlignment(Qt::AlignHCenter);
        grid->addWidget(value, 2, band);
    }
    layout->addLayout(grid);
    auto *row = new QHBoxLayout;
    auto *on = new SwitchButton(radio, Switch::Equalizer, this);
    on->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    row->addWidget(on);
    row->addStretch(1);
    auto *flat = new QPushButton(this);
    connect(flat, &QPushButton::clicked, this, [this] {
        QList<int> gains;
        for (int i = 0; i < m_sliders.size(); ++i)
            gains += 0;
        m_radio.setEqualizerGains(gains);
    });
    row->addWidget(flat);
    auto *close = new QPushButton(this);
    connect(close, &QPushButton::clicked, this, &QDialog::accept);
    row->addWidget(close);
    layout->addLayout(row);
    say(this, [this, flat, close] {
        setWindowTitle(tr("Equalizer"));
        flat->setText(tr("&Flat"));
        close->setText(tr("&Close"));
    });
    connect(&radio, &Radio::equalizerChanged, this, &EqualizerDialog::showGains);
    showGains();
}

void EqualizerDialog::takeGains()
{
    QList<int> gains;
    for (const QSlider *slider : qAsConst(m_sliders))
        gains += slider->value();
    m_radio.setEqualizerGains(gains);
}

void EqualizerDialog::showGains()
{
    const QList<int> gains = m_radio.equalizerGains();
    for (int i = 0; i < m_sliders.size(); ++i) {
        const QSignalBlocker quiet(m_sliders[i]);
        m_sliders[i]->setValue(gains[i]);
        findChild<QLabel *>(QString("gain%1").arg(i))
            ->setText(gains[i] > 0 ? QString("+%1").arg(gains[i]) : QString::number(gains[i]));
    }
    m_curve->setGains(gains);
}
} // namespace host
