// SPDX-License-Identifier: GPL-3.0-or-later
#include "host_interfaces/IqRecorderOption.h"

#include "ui_IqRecorderOption.h"

#include <QDir>
#include <QFileDialog>
#include <QSignalBlocker>

#include <iterator>

namespace
{
using Format = vm::file::IQFile::Format;

// The order in the list is not that of the numbers.
constexpr int kIndexOfFormat[] = {0, 2, 1};

Format formatAt(int index)
{
    switch (index) {
    case 0:
        return Format::VelmoraSDR2;
    case 1:
        return Format::HDSDR;
    default:
        return Format::StandartWave;
    }
}
} // namespace

IqRecorderOption::IqRecorderOption(QWidget *parent)
    : QWidget(parent), m_ui(std::make_unique<Ui::IqRecorderOption>())
{
    m_ui->setupUi(this);
    fillFormats();
    setPath(QDir::homePath() + "/VelmoraSDR2");
    QDir().mkpath(path());

    connect(m_ui->pbOpen, &QPushButton::clicked, this, &IqRecorderOption::onOpenPath);
    connect(m_ui->lePath, &QLineEdit::textChanged, this, &IqRecorderOption::pathChanged);
    connect(m_ui->cbIqFormat, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
        [this] { emit formathChanged(format()); });
}

IqRecorderOption::~IqRecorderOption() = default;

void IqRecorderOption::setPath(const QString &path)
{
    m_ui->lePath->setText(path);
}

QString IqRecorderOption::path() const
{
    return m_ui->lePath->text();
}

void IqRecorderOption::setFormat(Format format)
{
    if (std::size_t(format) < std::size(kIndexOfFormat))
        m_ui->cbIqFormat->setCurrentIndex(kIndexOfFormat[format]);
}

Format IqRecorderOption::format() const
{
    return formatAt(m_ui->cbIqFormat->currentIndex());
}

void IqRecorderOption::onOpenPath()
{
    const QString chosen = QFileDialog::getExistingDirectory(this, tr("Open Directory"), path());
    if (!chosen.isEmpty()) // empty: cancelled
        setPath(chosen);
}

void IqRecorderOption::on4K()
{
    const QSignalBlocker quiet(m_ui->cbIqFormat); // the selection stays
    const int index = m_ui->cbIqFormat->currentIndex();
    m_ui->cbIqFormat->clear();
    fillFormats();
    m_ui->cbIqFormat->setCurrentIndex(index);
}

void IqRecorderOption::fillFormats()
{
    m_ui->cbIqFormat->addItems({"VelmoraSDR2", "HDSDR", "Standart WAVE"});
}
