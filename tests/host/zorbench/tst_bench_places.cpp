#include "host/zorbench/Places.h"

#include <QTemporaryDir>
#include <QtTest>

/// Where the program looks for what belongs to it.
class TestBenchPlaces : public QObject
{
    Q_OBJECT

private slots:
    void anInstallationHasItsOwnFolder();
    void aBuildTreeHasItBesideThePrograms();
    void thePictureIsFoundFromTheWorkingDirectory();
};

void TestBenchPlaces::anInstallationHasItsOwnFolder()
{
    const QTemporaryDir prefix;
    QVERIFY(QDir(prefix.path()).mkpath("bin") && QDir(prefix.path()).mkpath("lib/ZorBench"));
    const zor::Places places = zor::placesOf(prefix.filePath("bin"));
    QCOMPARE(places.home, prefix.filePath("lib/ZorBench"));
    QCOMPARE(places.plugIns, prefix.filePath("lib/ZorBench/Plugins"));
}

void TestBenchPlaces::aBuildTreeHasItBesideThePrograms()
{
    const QTemporaryDir build;
    // The libraries of a build tree are in a folder of this name too.
    QVERIFY(QDir(build.path()).mkpath("bin") && QDir(build.path()).mkpath("lib"));
    const zor::Places places = zor::placesOf(build.filePath("bin"));
    QCOMPARE(places.home, build.filePath("ZorBench"));
    QCOMPARE(places.plugIns, build.filePath("Plugins"));
}

void TestBenchPlaces::thePictureIsFoundFromTheWorkingDirectory()
{
    const zor::Places places = zor::placesOf(BENCH_PROGRAM_FOLDER);
    QCOMPARE(QDir(places.plugIns).absolutePath(), QDir(PLUG_IN_FOLDER).absolutePath());
    QVERIFY(QDir::setCurrent(places.home));
    QCOMPARE(QImage("../ZorBench/Resources/ZoomFull.png").size(), QSize(32, 32));
}

QTEST_GUILESS_MAIN(TestBenchPlaces)
#include "tst_bench_places.moc"
