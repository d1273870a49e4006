#include "engine/FfcText.h"
#include "tests/engine/EngineTesting.h"
#include "tests/reference/EngineReference.h"

#include <QtTest>

class TestFfcText : public QObject
{
    Q_OBJECT

private slots:
    void preambleIsLines1To5();
    void tableHeadingIsLines9And10();
    void dateLeadsDayAndYearWithAZero_data();
    void dateLeadsDayAndYearWithAZero();
    void tablesAreDecimalLines_data();
    void tablesAreDecimalLines();
    void randomTablesEqualTheReference();
};

void TestFfcText::preambleIsLines1To5()
{
    QCOMPARE(QString(zor::FfcPreamble), QString("-- Flat Field Correction input file example,\n"
                                                "-- lines beginning with two dashes are comments,\n"
                                                "-- and are ignored by parser,\n"
                                                ":Header,\n"
                                                "-- this is the text that will get displayed with a 'gfh' "
                                                "command,\n"));
}

void TestFfcText::tableHeadingIsLines9And10()
{
    QCOMPARE(QString(zor::FfcTableHeading), QString(":Table,\n-- Column(X),HEX Value\n"));
}

void TestFfcText::dateLeadsDayAndYearWithAZero_data()
{
    QTest::addColumn<int>("year");
    QTest::addColumn<int>("month");
    QTest::addColumn<int>("day");
    QTest::addColumn<QString>("text");
    QTest::newRow("one digit of month and day") << 2026 << 3 << 7 << "3/07/26";
    QTest::newRow("two digits of both") << 2026 << 11 << 25 << "11/25/26";
    QTest::newRow("one digit of the month") << 2025 << 9 << 30 << "9/30/25";
    QTest::newRow("one digit of the day") << 2031 << 10 << 1 << "10/01/31";
    QTest::newRow("a year below 10") << 2009 << 12 << 31 << "12/31/09";
    QTest::newRow("a new century") << 2100 << 1 << 10 << "1/10/00";
    QTest::newRow("the century before") << 1999 << 2 << 28 << "2/28/99";
}

void TestFfcText::dateLeadsDayAndYearWithAZero()
{
    QFETCH(int, year);
    QFETCH(int, month);
    QFETCH(int, day);
    QFETCH(QString, text);
    QCOMPARE(QString::fromStdString(zor::ffcDate(year, month, day)), text);
}

void TestFfcText::tablesAreDecimalLines_data()
{
    using Gains = QVector<double>;
    QTest::addColumn<Gains>("columns");
    QTest::addColumn<Gains>("rows");
    QTest::addColumn<int>("bits");
    QTest::addColumn<QString>("text");
    const QString between = ":FFC_Y start,\n-- Row(Y),HEX Value\n";
    QTest::newRow("empty lists leave the two row lines") << Gains{} << Gains{} << 8 << between;
    QTest::newRow("8 bits") << Gains{1.0, 1.5, 1.1} << Gains{0.996} << 8
                            << "1,256\n2,384\n3,281\n" + between + "1,254\n";
    QTest::newRow("12 bits") << Gains{1.0, 1.5, 1.1} << Gains{0.996} << 12
                             << "1,4096\n2,6144\n3,4505\n" + between + "1,4079\n";
    QTest::newRow("rows are counted from 1 again, and there may be more of them")
        << Gains{16.0} << Gains{300.7, 0.0} << 8 << "1,4096\n" + between + "1,76979\n2,0\n";
    QTest::newRow("black, undefined and negative entries")
        << Gains{qInf(), qQNaN()} << Gains{-0.5, -1.5, -2.25} << 12
        << "1,4095\n2,0\n" + between + "1,2048\n2,-1\n3,-4097\n";
}

void TestFfcText::tablesAreDecimalLines()
{
    QFETCH(QVector<double>, columns);
    QFETCH(QVector<double>, rows);
    QFETCH(int, bits);
    QFETCH(QString, text);
    const std::list<double> columnGains(columns.begin(), columns.end());
    const std::list<double> rowGains(rows.begin(), rows.end());
    QCOMPARE(QString::fromStdString(zor::ffcTables(columnGains, rowGains, static_cast<std::uint8_t>(bits))),
             text);
}

void TestFfcText::randomTablesEqualTheReference()
{
    enginetest::Random random(3);
    for (const std::uint8_t bits : {8, 12}) {
        std::vector<double> columns(1200);
        std::vector<double> rows(37);
        for (double& gain : columns)
            gain = random.gain();
        for (double& gain : rows)
            gain = random.gain();
        QCOMPARE(zor::ffcTables({columns.begin(), columns.end()}, {rows.begin(), rows.end()}, bits),
                 reference::tables(columns, rows, bits));
    }
}

QTEST_APPLESS_MAIN(TestFfcText)
#include "tst_ffc_text.moc"
