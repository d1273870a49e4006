#include "tests/host/zorbench/Bench.h"
#include "tests/support/FormatCodes.h"
#include "tests/support/ModalWatch.h"

#include "host/zorbench/BenchFont.h"
#include "host/zorbench/RawDialog.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractScrollArea>
#include <QAbstractSpinBox>
#include <QAccessible>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QScreen>
#include <QStatusBar>
#include <QStyle>
#include <QWindow>
#include <QtTest>

#include <algorithm>

/// The main window as it is found: by its words, by an assistive client, and by the next run.
class TestBenchWindow : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void menusHaveTheirWords();
    void everyControlHasAnAccessibleName_data();
    void everyControlHasAnAccessibleName();
    void anAssistiveClientReadsTheStatus();
    void anAssistiveClientSwitchesLive();
    void statusTextsFitIntoTheFirstWindow_data();
    void statusTextsFitIntoTheFirstWindow();
    void statusFieldsAreBesideTheirNames();
    void theFirstSizeFitsOnTheScreen();
    void sizeAndPlaceAreKept();
    void colourIsKept();
    void colourIsOfferedWhereItChangesSomething();
    void keysAreInTheToolTips();
    void settingsThatAreSpoiltDoNoHarm();
    void aSwitchThatIsNeitherOnNorOffIsForgotten();
    void quitClosesTheWindow();
    void theFullScreenEndsWithTheWindow();
};

// As the program begins.
void TestBenchWindow::initTestCase()
{
    QApplication::setFont(zor::benchFont());
}

void TestBenchWindow::menusHaveTheirWords()
{
    Bench bench;
    QStringList words;
    const auto menus = bench.window().menuBar()->actions();
    for (const QAction* menu : menus) {
        words.append(menu->text() + ':');
        const auto actions = menu->menu()->actions();
        for (const QAction* action : actions)
            words.append(action->text());
    }
    const QStringList file{"File:", "Open\u2026", "Recent files", "Save frame\u2026", "", "Start", "Stop",
                           "Live",  "",           "Quit"};
    const QStringList view{"View:",      "Fit",      "1:1",
                           "Zoom in",    "Zoom out", "Full screen",
                           "",           "Inspect",  "Hex pixel dump",
                           "Histogram",  "",         "Colour",
                           "GPU viewer", "",         "Simulator"};
    QStringList camera{"Camera:"};
#ifdef ZOR_CAMERAS
    camera += QStringList{"Connect", "Disconnect", "Camera", ""};
#endif
    camera += QStringList{"Snapshot",           "", "Average\u2026", "Show average", "", "Dark frame\u2026",
                          "Subtract dark frame"};
    QCOMPARE(words, file + view + camera + QStringList("Plug-ins:"));
}

void TestBenchWindow::everyControlHasAnAccessibleName_data()
{
    QTest::addColumn<QByteArray>("part");
    QTest::addColumn<int>("count");
    QTest::newRow("of the main window") << QByteArray("window") << 26;
    QTest::newRow("of the docks that look into the frame") << QByteArray("docks") << 29;
    QTest::newRow("of the dialog for raw dumps") << QByteArray("raw") << 7;
}

void TestBenchWindow::everyControlHasAnAccessibleName()
{
    QFETCH(QByteArray, part);
    QFETCH(int, count);
    Bench bench;
    bench.action("Simulator")->trigger();
    QWidget* window = &bench.window();
    if (part == "docks") {
        for (const char* dock : {"Inspect", "Hex pixel dump", "Histogram"})
            bench.action(dock)->trigger();
    }
    if (part == "raw") {
        bench.open(bench.write("a.raw", "x"));
        window = bench.window().findChild<zor::RawDialog*>();
    }
    int controls = 0;
    const auto widgets = window->findChildren<QWidget*>();
    for (QWidget* widget : widgets) {
        const bool isControl = qobject_cast<QAbstractButton*>(widget) || qobject_cast<QComboBox*>(widget) ||
                               qobject_cast<QAbstractSpinBox*>(widget) || qobject_cast<QLineEdit*>(widget) ||
                               qobject_cast<QAbstractScrollArea*>(widget);
        // Parts of Qt's own controls go by the name of the whole.
        const bool isPart = widget->objectName().startsWith("qt_") ||
                            qobject_cast<QAbstractItemView*>(widget->parentWidget()) ||
                            !widget->isVisibleTo(window);
        if (!isControl || isPart)
            continue;
        ++controls;
        QVERIFY2(!widget->accessibleName().isEmpty(), widget->metaObject()->className());
    }
    QCOMPARE(controls, count);
}

void TestBenchWindow::anAssistiveClientReadsTheStatus()
{
    Bench bench;
    bench.open(bench.write("flat.pgm", countedPgm(6, 4)));
    auto* field = controlOf(&bench.window(), "Frame");
    QAccessibleInterface* read = QAccessible::queryAccessibleInterface(field);
    QVERIFY(read);
    QCOMPARE(read->text(QAccessible::Name), QString("Frame"));
    QCOMPARE(read->text(QAccessible::Value), QString("flat.pgm  6 x 4  Mono8  (maxval 255)"));
}

void TestBenchWindow::anAssistiveClientSwitchesLive()
{
    Bench bench;
    QAccessibleInterface* button = QAccessible::queryAccessibleInterface(controlOf(&bench.window(), "Live"));
    for (const bool expected : {true, false}) {
        button->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
        QCOMPARE(bench.action("Live")->isChecked(), expected);
        QCOMPARE(bool(button->state().checked), expected);
    }
}

void TestBenchWindow::statusTextsFitIntoTheFirstWindow_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("begin");
    QTest::newRow("a judgement that says what to do") << "Judgement"
                                                      << "Amber: the mean is 98.0 % of full scale; ";
    QTest::newRow("a long name with size and format")
        << "Frame"
        << "line3_lensB_12bit_1392x1040.pgm  1392 x 1040  Mono12  (";
    QTest::newRow("non-uniformity of the columns") << "Column non-uniformity"
                                                   << "0.000 %";
    QTest::newRow("non-uniformity of the rows") << "Row non-uniformity"
                                                << "0.000 %";
}

void TestBenchWindow::statusTextsFitIntoTheFirstWindow()
{
    QFETCH(QString, field);
    QFETCH(QString, begin);
    Bench bench;
    QByteArray bright = "P5 1392 1040 4095\n";
    for (int i = 0; i < 1392 * 1040; ++i)
        bright.append("\x0f\xac", 2);
    // The first size, where the screen has room for it.
    bench.window().resize(1024, 768);
    bench.open(bench.write("line3_lensB_12bit_1392x1040.pgm", bright));
    QVERIFY2(bench.status(field.toLatin1()).startsWith(begin), qPrintable(bench.status(field.toLatin1())));
    const auto* line = controlOf<QLineEdit>(&bench.window(), field);
    // A line edit without a frame keeps two pixels on either side of its text.
    QVERIFY2(line->fontMetrics().horizontalAdvance(line->text()) + 4 <= line->width(),
             qPrintable(QString::number(line->width())));
}

void TestBenchWindow::statusFieldsAreBesideTheirNames()
{
    Bench bench;
    const auto labels = bench.window().statusBar()->findChildren<QLabel*>();
    for (const char* text : {"Judgement", "Frame", "Zoom", "Column non-uniformity", "Row non-uniformity",
                             "Position", "Value", "Frames per second", "Dropped"}) {
        const auto hasText = [text](const QLabel* label) { return label->text() == text; };
        const auto found = std::find_if(labels.begin(), labels.end(), hasText);
        QVERIFY2(found != labels.end(), text);
        const QLabel* name = *found;
        const QWidget* field = controlOf(&bench.window(), name->text());
        const int gap = field->x() - name->geometry().right() - 1;
        QVERIFY2(gap >= name->style()->pixelMetric(QStyle::PM_LayoutHorizontalSpacing), text);
        // No name keeps room that it does not need.
        QCOMPARE(name->width(), name->sizeHint().width());
    }
}

void TestBenchWindow::theFirstSizeFitsOnTheScreen()
{
    Bench bench;
    const QSize screen = bench.window().windowHandle()->screen()->availableSize();
    QVERIFY(screen.width() < 1024);
    const QSize size = bench.window().size();
    QVERIFY2(size.width() <= screen.width() && size.height() < screen.height(),
             qPrintable(QString("%1 x %2").arg(size.width()).arg(size.height())));
    // There is room for the frame that a window manager draws, and not for more.
    QVERIFY(size.width() > screen.width() - 50 && size.height() > screen.height() - 100);
}

void TestBenchWindow::sizeAndPlaceAreKept()
{
    Bench bench;
    bench.window().setGeometry(20, 30, 700, 500);
    bench.restart();
    QCOMPARE(bench.window().geometry(), QRect(20, 30, 700, 500));
}

void TestBenchWindow::colourIsKept()
{
    Bench bench;
    for (const bool isOn : {false, true}) {
        bench.action("Colour")->trigger();
        QCOMPARE(bench.view().showsColour(), isOn);
        bench.restart();
        QCOMPARE(bench.view().showsColour(), isOn);
        QCOMPARE(bench.action("Colour")->isChecked(), isOn);
    }
}

void TestBenchWindow::colourIsOfferedWhereItChangesSomething()
{
    Bench bench;
    QVERIFY(bench.action("Colour")->isEnabled());
    bench.open(bench.write("flat.pgm", countedPgm(6, 4)));
    QVERIFY(!bench.action("Colour")->isEnabled());
    auto bayer = std::make_shared<zor::Frame>(*bench.view().frame());
    bayer->pixelType = codeOf("BayerRG8");
    bench.view().setFrame(bayer);
    QVERIFY(bench.action("Colour")->isEnabled());
}

void TestBenchWindow::keysAreInTheToolTips()
{
    Bench bench;
    QCOMPARE(bench.action("Start")->toolTip(), QString("Start (F5)"));
    QCOMPARE(bench.action("Stop")->toolTip(), QString("Stop (Shift+F5)"));
}

void TestBenchWindow::settingsThatAreSpoiltDoNoHarm()
{
    Bench bench;
    const QSize first = bench.window().size();
    bench.window().close();
    const auto keys = bench.settings().allKeys();
    QVERIFY(keys.size() >= 3);
    for (const QString& key : keys)
        bench.settings().setValue(key, "nonsense");
    // Closing the old window writes once more.
    zor::MainWindow window(bench.settings(), bench.path("."));
    QCOMPARE(window.size(), first);
}

void TestBenchWindow::aSwitchThatIsNeitherOnNorOffIsForgotten()
{
    Bench bench;
    bench.window().close();
    for (const char* key : {"View/Gpu", "View/Colour", "Simulator/ShotNoise"})
        bench.settings().setValue(key, "banana");
    zor::MainWindow window(bench.settings(), bench.path("."));
    const auto* view = window.findChild<zor::FrameView*>();
    QVERIFY(!view->usesGpu());
    QVERIFY(view->showsColour());
    QVERIFY(controlOf<QAbstractButton>(&window, "Shot noise")->isChecked());
}

void TestBenchWindow::quitClosesTheWindow()
{
    Bench bench;
    QSignalSpy closed(&bench.window(), &zor::MainWindow::closed);
    bench.action("Quit")->trigger();
    QVERIFY(!bench.window().isVisible());
    QCOMPARE(closed.count(), 1);
}

void TestBenchWindow::theFullScreenEndsWithTheWindow()
{
    Bench bench;
    bench.action("Full screen")->trigger();
    QVERIFY(bench.view().isOnFullScreen());
    bench.window().close();
    QVERIFY(!bench.view().isOnFullScreen());
    bench.restart();
    QVERIFY(!bench.view().isOnFullScreen());
}

QTEST_MAIN(TestBenchWindow)
#include "tst_bench_window.moc"
