// SPDX-License-Identifier: GPL-3.0-or-later
#include "HostProcess.h"

#include <QFile>
#include <QJsonDocument>
#include <sndfile.h>

namespace test
{
void HostProcess::run(const QString &options)
{
    start(options);
    wait();
}

void HostProcess::start(const QString &options)
{
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert("XDG_CONFIG_HOME", path("config"));
    environment.insert("HOME", path("home"));
    // Qt's platform without a screen never gives back the screen that it pretends to have.
    environment.insert("ASAN_OPTIONS", "detect_leaks=0");
    m_process.setProcessEnvironment(environment);
    m_process.setWorkingDirectory(m_folder.path());
    m_process.start(VELMORA_HOST, ("--headless " + options).split(' ', Qt::SkipEmptyParts));
    m_process.waitForStarted();
}

void HostProcess::wait()
{
    m_process.waitForFinished(120000);
    m_output = m_process.readAllStandardOutput();
    m_errors = m_process.readAllStandardError();
}

QString HostProcess::writeScene(const std::vector<COMPLEX> &iq)
{
    QFile file(path("scene.f64"));
    file.open(QIODevice::WriteOnly);
    file.write(reinterpret_cast<const char *>(iq.data()), qint64(iq.size() * sizeof(COMPLEX)));
    return file.fileName();
}

std::vector<COMPLEX> HostProcess::audio(const QString &name, int rateHz) const
{
    SF_INFO info{};
    SNDFILE *file = sf_open(QFile::encodeName(path(name)), SFM_READ, &info);
    std::vector<COMPLEX> audio;
    if (file && info.channels == 2 && info.samplerate == rateHz && info.frames > 0) {
        audio.resize(std::size_t(info.frames));
        sf_readf_double(file, &audio.front().re, info.frames);
    }
    if (file)
        sf_close(file);
    return audio;
}

QByteArray HostProcess::bytes(const QString &name) const
{
    QFile file(path(name));
    file.open(QIODevice::ReadOnly);
    return file.readAll();
}

QJsonObject HostProcess::report(const char *part) const
{
    const QJsonObject all = QJsonDocument::fromJson(bytes("r.json")).object();
    return part ? all[part].toObject() : all;
}
} // namespace test
