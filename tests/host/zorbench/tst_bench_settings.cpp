#include "host/zorbench/RawMemory.h"
#include "host/zorbench/RecentFiles.h"

#include <QSettings>
#include <QTemporaryDir>
#include <QtTest>

using Layout = zor::RawLayout;

namespace {

QString textOf(const Layout& layout)
{
    return QString("%1 %2x%3 %4%5")
        .arg(QString::fromStdString(layout.format))
        .arg(layout.width)
        .arg(layout.height)
        .arg(layout.pitch ? QString::number(*layout.pitch) : "tight")
        .arg(layout.packedOrderRecord ? " record" : "");
}

const char* const Start = "Mono8 640x480 tight";

} // namespace

/// What the workbench keeps between runs about files.
class TestBenchSettings : public QObject
{
    Q_OBJECT

private slots:
    void eachSizeHasItsOwnLayout();
    void layoutsThatCannotBeUsedAreForgotten_data();
    void layoutsThatCannotBeUsedAreForgotten();
    void aLayoutBeginsWithACommonSize_data();
    void aLayoutBeginsWithACommonSize();
    void theLatestFileComesFirst();
    void theListHasAnEnd();

private:
    QString file() const { return m_folder.filePath("settings.ini"); }

    QTemporaryDir m_folder;
};

void TestBenchSettings::eachSizeHasItsOwnLayout()
{
    {
        QSettings settings(file(), QSettings::IniFormat);
        zor::RawMemory memory(settings);
        QCOMPARE(textOf(memory.layoutFor(100)), QString(Start));
        memory.remember(100, {"Mono12Packed", 10, 5, 20, true});
        memory.remember(std::uint64_t{5} << 30, {"RGB8", 65535, 1, {}});
    }
    QSettings settings(file(), QSettings::IniFormat);
    zor::RawMemory memory(settings);
    QCOMPARE(textOf(memory.layoutFor(100)), QString("Mono12Packed 10x5 20 record"));
    QCOMPARE(textOf(memory.layoutFor(std::uint64_t{5} << 30)), QString("RGB8 65535x1 tight"));
    QCOMPARE(textOf(memory.layoutFor(std::uint64_t{1} << 30)), QString(Start));
    memory.remember(100, {"Mono8", 100, 1, {}});
    QCOMPARE(textOf(memory.layoutFor(100)), QString("Mono8 100x1 tight"));
}

void TestBenchSettings::layoutsThatCannotBeUsedAreForgotten_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("expected");
    QTest::newRow("a format that there is none of") << "Format" << QVariant("Mono9") << Start;
    QTest::newRow("no width") << "Width" << QVariant(0) << Start;
    QTest::newRow("a word for a width") << "Width" << QVariant("wide") << Start;
    QTest::newRow("a height above the limit") << "Height" << QVariant(65536) << Start;
    QTest::newRow("a pitch that no field can show") << "Pitch" << QVariant(2147483648U) << "Mono16 7x9 tight";
    QTest::newRow("a negative pitch") << "Pitch" << QVariant(-1) << "Mono16 7x9 tight";
    QTest::newRow("the smallest pitch") << "Pitch" << QVariant(1) << "Mono16 7x9 1";
    QTest::newRow("an order that there is none of") << "PackedOrder" << QVariant("any") << "Mono16 7x9 tight";
    QTest::newRow("a record's order") << "PackedOrder" << QVariant("record") << "Mono16 7x9 tight record";
    QTest::newRow("the largest pitch") << "Pitch" << QVariant(2147483647U) << "Mono16 7x9 2147483647";
}

void TestBenchSettings::layoutsThatCannotBeUsedAreForgotten()
{
    QFETCH(QString, name);
    QFETCH(QVariant, value);
    QFETCH(QString, expected);
    QSettings settings(m_folder.filePath("spoilt.ini"), QSettings::IniFormat);
    zor::RawMemory memory(settings);
    memory.remember(8, {"Mono16", 7, 9, {}});
    const QString key = "RawDumps/8/" + name;
    QVERIFY(settings.contains(key));
    settings.setValue(key, value);
    QCOMPARE(textOf(memory.layoutFor(8)), expected);
}

void TestBenchSettings::aLayoutBeginsWithACommonSize_data()
{
    QTest::addColumn<int>("bytes");
    QTest::addColumn<QString>("expected");
    QTest::newRow("a byte a pixel") << 1392 * 1040 << "Mono8 1392x1040 tight";
    QTest::newRow("two bytes a pixel") << 2 * 2448 * 2048 << "Mono16 2448x2048 tight";
    QTest::newRow("two pixels in three bytes") << 1936 * 1216 / 2 * 3 << "Mono12p 1936x1216 tight";
    QTest::newRow("colour") << 3 * 1920 * 1080 << "RGB8 1920x1080 tight";
    QTest::newRow("mono goes before colour") << 1024 * 1024 << "Mono8 1024x1024 tight";
    QTest::newRow("a byte too many") << 1392 * 1040 + 1 << Start;
}

void TestBenchSettings::aLayoutBeginsWithACommonSize()
{
    QFETCH(int, bytes);
    QFETCH(QString, expected);
    QSettings settings(m_folder.filePath("common.ini"), QSettings::IniFormat);
    QCOMPARE(textOf(zor::RawMemory(settings).layoutFor(std::uint64_t(bytes))), expected);
}

void TestBenchSettings::theLatestFileComesFirst()
{
    QSettings settings(m_folder.filePath("recent.ini"), QSettings::IniFormat);
    zor::RecentFiles recent(settings);
    QCOMPARE(recent.files(), QStringList());
    for (const char* name : {"/a", "/b", "/a, with a comma", "/a"})
        recent.add(name);
    QCOMPARE(recent.files(), (QStringList{"/a", "/a, with a comma", "/b"}));
}

void TestBenchSettings::theListHasAnEnd()
{
    QSettings settings(m_folder.filePath("many.ini"), QSettings::IniFormat);
    zor::RecentFiles recent(settings);
    for (int i = 0; i < 12; ++i)
        recent.add(QString("/%1").arg(i));
    QCOMPARE(recent.files().size(), 10);
    QCOMPARE(recent.files().first(), QString("/11"));
    QCOMPARE(recent.files().last(), QString("/2"));
}

QTEST_GUILESS_MAIN(TestBenchSettings)
#include "tst_bench_settings.moc"
