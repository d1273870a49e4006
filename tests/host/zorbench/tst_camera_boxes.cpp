#include "host/zorbench/CameraBoxes.h"

#include <QtTest>

using zor::CameraExtent;
using zor::CameraExtentBox;
using zor::CameraNumber;
using zor::CameraNumberBox;

/// Boxes for what a camera is set to.
class TestCameraBoxes : public QObject
{
    Q_OBJECT

private slots:
    void numberIsChosenWithinTheCamerasRange_data();
    void numberIsChosenWithinTheCamerasRange();
    void endlessRangeCanBeWritten();
    void missingNumberCannotBeChosen();
    void extentIsBroughtDownToItsSteps_data();
    void extentIsBroughtDownToItsSteps();
    void whatTheCameraSaysIsNoChoice();
};

void TestCameraBoxes::numberIsChosenWithinTheCamerasRange_data()
{
    QTest::addColumn<double>("written");
    QTest::addColumn<double>("chosen");
    QTest::newRow("inside") << 12.34 << 12.34;
    QTest::newRow("the end, which the box rounds up") << 30.0 << 29.9967;
    QTest::newRow("the beginning, which the box rounds down") << 0.0 << 0.0012;
}

void TestCameraBoxes::numberIsChosenWithinTheCamerasRange()
{
    QFETCH(double, written);
    CameraNumberBox box;
    box.setDecimals(2);
    box.showNumber(CameraNumber{5.0, 0.0012, 29.9967});
    QSignalSpy chosen(&box, &CameraNumberBox::chosen);
    box.setValue(written);
    QCOMPARE(chosen.count(), 1);
    QTEST(chosen[0][0].toDouble(), "chosen");
}

void TestCameraBoxes::endlessRangeCanBeWritten()
{
    CameraNumberBox box;
    box.showNumber(CameraNumber{5.0, -1.7e308, 1.7e308});
    QCOMPARE(box.minimum(), -1e12);
    QCOMPARE(box.maximum(), 1e12);
}

void TestCameraBoxes::missingNumberCannotBeChosen()
{
    CameraNumberBox box;
    box.showNumber({});
    QVERIFY(!box.isEnabled());
    box.showNumber(CameraNumber{5.0, 0.0, 10.0});
    QVERIFY(box.isEnabled());
    QCOMPARE(box.value(), 5.0);
}

void TestCameraBoxes::extentIsBroughtDownToItsSteps_data()
{
    QTest::addColumn<int>("written");
    QTest::addColumn<int>("extent");
    QTest::newRow("the least") << 19 << 19;
    QTest::newRow("a step") << 35 << 35;
    QTest::newRow("before a step") << 34 << 27;
    QTest::newRow("after a step") << 36 << 35;
    QTest::newRow("the end") << 99 << 99;
    QTest::newRow("before the end") << 98 << 91;
}

void TestCameraBoxes::extentIsBroughtDownToItsSteps()
{
    QFETCH(int, written);
    CameraExtentBox box;
    const CameraExtent camera{59, 19, 99, 8};
    box.showExtent(camera);
    QCOMPARE(box.singleStep(), 8);
    QSignalSpy chosen(&box, &CameraExtentBox::chosen);
    box.setValue(written);
    QCOMPARE(chosen.count(), 1);
    QTEST(box.extent(), "extent");
    // The camera did not take it.
    box.showExtent(camera);
    QCOMPARE(box.value(), 59);
}

void TestCameraBoxes::whatTheCameraSaysIsNoChoice()
{
    CameraNumberBox number;
    CameraExtentBox extent;
    QSignalSpy chosenNumber(&number, &CameraNumberBox::chosen);
    QSignalSpy chosenExtent(&extent, &CameraExtentBox::chosen);
    number.showNumber(CameraNumber{5.0, 0.0, 10.0});
    number.showNumber(CameraNumber{6.0, 0.0, 10.0});
    number.showNumber(CameraNumber{1.0, 0.0, 2.0});
    extent.showExtent({8, 0, 16, 4});
    extent.showExtent({4, 0, 4, 4});
    QCOMPARE(chosenNumber.count() + chosenExtent.count(), 0);
    QCOMPARE(number.value(), 1.0);
    QCOMPARE(number.maximum(), 2.0);
    QCOMPARE(extent.value(), 4);
    QCOMPARE(extent.maximum(), 4);
    // The value stays and its range changes.
    number.showNumber(CameraNumber{1.0, 0.0, 3.0});
    QCOMPARE(number.maximum(), 3.0);
    number.showNumber(CameraNumber{1.0, 0.5, 3.0});
    QCOMPARE(number.minimum(), 0.5);
    extent.showExtent({4, 0, 16, 4});
    QCOMPARE(extent.maximum(), 16);
    extent.showExtent({4, 2, 16, 4});
    QCOMPARE(extent.minimum(), 2);
    extent.showExtent({4, 2, 16, 2});
    QCOMPARE(extent.singleStep(), 2);
}

QTEST_MAIN(TestCameraBoxes)
#include "tst_camera_boxes.moc"
