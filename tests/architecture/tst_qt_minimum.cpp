#include "tests/architecture/IncludeRules.h"

#include <QDirIterator>
#include <QHash>
#include <QProcess>
#include <QRegularExpression>
#include <QtTest>

/// The product asks for Qt 5.9, so it uses nothing newer, whatever Qt it is built with.
class TestQtMinimum : public QObject
{
    Q_OBJECT

private slots:
    void noBinaryNeedsANewerFunction_data();
    void noBinaryNeedsANewerFunction();
    void noSourceUsesANewerName_data();
    void noSourceUsesANewerName();
};

namespace {

constexpr int MinorMinimum = 9;

/// The minor version of Qt 5 that each function came with, by its symbol. Debian keeps these lists with its
/// Qt; empty elsewhere.
QHash<QString, int> minorOfSymbols()
{
    static const QRegularExpression line(" (\\w+)@Qt_5 5\\.(\\d+)");
    QHash<QString, int> minors;
    QDirIterator lists("/var/lib/dpkg/info", {"libqt5*.symbols"}, QDir::Files);
    while (lists.hasNext()) {
        QFile list(lists.next());
        if (!list.open(QIODevice::ReadOnly))
            continue;
        for (auto match = line.globalMatch(QString::fromLatin1(list.readAll())); match.hasNext();) {
            const QRegularExpressionMatch found = match.next();
            minors.insert(found.captured(1), found.captured(2).toInt());
        }
    }
    return minors;
}

/// Older Qt has these too, but in its headers.
const QStringList InlineInTheMinimum = {
    "_ZN16QCoreApplication9sendEventEP7QObjectP6QEvent", // QCoreApplication::sendEvent
    "_ZN15QLinearGradientD1Ev",                          // ~QLinearGradient
};

} // namespace

void TestQtMinimum::noBinaryNeedsANewerFunction_data()
{
    QTest::addColumn<QString>("file");
    const QStringList files = QString(BINARIES).split('|');
    for (const QString& file : files)
        QTest::newRow(qPrintable(QFileInfo(file).fileName())) << file;
}

void TestQtMinimum::noBinaryNeedsANewerFunction()
{
    QFETCH(QString, file);
    const QHash<QString, int> minors = minorOfSymbols();
    if (minors.isEmpty())
        QSKIP("No lists of Qt's symbols on this machine.");
    QProcess nm;
    nm.start(ZOR_NM, {"--dynamic", "--undefined-only", "--format=posix", file});
    QVERIFY(nm.waitForFinished());
    QCOMPARE(nm.exitCode(), 0);
    int known = 0;
    const QStringList lines = QString::fromLatin1(nm.readAllStandardOutput()).split('\n');
    for (const QString& line : lines) {
        const QString symbol = line.section(QRegularExpression("[ @]"), 0, 0);
        const int minor = minors.value(symbol, -1);
        known += minor >= 0;
        QVERIFY2(minor <= MinorMinimum || InlineInTheMinimum.contains(symbol),
                 qPrintable(QString("%1 came with Qt 5.%2").arg(symbol).arg(minor)));
    }
    QVERIFY2(known > 20, "no use of Qt was found");
}

void TestQtMinimum::noSourceUsesANewerName_data()
{
    QTest::addColumn<QString>("name");
    // What no symbol shows: enumerators, templates and functions whose body is in a header.
    QTest::newRow("5.10: QStringView") << "\\bQStringView\\b";
    QTest::newRow("5.10: QString::chopped and its like") << "\\.chopped\\(";
    QTest::newRow("5.10: QSemaphoreReleaser") << "\\bQSemaphoreReleaser\\b";
    QTest::newRow("5.10: QMetaObject::invokeMethod with a function") << "\\binvokeMethod\\([^;\"]*\\[";
    QTest::newRow("5.12: QScopeGuard") << "\\b[qQ]ScopeGuard\\b";
    QTest::newRow("5.12: QTimer::callOnTimeout") << "\\bcallOnTimeout\\b";
    QTest::newRow("5.12: QImage::Format_RGBA64") << "\\bFormat_RGB[AX]64";
    QTest::newRow("5.13: QImage::Format_Grayscale16") << "\\bFormat_Grayscale16\\b";
    QTest::newRow("5.13: Q_DISABLE_COPY_MOVE") << "\\bQ_DISABLE_(COPY_)?MOVE\\b";
    QTest::newRow("5.14: QWheelEvent::position") << "[eE]vent->(globalP|p)osition\\(";
    QTest::newRow("5.14: Qt::SplitBehavior") << "\\bQt::(Skip|Keep)EmptyParts\\b";
    QTest::newRow("5.14: Qt::endl and its like") << "\\bQt::(endl|hex|dec|fixed|left|right)\\b";
    QTest::newRow("5.14: QColorConstants") << "\\bQColorConstants\\b";
    QTest::newRow("5.14: containers from two iterators")
        << "\\bQ(Vector|List|Set|StringList)(<[^;()]*>)?( \\w+)?\\([^;()]*\\bc?begin\\(";
}

void TestQtMinimum::noSourceUsesANewerName()
{
    QFETCH(QString, name);
    const QRegularExpression newer(name);
    QVERIFY(newer.isValid());
    const QDir root(SOURCE_ROOT);
    int read = 0;
    const IncludeRules rules(textOf(root.filePath("docs/architecture.md")));
    for (const QString& folder : rules.rootFolders()) {
        QDirIterator files(root.filePath(folder), {"*.h", "*.cpp"}, QDir::Files,
                           QDirIterator::Subdirectories);
        while (files.hasNext()) {
            QFile file(files.next());
            QVERIFY(file.open(QIODevice::ReadOnly));
            ++read;
            const QRegularExpressionMatch match = newer.match(QString::fromUtf8(file.readAll()));
            QVERIFY2(!match.hasMatch(),
                     qPrintable(root.relativeFilePath(file.fileName()) + ": " + match.captured()));
        }
    }
    QVERIFY(read > 100);
}

QTEST_APPLESS_MAIN(TestQtMinimum)
#include "tst_qt_minimum.moc"
