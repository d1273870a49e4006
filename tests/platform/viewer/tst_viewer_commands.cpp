#include "display/DisplaySettings.h"
#include "display/DisplayStage.h"
#include "image/PixelTypeCode.h"
#include "tests/platform/viewer/ViewerTools.h"

#include <QTest>

#include <cmath>

Q_DECLARE_METATYPE(ParameterMap)

/// The command channel: what succeeds with exactly 1, what is refused with 0, and what comes back.
class TestViewerCommands : public QObject
{
    Q_OBJECT

private slots:
    void goodAndBadInput_data();
    void goodAndBadInput();
    void everythingAboutTheViewFailsWithoutAnImage_data();
    void everythingAboutTheViewFailsWithoutAnImage();
    void nullNameAndNullMap();
    void scaleIsReadBack();
    void settingsKeepTexts();
    void fitModes();
    void zoomStepsAreInverse();
    void placeAndScaleComeBack();
    void translateFindsThePaintedPixel();
    void translateFindsTheWayBack_data();
    void translateFindsTheWayBack();
    void translateBetweenAllSpaces();
    void overlaysOnTheStage();
    void overlaysOfOtherSpacesLieOnImagePixels_data();
    void overlaysOfOtherSpacesLieOnImagePixels();
    void aSecondOverlayOfTheSameNameReplaces();
    void repeatedRegistrationHearsOnce();
    void flagsOpenAndCloseNotifications();
};

namespace {
ParameterMap rectangle(const char* x, const char* y, const char* w, const char* h)
{
    return {{"objectID", "@dump"}, {"rect.x", x}, {"rect.y", y}, {"rect.w", w}, {"rect.h", h}};
}

ParameterMap with(ParameterMap map, const char* key, const char* value)
{
    map[key] = value;
    return map;
}
} // namespace

void TestViewerCommands::goodAndBadInput_data()
{
    QTest::addColumn<QByteArray>("command");
    QTest::addColumn<ParameterMap>("parameters");
    QTest::addColumn<int>("answer");
    const auto row = [](const char* name, const char* command, const ParameterMap& parameters, int answer) {
        QTest::newRow(name) << QByteArray(command) << parameters << answer;
    };
    row("unknown command", "cmd.display.view.spin", {}, 0);
    row("empty command", "", {}, 0);
    row("parameter", "cmd.parameter.set", {{"name", "a"}, {"value", "b"}}, 1);
    row("parameter with an empty value", "cmd.parameter.set", {{"name", "a"}, {"value", ""}}, 1);
    row("parameter without a name", "cmd.parameter.set", {{"value", "b"}}, 0);
    row("parameter without a value", "cmd.parameter.set", {{"name", "b"}}, 0);
    row("image flags that are no number", "cmd.parameter.set",
        {{"name", "image.notification.flags.set"}, {"value", "yes"}}, 0);
    row("tile edge", "cmd.parameter.set", {{"name", "canvas.tile.edge"}, {"value", "64"}}, 1);
    row("tile edge of 0", "cmd.parameter.set", {{"name", "canvas.tile.edge"}, {"value", "0"}}, 0);
    row("notification without an address", "cmd.system.notification.add", {}, 0);
    row("notification at null", "cmd.system.notification.add", {{"proc", "(nil)"}}, 0);
    row("notification at zero", "cmd.system.notification.add", {{"proc", "0x0"}}, 0);
    row("notification at a word", "cmd.system.notification.add", {{"proc", "address"}}, 0);
    row("notification at a word of hexadecimal digits", "cmd.system.notification.add", {{"proc", "face"}}, 0);
    row("notification with a tail", "cmd.system.notification.add", {{"proc", "0x10zz"}}, 0);
    row("notification without digits", "cmd.system.notification.add", {{"proc", "0x"}}, 0);
    row("notification with a sign", "cmd.system.notification.add", {{"proc", "0x-10"}}, 0);
    row("notification after a blank", "cmd.system.notification.add", {{"proc", " 0x10"}}, 0);
    row("notification before a blank", "cmd.system.notification.add", {{"proc", "0x10 "}}, 0);
    row("notification of two prefixes", "cmd.system.notification.add", {{"proc", "0x0x10"}}, 0);
    row("notification beyond all memory", "cmd.system.notification.add", {{"proc", "0x1ffffffffffffffff"}},
        0);
    row("view flags", "cmd.display.view.nofication", {{"flags", "7"}}, 1);
    row("view flags of 0", "cmd.display.view.nofication", {{"flags", "0"}}, 1);
    row("no view flags", "cmd.display.view.nofication", {}, 0);
    row("view flags with a tail", "cmd.display.view.nofication", {{"flags", "7x"}}, 0);
    row("negative view flags", "cmd.display.view.nofication", {{"flags", "-1"}}, 0);
    row("rebuild", "cmd.image.rebuild", {}, 1);
    row("zoom in", "cmd.display.view.zoom.in", {}, 1);
    row("zoom out", "cmd.display.view.zoom.out", {}, 1);
    row("fit whole", "cmd.display.view.fit", {{"mode", "1"}}, 1);
    row("fit width", "cmd.display.view.fit", {{"mode", "2"}}, 1);
    row("fit height", "cmd.display.view.fit", {{"mode", "3"}}, 1);
    row("fit of no kind", "cmd.display.view.fit", {{"mode", "0"}}, 0);
    row("fit of a fourth kind", "cmd.display.view.fit", {{"mode", "4"}}, 0);
    row("fit without a mode", "cmd.display.view.fit", {}, 0);
    row("place", "cmd.display.view.at", {{"pos.x", "0.500000"}, {"pos.y", "0.25"}, {"cs", "base"}}, 1);
    row("place in image pixels", "cmd.display.view.at", {{"pos.x", "10"}, {"pos.y", "20"}, {"cs", "img"}}, 1);
    row("place in the window", "cmd.display.view.at", {{"pos.x", "10"}, {"pos.y", "20"}, {"cs", "win"}}, 1);
    row("place beyond the image is cut", "cmd.display.view.at", {{"pos.x", "7"}, {"pos.y", "-3"}}, 1);
    row("place with a decimal comma", "cmd.display.view.at", {{"pos.x", "0,5"}, {"pos.y", "0.25"}}, 0);
    row("half a place", "cmd.display.view.at", {{"pos.x", "0.5"}}, 0);
    row("place that is no number", "cmd.display.view.at", {{"pos.x", "nan"}, {"pos.y", "0.5"}}, 0);
    row("place in an unknown space", "cmd.display.view.at", {{"pos.x", "0"}, {"pos.y", "0"}, {"cs", "up"}},
        0);
    row("scale", "cmd.display.view.scale", {{"scale", "2.500000"}, {"cs", "base"}}, 1);
    row("place beyond all numbers across", "cmd.display.view.at", {{"pos.x", "1e308"}, {"pos.y", "0.5"}}, 0);
    row("place beyond all numbers down", "cmd.display.view.at", {{"pos.x", "0.5"}, {"pos.y", "1e308"}}, 0);
    row("huge scale is cut", "cmd.display.view.scale", {{"scale", "1e12"}}, 1);
    row("tiny scale is cut", "cmd.display.view.scale", {{"scale", "0.000001"}}, 1);
    row("scale of 0", "cmd.display.view.scale", {{"scale", "0.000000"}}, 0);
    row("negative scale", "cmd.display.view.scale", {{"scale", "-1"}}, 0);
    row("infinite scale", "cmd.display.view.scale", {{"scale", "inf"}}, 0);
    row("no scale", "cmd.display.view.scale", {}, 0);
    row("visible rectangle", "cmd.display.view.image", {}, 1);
    const ParameterMap point{{"pos.x", "3"}, {"pos.y", "4"}, {"cs.src", "img"}, {"cs.dst", "win"}};
    row("translation", "cmd.display.view.translate", point, 1);
    row("translation from nowhere", "cmd.display.view.translate", with(point, "cs.src", "x"), 0);
    row("translation to nowhere", "cmd.display.view.translate", with(point, "cs.dst", ""), 0);
    row("translation of no number", "cmd.display.view.translate", with(point, "pos.x", "three"), 0);
    row("translation of a far point", "cmd.display.view.translate", with(point, "pos.x", "2147483647"), 1);
    row("rectangle", "cmd.display.overlay.rect.add", rectangle("1", "2", "3", "4"), 1);
    row("rectangle left of the image", "cmd.display.overlay.rect.add", rectangle("-9", "2", "3", "4"), 1);
    row("rectangle without a width", "cmd.display.overlay.rect.add", rectangle("1", "2", "0", "4"), 0);
    row("rectangle of negative height", "cmd.display.overlay.rect.add", rectangle("1", "2", "3", "-4"), 0);
    row("rectangle of no numbers", "cmd.display.overlay.rect.add", rectangle("", "2", "3", "4"), 0);
    row("rectangle too far away", "cmd.display.overlay.rect.add", rectangle("2147483647", "2", "3", "4"), 0);
    row("rectangle without a name", "cmd.display.overlay.rect.add",
        with(rectangle("1", "2", "3", "4"), "objectID", ""), 0);
    row("rectangle of no colour", "cmd.display.overlay.rect.add",
        with(rectangle("1", "2", "3", "4"), "line.clr", "red"), 0);
    row("rectangle with a line of 0", "cmd.display.overlay.rect.add",
        with(rectangle("1", "2", "3", "4"), "line.width", "0"), 0);
    row("rectangle in an unknown space", "cmd.display.overlay.rect.add",
        with(rectangle("1", "2", "3", "4"), "cs", "sky"), 0);
    const ParameterMap beyond = with(rectangle("0", "0", "1", "1"), "cs", "base");
    row("rectangle that ends beyond all images across", "cmd.display.overlay.rect.add",
        with(beyond, "rect.w", "200000000"), 0);
    row("rectangle that ends beyond all images down", "cmd.display.overlay.rect.add",
        with(beyond, "rect.h", "200000000"), 0);
    row("rectangle that begins beyond all images across", "cmd.display.overlay.rect.add",
        with(beyond, "rect.x", "-200000000"), 0);
    row("rectangle that begins beyond all images down", "cmd.display.overlay.rect.add",
        with(beyond, "rect.y", "-200000000"), 0);
    row("rectangle with the defaults alone", "cmd.display.overlay.rect.add",
        {{"objectID", "@dump"}, {"line.clr", "50372"}, {"line.width", "1"}, {"adjust", "1"}}, 0);
    row("overlay that is not there", "cmd.display.overlay.del", {{"objectID", "@inspect"}}, 0);
    row("menu to run before it was made", "cmd.system.menu.exec", {}, 0);
    row("menu to delete before it was made", "cmd.system.menu.delete", {}, 0);
}

void TestViewerCommands::goodAndBadInput()
{
    QFETCH(QByteArray, command);
    QFETCH(ParameterMap, parameters);
    QFETCH(int, answer);
    ShownViewer shown(QSize(200, 160));
    QCOMPARE(shown.show(ramp()), 0);
    const QImage before = shown.grab();
    QCOMPARE(shown.run(command.constData(), parameters), answer);
    if (answer == 0)
        QCOMPARE(shown.grab(), before);
}

void TestViewerCommands::everythingAboutTheViewFailsWithoutAnImage_data()
{
    QTest::addColumn<QByteArray>("command");
    QTest::addColumn<ParameterMap>("parameters");
    const auto row = [](const char* command, const ParameterMap& parameters) {
        QTest::newRow(command) << QByteArray(command) << parameters;
    };
    row("cmd.image.rebuild", {});
    row("cmd.display.view.zoom.in", {});
    row("cmd.display.view.zoom.out", {});
    row("cmd.display.view.fit", {{"mode", "1"}});
    row("cmd.display.view.at", {{"pos.x", "0.5"}, {"pos.y", "0.5"}});
    row("cmd.display.view.scale", {{"scale", "1"}});
    row("cmd.display.view.translate", {{"pos.x", "1"}, {"pos.y", "1"}, {"cs.src", "win"}, {"cs.dst", "img"}});
    row("cmd.display.view.image", {});
}

void TestViewerCommands::everythingAboutTheViewFailsWithoutAnImage()
{
    QFETCH(QByteArray, command);
    QFETCH(ParameterMap, parameters);
    ShownViewer shown(QSize(100, 100));
    const ParameterMap before = parameters;
    QCOMPARE(shown.run(command.constData(), &parameters), 0);
    QVERIFY(parameters == before);
    QCOMPARE(shown.scale(), -1.0);
    QVERIFY(!shown.viewer->stage()->image(0));
    QCOMPARE(shown.viewer->stage()->value(), std::int64_t{0});
}

void TestViewerCommands::nullNameAndNullMap()
{
    ShownViewer shown(QSize(100, 100));
    shown.show(ramp());
    QCOMPARE(shown.run(nullptr), 0);
    for (const char* command : {"cmd.image.rebuild", "cmd.display.view.zoom.in", "cmd.display.view.zoom.out"})
        QCOMPARE(shown.run(command, nullptr), 1);
    for (const char* command : {"cmd.parameter.set", "cmd.display.view.at", "cmd.display.view.translate",
                                "cmd.display.overlay.rect.add", "cmd.display.overlay.del"})
        QCOMPARE(shown.run(command, nullptr), 0);
}

void TestViewerCommands::scaleIsReadBack()
{
    ShownViewer shown(QSize(300, 200));
    shown.show(ramp());
    shown.setScale(3.37);
    QVERIFY(std::abs(shown.scale() * 1.0 - 3.37) < 1e-9);
    double untouched = 5.0;
    QVERIFY(!shown.viewer->settings()->getDouble("display.view.colour", &untouched));
    QCOMPARE(untouched, 5.0);
    QVERIFY(!shown.viewer->settings()->getDouble(nullptr, &untouched));
    QVERIFY(!shown.viewer->settings()->getDouble("display.view.scale", nullptr));
}

void TestViewerCommands::settingsKeepTexts()
{
    ShownViewer shown(QSize(30, 20));
    DisplaySettings* settings = shown.viewer->settings();
    QCOMPARE(settings->setText("some.number", "0.125"), 1);
    double number = 0.0;
    QVERIFY(settings->getDouble("some.number", &number));
    QCOMPARE(number, 0.125);
    QCOMPARE(settings->setText("some.number", nullptr), 1);
    QVERIFY(!settings->getDouble("some.number", &number));
    QCOMPARE(settings->setText(nullptr, "x"), 0);
    QCOMPARE(settings->run(nullptr), 0);
    QCOMPARE(settings->run("processing.proc.mul"), 0);
    for (const char* text : {"address", "face", "0x10zz", "0x", "0x0", "", " 0x10", "0x10 "}) {
        settings->setText("processor", text);
        QCOMPARE(settings->run("processing.proc.add"), 0);
    }
}

void TestViewerCommands::fitModes()
{
    ShownViewer shown(QSize(200, 320));
    shown.show(ramp(100, 80));
    const double ratio = shown.view.devicePixelRatioF();
    QCOMPARE(shown.scale(), 2.0 * ratio);
    shown.run("cmd.display.view.fit", {{"mode", "3"}});
    QCOMPARE(shown.scale(), 4.0 * ratio);
    shown.run("cmd.display.view.fit", {{"mode", "2"}});
    QCOMPARE(shown.scale(), 2.0 * ratio);
}

void TestViewerCommands::zoomStepsAreInverse()
{
    ShownViewer shown(QSize(200, 160));
    shown.show(ramp());
    const double before = shown.scale();
    shown.run("cmd.display.view.zoom.in");
    QVERIFY(shown.scale() > before * 1.3);
    shown.run("cmd.display.view.zoom.out");
    QVERIFY(std::abs(shown.scale() - before) < 1e-9);
}

void TestViewerCommands::placeAndScaleComeBack()
{
    ShownViewer shown(QSize(200, 160));
    shown.show(ramp());
    const double ratio = shown.view.devicePixelRatioF();
    shown.setScale(8.0);
    shown.lookAt(0.25, 0.75);
    QCOMPARE(shown.centre(), QPointF(25.0, 60.0));
    QCOMPARE(shown.visible().width(), static_cast<int>(200 * ratio / 8.0 / 2.0 + 0.5) * 2);
    shown.lookAt(0.0, 0.0);
    QCOMPARE(shown.centre(), QPointF(0.0, 0.0));
    QVERIFY2(shown.visible().x() < 0, "the visible rectangle is not cut to the image");
}

void TestViewerCommands::translateFindsThePaintedPixel()
{
    ShownViewer shown(QSize(203, 161));
    const TestImage image(zor::Mono8, 90, 70, [](int x, int y, int) { return x * 2 + (y % 3) * 20; });
    shown.show(image);
    const double ratio = shown.view.devicePixelRatioF();
    for (const double scale : {1.0, 2.5, 8.0}) {
        shown.setScale(scale * ratio);
        shown.lookAt(0.4, 0.55);
        const QImage picture = shown.grab();
        for (const QPoint& pixel : {QPoint(33, 39), QPoint(36, 38), QPoint(40, 40)}) {
            ParameterMap map{{"pos.x", std::to_string(pixel.x())},
                             {"pos.y", std::to_string(pixel.y())},
                             {"cs.src", "img"},
                             {"cs.dst", "win"}};
            QCOMPARE(shown.run("cmd.display.view.translate", &map), 1);
            QCOMPARE(numberIn(map, "result"), 1);
            const QPoint window(numberIn(map, "pos.x"), numberIn(map, "pos.y"));
            const QPoint onSurface = shown.surface()->mapFrom(&shown.view, window);
            const QPoint device((QPointF(onSurface) + QPointF(0.5, 0.5)).x() * ratio,
                                (QPointF(onSurface) + QPointF(0.5, 0.5)).y() * ratio);
            QCOMPARE(qRed(picture.pixel(device)), pixel.x() * 2 + (pixel.y() % 3) * 20);
            map["cs.src"] = "win";
            map["cs.dst"] = "img";
            QCOMPARE(shown.run("cmd.display.view.translate", &map), 1);
            QCOMPARE(QPoint(numberIn(map, "pos.x"), numberIn(map, "pos.y")), pixel);
        }
    }
}

void TestViewerCommands::translateFindsTheWayBack_data()
{
    QTest::addColumn<double>("scale");
    for (const double scale : {1.0, 1.03, 1.3, 1.7, 2.0, 3.37})
        QTest::addRow("%.2f widget pixels for each of the image", scale) << scale;
}

// From an image pixel to a widget pixel and back to the same one.
void TestViewerCommands::translateFindsTheWayBack()
{
    QFETCH(double, scale);
    ShownViewer shown(QSize(203, 161));
    shown.show(ramp(60, 50));
    shown.setScale(scale * shown.view.devicePixelRatioF());
    const auto translated = [&](int x, const char* from, const char* to) {
        ParameterMap map{{"pos.x", std::to_string(x)}, {"pos.y", "20"}, {"cs.src", from}, {"cs.dst", to}};
        if (shown.run("cmd.display.view.translate", &map) != 1)
            qFatal("translation failed");
        return numberIn(map, "pos.x");
    };
    for (int x = 0; x < 60; ++x) {
        const int window = translated(x, "img", "win");
        QVERIFY2(translated(window, "win", "img") == x, qPrintable(QString("image pixel %1").arg(x)));
    }
}

void TestViewerCommands::translateBetweenAllSpaces()
{
    ShownViewer shown(QSize(200, 160));
    shown.show(ramp(100, 80));
    const auto translated = [&](int x, int y, const char* from, const char* to) {
        ParameterMap map{
            {"pos.x", std::to_string(x)}, {"pos.y", std::to_string(y)}, {"cs.src", from}, {"cs.dst", to}};
        if (shown.run("cmd.display.view.translate", &map) != 1)
            qFatal("translation failed");
        return QPoint(numberIn(map, "pos.x"), numberIn(map, "pos.y")) * 10 +
               QPoint(numberIn(map, "result"), 0);
    };
    const QPoint inside(1, 0);
    QCOMPARE(translated(1, 0, "base", "img"), QPoint(100, 0) * 10);
    QCOMPARE(translated(0, 0, "base", "img"), QPoint(0, 0) * 10 + inside);
    QCOMPARE(translated(50, 40, "img", "base"), QPoint(0, 0) * 10 + inside);
    QCOMPARE(translated(-1, 40, "img", "base"), QPoint(-1, 0) * 10);
    QCOMPARE(translated(7, 9, "img", "img"), QPoint(7, 9) * 10 + inside);
    // The view fits at 2, inside a frame of 3 pixels.
    QCOMPARE(translated(3, 3, "win", "img"), QPoint(0, 0) * 10 + inside);
    QCOMPARE(translated(202, 162, "win", "img"), QPoint(99, 79) * 10 + inside);
    QCOMPARE(translated(203, 162, "win", "img"), QPoint(100, 79) * 10);
    QCOMPARE(translated(2, 3, "win", "img"), QPoint(-1, 0) * 10);
}

void TestViewerCommands::overlaysOnTheStage()
{
    ShownViewer shown(QSize(200, 160));
    DisplayStage* stage = shown.viewer->stage();
    QVERIFY(!stage->find("@dump"));
    QVERIFY(!stage->find(nullptr));
    QCOMPARE(shown.run("cmd.display.overlay.rect.add", rectangle("5", "6", "7", "8")), 1);
    DisplayStageItem* item = stage->find("@dump");
    QVERIFY(item);
    QCOMPARE(item->value(),
             std::int64_t{5} | std::int64_t{6} << 16 | std::int64_t{7} << 32 | std::int64_t{8} << 48);
    QCOMPARE(shown.run("cmd.display.overlay.del", {{"objectID", "@dump"}}), 1);
    QVERIFY(!stage->find("@dump"));
    QCOMPARE(item->value(), std::int64_t{0});
    QCOMPARE(shown.run("cmd.display.overlay.del", {{"objectID", "@dump"}}), 0);
}

void TestViewerCommands::overlaysOfOtherSpacesLieOnImagePixels_data()
{
    QTest::addColumn<QByteArray>("space");
    QTest::addColumn<QRect>("given");
    QTest::addColumn<QRect>("onImage");
    QTest::newRow("image pixels") << QByteArray("img") << QRect(7, 9, 20, 30) << QRect(7, 9, 20, 30);
    QTest::newRow("no space is image pixels") << QByteArray() << QRect(7, 9, 20, 30) << QRect(7, 9, 20, 30);
    QTest::newRow("window pixels") << QByteArray("win") << QRect(24, 34, 20, 30) << QRect(10, 15, 10, 15);
    QTest::newRow("half an image pixel of the window")
        << QByteArray("win") << QRect(23, 33, 1, 1) << QRect(10, 15, 1, 1);
    QTest::newRow("the whole image") << QByteArray("base") << QRect(0, 0, 1, 1) << QRect(0, 0, 100, 80);
    QTest::newRow("as much again after it")
        << QByteArray("base") << QRect(1, 1, 1, 1) << QRect(100, 80, 100, 80);
}

// The view fits at 2, behind a frame of 3 pixels.
void TestViewerCommands::overlaysOfOtherSpacesLieOnImagePixels()
{
    QFETCH(QByteArray, space);
    QFETCH(QRect, given);
    QFETCH(QRect, onImage);
    ShownViewer shown(QSize(200, 160));
    shown.show(ramp(100, 80));
    const auto text = [](int number) { return std::to_string(number); };
    ParameterMap map{{"objectID", "@dump"},
                     {"rect.x", text(given.x())},
                     {"rect.y", text(given.y())},
                     {"rect.w", text(given.width())},
                     {"rect.h", text(given.height())}};
    if (!space.isEmpty())
        map["cs"] = space.toStdString();
    QCOMPARE(shown.run("cmd.display.overlay.rect.add", map), 1);
    const std::int64_t value = shown.viewer->stage()->find("@dump")->value();
    QCOMPARE(QRect(value & 0xFFFF, value >> 16 & 0xFFFF, value >> 32 & 0xFFFF, value >> 48 & 0xFFFF),
             onImage);
}

void TestViewerCommands::aSecondOverlayOfTheSameNameReplaces()
{
    ShownViewer shown(QSize(200, 160));
    shown.show(ramp());
    shown.run("cmd.display.overlay.rect.add", rectangle("5", "6", "7", "8"));
    shown.run("cmd.display.overlay.rect.add", rectangle("1", "2", "3", "4"));
    QCOMPARE(shown.viewer->stage()->find("@dump")->value() & 0xFFFF, std::int64_t{1});
    QCOMPARE(shown.run("cmd.display.overlay.del", {{"objectID", "@dump"}}), 1);
    QVERIFY(!shown.viewer->stage()->find("@dump"));
}

void TestViewerCommands::repeatedRegistrationHearsOnce()
{
    ShownViewer shown(QSize(200, 160));
    QCOMPARE(addListener(shown.viewer, &shown.listener), 1);
    shown.show(ramp());
    QCOMPARE(shown.listener.count("processed"), 1);
}

void TestViewerCommands::flagsOpenAndCloseNotifications()
{
    ShownViewer shown(QSize(200, 160));
    shown.show(ramp());
    const auto heardWith = [&](const char* flags) {
        shown.run("cmd.display.view.nofication", {{"flags", flags}});
        shown.listener.heard.clear();
        shown.run("cmd.display.view.zoom.in");
        shown.move(QPoint(20, 20), Qt::NoButton);
        QTest::mouseClick(shown.surface(), Qt::RightButton, Qt::NoModifier, QPoint(20, 20));
        return QList<int>{shown.listener.count("view.changed"), shown.listener.count("mouse.down"),
                          shown.listener.count("mouse.up"), shown.listener.count("mouse.move")};
    };
    QCOMPARE(heardWith("0"), (QList<int>{0, 0, 0, 0}));
    QCOMPARE(heardWith("1"), (QList<int>{1, 0, 0, 0}));
    QCOMPARE(heardWith("2"), (QList<int>{0, 1, 1, 0}));
    QCOMPARE(heardWith("4"), (QList<int>{0, 0, 0, 1}));
    QCOMPARE(heardWith("7"), (QList<int>{1, 1, 1, 1}));
    shown.run("cmd.parameter.set", {{"name", "image.notification.flags.set"}, {"value", "0"}});
    shown.listener.heard.clear();
    shown.show(ramp());
    QCOMPARE(shown.listener.count("processed"), 0);
}

QTEST_MAIN(TestViewerCommands)
#include "tst_viewer_commands.moc"
