#include "tests/host/frames/FrameFiles.h"

#include <QtTest>

#include <sys/stat.h>

/// What is reported about files that are no frame at all, and about options that nobody can mean.
class TestFramesFiles : public QObject
{
    Q_OBJECT

private slots:
    void aMissingFileIsNamed();
    void aFolderIsNoFile();
    void aLinkToItselfIsNotAMissingFile();
    void aPipeIsNotWaitedFor();
    void everyTextTellsWhatToDo_data();
    void everyTextTellsWhatToDo();
    void otherContentIsRefused_data();
    void otherContentIsRefused();
    void onlyWhatBeginsLikeNoPictureMayBeARawDump_data();
    void onlyWhatBeginsLikeNoPictureMayBeARawDump();
    void theContentTellsTheFormatNotTheName();
    void aNameInOtherLettersWorks();
    void onlyTheFourDepthsCanBeAsked_data();
    void onlyTheFourDepthsCanBeAsked();
    void aSampleAboveTheAskedDepthIsNamed();
    void whiteIsZeroIsAboutTiffFilesAlone_data();
    void whiteIsZeroIsAboutTiffFilesAlone();

private:
    FrameFiles m_files;
};

void TestFramesFiles::aMissingFileIsNamed()
{
    try {
        zor::readFrame(m_files.path("nowhere"), {});
        QFAIL("no error");
    } catch (const zor::FrameError& error) {
        QCOMPARE(QString(error.what()),
                 QString::fromStdString(m_files.path("nowhere")) + ": there is no such file; check the name");
    }
}

void TestFramesFiles::aFolderIsNoFile()
{
    try {
        zor::readFrame(m_files.path("."), {});
        QFAIL("no error");
    } catch (const zor::FrameError& error) {
        QVERIFY(QString(error.what()).endsWith("is a folder; name a file"));
    }
}

void TestFramesFiles::aLinkToItselfIsNotAMissingFile()
{
    QVERIFY(QFile::link("loop", QString::fromStdString(m_files.path("loop"))));
    try {
        zor::readFrame(m_files.path("loop"), {});
        QFAIL("no error");
    } catch (const zor::FrameError& error) {
        QVERIFY2(QString(error.what()).contains(": cannot be reached (Too many levels of symbolic links); "),
                 error.what());
    }
}

void TestFramesFiles::aPipeIsNotWaitedFor()
{
    QCOMPARE(::mkfifo(m_files.path("pipe").c_str(), 0600), 0);
    try {
        zor::readFrame(m_files.path("pipe"), {});
        QFAIL("no error");
    } catch (const zor::FrameError& error) {
        QVERIFY2(QString(error.what()).contains(": is not a regular file; "), error.what());
    }
}

void TestFramesFiles::everyTextTellsWhatToDo_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("an empty file") << QByteArray();
    QTest::newRow("another kind") << QByteArray("hello");
    QTest::newRow("a bitmap") << QByteArray("P4 1 1 A");
    QTest::newRow("a PGM of letters") << QByteArray("P5 a b");
    QTest::newRow("a PGM with a maxval of 0") << QByteArray("P5 1 1 0 A");
    QTest::newRow("a PGM of no width") << QByteArray("P5 0 1 255 A");
    QTest::newRow("a PGM that is too large") << QByteArray("P5 65535 65535 65535 A");
    QTest::newRow("a PGM that is cut") << QByteArray("P5 2 1 255 A");
    QTest::newRow("a decimal PGM that is cut") << QByteArray("P2 2 1 255 1");
    QTest::newRow("a decimal PGM with more") << QByteArray("P2 2 1 255 1 2 3");
    QTest::newRow("a sample above the maxval") << QByteArray("P2 2 1 5 6 7");
    QTest::newRow("a PNG that is cut") << QByteArray("\x89PNG\r\n\x1a\n");
    QTest::newRow("a TIFF that is cut") << QByteArray("II*\0", 4);
}

void TestFramesFiles::everyTextTellsWhatToDo()
{
    QFETCH(QByteArray, bytes);
    const QString text = m_files.error(bytes);
    const QString advice = text.section("; ", -1);
    QVERIFY2(text.contains("; ") &&
                 QRegularExpression("^(check|write|copy|save|use|correct) ").match(advice).hasMatch(),
             qPrintable(text));
    QVERIFY2(!text.contains('\n'), qPrintable(text));
}

void TestFramesFiles::otherContentIsRefused_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("says");
    QTest::newRow("an empty file") << QByteArray() << "is empty";
    QTest::newRow("one letter") << QByteArray("P") << "no PGM, PPM, PNG or TIFF";
    QTest::newRow("text") << QByteArray("hello") << "give --format and --size for a raw dump";
    QTest::newRow("P8") << QByteArray("P8 1 1 255 A") << "no PGM, PPM, PNG or TIFF";
    QTest::newRow("half a PNG signature") << QByteArray("\x89PNG") << "no PGM, PPM, PNG or TIFF";
    QTest::newRow("a TIFF's first letters alone") << QByteArray("II") << "no PGM, PPM, PNG or TIFF";
}

void TestFramesFiles::otherContentIsRefused()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, says);
    const QString text = m_files.error(bytes);
    QVERIFY2(text.contains(says), qPrintable("got '" + text + "'"));
}

void TestFramesFiles::onlyWhatBeginsLikeNoPictureMayBeARawDump_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("maybe");
    QTest::newRow("any bytes") << QByteArray("hello") << true;
    QTest::newRow("a PGM that is cut") << QByteArray("P5 2 1 255 A") << false;
    QTest::newRow("a PNG that is cut") << QByteArray("\x89PNG\r\n\x1a\n") << false;
    QTest::newRow("a TIFF that is cut") << QByteArray("II*\0", 4) << false;
    QTest::newRow("a bitmap") << QByteArray("P4 1 1 A") << false;
    QTest::newRow("an empty file") << QByteArray() << false;
}

void TestFramesFiles::onlyWhatBeginsLikeNoPictureMayBeARawDump()
{
    QFETCH(QByteArray, bytes);
    QFETCH(bool, maybe);
    try {
        zor::readFrame(m_files.write(bytes), {});
        QFAIL("no error");
    } catch (const zor::NoPicture&) {
        QVERIFY(maybe);
    } catch (const zor::FrameError&) {
        QVERIFY(!maybe);
    }
}

void TestFramesFiles::theContentTellsTheFormatNotTheName()
{
    const zor::Frame frame = zor::readFrame(m_files.write("P5 2 1 255 AB", "frame.tiff"), {});
    QCOMPARE(samplesOf(frame), (QList<int>{65, 66}));
}

void TestFramesFiles::aNameInOtherLettersWorks()
{
    const zor::Frame frame = zor::readFrame(m_files.write("P5 2 1 255 AB", "Wei\xC3\x9F bild.pgm"), {});
    QCOMPARE(samplesOf(frame), (QList<int>{65, 66}));
}

void TestFramesFiles::onlyTheFourDepthsCanBeAsked_data()
{
    QTest::addColumn<quint32>("depth");
    QTest::addColumn<bool>("possible");
    for (const quint32 depth : {0U, 1U, 7U, 8U, 9U, 10U, 11U, 12U, 13U, 14U, 16U, 17U, 32U, 0xFFFFFFFFU})
        QTest::addRow("depth %u", depth)
            << depth << (depth == 8 || depth == 10 || depth == 12 || depth == 16);
}

void TestFramesFiles::onlyTheFourDepthsCanBeAsked()
{
    QFETCH(quint32, depth);
    QFETCH(bool, possible);
    zor::FrameOptions options;
    options.depth = depth;
    const QString text = m_files.error("P5 2 1 255 AB", options);
    QCOMPARE(text.isEmpty(), possible);
    QCOMPARE(text.contains("is none that a frame can have; give 8, 10, 12 or 16"), !possible);
}

void TestFramesFiles::aSampleAboveTheAskedDepthIsNamed()
{
    zor::FrameOptions options;
    options.depth = 10;
    const QString text = m_files.error("P2 3 2 4095 0 1 2 1023 1024 4095", options);
    QVERIFY2(
        text.contains(
            "the sample 1024 at column 1, row 1 (from 0) is above 1023, the limit of depth 10 (--depth 10)"),
        qPrintable(text));
}

void TestFramesFiles::whiteIsZeroIsAboutTiffFilesAlone_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("raw");
    QTest::addColumn<QString>("says");
    const QString noTiff = "is no TIFF file, so that its 0 is black; leave --white-is-zero out";
    QTest::newRow("a binary PGM") << QByteArray("P5 1 1 255 A") << false << noTiff;
    QTest::newRow("a decimal PGM") << QByteArray("P2 1 1 255 1") << false << noTiff;
    QTest::newRow("a PNG") << QByteArray("\x89PNG\r\n\x1a\n") << false << noTiff;
    QTest::newRow("a raw dump") << QByteArray("A") << true
                                << "a raw dump's 0 is black; leave --white-is-zero out";
    QTest::newRow("no picture") << QByteArray("hello") << false << "is no PGM, PPM, PNG or TIFF file; ";
}

void TestFramesFiles::whiteIsZeroIsAboutTiffFilesAlone()
{
    QFETCH(QByteArray, bytes);
    QFETCH(bool, raw);
    QFETCH(QString, says);
    zor::FrameOptions options;
    options.whiteIsZero = zor::WhiteIsZero::Stored;
    if (raw)
        options.raw = zor::RawLayout{"Mono8", 1, 1, {}, false};
    const QString text = m_files.error(bytes, options);
    QVERIFY2(text.contains(": " + says), qPrintable(text));
}

QTEST_GUILESS_MAIN(TestFramesFiles)
#include "tst_frames_files.moc"
