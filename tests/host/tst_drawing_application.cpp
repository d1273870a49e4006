#include "host/zorffc/report/DrawingApplication.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <QtTest>

using namespace zor;

/// What a drawing finds around itself.
class TestDrawingApplication : public QObject
{
    Q_OBJECT

private slots:
    void theOnlyFontIsTheOneThatIsCarried();
    void theEnvironmentIsGone();

private:
    const QTemporaryDir m_folder;
    const bool m_isSet = qputenv("XDG_RUNTIME_DIR", m_folder.path().toLocal8Bit());
    DrawingApplication m_application;
};

void TestDrawingApplication::theOnlyFontIsTheOneThatIsCarried()
{
    // The other three are Qt's own, for whatever font there is.
    QCOMPARE(QFontDatabase().families(), (QStringList{"DejaVu Sans", "Monospace", "Sans Serif", "Serif"}));
    QCOMPARE(QFontDatabase().styles("DejaVu Sans"), (QStringList{"Book", "Bold"}));
    QFont font;
    for (const bool bold : {false, true}) {
        font.setBold(bold);
        QCOMPARE(QFontInfo(font).family(), QString("DejaVu Sans"));
        QCOMPARE(QFontInfo(font).bold(), bold);
    }
}

void TestDrawingApplication::theEnvironmentIsGone()
{
    QCOMPARE(QGuiApplication::platformName(), QString("offscreen"));
    for (const char* variable : {"HOME", "PATH", "QT_QPA_PLATFORM"})
        QVERIFY2(!qEnvironmentVariableIsSet(variable), variable);
    // Without its folder for run-time files Qt makes one in /tmp.
    QVERIFY(m_isSet);
    QCOMPARE(qEnvironmentVariable("XDG_RUNTIME_DIR"), m_folder.path());
}

QTEST_APPLESS_MAIN(TestDrawingApplication)
#include "tst_drawing_application.moc"
