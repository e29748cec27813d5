// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>

class QDialog;

namespace host
{
/// Answers message boxes and other modal dialogs where nobody sits in front of the program, and
/// where each of them would wait for ever.
///
/// The title and the text go to the log as a warning. The box is then left by its escape button,
/// which is the one that does nothing, else by its default button, else it is closed. Needs a
/// QApplication, for as long as it lives. GUI thread.
class DialogGuard : public QObject
{
    Q_OBJECT

public:
    explicit DialogGuard(QObject *parent = nullptr);

    /// Dialogs that were answered.
    int answered() const { return m_answered; }

    bool eventFilter(QObject *object, QEvent *event) override;

private:
    void answer(QDialog &dialog);

    int m_answered = 0;
};
} // namespace host
