// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/FileCheck.h"

#include "settings/HostSettings.h"
#include "settings/SettingsStore.h"

#include <QFile>
#include <QFileInfo>

#include <sys/stat.h>
#include <vector>

namespace host
{
namespace
{
struct NamedFile
{
    QString option;
    QString path;
};

/// The same for all paths to one file, that of a file that is still to be made included. Empty for
/// what is no file.
QString identity(const QString &path)
{
    struct stat status
    { };
    if (stat(QFile::encodeName(path).constData(), &status) == 0)
        return S_ISREG(status.st_mode) ? QString("%1:%2").arg(status.st_dev).arg(status.st_ino)
                                       : QString();
    QFileInfo file(path);
    constexpr int kMostLinks = 40; // as the system follows them
    for (int i = 0; i < kMostLinks && file.isSymLink(); ++i)
        file.setFile(file.symLinkTarget());
    return QFileInfo(file.path()).canonicalFilePath() + '/' + file.fileName();
}

QString checkFolder(const QString &option, const QString &path)
{
    const QFileInfo folder(path);
    QString problem;
    if (!folder.exists())
        problem = "does not exist";
    else if (!folder.isDir())
        problem = "is no folder";
    else if (!folder.isWritable())
        problem = "cannot be written to";
    return problem.isEmpty() ? QString() : option + ": the folder " + path + ' ' + problem;
}

QString checkOutput(const NamedFile &output)
{
    const QFileInfo file(output.path);
    if (file.isDir())
        return output.option + ": " + output.path + " is a folder";
    if (file.exists() && !file.isWritable())
        return output.option + ": " + output.path + " cannot be written to";
    if (file.exists() && !file.isFile())
        return {};
    const QString problem = checkFolder(output.option, file.path());
    return problem.isEmpty() ? problem : problem + ", needed for " + output.path;
}

std::vector<NamedFile> given(std::vector<NamedFile> files)
{
    std::erase_if(files, [](const NamedFile &file) { return file.path.isEmpty(); });
    return files;
}
} // namespace

QString checkFiles(const HostSettings &settings)
{
    const auto outputs = given({
        {"--out", settings.outFile},
        {"--vac-out", settings.vac.file},
        {"--line-out", settings.lineOut.file},
        {"--panorama", settings.spectrum.panoramaFile},
        {"--waterfall", settings.spectrum.waterfallFile},
        {"--audio-spectrum", settings.spectrum.audioSpectrumFile},
        {"--report", settings.reportFile},
    });
    // Not to be written over. Some may be one file.
    auto others = given({
        {"--scene", settings.sceneFile},
        {"--plugin", settings.pluginFile},
        {"--d2xx", settings.d2xxFile},
        {"--eeprom", settings.eepromFile},
        {"--settings",
            settings.settingsFile.isEmpty() ? SettingsStore::defaultPath() : settings.settingsFile},
    });
    for (const NamedFile &output : outputs) {
        if (const QString problem = checkOutput(output); !problem.isEmpty())
            return problem;
        const QString id = identity(output.path);
        for (const NamedFile &other : others)
            if (!id.isEmpty() && id == identity(other.path))
                return QString("%1: %2 is the file of %3, too")
                    .arg(output.option, output.path, other.option);
        others.push_back(output);
    }
    return settings.recording.isOn() ? checkFolder("--record-path", settings.recording.folder)
                                     : QString();
}
} // namespace host
