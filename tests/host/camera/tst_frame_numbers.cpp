#include "host/camera/FrameNumbers.h"

#include <QtTest>

#include <algorithm>

/// The numbers of frames from the block identifiers of a camera.
class TestFrameNumbers : public QObject
{
    Q_OBJECT

private slots:
    void framesAreNumbered_data();
    void framesAreNumbered();
    void aNewBeginningLosesNone();
    void incompleteFramesAreAmongTheLost();
    void incompleteFramesMayBeReportedLate();
};

void TestFrameNumbers::framesAreNumbered_data()
{
    QTest::addColumn<QList<quint64>>("blockIds");
    QTest::addColumn<QList<quint64>>("numbers");
    using List = QList<quint64>;
    QTest::newRow("from 0 on, whatever the first identifier") << List{65401, 65402, 65403} << List{0, 1, 2};
    QTest::newRow("a gap counts the lost frames") << List{1, 2, 5, 6} << List{0, 1, 4, 5};
    QTest::newRow("16 bits begin again at 1") << List{65534, 65535, 1, 2} << List{0, 1, 2, 3};
    QTest::newRow("a gap where 16 bits begin again") << List{65533, 3} << List{0, 5};
    QTest::newRow("the widest gap there") << List{65535, 32767} << List{0, 32767};
    QTest::newRow("late") << List{10, 13, 12, 11, 14} << List{0, 3, 2, 1, 4};
    QTest::newRow("late where 16 bits begin again")
        << List{65533, 65534, 2, 65535, 1, 3} << List{0, 1, 4, 2, 3, 5};
    QTest::newRow("late with 64 bits") << List{70000, 70002, 70001, 70003} << List{0, 2, 1, 3};
    QTest::newRow("as late as can be") << List{100, 140, 108, 141} << List{0, 40, 8, 41};
    QTest::newRow("too late: the camera counts anew") << List{100, 140, 107, 108} << List{0, 40, 41, 42};
    QTest::newRow("late before the first") << List{10, 9, 8, 11} << List{0, 0, 0, 3};
    QTest::newRow("64 bits go on after 65535") << List{65534, 65535, 65536, 65539} << List{0, 1, 2, 5};
    QTest::newRow("a camera that counts anew lost none") << List{30000, 1, 2} << List{0, 1, 2};
    QTest::newRow("one that counts anew after more than 16 bits") << List{65536, 1, 2} << List{0, 1, 2};
    QTest::newRow("an identifier that comes twice") << List{7, 7, 8} << List{0, 1, 2};
    QTest::newRow("USB3 Vision begins at 0") << List{0, 1, 3} << List{0, 1, 3};
}

void TestFrameNumbers::framesAreNumbered()
{
    QFETCH(QList<quint64>, blockIds);
    QFETCH(QList<quint64>, numbers);
    zor::FrameNumbers frames;
    QList<quint64> found;
    for (const quint64 id : blockIds)
        found.append(frames.number(id));
    QCOMPARE(found, numbers);
    QCOMPARE(frames.sent(), *std::max_element(numbers.begin(), numbers.end()) + 1);
}

void TestFrameNumbers::aNewBeginningLosesNone()
{
    zor::FrameNumbers frames;
    frames.number(10);
    frames.number(12);
    frames.restart();
    QCOMPARE(frames.number(100), std::uint64_t{3});
    QCOMPARE(frames.sent(), std::uint64_t{4});
}

void TestFrameNumbers::incompleteFramesAreAmongTheLost()
{
    zor::FrameNumbers frames;
    frames.addIncomplete();
    QCOMPARE(frames.number(10), std::uint64_t{1});
    frames.addIncomplete();
    QCOMPARE(frames.sent(), std::uint64_t{3});
    QCOMPARE(frames.number(12), std::uint64_t{3});
    // One of the two between came in part.
    frames.addIncomplete();
    QCOMPARE(frames.number(15), std::uint64_t{6});
    // The one that was thought lost comes in part as well, and another one after it.
    frames.addIncomplete();
    frames.addIncomplete();
    QCOMPARE(frames.number(17), std::uint64_t{8});
    QCOMPARE(frames.sent(), std::uint64_t{9});
}

void TestFrameNumbers::incompleteFramesMayBeReportedLate()
{
    zor::FrameNumbers frames;
    std::uint64_t id = 100;
    QCOMPARE(frames.number(id), std::uint64_t{0});
    for (std::uint64_t i = 1; i <= 50; ++i) {
        // The one between comes in part, and is reported after its successor.
        id += 2;
        QCOMPARE(frames.number(id), 2 * i);
        frames.addIncomplete();
    }
    QCOMPARE(frames.sent(), std::uint64_t{101});
}

QTEST_APPLESS_MAIN(TestFrameNumbers)

#include "tst_frame_numbers.moc"
