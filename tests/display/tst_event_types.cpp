#include "tests/display/AdapterTools.h"
#include "tests/display/TakenEventHints.h"

#include <QVector>
#include <QtTest>

class TestEventTypes : public QObject
{
    Q_OBJECT

private slots:
    void areRegisteredInTheOrderOfTheirHints();
    void areRegisteredForGood();

private:
    const QVector<int> types = {DisplayEvStart,       DisplayEvReserved,      DisplayEvContextMenu,
                                DisplayEvViewChanged, DisplayEvMouseDown,     DisplayEvMouseMove,
                                DisplayEvMouseUp,     DisplayEvHexDump,       DisplayEvHexDumpHere,
                                DisplayEvMessage,     DisplayEvImageProcessed};
};

void TestEventTypes::areRegisteredInTheOrderOfTheirHints()
{
    QVector<int> expected = {8000, 8001, 8002, 8003, 8100, 8101, 8102, 8103, 8104, 8200, 8201};
    if (eventHintsAreTaken()) {
        // Types without a hint follow each other at the same distance.
        const int first = QEvent::registerEventType();
        const int distance = QEvent::registerEventType() - first;
        for (int i = 0; i < expected.size(); ++i)
            expected[i] = types[0] + i * distance;
        QVERIFY(types[0] != 8000);
    }
    QCOMPARE(types, expected);
}

void TestEventTypes::areRegisteredForGood()
{
    for (const int type : types)
        QVERIFY(QEvent::registerEventType(type) != type);
}

ZOR_DISPLAY_TEST_MAIN(TestEventTypes)
#include "tst_event_types.moc"
