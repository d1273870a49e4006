#include "tests/host/ContradictoryPng.h"
#include "tests/host/ZorffcRun.h"

#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

#include <sys/stat.h>

namespace {

const QStringList Header{"--title", "Title", "--camera", "Camera"};

QByteArray smallFrame()
{
    return pgm(2, 2, 255, {100, 200, 100, 200});
}

} // namespace

class TestZorffcComputeErrors : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void refusesBadInputAndKeepsTheTarget_data();
    void refusesBadInputAndKeepsTheTarget();
    void refusesBadTargets_data();
    void refusesBadTargets();
    void aFailingWriteKeepsTheTarget();
    void aSummaryThatCannotBeWrittenKeepsTheTarget();

private:
    QString path(const QString& name) const { return m_folder->filePath(name); }
    ZorffcRun compute(const QStringList& arguments) const
    {
        return runZorffc(m_folder->path(), QStringList{"compute"} + arguments);
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

void TestZorffcComputeErrors::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
}

void TestZorffcComputeErrors::refusesBadInputAndKeepsTheTarget_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("names");
    const QStringList good = QStringList{"f.pgm"} + Header;

    QTest::newRow("no such file") << QStringList{"absent.pgm"} + Header << "absent.pgm";
    QTest::newRow("an empty file name") << QStringList{""} + Header << "FRAME";
    QTest::newRow("a pipe for a frame") << QStringList{"pipe"} + Header << "pipe: is not a regular file";
    QTest::newRow("a link to itself for a frame")
        << QStringList{"loop.pgm"} + Header << "loop.pgm: cannot be reached (Too many levels";
    QTest::newRow("a raw dump with more bits than its format")
        << QStringList{"f.raw", "--format", "Mono12", "--size", "2x1"} + Header
        << "f.raw: the sample 65535 at column 1, row 0 (from 0) is above 4095, the limit of Mono12";
    QTest::newRow("a folder for a frame") << QStringList{"."} + Header << ".: ";
    QTest::newRow("an empty file") << QStringList{"empty.pgm"} + Header << "empty.pgm";
    QTest::newRow("a truncated file") << QStringList{"short.pgm"} + Header << "short.pgm";
    QTest::newRow("a file of another kind") << QStringList{"text.pgm"} + Header << "text.pgm";
    QTest::newRow("a raw dump shorter than its size")
        << good + QStringList{"--format", "Mono8", "--size", "100x100"} << "f.pgm";
    QTest::newRow("an unknown format")
        << good + QStringList{"--format", "Mono99", "--size", "2x2"} << "Mono99";
    QTest::newRow("an empty format") << good + QStringList{"--format", "", "--size", "2x2"} << "format";
    QTest::newRow("a format without a size") << good + QStringList{"--format", "Mono8"} << "--size";
    QTest::newRow("a size without a format") << good + QStringList{"--size", "2x2"} << "--format";
    QTest::newRow("a size that is none")
        << good + QStringList{"--format", "Mono8", "--size", "2"} << "--size";
    QTest::newRow("a width of 0") << good + QStringList{"--format", "Mono8", "--size", "0x2"} << "--size";
    QTest::newRow("a pitch shorter than a row")
        << good + QStringList{"--format", "Mono8", "--size", "2x2", "--pitch", "1"} << "itch";
    QTest::newRow("a pitch of 2^32") << good + QStringList{"--format", "Mono8",   "--size",
                                                           "2x2",      "--pitch", "4294967296"}
                                     << "--pitch";
    QTest::newRow("an unknown order of packed bits")
        << good + QStringList{"--format", "Mono8", "--size", "2x2", "--packed-order", "east"}
        << "--packed-order";
    QTest::newRow("a depth beside a format")
        << good + QStringList{"--format", "Mono8", "--size", "2x2", "--depth", "8"} << "--depth";
    QTest::newRow("a depth that is none") << good + QStringList{"--depth", "14"} << "--depth";
    QTest::newRow("a sample above the depth")
        << QStringList{"wide.pgm", "--depth", "10"} + Header << "wide.pgm";
    QTest::newRow("a picture that contradicts itself")
        << QStringList{"sbit.png"} + Header
        << "sbit.png: the sample 2049 at column 0, row 0 (from 0) is above 1023, the limit of depth 10 (sBIT "
           "10); "
           "give a larger --depth";
    QTest::newRow("an empty title") << QStringList{"f.pgm", "--title", "", "--camera", "C"} << "--title";
    QTest::newRow("an empty camera") << QStringList{"f.pgm", "--title", "T", "--camera", ""} << "--camera";
    QTest::newRow("a title of two lines")
        << QStringList{"f.pgm", "--title", "a\nb", "--camera", "C"} << "--title";
    QTest::newRow("a camera with a tab")
        << QStringList{"f.pgm", "--title", "T", "--camera", "a\tb"} << "--camera";
    QTest::newRow("a title that reads as a comment")
        << QStringList{"f.pgm", "--title=--T", "--camera", "C"} << "--title";
    QTest::newRow("a camera that reads as a section")
        << QStringList{"f.pgm", "--title", "T", "--camera", ":Table"} << "--camera";
    QTest::newRow("no title") << QStringList{"f.pgm", "--camera", "C"} << "--title";
    QTest::newRow("no camera") << QStringList{"f.pgm", "--title", "T"} << "--camera";
    QTest::newRow("no frame") << Header << "FRAME";
    QTest::newRow("two frames") << good + QStringList{"wide.pgm"} << "wide.pgm";
    QTest::newRow("a title twice") << good + QStringList{"--title", "U"} << "--title";
    QTest::newRow("both targets") << good + QStringList{"--mean", "--normalize", "1"} << "--mean";
    QTest::newRow("a target with a comma") << good + QStringList{"--normalize", "1,5"} << "--normalize";
    QTest::newRow("a target that is no number") << good + QStringList{"--normalize", "one"} << "--normalize";
    QTest::newRow("a target with a unit") << good + QStringList{"--normalize", "1x"} << "--normalize";
    QTest::newRow("an infinite target") << good + QStringList{"--normalize", "inf"} << "--normalize";
    QTest::newRow("a target beyond all numbers")
        << good + QStringList{"--normalize", "1e999"} << "--normalize";
    const QString above0 = "\" does not fit; give a number above 0, with a decimal point";
    QTest::newRow("a target of 0") << good + QStringList{"--normalize", "0"} << "--normalize: \"0" + above0;
    QTest::newRow("a target of minus 0")
        << good + QStringList{"--normalize=-0.0"} << "--normalize: \"-0.0" + above0;
    QTest::newRow("a negative target")
        << good + QStringList{"--normalize=-1.5"} << "--normalize: \"-1.5" + above0;
    QTest::newRow("a negative target as a word of its own")
        << good + QStringList{"--normalize", "-1.5"} << "--normalize: \"-1.5" + above0;
    QTest::newRow("a target below all numbers")
        << good + QStringList{"--normalize", "1e-999"} << "--normalize: \"1e-999" + above0;
    QTest::newRow("an empty target") << good + QStringList{"--normalize", ""} << "--normalize";
    QTest::newRow("a number for a switch") << good + QStringList{"--mean=5"} << "--mean: takes no value";
    QTest::newRow("a switch that is switched off")
        << good + QStringList{"--mean=false"} << "--mean: takes no value";
    QTest::newRow("a precision that is none") << good + QStringList{"--precision", "9"} << "--precision";
    QTest::newRow("an unknown option") << good + QStringList{"--bits", "9"} << "--bits";
}

void TestZorffcComputeErrors::refusesBadInputAndKeepsTheTarget()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, names);
    writeFile(path("f.pgm"), smallFrame());
    writeFile(path("wide.pgm"), pgm(2, 1, 4095, {1023, 1024}));
    writeFile(path("empty.pgm"), {});
    writeFile(path("short.pgm"), smallFrame().chopped(1));
    writeFile(path("text.pgm"), "not a frame\n");
    writeFile(path("sbit.png"), contradictoryPng());
    writeFile(path("f.raw"), QByteArray("\x01\x02\xFF\xFF", 4));
    QCOMPARE(::mkfifo(qPrintable(path("pipe")), 0600), 0);
    QVERIFY(QFile::link("loop.pgm", path("loop.pgm")));
    writeFile(path("target.ffc"), "what was there");
    const QStringList before = namesIn(m_folder->path());

    const ZorffcRun run = compute(arguments + QStringList{"--output", "target.ffc"});
    QVERIFY2(run.exitCode == 2, qPrintable(run.transcript()));
    QVERIFY2(run.out.isEmpty(), qPrintable(run.transcript()));
    QVERIFY2(run.err.startsWith("zorffc: ") && run.err.endsWith('\n') && run.err.count('\n') == 1,
             qPrintable(run.transcript()));
    QVERIFY2(run.err.contains(names), qPrintable(run.transcript()));
    QCOMPARE(readFile(path("target.ffc")), QByteArray("what was there"));
    QCOMPARE(namesIn(m_folder->path()), before);
}

void TestZorffcComputeErrors::refusesBadTargets_data()
{
    QTest::addColumn<QString>("target");
    QTest::addColumn<QString>("problem");
    const QString ending = ": the name does not say the file's kind; give --output a name that ends in .ffc";
    QTest::newRow("a frame that is not read") << "other.pgm"
                                              << "other.pgm" + ending;
    QTest::newRow("a name without an ending") << "f"
                                              << "f" + ending;
    QTest::newRow("an ending alone") << ".ffc"
                                     << ".ffc" + ending;
    QTest::newRow("a folder by its slash") << "new.ffc/"
                                           << "new.ffc/" + ending;
    QTest::newRow("no name") << ""
                             << "--output" + ending;
    QTest::newRow("a folder in the target's place") << "folder.ffc"
                                                    << "folder.ffc: is a folder; give a file name";
    QTest::newRow("a folder that is missing") << "absent/f.ffc"
                                              << "there is no folder absent";
    QTest::newRow("a file for a folder") << "f.pgm/f.ffc"
                                         << "there is no folder f.pgm";
    QTest::newRow("a link to itself") << "loop.ffc"
                                      << "loop.ffc: is a link that leads to itself";
    QTest::newRow("a folder that cannot be reached")
        << "loop.ffc/f.ffc"
        << "the folder loop.ffc cannot be reached (Too many levels";
    QTest::newRow("a link to a frame")
        << "frame.ffc"
        << "frame.ffc: leads to other.pgm, a file of another kind; give --output another name";
    QTest::newRow("a link to a device") << "full.ffc"
                                        << "full.ffc: is not a regular file";
    QTest::newRow("a folder that takes no files") << "/proc/f.ffc"
                                                  << "/proc/f.ffc: cannot be written";
    QTest::newRow("the frame itself") << "f.pgm"
                                      << "f.pgm: is the file that is read";
    QTest::newRow("the frame by another path") << "./folder.ffc/../f.pgm"
                                               << "is the file that is read";
    QTest::newRow("a name that is too long") << QString(300, 'n') + ".ffc"
                                             << "nnn.ffc: ";
}

void TestZorffcComputeErrors::refusesBadTargets()
{
    QFETCH(QString, target);
    QFETCH(QString, problem);
    writeFile(path("f.pgm"), smallFrame());
    writeFile(path("other.pgm"), smallFrame());
    QVERIFY(QDir(m_folder->path()).mkdir("folder.ffc"));
    QVERIFY(QFile::link("loop.ffc", path("loop.ffc")));
    QVERIFY(QFile::link("/dev/full", path("full.ffc")));
    QVERIFY(QFile::link("other.pgm", path("frame.ffc")));
    const QStringList before = namesIn(m_folder->path());

    const ZorffcRun run = compute(QStringList{"f.pgm", "--output", target} + Header);
    QVERIFY2(run.exitCode == 2, qPrintable(run.transcript()));
    QVERIFY2(run.err.startsWith("zorffc: ") && run.err.count('\n') == 1, qPrintable(run.transcript()));
    QVERIFY2(run.err.contains(problem), qPrintable(run.transcript()));
    QCOMPARE(readFile(path("f.pgm")), smallFrame());
    QCOMPARE(readFile(path("other.pgm")), smallFrame());
    QCOMPARE(namesIn(m_folder->path()), before);
    QVERIFY(QFileInfo(path("loop.ffc")).isSymLink());
    QCOMPARE(namesIn(path("folder.ffc")), QStringList());
}

void TestZorffcComputeErrors::aFailingWriteKeepsTheTarget()
{
    writeFile(path("f.pgm"), smallFrame());
    writeFile(path("f.ffc"), "what was there");
    const ZorffcRun run = runShell(m_folder->path(), "ulimit -f 0; exec \"$@\"",
                                   QStringList{"compute", "f.pgm", "--output", "f.ffc"} + Header);
    QVERIFY2(run.exitCode == 2, qPrintable(run.transcript()));
    QVERIFY2(run.err.contains("f.ffc: cannot be written"), qPrintable(run.transcript()));
    QCOMPARE(readFile(path("f.ffc")), QByteArray("what was there"));
    QCOMPARE(namesIn(m_folder->path()), (QStringList{"f.ffc", "f.pgm"}));
}

void TestZorffcComputeErrors::aSummaryThatCannotBeWrittenKeepsTheTarget()
{
    writeFile(path("f.pgm"), smallFrame());
    writeFile(path("f.ffc"), "what was there");
    const ZorffcRun run = runShell(m_folder->path(), "exec \"$@\" >/dev/full",
                                   QStringList{"compute", "f.pgm", "--output", "f.ffc"} + Header);
    QVERIFY2(run.exitCode == 2, qPrintable(run.transcript()));
    QVERIFY2(run.err.contains("standard output"), qPrintable(run.transcript()));
    QCOMPARE(readFile(path("f.ffc")), QByteArray("what was there"));
    QCOMPARE(namesIn(m_folder->path()), (QStringList{"f.ffc", "f.pgm"}));
}

QTEST_GUILESS_MAIN(TestZorffcComputeErrors)
#include "tst_zorffc_compute_errors.moc"
