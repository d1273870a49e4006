#include "host/zorffc/CommandError.h"
#include "host/zorffc/FfcFile.h"

#include <QDateTime>
#include <QTemporaryFile>
#include <QtTest>

#include <ctime>

using namespace zor;

namespace {

/// What the clock shows in this program, in seconds since 1970.
std::time_t now = 0;

const std::string Header = ":Header,\nTitle,\nCamera,\ndate 1/02/26,\n";

} // namespace

extern "C" std::time_t __wrap_time(std::time_t*)
{
    return now;
}

class TestFfcFile : public QObject
{
    Q_OBJECT

private slots:
    void textHasItsLinesInOrder();
    void headerTextsAreNotEscaped();
    void dateIsThatOfTheClockInLocalTime_data();
    void dateIsThatOfTheClockInLocalTime();
    void headerTextsMustBePlain_data();
    void headerTextsMustBePlain();
    void readsBackWhatIsWritten();
    void readsOtherLineEnds();
    void sizesUpTo16MiBAreRead_data();
    void sizesUpTo16MiBAreRead();
    void refusesBadText_data();
    void refusesBadText();
};

void TestFfcFile::textHasItsLinesInOrder()
{
    const std::string text = ffcFileText("Title", "Camera", "3/07/26", {1.0, 1.5, 1.1}, {1.0}, 12);
    QCOMPARE(QString::fromStdString(text),
             QString("-- Flat Field Correction input file example,\n"
                     "-- lines beginning with two dashes are comments,\n"
                     "-- and are ignored by parser,\n"
                     ":Header,\n"
                     "-- this is the text that will get displayed with a 'gfh' command,\n"
                     "Title,\n"
                     "Camera,\n"
                     "date 3/07/26,\n"
                     ":Table,\n"
                     "-- Column(X),HEX Value\n"
                     "1,4096\n2,6144\n3,4505\n"
                     ":FFC_Y start,\n"
                     "-- Row(Y),HEX Value\n"
                     "1,4096\n"));
}

void TestFfcFile::headerTextsAreNotEscaped()
{
    const std::string text = ffcFileText("a, b", "caf\xC3\xA9", "3/07/26", {}, {}, 8);
    QVERIFY2(text.find("\na, b,\ncaf\xC3\xA9,\ndate 3/07/26,\n:Table,\n") != std::string::npos, text.c_str());
}

void TestFfcFile::dateIsThatOfTheClockInLocalTime_data()
{
    QTest::addColumn<QDateTime>("utc");
    QTest::addColumn<QByteArray>("zone");
    QTest::addColumn<QString>("date");
    const auto row = [](const char* name, const char* utc, const char* zone, const char* date) {
        QTest::newRow(name) << QDateTime::fromString(utc, Qt::ISODate) << QByteArray(zone) << QString(date);
    };
    row("one digit of month and day", "2026-03-07T12:00:00Z", "UTC0", "3/07/26");
    row("two digits of both", "2026-11-25T12:00:00Z", "UTC0", "11/25/26");
    row("already the next year east of Greenwich", "2026-12-31T22:00:00Z", "EAST-5", "1/01/27");
    row("still the day before west of Greenwich", "2026-03-01T02:00:00Z", "WEST5", "2/28/26");
}

void TestFfcFile::dateIsThatOfTheClockInLocalTime()
{
    QFETCH(QDateTime, utc);
    QFETCH(QByteArray, zone);
    QFETCH(QString, date);
    now = static_cast<std::time_t>(utc.toSecsSinceEpoch());
    qputenv("TZ", zone);
    tzset();
    QCOMPARE(QString::fromStdString(currentFfcDate()), date);
}

void TestFfcFile::headerTextsMustBePlain_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<bool>("good");
    QTest::newRow("words") << QByteArray("Line camera 3, lens B") << true;
    QTest::newRow("letters beyond ASCII") << QByteArray("caf\xC3\xA9") << true;
    QTest::newRow("one dash in front") << QByteArray("-3 dB") << true;
    QTest::newRow("a blank") << QByteArray(" ") << true;
    QTest::newRow("nothing") << QByteArray() << false;
    QTest::newRow("a line break") << QByteArray("a\nb") << false;
    QTest::newRow("a carriage return") << QByteArray("a\r") << false;
    QTest::newRow("a tab") << QByteArray("a\tb") << false;
    QTest::newRow("the delete character") << QByteArray("a\x7F") << false;
    QTest::newRow("the first control character above ASCII") << QByteArray("a\xC2\x80") << false;
    QTest::newRow("the last control character above ASCII") << QByteArray("\xC2\x9F"
                                                                          "a")
                                                            << false;
    QTest::newRow("the blank after the control characters above ASCII") << QByteArray("a\xC2\xA0") << true;
    QTest::newRow("a letter whose last byte is among theirs") << QByteArray("\xC3\x9F") << true;
    QTest::newRow("a comment") << QByteArray("-- a") << false;
    QTest::newRow("a comment of three dashes") << QByteArray("--- a") << false;
    QTest::newRow("a section") << QByteArray(":a") << false;
}

void TestFfcFile::headerTextsMustBePlain()
{
    QFETCH(QByteArray, text);
    QFETCH(bool, good);
    std::string problem;
    try {
        checkHeaderText("--title", text.toStdString());
    } catch (const CommandError& error) {
        problem = error.what();
    }
    QCOMPARE(QString::fromStdString(problem).startsWith("--title: "), !good);
}

void TestFfcFile::readsBackWhatIsWritten()
{
    const FfcFile file =
        parseFfcText("f", ffcFileText("a, b", "Camera", "3/07/26", {1.0, -0.5, -1.5}, {300.7, 0.0}, 8));
    QCOMPARE(file.title, std::string("a, b"));
    QCOMPARE(file.camera, std::string("Camera"));
    QCOMPARE(file.date, std::string("3/07/26"));
    QCOMPARE(file.columns, (std::vector<std::int32_t>{256, 128, -1}));
    QCOMPARE(file.rows, (std::vector<std::int32_t>{76979, 0}));
}

void TestFfcFile::readsOtherLineEnds()
{
    const FfcFile file =
        parseFfcText("f", ":Header,\r\nT,\r\nC,\r\ndate 1/02/26,\r\n\r\n:Table,\r\n1,-2147483648\r\n"
                          ":FFC_Y start,\r\n-- rows\r\n1,2147483647\r\n");
    QCOMPARE(file.camera, std::string("C"));
    QCOMPARE(file.columns, (std::vector<std::int32_t>{-2147483647 - 1}));
    QCOMPARE(file.rows, (std::vector<std::int32_t>{2147483647}));
}

void TestFfcFile::sizesUpTo16MiBAreRead_data()
{
    QTest::addColumn<qint64>("size");
    QTest::addColumn<QString>("problem");
    const qint64 largest = 16 << 20;
    QTest::newRow("the largest is read, and holds no lines") << largest << ": line 1: the line has no end";
    QTest::newRow("one byte more is not")
        << largest + 1 << ": is larger than any coefficient file; check the name";
}

void TestFfcFile::sizesUpTo16MiBAreRead()
{
    QFETCH(qint64, size);
    QFETCH(QString, problem);
    QTemporaryFile file;
    QVERIFY(file.open() && file.resize(size));
    const std::string name = file.fileName().toStdString();
    QString thrown = "(none)";
    try {
        readFfcFile(name);
    } catch (const CommandError& error) {
        thrown = error.what();
    }
    QVERIFY2(thrown.startsWith(file.fileName() + problem), qPrintable(thrown));
}

void TestFfcFile::refusesBadText_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("names");
    const QString header = QString::fromStdString(Header);
    QTest::newRow("nothing") << ""
                             << "f: has no \":FFC_Y start,\" section";
    QTest::newRow("comments alone") << "-- a\n-- b\n"
                                    << "f: has no";
    QTest::newRow("text in front of the header") << "-- a\nT,\n"
                                                 << "f: line 2: text in front";
    QTest::newRow("a table without a header") << ":Table,\n"
                                              << "f: line 1: a section out of its order";
    QTest::newRow("rows in front of columns") << header + ":FFC_Y start,\n"
                                              << "f: line 5: a section out of its order";
    QTest::newRow("two tables") << header + ":Table,\n1,1\n:Table,\n"
                                << "f: line 7: a section out of its order";
    QTest::newRow("four header lines") << header + "more,\n"
                                       << "f: line 5: a fourth header line";
    QTest::newRow("two header lines") << ":Header,\nTitle,\nCamera,\n:Table,\n1,256\n:FFC_Y start,\n1,256\n"
                                      << "f: line 4: the table after 2 header lines";
    QTest::newRow("no header lines") << ":Header,\n:Table,\n1,256\n:FFC_Y start,\n1,256\n"
                                     << "f: line 2: the table after 0 header lines";
    QTest::newRow("no rows section") << header + ":Table,\n1,256\n"
                                     << "f: has no";
    QTest::newRow("no column entries") << header + ":Table,\n:FFC_Y start,\n1,256\n"
                                       << "without entries";
    QTest::newRow("no row entries") << header + ":Table,\n1,256\n:FFC_Y start,\n"
                                    << "without entries";
    QTest::newRow("an entry without a comma") << header + ":Table,\n1 256\n"
                                              << "f: line 6: no entry";
    QTest::newRow("a hexadecimal value") << header + ":Table,\n1,0x100\n"
                                         << "f: line 6: no entry";
    QTest::newRow("a value with a comma after it") << header + ":Table,\n1,256,\n"
                                                   << "f: line 6: no entry";
    QTest::newRow("an empty value") << header + ":Table,\n1,\n"
                                    << "f: line 6: no entry";
    QTest::newRow("a value beyond 32 bits") << header + ":Table,\n1,2147483648\n"
                                            << "f: line 6: no entry";
    QTest::newRow("a negative number") << header + ":Table,\n-1,256\n"
                                       << "f: line 6: no entry";
    QTest::newRow("numbers from 0") << header + ":Table,\n0,256\n"
                                    << "entry 0 where entry 1 belongs";
    QTest::newRow("a last row without its end")
        << header + ":Table,\n1,256\n:FFC_Y start,\n1,256\n2,27"
        << "f: line 9: the line has no end, so the file may be cut short";
    QTest::newRow("a last row with half of its end") << header + ":Table,\r\n1,256\r\n:FFC_Y start,\r\n1,27\r"
                                                     << "f: line 8: the line has no end";
    QTest::newRow("a last comment without its end") << header + ":Table,\n1,256\n:FFC_Y start,\n1,256\n--"
                                                    << "f: line 9: the line has no end";
    QTest::newRow("rows that begin at 2") << header + ":Table,\n1,256\n:FFC_Y start,\n2,256\n"
                                          << "f: line 8: entry 2 where entry 1";
    QTest::newRow("a number twice") << header + ":Table,\n1,256\n1,256\n"
                                    << "f: line 7: entry 1 where entry 2";
    QTest::newRow("a number left out") << header + ":Table,\n1,256\n3,256\n"
                                       << "f: line 7: entry 3 where entry 2";
}

void TestFfcFile::refusesBadText()
{
    QFETCH(QString, text);
    QFETCH(QString, names);
    QString problem = "(none)";
    try {
        parseFfcText("f", text.toStdString());
    } catch (const CommandError& error) {
        problem = error.what();
    }
    QVERIFY2(problem.contains(names), qPrintable(problem));
    QVERIFY2(problem.endsWith("use a file that was written by compute"), qPrintable(problem));
}

QTEST_GUILESS_MAIN(TestFfcFile)
#include "tst_ffc_file.moc"
