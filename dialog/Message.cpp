#include "dialog/Message.h"

#include <QMessageBox>

namespace zor {

void showMessage(const QString& text)
{
    QMessageBox box;
    box.setText(text);
    box.exec();
}

void showNotEnoughMemory()
{
    showMessage(QStringLiteral("Not enough memory for the operation!"));
}

} // namespace zor
