// SPDX-License-Identifier: GPL-3.0-or-later
#include "host_interfaces/IqRecorder.h"

#include "host_interfaces/IqRecorderOption.h"

#include <QCoreApplication>
#include <QSettings>

#include <memory>

namespace
{
constexpr const char *kGroup = "IqRecorder";
constexpr const char *kPath = "path";
constexpr const char *kFormat = "format";

std::unique_ptr<IqRecorder> theRecorder;
} // namespace

IqRecorder *IqRecorder::instance()
{
    if (!theRecorder) {
        theRecorder.reset(new IqRecorder);
        // A widget may not outlive the application, so statics are too late.
        qAddPostRoutine([] { theRecorder.reset(); });
    }
    return theRecorder.get();
}

IqRecorder::IqRecorder() : m_options(new IqRecorderOption)
{
    connect(m_options, &IqRecorderOption::pathChanged, this, &IqRecorder::pathChanged);
    connect(m_options, &IqRecorderOption::formathChanged, this, &IqRecorder::formathChanged);
}

IqRecorder::~IqRecorder()
{
    delete m_options;
}

IqRecorderOption *IqRecorder::options() const
{
    return m_options;
}

void IqRecorder::setPath(const QString &path)
{
    m_options->setPath(path);
}

QString IqRecorder::path() const
{
    return m_options->path();
}

vm::file::IQFile::Format IqRecorder::format() const
{
    return m_options->format();
}

void IqRecorder::writeSettings(QSettings *settings) const
{
    settings->beginGroup(kGroup);
    settings->setValue(kPath, path().toUtf8());
    settings->setValue(kFormat, int(format()));
    settings->endGroup();
}

void IqRecorder::readSettings(QSettings *settings)
{
    settings->beginGroup(kGroup);
    setPath(QString::fromUtf8(settings->value(kPath, path().toUtf8()).toByteArray()));
    const int format = settings->value(kFormat, int(this->format())).toInt();
    m_options->setFormat(vm::file::IQFile::Format(format));
    settings->endGroup();
}

void IqRecorder::on4K()
{
    m_options->on4K();
}
