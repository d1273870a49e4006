#include "tests/host/ZorffcRun.h"

#include <QImage>
#include <QTemporaryDir>
#include <QtTest>

#include <sys/stat.h>

namespace {

const QByteArray Header = ":Header,\nTitle,\nCamera,\ndate 1/02/26,\n";

/// Pixels of nearly the given colour in a part of a picture.
int countColor(const QImage& picture, const QRect& part, const QColor& color)
{
    constexpr int tolerance = 40;
    int count = 0;
    for (int y = part.top(); y <= part.bottom(); ++y) {
        for (int x = part.left(); x <= part.right(); ++x) {
            const QColor pixel = picture.pixelColor(x, y);
            count += std::abs(pixel.red() - color.red()) < tolerance &&
                     std::abs(pixel.green() - color.green()) < tolerance &&
                     std::abs(pixel.blue() - color.blue()) < tolerance;
        }
    }
    return count;
}

/// The darkest and the brightest grey in a part of a picture.
std::pair<int, int> greyRange(const QImage& picture, const QRect& part)
{
    std::pair<int, int> range{255, 0};
    for (int y = part.top(); y <= part.bottom(); ++y) {
        for (int x = part.left(); x <= part.right(); ++x) {
            const int grey = qGray(picture.pixel(x, y));
            range = {std::min(range.first, grey), std::max(range.second, grey)};
        }
    }
    return range;
}

} // namespace

class TestZorffcReport : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void drawsFrameCorrectedFrameAndProfiles();
    void isThePictureThatIsKept();
    void drawsADumpInColour();
    void drawsFramesOfAnySize_data();
    void drawsFramesOfAnySize();
    void figuresAreThoseOfCompute();
    void gainsAreThoseOfTheFile();
    void userTextsAreDrawnAsTheyAre();
    void anEvenFrameIsDrawnInGrey();
    void warnsOfLimitedPixels();
    void warningsWaitForTheEnd();
    void readsFilesWithOtherLineEnds();
    void warnsOfAnotherPrecision_data();
    void warnsOfAnotherPrecision();
    void refusesBadFiles_data();
    void refusesBadFiles();

private:
    QString path(const QString& name) const { return m_folder->filePath(name); }
    ZorffcRun run(const QStringList& arguments) const { return runZorffc(m_folder->path(), arguments); }

    std::unique_ptr<QTemporaryDir> m_folder;
};

void TestZorffcReport::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QVERIFY(m_folder->isValid());
}

void TestZorffcReport::drawsFrameCorrectedFrameAndProfiles()
{
    // Columns that darken to the right, and a file that lifts every one to 200.
    writeFile(path("f.pgm"), pgm(4, 2, 255, {200, 150, 120, 100, 200, 150, 120, 100}));
    const QStringList compute{"compute", "f.pgm", "--title", "T", "--camera", "C", "--output", "f.ffc"};
    QCOMPARE(run(compute).exitCode, 0);
    QProcessEnvironment bare = QProcessEnvironment::systemEnvironment();
    bare.remove("DISPLAY");
    bare.remove("WAYLAND_DISPLAY");
    bare.remove("XDG_RUNTIME_DIR");
    bare.insert("QT_QPA_PLATFORM", "xcb");

    const ZorffcRun report =
        runZorffc(m_folder->path(), {"report", "f.pgm", "--ffc", "f.ffc", "-o", "f.png"}, bare);
    QVERIFY2(report.exitCode == 0, qPrintable(report.transcript()));
    QCOMPARE(report.err, QString());
    QCOMPARE(namesIn(m_folder->path()), (QStringList{"f.ffc", "f.pgm", "f.png"}));

    const QImage picture(path("f.png"));
    QCOMPARE(picture.size(), QSize(1600, 1240));
    // The images are side by side below the heading, well inside these parts.
    const auto before = greyRange(picture, QRect(140, 320, 580, 200));
    const auto after = greyRange(picture, QRect(920, 320, 580, 200));
    QVERIFY2(before.second - before.first > 200, qPrintable(QString::number(before.second - before.first)));
    QVERIFY2(after.second - after.first < 5, qPrintable(QString::number(after.second - after.first)));
    // Both curves run through both plots below.
    for (const QRect& plot : {QRect(120, 790, 660, 270), QRect(900, 790, 660, 270)}) {
        const int frameCurve = countColor(picture, plot, QColor(0xd5, 0x5e, 0x00));
        const int correctedCurve = countColor(picture, plot, QColor(0x00, 0x72, 0xb2));
        QVERIFY2(frameCurve > 200, qPrintable(QString::number(frameCurve)));
        QVERIFY2(correctedCurve > 200, qPrintable(QString::number(correctedCurve)));
    }
    // Heading and figures are dark text on white.
    QCOMPARE(greyRange(picture, QRect(40, 26, 600, 44)).second, 255);
    QVERIFY(greyRange(picture, QRect(40, 26, 600, 44)).first < 80);
    QVERIFY(greyRange(picture, QRect(520, 1150, 240, 70)).first < 80);
    QVERIFY(greyRange(picture, QRect(1300, 1150, 240, 70)).first < 80);
}

/// To the pixel: texts, places and colours. A change that is meant is looked at, and its picture kept.
void TestZorffcReport::isThePictureThatIsKept()
{
    std::vector<std::uint16_t> samples;
    QByteArray table = Header + ":Table,\n";
    for (int x = 0; x < 90; ++x)
        table += QByteArray::number(x + 1) + ',' + QByteArray::number(256 + x) + '\n';
    table += ":FFC_Y start,\n";
    for (int y = 0; y < 60; ++y) {
        table += QByteArray::number(y + 1) + ',' + QByteArray::number(256 + 2 * (y % 7)) + '\n';
        for (int x = 0; x < 90; ++x)
            samples.push_back(
                static_cast<std::uint16_t>(2700 - 7 * x + 31 * (x % 3) - 9 * (y % 7) + x * y % 23));
    }
    writeFile(path("flat.pgm"), pgm(90, 60, 4095, samples));
    writeFile(path("flat.ffc"), table);
    const ZorffcRun report = run({"report", "flat.pgm", "--ffc", "flat.ffc", "-o", "flat.png"});
    QVERIFY2(report.exitCode == 0, qPrintable(report.transcript()));

    const QImage kept = QImage(REPORT_FILES "/report.png").convertToFormat(QImage::Format_RGB32);
    const QImage made = QImage(path("flat.png")).convertToFormat(QImage::Format_RGB32);
    QVERIFY(!kept.isNull());
    QCOMPARE(made.size(), kept.size());
    QVector<QPoint> unlike;
    for (int y = 0; y < kept.height(); ++y) {
        for (int x = 0; x < kept.width(); ++x) {
            if (made.pixel(x, y) != kept.pixel(x, y))
                unlike.append(QPoint(x, y));
        }
    }
    QVERIFY2(unlike.isEmpty(), qPrintable(QString("%1 pixels differ, the first at %2, %3")
                                              .arg(unlike.size())
                                              .arg(unlike.value(0).x())
                                              .arg(unlike.value(0).y())));
}

void TestZorffcReport::drawsADumpInColour()
{
    // Columns of grey that darken to the right.
    writeFile(path("f.raw"), QByteArray("\xC8\xC8\xC8\x96\x96\x96\x78\x78\x78\x64\x64\x64", 12).repeated(2));
    const QStringList dump{"f.raw", "--format", "BGR8", "--size", "4x2"};
    QCOMPARE(run(QStringList{"compute"} + dump + QStringList{"--title", "T", "--camera", "C", "-o", "f.ffc"})
                 .exitCode,
             0);
    const ZorffcRun report = run(QStringList{"report"} + dump + QStringList{"--ffc", "f.ffc", "-o", "f.png"});
    QVERIFY2(report.exitCode == 0 && report.err.isEmpty(), qPrintable(report.transcript()));
    QVERIFY2(report.out.contains("Format           BGR8 (depth from format BGR8), brought to Mono8\n"),
             qPrintable(report.transcript()));
    const QImage picture(path("f.png"));
    const auto before = greyRange(picture, QRect(140, 320, 580, 200));
    const auto after = greyRange(picture, QRect(920, 320, 580, 200));
    QVERIFY2(before.second - before.first > 200, qPrintable(QString::number(before.second - before.first)));
    QVERIFY2(after.second - after.first < 5, qPrintable(QString::number(after.second - after.first)));
}

void TestZorffcReport::drawsFramesOfAnySize_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::addColumn<int>("maxval");
    QTest::newRow("one pixel") << 1 << 1 << 255;
    QTest::newRow("one long row") << 3000 << 1 << 4095;
    QTest::newRow("one tall column") << 1 << 3000 << 1023;
    QTest::newRow("larger than its place") << 1601 << 901 << 65535;
}

void TestZorffcReport::drawsFramesOfAnySize()
{
    QFETCH(int, width);
    QFETCH(int, height);
    QFETCH(int, maxval);
    writeFile(path("f.pgm"),
              pgm(width, height, maxval, std::vector<std::uint16_t>(width * height, maxval / 2)));
    QCOMPARE(run({"compute", "f.pgm", "--title", "T", "--camera", "C", "-o", "f.ffc"}).exitCode, 0);
    const ZorffcRun report = run({"report", "f.pgm", "--ffc", "f.ffc", "-o", "f.png"});
    QVERIFY2(report.exitCode == 0, qPrintable(report.transcript()));
    const QImage picture(path("f.png"));
    QCOMPARE(picture.size(), QSize(1600, 1240));
    // Even frames: the second curve lies on the first one, and a single entry shows as a dot on a larger one.
    const QRect columnPlot(120, 790, 660, 270);
    const QRect rowPlot(900, 790, 660, 270);
    for (const auto& [plot, entries] : {std::make_pair(columnPlot, width), std::make_pair(rowPlot, height)}) {
        const int corrected = countColor(picture, plot, QColor(0x00, 0x72, 0xb2));
        const int frame = countColor(picture, plot, QColor(0xd5, 0x5e, 0x00));
        QVERIFY2(corrected > 30 && (entries > 1 || frame > 100),
                 qPrintable(QString::number(corrected) + " " + QString::number(frame)));
    }
}

void TestZorffcReport::figuresAreThoseOfCompute()
{
    QCOMPARE(run({"simulate", "-o", "f.pgm", "--size", "101x77", "--depth", "10"}).exitCode, 0);
    const ZorffcRun compute =
        run({"compute", "f.pgm", "--title", "T", "--camera", "C", "-o", "f.ffc", "--precision", "12"});
    const ZorffcRun report = run({"report", "f.pgm", "--ffc", "f.ffc", "-o", "f.png", "--precision", "12"});
    QVERIFY2(report.exitCode == 0, qPrintable(report.transcript()));
    const auto figures = [](const QString& out) {
        const int start = out.indexOf("Non-uniformity");
        return out.mid(start, out.indexOf('\n', out.indexOf("row means")) - start);
    };
    QVERIFY2(figures(report.out).contains("row means"), qPrintable(report.out));
    QCOMPARE(figures(report.out), figures(compute.out));
}

void TestZorffcReport::gainsAreThoseOfTheFile()
{
    // Column means of 149.5 and 180: a gain of 1.2040, which the file holds as 308 / 256.
    writeFile(path("f.pgm"), pgm(2, 2, 255, {150, 181, 149, 179}));
    const ZorffcRun compute = run({"compute", "f.pgm", "--title", "T", "--camera", "C", "-o", "f.ffc"});
    const ZorffcRun report = run({"report", "f.pgm", "--ffc", "f.ffc", "-o", "f.png"});
    QVERIFY2(
        compute.out.contains("Column gain      1.0000 to 1.2040 computed, 1.0000 to 1.2031 in the file\n"),
        qPrintable(compute.transcript()));
    QVERIFY2(report.out.contains("Column gain      1.0000 to 1.2031 in the file\n"),
             qPrintable(report.transcript()));
    writeFile(path("f.ffc"), Header + ":Table,\n1,256\n2,384\n:FFC_Y start,\n1,320\n2,512\n");
    const ZorffcRun other = run({"report", "f.pgm", "--ffc", "f.ffc", "-o", "f.png"});
    QVERIFY2(other.out.contains("Column gain      1.0000 to 1.5000 in the file\n"
                                "Row gain         1.2500 to 2.0000 in the file\n"),
             qPrintable(other.transcript()));
}

void TestZorffcReport::userTextsAreDrawnAsTheyAre()
{
    // Names that hold place marks are drawn letter by letter: two that differ after a mark differ in the
    // picture, and a mark is not replaced by one of the other texts.
    writeFile(path("f.pgm"), pgm(2, 1, 255, {100, 200}));
    const auto detailsOf = [this](const QString& camera) {
        run({"compute", "f.pgm", "--title", "T", "--camera", camera, "-o", "f.ffc"});
        run({"report", "f.pgm", "--ffc", "f.ffc", "-o", "f.png"});
        return QImage(path("f.png")).copy(0, 74, 1600, 28);
    };
    const QImage marked = detailsOf("%1");
    QCOMPARE(marked.size(), QSize(1600, 28));
    QVERIFY(marked != detailsOf("%2"));
    QVERIFY(marked != detailsOf("f.pgm"));
    QVERIFY(detailsOf("%2") != detailsOf("2"));
    QVERIFY(detailsOf("%3") != detailsOf("2"));
}

void TestZorffcReport::anEvenFrameIsDrawnInGrey()
{
    writeFile(path("f.pgm"), pgm(4, 2, 255, std::vector<std::uint16_t>(8, 255)));
    QCOMPARE(run({"compute", "f.pgm", "--title", "T", "--camera", "C", "-o", "f.ffc"}).exitCode, 0);
    QCOMPARE(run({"report", "f.pgm", "--ffc", "f.ffc", "-o", "white.png"}).exitCode, 0);
    writeFile(path("f.pgm"), pgm(4, 2, 255, std::vector<std::uint16_t>(8, 120)));
    QCOMPARE(run({"report", "f.pgm", "--ffc", "f.ffc", "-o", "grey.png"}).exitCode, 0);
    const QRect inside(140, 320, 580, 200);
    QCOMPARE(greyRange(QImage(path("white.png")), inside), std::make_pair(255, 255));
    QCOMPARE(greyRange(QImage(path("grey.png")), inside), std::make_pair(128, 128));
}

void TestZorffcReport::warnsOfLimitedPixels()
{
    writeFile(path("f.pgm"), pgm(2, 1, 255, {100, 200}));
    writeFile(path("f.ffc"), Header + ":Table,\n1,256\n2,512\n:FFC_Y start,\n1,256\n");
    const ZorffcRun report = run({"report", "f.pgm", "--ffc", "f.ffc", "-o", "f.png"});
    QVERIFY2(report.exitCode == 0, qPrintable(report.transcript()));
    QVERIFY2(report.err.startsWith("zorffc: warning: f.pgm: 50.0 % of the pixels are limited to 255 by the "
                                   "correction"),
             qPrintable(report.transcript()));
    QCOMPARE(report.err.count('\n'), 1);
    QVERIFY2(!report.err.contains("--depth"), qPrintable(report.transcript()));

    // A picture that does not state its depth: 600 needs 10 bits and becomes 1200.
    QImage picture(2, 1, QImage::Format_Grayscale16);
    picture.fill(Qt::black);
    reinterpret_cast<quint16*>(picture.scanLine(0))[1] = 600;
    QVERIFY(picture.save(path("g.png")));
    const ZorffcRun guessed = run({"report", "g.png", "--ffc", "f.ffc", "-o", "f.png"});
    QVERIFY2(guessed.exitCode == 0, qPrintable(guessed.transcript()));
    QVERIFY2(
        guessed.err.contains("are limited to 1023 by the correction") &&
            guessed.err.contains("; give --depth, because the depth is guessed from the largest sample, "),
        qPrintable(guessed.transcript()));
}

void TestZorffcReport::warningsWaitForTheEnd()
{
    // 12 fraction bits read as 8 bring a warning, but not to a run that fails.
    writeFile(path("f.pgm"), pgm(2, 1, 255, {100, 200}));
    writeFile(path("f.ffc"), Header + ":Table,\n1,4096\n2,4096\n:FFC_Y start,\n1,4096\n");
    const ZorffcRun report = runShell(m_folder->path(), "exec \"$@\" >/dev/full",
                                      {"report", "f.pgm", "--ffc", "f.ffc", "-o", "f.png"});
    QVERIFY2(report.exitCode == 2, qPrintable(report.transcript()));
    QVERIFY2(report.err.startsWith("zorffc: standard output") && report.err.count('\n') == 1,
             qPrintable(report.transcript()));
    QCOMPARE(namesIn(m_folder->path()), (QStringList{"f.ffc", "f.pgm"}));
}

void TestZorffcReport::readsFilesWithOtherLineEnds()
{
    writeFile(path("f.pgm"), pgm(2, 1, 255, {100, 200}));
    QCOMPARE(run({"compute", "f.pgm", "--title", "T", "--camera", "C", "-o", "f.ffc"}).exitCode, 0);
    writeFile(path("dos.ffc"), readFile(path("f.ffc")).replace("\n", "\r\n"));
    for (const char* name : {"f", "dos"}) {
        const QString file(name);
        const ZorffcRun report = run({"report", "f.pgm", "--ffc", file + ".ffc", "-o", file + ".png"});
        QVERIFY2(report.exitCode == 0 && report.err.isEmpty(), qPrintable(report.transcript()));
        QVERIFY2(report.out.contains("  column means      33.3333 %    0.0000 %\n"),
                 qPrintable(report.transcript()));
    }
}

void TestZorffcReport::warnsOfAnotherPrecision_data()
{
    QTest::addColumn<QString>("written");
    QTest::addColumn<QString>("read");
    QTest::addColumn<bool>("warns");
    QTest::newRow("8 as 8") << "8"
                            << "8" << false;
    QTest::newRow("12 as 12") << "12"
                              << "12" << false;
    QTest::newRow("8 as 12") << "8"
                             << "12" << true;
    QTest::newRow("12 as 8") << "12"
                             << "8" << true;
}

void TestZorffcReport::warnsOfAnotherPrecision()
{
    QFETCH(QString, written);
    QFETCH(QString, read);
    QFETCH(bool, warns);
    writeFile(path("f.pgm"), pgm(3, 1, 255, {100, 150, 140}));
    QCOMPARE(run({"compute", "f.pgm", "--title", "T", "--camera", "C", "-o", "f.ffc", "--precision", written})
                 .exitCode,
             0);
    const ZorffcRun report = run({"report", "f.pgm", "--ffc", "f.ffc", "-o", "f.png", "--precision", read});
    QVERIFY2(report.exitCode == 0, qPrintable(report.transcript()));
    QVERIFY2(report.err.contains("f.ffc: half of the column gains are ") == warns,
             qPrintable(report.transcript()));
    QVERIFY2(report.err.contains("--precision " + written + "?") == warns, qPrintable(report.transcript()));
    // Gains 16 times too large limit the frame as well.
    QCOMPARE(report.err.count('\n'), !warns ? 0 : written == "12" ? 2 : 1);
}

void TestZorffcReport::refusesBadFiles_data()
{
    QTest::addColumn<QByteArray>("ffc");
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("names");
    const QByteArray good = Header + ":Table,\n1,256\n2,256\n:FFC_Y start,\n1,256\n";
    const QStringList usual{"f.pgm", "--ffc", "f.ffc", "-o", "f.png"};

    QTest::newRow("no such frame") << good << QStringList{"absent.pgm", "--ffc", "f.ffc", "-o", "f.png"}
                                   << "absent.pgm";
    QTest::newRow("no such coefficient file")
        << good << QStringList{"f.pgm", "--ffc", "absent.ffc", "-o", "f.png"}
        << "absent.ffc: there is no such file; check the name";
    QTest::newRow("an empty name for a coefficient file")
        << good << QStringList{"f.pgm", "--ffc", "", "-o", "f.png"} << "--ffc: the file name is empty";
    QTest::newRow("a pipe for a coefficient file")
        << good << QStringList{"f.pgm", "--ffc", "pipe", "-o", "f.png"} << "pipe: is not a regular file";
    QTest::newRow("a header without its lines")
        << QByteArray(":Header,\n:Table,\n1,256\n2,256\n:FFC_Y start,\n1,256\n") << usual
        << "f.ffc: line 2: ";
    QTest::newRow("a folder for a coefficient file")
        << good << QStringList{"f.pgm", "--ffc", ".", "-o", "f.png"} << "is a folder";
    QTest::newRow("the frame for a coefficient file")
        << good << QStringList{"f.pgm", "--ffc", "f.pgm", "-o", "f.png"} << "f.pgm: line 1: ";
    QTest::newRow("the picture over the coefficient file")
        << good << QStringList{"f.pgm", "--ffc", "f.ffc", "-o", "f.ffc"} << "f.ffc: is the file that is read";
    QTest::newRow("the picture over the frame")
        << good << QStringList{"f.pgm", "--ffc", "f.ffc", "-o", "f.pgm"} << "f.pgm: is the file that is read";
    QTest::newRow("a picture of another kind")
        << good << QStringList{"f.pgm", "--ffc", "f.ffc", "-o", "f.jpg"}
        << "f.jpg: the name does not say the file's kind";
    QTest::newRow("a missing folder")
        << good << QStringList{"f.pgm", "--ffc", "f.ffc", "-o", "absent/f.png"} << "absent/f.png";
    QTest::newRow("a file that is cut inside its last number")
        << good.chopped(2) << usual
        << "f.ffc: line 9: the line has no end, so the file may be cut short; use a file that was written by";
    QTest::newRow("a file that is cut before its last line end")
        << good.chopped(1) << usual << "f.ffc: line 9: the line has no end";
    QTest::newRow("a file that is cut after its last line but one")
        << good.chopped(6) << usual << "f.ffc: has a table without entries";
    QTest::newRow("too few columns") << Header + ":Table,\n1,256\n:FFC_Y start,\n1,256\n"
                                     << usual << "holds 1 column entries where f.pgm needs 2";
    QTest::newRow("too many rows") << good + "2,256\n" << usual << "holds 2 row entries where f.pgm needs 1";
    QTest::newRow("an entry out of order") << Header + ":Table,\n1,256\n3,256\n"
                                           << usual << "f.ffc: line 7: entry 3";
    QTest::newRow("a wrong precision") << good << usual + QStringList{"--precision", "10"} << "--precision";
}

void TestZorffcReport::refusesBadFiles()
{
    QFETCH(QByteArray, ffc);
    QFETCH(QStringList, arguments);
    QFETCH(QString, names);
    writeFile(path("f.pgm"), pgm(2, 1, 255, {100, 200}));
    writeFile(path("f.ffc"), ffc);
    writeFile(path("f.png"), "what was there");
    QCOMPARE(::mkfifo(qPrintable(path("pipe")), 0600), 0);

    const ZorffcRun report = run(QStringList{"report"} + arguments);
    QVERIFY2(report.exitCode == 2, qPrintable(report.transcript()));
    QVERIFY2(report.err.startsWith("zorffc: ") && report.err.count('\n') == 1,
             qPrintable(report.transcript()));
    QVERIFY2(report.err.contains(names), qPrintable(report.transcript()));
    QCOMPARE(report.out, QString());
    QCOMPARE(readFile(path("f.png")), QByteArray("what was there"));
    QCOMPARE(readFile(path("f.ffc")), ffc);
    QCOMPARE(namesIn(m_folder->path()), (QStringList{"f.ffc", "f.pgm", "f.png", "pipe"}));
}

QTEST_GUILESS_MAIN(TestZorffcReport)
#include "tst_zorffc_report.moc"
