// SPDX-License-Identifier: GPL-3.0-or-later
// Settings files, through the host's store and the device's options page: whatever is in the file,
// the page gets values that it can show, and what is saved is read back the same.
#include "FuzzInput.h"
#include "Options/ZephrinMOptions.h"
#include "QtProgram.h"
#include "memory/BandMemory.h"
#include "panel/PanelMap.h"
#include "settings/SettingsStore.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace
{
using fuzz::require;

void put(const QString &path, std::string_view text)
{
    QFile file(path);
    require(file.open(QIODevice::WriteOnly | QIODevice::Truncate)
            && file.write(text.data(), qint64(text.size())) == qint64(text.size()),
        "the file is written");
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static ZephrinMOptions &page = [&]() -> ZephrinMOptions & {
        fuzz::beQtProgram<QApplication>();
        return *new ZephrinMOptions;
    }();
    // In memory: a disk takes its time to be sure of each file.
    static const QTemporaryDir &folder =
        *new QTemporaryDir(QDir("/dev/shm").exists() ? QString("/dev/shm/fuzz-XXXXXX")
                                                     : QDir::tempPath() + "/fuzz-XXXXXX");
    const QString path = folder.filePath("velmora-host.ini");
    fuzz::Input input(data, size);
    const bool isPanel = input.flag();
    const std::string_view text = input.text();
    if (isPanel) {
        host::PanelMap(QString::fromUtf8(text.data(), int(text.size())));
        return 0;
    }
    put(path, text);
    host::SettingsStore store(path);
    page.readSettings(&store.settings());
    require(page.sampleRateIndex() >= 0 && page.sampleRateIndex() <= 8, "there are nine rates");
    require(page.attValue() >= -63 && page.attValue() <= 12, "the preamp has its range");
    page.writeSettings(&store.settings());
    require(store.save(), "what the page holds can be saved");
    host::SettingsStore again(path);
    require(again.error().isEmpty(), "what was saved is whole");
    for (const QString &key : again.settings().allKeys())
        require(again.settings().value(key) == store.settings().value(key),
            "what was saved is read back");
    return 0;
}
