#pragma once

#include <QStringList>
#include <QTimer>

#include <functional>

class QFileDialog;
class QMessageBox;

/// Answers the modal boxes and file dialogs that open while it lives: a box by its Yes button or by
/// accepting, a file dialog by `chooseFile`, or by cancelling.
class ModalWatch
{
public:
    ModalWatch();

    QStringList texts;                       ///< of the boxes, in their order
    std::function<void(QMessageBox&)> onBox; ///< called while the box is open, before it is answered

    int fileDialogs = 0;
    QString chosenFile;                             ///< absolute path to save to; empty: cancel
    std::function<void(QFileDialog&)> onFileDialog; ///< called before the dialog is answered

private:
    void look();
    void answer(QMessageBox& box);
    void answer(QFileDialog& dialog);

    QTimer m_timer;
};
