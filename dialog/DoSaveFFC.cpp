#include "dialog/CFFCUtility.h"
#include "dialog/DialogUse.h"
#include "dialog/Message.h"
#include "engine/FfcText.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QDateTime>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QTextStream>

void CFFCUtility::DoSaveFFC()
{
    const zor::DialogUse use(*this);
    m_title = ui.lETitle->text();
    m_camera = ui.lECamera->text();
    if (m_title.isEmpty()) {
        zor::showMessage(QStringLiteral("Define Title of file"));
        return;
    }
    if (m_camera.isEmpty()) {
        zor::showMessage(QStringLiteral("Define Camera type"));
        return;
    }
    // The camera's name is the proposed file name.
    const QString name =
        QFileDialog::getSaveFileName(nullptr, QStringLiteral("Save Flat Field Coefficients"),
                                     QCoreApplication::applicationDirPath() + QLatin1Char('/') + m_camera,
                                     QStringLiteral("Flat Field Coefficients (*.ffc);;All Files(*.*)"));
    if (name.isEmpty())
        return;

    // A file that can't be opened or written is not reported: deliberate, see docs/decisions.md.
    QFile file(name);
    file.open(QIODevice::WriteOnly | QIODevice::Text);
    QTextStream stream(&file);
    const QDate today = QDateTime::currentDateTime().date();
    m_date = QString::fromStdString(zor::ffcDate(today.year(), today.month(), today.day()));
    stream << zor::FfcPreamble << m_title << ",\n"
           << m_camera << ",\n"
           << "date " << m_date << ",\n"
           << zor::FfcTableHeading;
    const std::uint8_t fractionBits = ui.cBoxPrecision->currentIndex() == 0 ? 8 : 12;
    stream << zor::ffcTables(m_columnGains, m_rowGains, fractionBits).c_str();
    file.close();
}
