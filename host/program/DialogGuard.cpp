// SPDX-License-Identifier: GPL-3.0-or-later
#include "program/DialogGuard.h"

#include <QAbstractButton>
#include <QApplication>
#include <QEvent>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QTimer>

#include <cassert>

namespace host
{
namespace
{
QString textOf(const QDialog &dialog)
{
    const auto *box = qobject_cast<const QMessageBox *>(&dialog);
    return box ? box->text() + " " + box->informativeText() : QString();
}

// By the escape button, which the box finds by the roles of its buttons and keeps to itself.
// Without one it does not let itself be closed.
void leave(QDialog &dialog)
{
    if (dialog.close())
        return;
    const auto *box = qobject_cast<const QMessageBox *>(&dialog);
    QPushButton *button = box ? box->defaultButton() : nullptr;
    if (button && button->isEnabled())
        button->click();
    else
        dialog.reject();
}

QString replyOf(const QDialog &dialog)
{
    const auto *box = qobject_cast<const QMessageBox *>(&dialog);
    const QAbstractButton *button = box ? box->clickedButton() : nullptr;
    return button ? "answered with " + button->text().remove('&') : "closed";
}
} // namespace

DialogGuard::DialogGuard(QObject *parent) : QObject(parent)
{
    assert(qobject_cast<QApplication *>(QCoreApplication::instance()));
    qApp->installEventFilter(this);
}

bool DialogGuard::eventFilter(QObject *object, QEvent *event)
{
    if (event->type() != QEvent::Show)
        return false;
    auto *dialog = qobject_cast<QDialog *>(object);
    if (dialog && (dialog->isModal() || qobject_cast<QMessageBox *>(dialog))) {
        // It may be the only window, and the program must not end with it.
        dialog->setAttribute(Qt::WA_QuitOnClose, false);
        // Not at once: the box finds its escape button while it shows itself, and exec() has not
        // begun to wait yet.
        QTimer::singleShot(0, this, [this, shown = QPointer(dialog)] {
            if (shown)
                answer(*shown);
        });
    }
    return false;
}

void DialogGuard::answer(QDialog &dialog)
{
    ++m_answered;
    const QPointer<QDialog> remaining = &dialog;
    const QString said = dialog.windowTitle() + ": " + textOf(dialog).simplified();
    leave(dialog);
    const QString reply = remaining ? replyOf(dialog) : "closed";
    qWarning("%s (%s)", qUtf8Printable(said), qUtf8Printable(reply));
}
} // namespace host
