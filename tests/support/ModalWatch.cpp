#include "tests/support/ModalWatch.h"

#include <QApplication>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>

namespace {

/// Marks a file dialog that stays open for a while after its answer.
const char* const Answered = "answered";

} // namespace

ModalWatch::ModalWatch()
{
    QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { look(); });
    m_timer.start(1);
}

void ModalWatch::look()
{
    QWidget* widget = QApplication::activeModalWidget();
    if (auto* box = qobject_cast<QMessageBox*>(widget))
        answer(*box);
    else if (auto* dialog = qobject_cast<QFileDialog*>(widget))
        answer(*dialog);
}

void ModalWatch::answer(QMessageBox& box)
{
    texts.append(box.text());
    if (onBox)
        onBox(box);
    if (QAbstractButton* yes = box.button(QMessageBox::Yes))
        yes->click();
    else
        box.accept();
}

void ModalWatch::answer(QFileDialog& dialog)
{
    if (dialog.property(Answered).toBool())
        return;
    dialog.setProperty(Answered, true);
    ++fileDialogs;
    if (onFileDialog)
        onFileDialog(dialog);
    if (chosenFile.isEmpty()) {
        dialog.reject();
        return;
    }
    dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(chosenFile);
    // Accepting may open a box of the file dialog's own, which this timer has to be free to answer.
    QMetaObject::invokeMethod(&dialog, "accept", Qt::QueuedConnection);
}
