#include "display/DisplaySettings.h"
#include "display/DisplayStage.h"
#include "image/PixelTypeCode.h"
#include "tests/platform/viewer/ViewerTools.h"

#include <QQueue>
#include <QTest>

#include <cmath>
#include <random>

/// Two views that follow each other's "view.changed" as a dialog makes them: the change is posted, then scale
/// and centre are read from one and sent to the other.
class TestLinkedViews : public QObject
{
    Q_OBJECT

private slots:
    void comeToRest_data();
    void comeToRest();
    void followerIsAtMostAQuarterOfAPixelOff_data();
    void followerIsAtMostAQuarterOfAPixelOff();
    void aViewStaysWhereItReportsToBe();
    void theHandIsNotPulledBack();
    void aFitSurvivesTheEcho_data();
    void aFitSurvivesTheEcho();
    void nearRequestsAreTakenExactly_data();
    void nearRequestsAreTakenExactly();
    void aFitSurvivesARequestForItsOwnPlace();
};

namespace {
class Link
{
public:
    Link(ShownViewer& first, ShownViewer& second)
        : m_views{&first, &second}
    {
        for (int i = 0; i < 2; ++i)
            m_views[i]->listener.act = [this, i](const Listener::Heard& heard) {
                if (heard.parameters.at("code") == "view.changed")
                    m_posted.enqueue(i);
            };
    }

    /// Delivers until nothing is posted any more; how many deliveries that took, 50 at most.
    int settle()
    {
        int deliveries = 0;
        while (!m_posted.isEmpty() && deliveries < 50) {
            follow(m_posted.dequeue());
            ++deliveries;
        }
        return deliveries;
    }

private:
    void follow(int source)
    {
        ShownViewer& from = *m_views[source];
        ShownViewer& to = *m_views[1 - source];
        const QRect rect = from.visible();
        const _ZorImage* image = from.viewer->stage()->image(0);
        to.setScale(from.scale());
        to.lookAt((rect.x() + rect.width() * 0.5) / image->width,
                  (rect.y() + rect.height() * 0.5) / image->height);
    }

    ShownViewer* m_views[2];
    QQueue<int> m_posted;
};

TestImage picture(int width = 934, int height = 700)
{
    return {zor::Mono16, width, height, [](int x, int y, int) { return x * 60 + y; }};
}

/// The image's place in the middle of the view along one axis, to a pixel of the widget: found by the first
/// edge between two image pixels.
double middleAlong(ShownViewer& shown, bool across)
{
    const auto pixelAt = [&](int place) {
        ParameterMap map{{"pos.x", std::to_string(across ? place : 0)},
                         {"pos.y", std::to_string(across ? 0 : place)},
                         {"cs.src", "win"},
                         {"cs.dst", "img"}};
        shown.run("cmd.display.view.translate", &map);
        return numberIn(map, across ? "pos.x" : "pos.y");
    };
    const int first = pixelAt(0);
    int place = 0;
    while (pixelAt(place) == first)
        ++place;
    const QRect surface = shown.surface()->geometry();
    const double middle = across ? surface.x() + surface.width() * 0.5 : surface.y() + surface.height() * 0.5;
    return first + 1 + (middle - place) * shown.view.devicePixelRatioF() / shown.scale();
}

bool isTogether(ShownViewer& first, ShownViewer& second)
{
    const QPointF off = first.centre() - second.centre();
    return std::abs(first.scale() / second.scale() - 1.0) < 0.01 && std::abs(off.x()) <= 1.0 &&
           std::abs(off.y()) <= 1.0;
}
} // namespace

void TestLinkedViews::comeToRest_data()
{
    QTest::addColumn<QSize>("first");
    QTest::addColumn<QSize>("second");
    QTest::newRow("views of one size") << QSize(400, 300) << QSize(400, 300);
    QTest::newRow("views of odd and even sizes") << QSize(401, 300) << QSize(330, 287);
    QTest::newRow("a small and a large view") << QSize(120, 90) << QSize(700, 500);
}

void TestLinkedViews::comeToRest()
{
    QFETCH(QSize, first);
    QFETCH(QSize, second);
    ShownViewer a(first);
    ShownViewer b(second);
    Link link(a, b);
    a.show(picture());
    b.show(picture());
    QVERIFY(link.settle() < 10);
    std::mt19937 random(17);
    std::uniform_int_distribution<int> place(10, 80);
    std::uniform_int_distribution<int> kind(0, 5);
    for (int i = 0; i < 150; ++i) {
        ShownViewer& hand = i % 2 == 0 ? a : b;
        const QPoint from(place(random), place(random));
        const int which = kind(random);
        if (which < 2)
            hand.wheel(from, 120);
        else if (which < 4)
            hand.wheel(from, -120);
        else
            hand.drag(from, QPoint(place(random), place(random)));
        const int deliveries = link.settle();
        QVERIFY2(deliveries <= 8,
                 qPrintable(QString("step %1, kind %2: %3 deliveries").arg(i).arg(which).arg(deliveries)));
        QVERIFY2(isTogether(a, b), qPrintable(QString("step %1, kind %2: %3 at %4, %5 and %6 at %7, %8")
                                                  .arg(i)
                                                  .arg(which)
                                                  .arg(a.scale())
                                                  .arg(a.centre().x())
                                                  .arg(a.centre().y())
                                                  .arg(b.scale())
                                                  .arg(b.centre().x())
                                                  .arg(b.centre().y())));
    }
}

void TestLinkedViews::followerIsAtMostAQuarterOfAPixelOff_data()
{
    QTest::addColumn<double>("scale");
    QTest::newRow("at scale 20") << 20.0;
    QTest::newRow("at scale 100") << 100.0;
    QTest::newRow("at the largest scale") << 256.0;
}

void TestLinkedViews::followerIsAtMostAQuarterOfAPixelOff()
{
    QFETCH(double, scale);
    ShownViewer a(QSize(400, 300));
    ShownViewer b(QSize(330, 287));
    a.show(picture());
    b.show(picture());
    Link link(a, b);
    a.setScale(scale);
    link.settle();
    std::mt19937 random(5);
    std::uniform_int_distribution<int> place(20, 200);
    for (int i = 0; i < 40; ++i) {
        a.drag(QPoint(place(random), place(random)), QPoint(place(random), place(random)));
        QVERIFY(link.settle() <= 4);
        const QPointF off(middleAlong(b, true) - middleAlong(a, true),
                          middleAlong(b, false) - middleAlong(a, false));
        // Each middle is known to a pixel of a widget.
        const double most = 0.25 + 2.0 * a.view.devicePixelRatioF() / scale;
        QVERIFY2(std::abs(off.x()) <= most && std::abs(off.y()) <= most,
                 qPrintable(QString("drag %1: %2, %3 pixels off").arg(i).arg(off.x()).arg(off.y())));
    }
}

void TestLinkedViews::aViewStaysWhereItReportsToBe()
{
    ShownViewer shown(QSize(401, 300));
    shown.show(picture());
    std::mt19937 random(23);
    std::uniform_real_distribution<double> fraction(0.0, 1.0);
    for (int i = 0; i < 60; ++i) {
        shown.setScale(std::exp2(fraction(random) * 12.0 - 4.0));
        shown.lookAt(fraction(random), fraction(random));
        const QImage before = shown.grab();
        shown.listener.heard.clear();
        const QPointF reported = shown.centre();
        shown.setScale(shown.scale());
        shown.lookAt(reported.x() / 934, reported.y() / 700);
        QCOMPARE(shown.listener.count("view.changed"), 0);
        QCOMPARE(shown.grab(), before);
    }
}

// The view under the hand keeps its place to the device pixel: what comes back from the other is an echo.
void TestLinkedViews::theHandIsNotPulledBack()
{
    ShownViewer a(QSize(400, 300));
    ShownViewer b(QSize(380, 301));
    a.show(picture());
    b.show(picture());
    Link link(a, b);
    a.setScale(16.0);
    link.settle();
    for (int i = 0; i < 20; ++i) {
        a.drag(QPoint(100, 100), QPoint(103 + i % 5, 99 - i % 3));
        const QImage moved = a.grab();
        QVERIFY(link.settle() <= 4);
        QCOMPARE(a.grab(), moved);
    }
}

void TestLinkedViews::aFitSurvivesTheEcho_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::newRow("edges in the image's middle") << 934 << 700;
    QTest::newRow("a pixel in the image's middle") << 935 << 701;
}

void TestLinkedViews::aFitSurvivesTheEcho()
{
    QFETCH(int, width);
    QFETCH(int, height);
    ShownViewer a(QSize(400, 300));
    ShownViewer b(QSize(400, 300));
    a.show(picture(width, height));
    b.show(picture(width, height));
    Link link(a, b);
    a.setScale(3.0);
    link.settle();
    a.run("cmd.display.view.fit", {{"mode", "1"}});
    QVERIFY(link.settle() <= 4);
    const double fitted = a.scale();
    a.view.resize(a.view.size() + QSize(400, 300));
    QCoreApplication::processEvents();
    QVERIFY(std::abs(a.scale() - fitted * 2.0) < 1e-9);
}

void TestLinkedViews::nearRequestsAreTakenExactly_data()
{
    QTest::addColumn<bool>("isFitted");
    QTest::newRow("after a zoom") << false;
    QTest::newRow("from a fit") << true;
}

// The scale is a quarter of a device pixel off in the whole view: nobody has to be notified, but a half is
// asked for.
void TestLinkedViews::nearRequestsAreTakenExactly()
{
    QFETCH(bool, isFitted);
    ShownViewer shown(QSize(400, 300));
    const double ratio = shown.view.devicePixelRatioF();
    const int width = static_cast<int>(800 * ratio) - 1;
    shown.show({zor::Mono8, width, 200, [](int x, int y, int) { return (x + y) & 255; }});
    if (!isFitted)
        shown.setScale(0.5004);
    shown.listener.heard.clear();
    QVERIFY(shown.scale() > 0.5002 && shown.scale() < 0.5007);
    shown.setScale(0.5);
    QCOMPARE(shown.scale(), 0.5);
    QCOMPARE(shown.listener.count("view.changed"), 0);
    // A third of a device pixel, after which further steps of the same kind are reported when they add up.
    shown.setScale(0.8);
    shown.run("cmd.display.view.at", {{"pos.x", "100"}, {"pos.y", "50"}, {"cs", "img"}});
    shown.listener.heard.clear();
    shown.lookAt((100.5 + 0.4) / width, 50.5 / 200);
    QCOMPARE(shown.listener.count("view.changed"), 0);
    shown.lookAt((100.5 + 0.8) / width, 50.5 / 200);
    QCOMPARE(shown.listener.count("view.changed"), 1);
}

void TestLinkedViews::aFitSurvivesARequestForItsOwnPlace()
{
    ShownViewer shown(QSize(400, 300));
    shown.show(picture());
    const double fitted = shown.scale();
    shown.setScale(fitted);
    shown.lookAt(0.5, 0.5);
    QCOMPARE(shown.scale(), fitted);
    shown.view.resize(shown.view.size() + QSize(400, 300));
    QVERIFY(std::abs(shown.scale() - fitted * 2.0) < 1e-9);
}

QTEST_MAIN(TestLinkedViews)
#include "tst_linked_views.moc"
