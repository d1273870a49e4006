#include <QFile>
#include <QJsonObject>
#include <QLibrary>
#include <QPluginLoader>
#include <QProcess>
#include <QRegularExpression>
#include <QTest>
#include <QtEndian>
#include <QtPlugin>

namespace {

const char* const InterfaceId = "com.zorlabs.ZorBench.ZBKInterfacePlugIn/1.0";

/// What a program prints about the library; empty when it can't be run.
QString printed(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.start(program, arguments);
    process.waitForFinished();
    return process.exitCode() == 0 ? QString(process.readAllStandardOutput()) : QString();
}

} // namespace

/// The built library as a file: what a loader and a linker find in it without running code.
class TestPluginFile : public QObject
{
    Q_OBJECT

private slots:
    void metadataHasItsFiveEntries();
    void metadataIsInItsOrder();
    void metadataLiesInItsSection();
    void libraryExportsItsTwoFunctions();
};

// Read from the file alone: the first test, before anything has loaded the library.
void TestPluginFile::metadataHasItsFiveEntries()
{
    const QPluginLoader loader(QStringLiteral(ZOR_PLUGIN_FILE));
    const QJsonObject data = loader.metaData();
    QVERIFY(!loader.isLoaded());
    QCOMPARE(data.keys(), QStringList({"IID", "MetaData", "className", "debug", "version"}));
    QCOMPARE(data["IID"].toString(), QString(InterfaceId));
    QCOMPARE(data["className"].toString(), QStringLiteral("ZorFFCUtility"));
    QCOMPARE(data["version"].toInt(), 329987);
    QVERIFY(data["debug"].isBool() && !data["debug"].toBool());
    QVERIFY(data["MetaData"].isObject() && data["MetaData"].toObject().isEmpty());
}

void TestPluginFile::metadataIsInItsOrder()
{
    QFile file(QStringLiteral(ZOR_PLUGIN_FILE));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray library = file.readAll();
    const int start = library.indexOf("QTMETADATA  qbjs");
    QVERIFY(start > 0);
    // The block that the exported function answers is the one in the file.
    const auto query = reinterpret_cast<QtPluginMetaDataFunction>(
        QLibrary::resolve(QStringLiteral(ZOR_PLUGIN_FILE), "qt_plugin_query_metadata"));
    QVERIFY(query);
    const int size = 12 + 8 + int(qFromLittleEndian<quint32>(library.constData() + start + 20));
    QCOMPARE(QByteArray(query(), size), library.mid(start, size));

    const QByteArray block = library.mid(start, size);
    int last = 0;
    for (const char* key : {"IID", "className", "version", "debug", "MetaData"}) {
        const int place = block.indexOf(key, 12);
        QVERIFY2(place > last, key);
        last = place;
    }
}

void TestPluginFile::metadataLiesInItsSection()
{
    const QString sections = printed(QStringLiteral(ZOR_READELF), {"-S", "-W", ZOR_PLUGIN_FILE});
    const QRegularExpression line(
        QStringLiteral("\\s\\.qtmetadata\\s+PROGBITS\\s+[0-9a-f]+\\s+([0-9a-f]+)\\s+([0-9a-f]+)\\s"));
    const QRegularExpressionMatch found = line.match(sections);
    QVERIFY2(found.hasMatch(), qPrintable(sections));
    QFile file(QStringLiteral(ZOR_PLUGIN_FILE));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QVERIFY(file.seek(found.captured(1).toLongLong(nullptr, 16)));
    const QByteArray section = file.read(found.captured(2).toLongLong(nullptr, 16));
    QVERIFY2(section.startsWith("QTMETADATA  qbjs"), section.toHex());
}

void TestPluginFile::libraryExportsItsTwoFunctions()
{
    const QString output =
        printed(QStringLiteral(ZOR_NM), {"-D", "--defined-only", "--format=posix", ZOR_PLUGIN_FILE});
    QStringList symbols;
    const QStringList lines = output.split('\n', Qt::SkipEmptyParts);
    for (const QString& line : lines)
        symbols.append(line.section(' ', 0, 0));
    symbols.sort();
    QCOMPARE(symbols, QStringList({"qt_plugin_instance", "qt_plugin_query_metadata"}));
}

QTEST_GUILESS_MAIN(TestPluginFile)
#include "tst_plugin_file.moc"
