// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "vm_library/source/file/IQFile.h"

#include <QObject>
#include <QPointer>
#include <QString>

class IqRecorderOption;
class QSettings;

/// Folder and layout of IQ recordings as the user chose them, with the option page to choose them
/// on and their place in the settings.
///
/// The page holds the values. A host connects the two signals to what it hands the devices
/// (IQRecorderConfigure) and takes path() and format() once at the start. GUI thread only.
class IqRecorder : public QObject
{
    Q_OBJECT

public:
    /// The one of the process. Needs a QApplication and lives until that ends.
    static IqRecorder *instance();

    ~IqRecorder() override;

    /// The page. It has no parent until the host puts it into a window, and everything here works
    /// only as long as that window has not deleted it.
    IqRecorderOption *options() const;

    void setPath(const QString &path);
    QString path() const;
    vm::file::IQFile::Format format() const;

    /// Group "IqRecorder", keys "path" (UTF-8 bytes) and "format" (the layout's number). A missing
    /// key or an unknown layout leaves the present value.
    void writeSettings(QSettings *settings) const;
    void readSettings(QSettings *settings);

    /// The display's scale changed.
    void on4K();

Q_SIGNALS:
    void pathChanged(QString path);
    void formathChanged(vm::file::IQFile::Format format);

private:
    IqRecorder();

    QPointer<IqRecorderOption> m_options; // deleted here unless the host's window did
};
