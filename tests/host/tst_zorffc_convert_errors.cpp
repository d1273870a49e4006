#include "tests/host/ContradictoryPng.h"
#include "tests/host/ZorffcRun.h"

#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

/// What convert refuses, and that nothing is touched then.
class TestZorffcConvertErrors : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void refusesWhatIsWrong_data();
    void refusesWhatIsWrong();
    void aSummaryThatCannotBeWrittenKeepsTheTarget();
    void aFailingWriteKeepsTheTarget_data();
    void aFailingWriteKeepsTheTarget();

private:
    QString path(const QString& name) const { return m_folder->filePath(name); }

    std::unique_ptr<QTemporaryDir> m_folder;
};

void TestZorffcConvertErrors::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
    writeFile(path("f.raw"), "ABCD");
    writeFile(path("f.pgm"), pgm(2, 2, 255, {1, 2, 3, 4}));
    writeFile(path("wide.raw"), QByteArray("\x01\x02\xFF\xFF", 4));
    writeFile(path("sbit.png"), contradictoryPng());
    writeFile(path("target.png"), "what was there");
    QVERIFY(QDir(m_folder->path()).mkdir("folder.png"));
    QVERIFY(QFile::link("loop.png", path("loop.png")));
    QVERIFY(QFile::link("f.pgm", path("alias.pgm")));
    QVERIFY(QFile::link("/dev/full", path("full.png")));
}

void TestZorffcConvertErrors::refusesWhatIsWrong_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("names");
    const QStringList mono8{"--format", "Mono8", "--size", "2x2"};
    const auto dump = [](const QString& file, const QString& format, const QString& size) {
        return QStringList{file, "--format", format, "--size", size, "target.png"};
    };

    QTest::newRow("nothing") << QStringList{} << "FRAME";
    QTest::newRow("no output") << QStringList{"f.pgm"} << "OUT is required; see zorffc convert --help";
    QTest::newRow("a dump without an output") << QStringList{"f.raw"} + mono8 << "OUT is required";
    QTest::newRow("three files") << QStringList{"f.pgm", "target.png", "more.png"} << "more.png";

    const QString endings = "give OUT a name that ends in .png, .tiff, .tif or .pgm";
    QTest::newRow("a name without an ending") << QStringList{"f.pgm", "target"} << "target: the name does";
    QTest::newRow("a kind that is not written") << QStringList{"f.pgm", "t.jpg"}
                                                << "t.jpg: the name does not "
                                                   "say the file's kind; " +
                                                       endings;
    QTest::newRow("an ending alone") << QStringList{"f.pgm", ".png"} << endings;
    QTest::newRow("an empty name") << QStringList{"f.pgm", ""} << endings;
    QTest::newRow("the frame itself") << QStringList{"f.pgm", "f.pgm"} << "f.pgm: is the file that is read";
    QTest::newRow("the frame by another path")
        << QStringList{"f.pgm", "./folder.png/../f.pgm"} << "is the file that is read";
    QTest::newRow("a link to the frame")
        << QStringList{"f.pgm", "alias.pgm"} << "alias.pgm: is the file that is read";
    QTest::newRow("a missing folder") << QStringList{"f.pgm", "absent/t.png"} << "there is no folder absent";
    QTest::newRow("a folder in the output's place")
        << QStringList{"f.pgm", "folder.png"} << "folder.png: is a folder";
    QTest::newRow("a link to itself") << QStringList{"f.pgm", "loop.png"} << "loop.png: is a link that leads";
    QTest::newRow("a device") << QStringList{"f.pgm", "/dev/full"} << "/dev/full: the name does not say";
    QTest::newRow("a link to a device")
        << QStringList{"f.pgm", "full.png"} << "full.png: is not a regular file; give another file name";
    QTest::newRow("a folder that takes no files")
        << QStringList{"f.pgm", "/proc/t.png"} << "/proc/t.png: cannot be written";

    QTest::newRow("no such frame") << QStringList{"absent.pgm", "target.png"}
                                   << "absent.pgm: there is no such";
    QTest::newRow("an empty frame name") << QStringList{"", "target.png"} << "FRAME: the file name is empty";
    QTest::newRow("a dump without its format")
        << QStringList{"f.raw", "target.png"}
        << "f.raw: is no PGM, PPM, PNG or TIFF file; save it as one, or give "
           "--format and --size";
    QTest::newRow("a format without a size")
        << QStringList{"f.raw", "target.png", "--format", "Mono8"} << "--size";
    QTest::newRow("a size without a format")
        << QStringList{"f.raw", "target.png", "--size", "2x2"} << "--format";
    QTest::newRow("a pitch without a format")
        << QStringList{"f.pgm", "target.png", "--pitch", "2"} << "--format";
    QTest::newRow("an order without a format")
        << QStringList{"f.pgm", "target.png", "--packed-order", "record"} << "--format";
    QTest::newRow("an unknown format")
        << dump("f.raw", "Mono99", "2x2")
        << "f.raw: there is no pixel format 'Mono99'; see zorffc formats for the names of all";
    QTest::newRow("a format in other letters")
        << dump("f.raw", "bayerrg8", "2x2")
        << "there is no pixel format 'bayerrg8'; did you mean 'BayerRG8'?";
    QTest::newRow("a dump of another size")
        << dump("f.raw", "RGB8", "2x2")
        << "f.raw: 2x2 in RGB8 with a pitch of 6 takes 12 bytes, the file "
           "has 4; check --size, --format and --pitch";
    QTest::newRow("a side of 65536") << dump("f.raw", "Mono8", "65536x1") << "--size";
    QTest::newRow("a pitch below a row") << dump("f.raw", "Mono8", "2x2") + QStringList{"--pitch", "1"}
                                         << "f.raw: a pitch of 1 bytes is too small";
    QTest::newRow("a sample above its format")
        << dump("wide.raw", "Mono12", "2x1")
        << "wide.raw: the sample 65535 at column 1, row 0 (from 0) is above 4095, the limit of Mono12";
    QTest::newRow("a picture of 14 bits") << QStringList{"f.pgm", "target.png", "--depth", "14"}
                                          << "--depth: \"14\" does not fit; give one of 8|10|12|16";
    QTest::newRow("a depth and all bits")
        << QStringList{"f.pgm", "target.png", "--depth", "16", "--stretch"} << "--depth excludes --stretch";
    QTest::newRow("a value for a switch")
        << QStringList{"f.pgm", "target.png", "--stretch=2"} << "--stretch: takes no value";
    QTest::newRow("a picture that contradicts itself, whose depth cannot be given here")
        << QStringList{"sbit.png", "target.png"}
        << "sbit.png: the sample 2049 at column 0, row 0 (from 0) is above 1023, the limit of depth 10 (sBIT "
           "10); "
           "correct this entry or write the file again";
    QTest::newRow("an option of compute")
        << QStringList{"f.pgm", "target.png", "--precision", "8"} << "--precision";
}

void TestZorffcConvertErrors::refusesWhatIsWrong()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, names);
    const QStringList before = namesIn(m_folder->path());
    const ZorffcRun run = runZorffc(m_folder->path(), QStringList{"convert"} + arguments);
    QVERIFY2(run.exitCode == 2, qPrintable(run.transcript()));
    QVERIFY2(run.out.isEmpty(), qPrintable(run.transcript()));
    QVERIFY2(run.err.startsWith("zorffc: ") && run.err.endsWith('\n') && run.err.count('\n') == 1,
             qPrintable(run.transcript()));
    QVERIFY2(run.err.contains(names), qPrintable(run.transcript()));
    QCOMPARE(readFile(path("target.png")), QByteArray("what was there"));
    QCOMPARE(readFile(path("f.pgm")), pgm(2, 2, 255, {1, 2, 3, 4}));
    QCOMPARE(namesIn(m_folder->path()), before);
}

void TestZorffcConvertErrors::aSummaryThatCannotBeWrittenKeepsTheTarget()
{
    const QStringList before = namesIn(m_folder->path());
    const ZorffcRun run =
        runShell(m_folder->path(), "exec \"$@\" >/dev/full", {"convert", "f.pgm", "target.png"});
    QVERIFY2(run.exitCode == 2, qPrintable(run.transcript()));
    QVERIFY2(run.err.contains("standard output: the summary cannot be written"),
             qPrintable(run.transcript()));
    QCOMPARE(readFile(path("target.png")), QByteArray("what was there"));
    QCOMPARE(namesIn(m_folder->path()), before);
}

void TestZorffcConvertErrors::aFailingWriteKeepsTheTarget_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("says");
    QTest::newRow("PGM") << "t.pgm"
                         << "t.pgm: cannot be written: File too large; make room";
    QTest::newRow("PNG") << "t.png"
                         << "t.png: cannot be written: File too large; make room";
    QTest::newRow("TIFF") << "t.tiff"
                          << "t.tiff: ";
}

void TestZorffcConvertErrors::aFailingWriteKeepsTheTarget()
{
    QFETCH(QString, name);
    QFETCH(QString, says);
    // Noise, which no compression makes small.
    QByteArray frame = "P5 256 256 255\n";
    std::uint32_t state = 1;
    for (int i = 0; i < 256 * 256; ++i) {
        state = state * 1664525 + 1013904223;
        frame.append(char(state >> 24));
    }
    writeFile(path("noise.pgm"), frame);
    writeFile(path(name), "what was there");
    const QStringList before = namesIn(m_folder->path());

    // The limit counts blocks of 512 bytes.
    const ZorffcRun run =
        runShell(m_folder->path(), "ulimit -f 16; exec \"$@\"", {"convert", "noise.pgm", name});
    QVERIFY2(run.exitCode == 2, qPrintable(run.transcript()));
    QVERIFY2(run.err.contains(says) && run.err.count('\n') == 1, qPrintable(run.transcript()));
    QCOMPARE(readFile(path(name)), QByteArray("what was there"));
    QCOMPARE(namesIn(m_folder->path()), before);
}

QTEST_GUILESS_MAIN(TestZorffcConvertErrors)
#include "tst_zorffc_convert_errors.moc"
