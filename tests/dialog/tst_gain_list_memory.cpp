#include "tests/support/DialogProbe.h"
#include "tests/support/ModalWatch.h"

#include <QTest>

#include <new>

// operator new as the objects of this program call it; libraries keep their own.
extern "C" {
void* __real__Znwm(std::size_t bytes);
void* __wrap__Znwm(std::size_t bytes);
}

namespace {

/// A node of std::list<double>: two pointers and the value.
constexpr std::size_t NodeBytes = 24;

int failingNode = 0; ///< number of the node that can't be had, from 1; 0 for none
int nodes = 0;

void failNode(int number)
{
    failingNode = number;
    nodes = 0;
}

} // namespace

void* __wrap__Znwm(std::size_t bytes)
{
    if (failingNode != 0 && bytes == NodeBytes && ++nodes == failingNode) {
        failingNode = 0;
        throw std::bad_alloc();
    }
    return __real__Znwm(bytes);
}

class TestGainListMemory : public QObject
{
    Q_OBJECT

private slots:
    void failingNodeStopsTheRun_data();
    void failingNodeStopsTheRun();
};

void TestGainListMemory::failingNodeStopsTheRun_data()
{
    QTest::addColumn<int>("node");
    QTest::addColumn<int>("columns");
    QTest::newRow("the first column's") << 1 << 0;
    QTest::newRow("the last column's") << 4 << 0;
    QTest::newRow("the first row's") << 5 << 4;
    QTest::newRow("the last row's") << 7 << 4;
}

void TestGainListMemory::failingNodeStopsTheRun()
{
    QFETCH(int, node);
    QFETCH(int, columns);
    DialogProbe d;
    d.take(TestFrame(4, 3, 12, [](int x, int y) { return static_cast<unsigned>(100 + 9 * x + y); }));
    ModalWatch watch;
    failNode(node);
    const bool answer = d.RunCorrection();
    QCOMPARE(failingNode, 0);
    QVERIFY(!answer);
    QCOMPARE(watch.texts, QStringList("Not enough memory for the operation!"));
    QCOMPARE(int(d.m_columnGains.size()), columns);
    QVERIFY(d.m_rowGains.empty());
    QVERIFY(!d.m_flatY);
    QVERIFY(!QGuiApplication::overrideCursor());
    // The next run has its memory.
    QVERIFY(d.RunCorrection());
    QCOMPARE(int(d.m_columnGains.size()), 4);
    QCOMPARE(int(d.m_rowGains.size()), 3);
}

QTEST_MAIN(TestGainListMemory)
#include "tst_gain_list_memory.moc"
