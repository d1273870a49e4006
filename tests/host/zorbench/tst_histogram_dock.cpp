#include "host/zorbench/HistogramDock.h"
#include "tests/host/zorbench/Bench.h"
#include "tests/host/zorbench/MadeFrame.h"

#include <QCheckBox>
#include <QClipboard>
#include <QGuiApplication>
#include <QtTest>

#include <qwt_plot.h>
#include <qwt_plot_curve.h>
#include <qwt_scale_engine.h>

/// The histogram of the current frame.
class TestHistogramDock : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void countsAreThoseOfTheFrame();
    void eachChannelHasItsCurve_data();
    void eachChannelHasItsCurve();
    void countsAreLogarithmicOnRequest();
    void theLastFrameOfManyIsShown();
    void theScaleBeginsAtNothing();
    void numbersOfASmallPlotKeepApart();
    void aHiddenDockCountsNothing();
    void aHiddenWindowCountsNothing();
    void countsCanBeCopied();
};

namespace {

zor::HistogramDock& dockOf(Bench& bench)
{
    return *bench.window().findChild<zor::HistogramDock*>();
}

QwtPlot& plotOf(Bench& bench)
{
    return *dockOf(bench).findChild<QwtPlot*>();
}

QString lettersOf(Bench& bench)
{
    QString letters;
    const auto items = plotOf(bench).itemList(QwtPlotItem::Rtti_PlotCurve);
    for (const QwtPlotItem* item : items)
        letters += item->title().text();
    return letters;
}

QPointF sample(Bench& bench, int curve, int bin)
{
    auto* item = plotOf(bench).itemList(QwtPlotItem::Rtti_PlotCurve).at(curve);
    return static_cast<QwtPlotCurve*>(item)->sample(bin);
}

} // namespace

void TestHistogramDock::initTestCase()
{
    QVERIFY(QDir::setCurrent(BENCH_HOME));
}

void TestHistogramDock::countsAreThoseOfTheFrame()
{
    Bench bench;
    bench.action("Histogram")->trigger();
    bench.open(bench.write("a.pgm", "P2 3 2 4095 0 15 16 4095 4095 31"));
    QCOMPARE(lettersOf(bench), QString("Y"));
    QCOMPARE(plotOf(bench).accessibleName(), QString("Histogram"));
    QCOMPARE(plotOf(bench).axisTitle(QwtPlot::xBottom).text(), QString("Code"));
    QCOMPARE(plotOf(bench).axisTitle(QwtPlot::yLeft).text(), QString("Samples"));
    QCOMPARE(sample(bench, 0, 0), QPointF(0, 2));
    QCOMPARE(sample(bench, 0, 1), QPointF(16, 2));
    QCOMPARE(sample(bench, 0, 2), QPointF(32, 0));
    QCOMPARE(sample(bench, 0, 255), QPointF(4080, 2));
    // The outline ends with the last bin.
    QCOMPARE(sample(bench, 0, 256), QPointF(4096, 2));
    QCOMPARE(plotOf(bench).axisScaleDiv(QwtPlot::xBottom).upperBound(), 4096.0);
    QCOMPARE(plotOf(bench).axisScaleDiv(QwtPlot::xBottom).lowerBound(), 0.0);
}

void TestHistogramDock::eachChannelHasItsCurve_data()
{
    QTest::addColumn<QByteArray>("format");
    QTest::addColumn<QString>("letters");
    QTest::newRow("mono") << QByteArray("Mono8") << "Y";
    QTest::newRow("colour") << QByteArray("BGR8") << "RGB";
    QTest::newRow("a colour filter") << QByteArray("BayerRG12p") << "RGB";
    QTest::newRow("luma and colour differences") << QByteArray("YUV422_8") << "YUV";
}

void TestHistogramDock::eachChannelHasItsCurve()
{
    QFETCH(QByteArray, format);
    QFETCH(QString, letters);
    Bench bench;
    bench.view().setFrame(madeFrame(format.constData(), 8, 6));
    bench.action("Histogram")->trigger();
    QCOMPARE(lettersOf(bench), letters);
}

void TestHistogramDock::countsAreLogarithmicOnRequest()
{
    Bench bench;
    bench.action("Histogram")->trigger();
    auto* box = controlOf<QCheckBox>(&bench.window(), "Logarithmic");
    // Also before there is a frame.
    box->click();
    box->click();
    bench.open(bench.write("a.pgm", "P2 3 2 255 0 0 0 0 255 255"));
    QVERIFY(!box->isChecked());
    QVERIFY(!dynamic_cast<QwtLogScaleEngine*>(plotOf(bench).axisScaleEngine(QwtPlot::yLeft)));
    box->click();
    QVERIFY(dynamic_cast<QwtLogScaleEngine*>(plotOf(bench).axisScaleEngine(QwtPlot::yLeft)));
    QCOMPARE(sample(bench, 0, 0), QPointF(0, 4));
    QCOMPARE(sample(bench, 0, 1), QPointF(1, 0.5));
    QVERIFY(plotOf(bench).axisScaleDiv(QwtPlot::yLeft).lowerBound() >= 0.1);
    box->click();
    QCOMPARE(sample(bench, 0, 1), QPointF(1, 0));
    QCOMPARE(plotOf(bench).axisScaleDiv(QwtPlot::yLeft).lowerBound(), 0.0);
}

void TestHistogramDock::theLastFrameOfManyIsShown()
{
    Bench bench;
    bench.action("Histogram")->trigger();
    for (const char* pixels : {"P2 1 1 255 1", "P2 1 1 255 2", "P2 1 1 255 3"})
        bench.open(bench.write("a.pgm", pixels));
    QTRY_COMPARE(sample(bench, 0, 3), QPointF(3, 1));
    QCOMPARE(sample(bench, 0, 1), QPointF(1, 0));
}

void TestHistogramDock::numbersOfASmallPlotKeepApart()
{
    Bench bench;
    bench.window().resize(700, 400);
    bench.action("Histogram")->trigger();
    bench.action("Inspect")->trigger();
    bench.action("Hex pixel dump")->trigger();
    bench.open(bench.write("a.pgm", "P5 300 235 255\n" + QByteArray(300 * 235, 'x')));
    QwtPlot& plot = plotOf(bench);
    QTRY_VERIFY(plot.canvas()->height() < 120);
    for (const int axis : {QwtPlot::xBottom, QwtPlot::yLeft})
        QCOMPARE(plot.axisFont(axis).toString(), QGuiApplication::font().toString());
    const QwtScaleMap map = plot.canvasMap(QwtPlot::yLeft);
    const auto ticks = plot.axisScaleDiv(QwtPlot::yLeft).ticks(QwtScaleDiv::MajorTick);
    QVERIFY(ticks.size() >= 3);
    QVERIFY(map.transform(ticks[0]) - map.transform(ticks[1]) >=
            QFontMetrics(QGuiApplication::font()).ascent());
}

void TestHistogramDock::aHiddenDockCountsNothing()
{
    Bench bench;
    bench.open(bench.write("a.pgm", "P2 1 1 255 1"));
    QCOMPARE(lettersOf(bench), QString());
    bench.action("Histogram")->trigger();
    QCOMPARE(lettersOf(bench), QString("Y"));
}

// Not even while it is taken down, when no widget may be made in it.
void TestHistogramDock::aHiddenWindowCountsNothing()
{
    Bench bench;
    bench.action("Histogram")->trigger();
    bench.open(bench.write("a.pgm", "P2 1 1 255 1"));
    const auto curves = plotOf(bench).itemList();
    QTRY_VERIFY(!dockOf(bench).findChild<QTimer*>()->isActive());
    bench.window().hide();
    QCOMPARE(plotOf(bench).itemList(), curves);
    bench.open(bench.write("a.pgm", "P2 1 1 255 2"));
    QCOMPARE(plotOf(bench).itemList(), curves);
    bench.window().show();
    QCOMPARE(sample(bench, 0, 2), QPointF(2, 1));
}

void TestHistogramDock::theScaleBeginsAtNothing()
{
    Bench bench;
    bench.action("Histogram")->trigger();
    // Each code comes 100 times.
    QByteArray pixels = "P2 256 100 255";
    for (int i = 0; i < 25600; ++i)
        pixels += ' ' + QByteArray::number(i % 256);
    bench.open(bench.write("a.pgm", pixels));
    QCOMPARE(sample(bench, 0, 7), QPointF(7, 100));
    QCOMPARE(plotOf(bench).axisScaleDiv(QwtPlot::yLeft).lowerBound(), 0.0);
}

void TestHistogramDock::countsCanBeCopied()
{
    Bench bench;
    bench.action("Histogram")->trigger();
    QCOMPARE(plotOf(bench).contextMenuPolicy(), Qt::ActionsContextMenu);
    QAction* copy = plotOf(bench).actions().first();
    QCOMPARE(copy->text(), QString("Copy"));
    QGuiApplication::clipboard()->setText("kept");
    copy->trigger();
    QCOMPARE(QGuiApplication::clipboard()->text(), QString("kept"));
    bench.open(bench.write("a.ppm", "P3 1 1 255 0 1 255"));
    copy->trigger();
    const QStringList lines = QGuiApplication::clipboard()->text().split('\n');
    QCOMPARE(lines.size(), 257);
    QCOMPARE(lines[0], QString("Code\tR\tG\tB"));
    QCOMPARE(lines[1], QString("0\t1\t0\t0"));
    QCOMPARE(lines[2], QString("1\t0\t1\t0"));
    QCOMPARE(lines[256], QString("255\t0\t0\t1"));
}

QTEST_MAIN(TestHistogramDock)
#include "tst_histogram_dock.moc"
