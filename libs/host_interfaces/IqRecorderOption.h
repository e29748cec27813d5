// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "vm_library/source/file/IQFile.h"

#include <QString>
#include <QWidget>

#include <memory>

namespace Ui
{
class IqRecorderOption;
}

/// The option page of IQ recordings: layout and folder.
///
/// A new page shows the folder "VelmoraSDR2" in the user's home, and creates it.
class IqRecorderOption : public QWidget
{
    Q_OBJECT

public:
    explicit IqRecorderOption(QWidget *parent = nullptr);
    ~IqRecorderOption() override;

    void setPath(const QString &path);
    QString path() const;

    /// Shows a layout; a number that is none of the three is ignored.
    void setFormat(vm::file::IQFile::Format format);
    vm::file::IQFile::Format format() const;

public Q_SLOTS:
    /// Lets the user pick the folder.
    void onOpenPath();

    /// Writes the layouts' names anew, so that the list takes the size of the new scale.
    void on4K();

Q_SIGNALS:
    // Emitted on a change, by the user or by a setter.
    void pathChanged(QString path);
    void formathChanged(vm::file::IQFile::Format format);

private:
    void fillFormats();

    std::unique_ptr<Ui::IqRecorderOption> m_ui;
};
