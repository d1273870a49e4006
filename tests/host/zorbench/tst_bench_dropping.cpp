#include "tests/host/zorbench/Bench.h"

#include "display/DisplayView.h"

#include <QMimeData>
#include <QUrl>
#include <QtTest>

/// Files that are dropped on the workbench.
class TestBenchDropping : public QObject
{
    Q_OBJECT

private slots:
    void droppedFilesAreOpened();
    void onlyLocalFilesCanBeDropped();
    void aDropLeavesTheFileWhereItIs();
    void whatCanOnlyBeMovedIsRefused();
    void filesCanBeDroppedOnTheFullScreen();
};

void TestBenchDropping::droppedFilesAreOpened()
{
    Bench bench;
    QMimeData data;
    data.setUrls({QUrl("https://example.org/flat.pgm"),
                  QUrl::fromLocalFile(bench.write("flat.pgm", countedPgm(6, 4)))});
    QDragEnterEvent enter({10, 10}, Qt::CopyAction, &data, Qt::LeftButton, {});
    enter.ignore();
    QCoreApplication::sendEvent(&bench.window(), &enter);
    QVERIFY(enter.isAccepted());
    QDropEvent drop({10, 10}, Qt::CopyAction, &data, Qt::LeftButton, {});
    QCoreApplication::sendEvent(&bench.window(), &drop);
    QCOMPARE(bench.shownSize(), QSize(6, 4));
}

void TestBenchDropping::onlyLocalFilesCanBeDropped()
{
    Bench bench;
    QMimeData data;
    data.setUrls({QUrl("https://example.org/flat.pgm")});
    QDragEnterEvent enter({10, 10}, Qt::CopyAction, &data, Qt::LeftButton, {});
    enter.ignore();
    QCoreApplication::sendEvent(&bench.window(), &enter);
    QVERIFY(!enter.isAccepted());
}

// Who gives a file to be moved may delete it afterwards. With Shift a move is proposed.
void TestBenchDropping::aDropLeavesTheFileWhereItIs()
{
    Bench bench;
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(bench.write("flat.pgm", countedPgm(6, 4)))});
    const Qt::DropActions possible = Qt::CopyAction | Qt::MoveAction;
    QDragEnterEvent enter({10, 10}, possible, &data, Qt::LeftButton, Qt::ShiftModifier);
    QCOMPARE(enter.dropAction(), Qt::MoveAction);
    QCoreApplication::sendEvent(&bench.window(), &enter);
    QVERIFY(enter.isAccepted());
    QCOMPARE(enter.dropAction(), Qt::CopyAction);
    QDragMoveEvent move({20, 10}, possible, &data, Qt::LeftButton, Qt::ShiftModifier);
    QCoreApplication::sendEvent(&bench.window(), &move);
    QCOMPARE(move.dropAction(), Qt::CopyAction);
    QDropEvent drop({20, 10}, possible, &data, Qt::LeftButton, Qt::ShiftModifier);
    QCoreApplication::sendEvent(&bench.window(), &drop);
    QCOMPARE(drop.dropAction(), Qt::CopyAction);
    QCOMPARE(bench.shownSize(), QSize(6, 4));
}

void TestBenchDropping::whatCanOnlyBeMovedIsRefused()
{
    Bench bench;
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(bench.write("flat.pgm", countedPgm(6, 4)))});
    QDragEnterEvent enter({10, 10}, Qt::MoveAction, &data, Qt::LeftButton, {});
    enter.ignore();
    QCoreApplication::sendEvent(&bench.window(), &enter);
    QVERIFY(!enter.isAccepted());
}

void TestBenchDropping::filesCanBeDroppedOnTheFullScreen()
{
    Bench bench;
    bench.view().setFullScreen(true);
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(bench.write("flat.pgm", countedPgm(6, 4)))});
    QWidget* place = bench.view().view().viewport();
    QDragEnterEvent enter({10, 10}, Qt::CopyAction, &data, Qt::LeftButton, {});
    enter.ignore();
    QCoreApplication::sendEvent(place, &enter);
    QVERIFY(enter.isAccepted());
    QDropEvent drop({10, 10}, Qt::CopyAction, &data, Qt::LeftButton, {});
    QCoreApplication::sendEvent(place, &drop);
    QCOMPARE(bench.shownSize(), QSize(6, 4));
}

QTEST_MAIN(TestBenchDropping)

#include "tst_bench_dropping.moc"
