// SPDX-License-Identifier: GPL-3.0-or-later
#include "settings/FileCheck.h"

#include "settings/HostSettings.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <unistd.h>

namespace
{
class FileCheckTest : public testing::Test
{
protected:
    FileCheckTest()
    {
        for (const char *name : {"scene.wav", "other.wav"}) {
            QFile file(path(name));
            file.open(QIODevice::WriteOnly);
        }
        QDir(m_folder.path()).mkdir("folder");
        link(qPrintable(path("scene.wav")), qPrintable(path("hard.wav")));
        symlink("../scene.wav", qPrintable(path("folder/soft.wav")));
        symlink("new.wav", qPrintable(path("ahead.wav"))); // to what is not there yet
    }

    QString path(const QString &name) const
    {
        return name.isEmpty() || name.startsWith('/') ? name : m_folder.filePath(name);
    }

    const QTemporaryDir m_folder;
};

TEST_F(FileCheckTest, AnOutputIsNeitherAnInputNorAnotherOutput)
{
    const struct
    {
        const char *scene;
        const char *out;
        const char *report;
        QStringList named; // empty: all is well
    } cases[] = {
        {"scene.wav", "other.wav", "r.json", {}},
        {"scene.wav", "hard.wav", "", {"--out", "--scene", "hard.wav"}},
        {"folder/soft.wav", "", "scene.wav", {"--report", "--scene"}},
        {"", "ahead.wav", "new.wav", {"--report", "--out"}},
        {"", "a.wav", "settings.ini", {"--report", "--settings"}},
        {"", "/dev/null", "/dev/null", {}},
    };
    for (const auto &c : cases) {
        host::HostSettings settings;
        settings.settingsFile = path("settings.ini");
        settings.sceneFile = path(c.scene);
        settings.outFile = path(c.out);
        settings.reportFile = path(c.report);
        const QString problem = host::checkFiles(settings);
        EXPECT_EQ(problem.isEmpty(), c.named.isEmpty()) << c.out << ": " << qPrintable(problem);
        for (const QString &name : c.named)
            EXPECT_TRUE(problem.contains(name)) << qPrintable(problem);
    }
}
} // namespace
