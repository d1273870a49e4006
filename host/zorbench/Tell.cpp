#include "host/zorbench/Tell.h"

#include "host/frames/Frame.h"

#include <QFile>
#include <QMessageBox>

namespace zor {

void tell(QWidget* window, const QString& sentence)
{
    auto* box =
        new QMessageBox(QMessageBox::Warning, QStringLiteral("ZorBench"), sentence, QMessageBox::Ok, window);
    // File names are no markup.
    box->setTextFormat(Qt::PlainText);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->open();
}

QString textFor(const FrameError& error)
{
    const QString text = QFile::decodeName(error.what());
    const int advice = text.lastIndexOf(QLatin1String("; "));
    return advice >= 0 && text.indexOf(QLatin1String(" --"), advice) >= 0 ? text.left(advice) : text;
}

} // namespace zor
