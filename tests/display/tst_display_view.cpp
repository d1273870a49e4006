#include "tests/display/AdapterTools.h"

#include <QDir>
#include <QGraphicsScene>
#include <QImage>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QToolButton>
#include <QtTest>

class TestDisplayView : public QObject
{
    Q_OBJECT

private slots:
    void declaresItsSignalsInOrder();
    void eventsBecomeSignals_data();
    void eventsBecomeSignals();
    void otherEventsGoToTheBase_data();
    void otherEventsGoToTheBase();
    void theButtonIsBareAndHidden();
    void theIconIsAFileOfTheHost_data();
    void theIconIsAFileOfTheHost();
    void theButtonIsSeenInFullScreenAlone_data();
    void theButtonIsSeenInFullScreenAlone();
    void theBaseIsShownAfterTheButton();
    void aChangeOfStateWhileVisibleLeavesTheButton();
    void hiddenAndShownAgainKeepsTheButtonHidden();
    void onlyTheButtonEscapes();
};

void TestDisplayView::declaresItsSignalsInOrder()
{
    const QMetaObject& meta = DisplayView::staticMetaObject;
    QStringList own;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        QCOMPARE(meta.method(i).methodType(), QMetaMethod::Signal);
        own << meta.method(i).methodSignature();
    }
    const QStringList expected = {"sigMouseMoved(QPoint,QEvent::Type)", "sigHexDump()",
                                  "sigHexDumpHere(QPoint)", "sigKeyEscape()", "sigViewChanged(DisplayView*)"};
    QCOMPARE(own, expected);
}

void TestDisplayView::eventsBecomeSignals_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("expected");
    QTest::newRow("press") << int(DisplayEvMouseDown) << QString("mouse 3,4 %1").arg(int(DisplayEvMouseDown));
    QTest::newRow("move") << int(DisplayEvMouseMove) << QString("mouse 3,4 %1").arg(int(DisplayEvMouseMove));
    QTest::newRow("release") << int(DisplayEvMouseUp) << QString("mouse 3,4 %1").arg(int(DisplayEvMouseUp));
    QTest::newRow("hex dump") << int(DisplayEvHexDump) << "dump";
    QTest::newRow("hex dump here") << int(DisplayEvHexDumpHere) << "dump here 3,4";
    QTest::newRow("view changed") << int(DisplayEvViewChanged) << "changed";
}

void TestDisplayView::eventsBecomeSignals()
{
    QFETCH(int, type);
    QFETCH(QString, expected);
    DisplayView view;
    QStringList emitted;
    connect(&view, &DisplayView::sigMouseMoved, &view, [&](QPoint cp, QEvent::Type tp) {
        emitted << QString("mouse %1,%2 %3").arg(cp.x()).arg(cp.y()).arg(int(tp));
    });
    connect(&view, &DisplayView::sigHexDump, &view, [&] { emitted << "dump"; });
    connect(&view, &DisplayView::sigHexDumpHere, &view,
            [&](QPoint cp) { emitted << QString("dump here %1,%2").arg(cp.x()).arg(cp.y()); });
    connect(&view, &DisplayView::sigKeyEscape, &view, [&] { emitted << "escape"; });
    connect(&view, &DisplayView::sigViewChanged, &view,
            [&](DisplayView* which) { emitted << (which == &view ? "changed" : "another view changed"); });
    DisplayAdapterQT::DisplayMouseEv event{static_cast<QEvent::Type>(type)};
    event.imagePos = QPoint(3, 4);
    event.windowPos = QPoint(5, 6);
    QVERIFY(QCoreApplication::sendEvent(&view, &event));
    QCOMPARE(emitted, QStringList{expected});
}

void TestDisplayView::otherEventsGoToTheBase_data()
{
    QTest::addColumn<int>("type");
    QTest::newRow("start") << int(DisplayEvStart);
    QTest::newRow("reserved") << int(DisplayEvReserved);
    QTest::newRow("context menu") << int(DisplayEvContextMenu);
    QTest::newRow("message") << int(DisplayEvMessage);
    QTest::newRow("image processed") << int(DisplayEvImageProcessed);
    QTest::newRow("language change") << int(QEvent::LanguageChange);
    QTest::newRow("mouse move over the window frame") << int(QEvent::NonClientAreaMouseMove);
}

void TestDisplayView::otherEventsGoToTheBase()
{
    QFETCH(int, type);
    DisplayView view;
    QGraphicsView plain;
    QSignalSpy mouse(&view, &DisplayView::sigMouseMoved);
    QSignalSpy dump(&view, &DisplayView::sigHexDump);
    QSignalSpy here(&view, &DisplayView::sigHexDumpHere);
    QSignalSpy escape(&view, &DisplayView::sigKeyEscape);
    QSignalSpy changed(&view, &DisplayView::sigViewChanged);
    QEvent toView{static_cast<QEvent::Type>(type)};
    QEvent toPlain{static_cast<QEvent::Type>(type)};
    QCOMPARE(QCoreApplication::sendEvent(&view, &toView), QCoreApplication::sendEvent(&plain, &toPlain));
    QCOMPARE(toView.isAccepted(), toPlain.isAccepted());
    QCOMPARE(mouse.size() + dump.size() + here.size() + escape.size() + changed.size(), 0);
}

void TestDisplayView::theButtonIsBareAndHidden()
{
    DisplayView view;
    const QList<QToolButton*> buttons =
        view.findChildren<QToolButton*>(QString(), Qt::FindDirectChildrenOnly);
    QCOMPARE(buttons.size(), 1);
    QVERIFY(buttons[0]->isHidden());
    QCOMPARE(buttons[0]->geometry(), QRect(0, 0, 34, 34));
    QCOMPARE(buttons[0]->iconSize(), QSize(32, 32));
    QCOMPARE(buttons[0]->styleSheet(), "QToolButton {\tbackground-color: transparent; border: 0px; }");
}

void TestDisplayView::theIconIsAFileOfTheHost_data()
{
    QTest::addColumn<bool>("there");
    QTest::newRow("the file is there") << true;
    QTest::newRow("without the file the icon is empty") << false;
}

void TestDisplayView::theIconIsAFileOfTheHost()
{
    QFETCH(bool, there);
    const QTemporaryDir folder;
    QVERIFY(folder.isValid());
    const QDir host(folder.path());
    QVERIFY(host.mkpath("ZorBench/Resources") && host.mkpath("bin"));
    if (there) {
        QImage picture(32, 32, QImage::Format_RGB32);
        picture.fill(Qt::red);
        QVERIFY(picture.save(host.filePath("ZorBench/Resources/ZoomFull.png")));
    }
    const QString before = QDir::currentPath();
    QVERIFY(QDir::setCurrent(host.filePath("bin")));
    const DisplayView view;
    QDir::setCurrent(before);
    const QIcon icon = view.findChild<QToolButton*>()->icon();
    QCOMPARE(icon.isNull(), !there);
    if (there)
        QCOMPARE(icon.pixmap(32, 32).toImage().pixelColor(16, 16), QColor(Qt::red));
}

void TestDisplayView::theButtonIsSeenInFullScreenAlone_data()
{
    QTest::addColumn<int>("state");
    QTest::addColumn<bool>("seen");
    QTest::newRow("no state") << int(Qt::WindowNoState) << false;
    QTest::newRow("maximized") << int(Qt::WindowMaximized) << false;
    QTest::newRow("full screen") << int(Qt::WindowFullScreen) << true;
    QTest::newRow("full screen and maximized") << int(Qt::WindowFullScreen | Qt::WindowMaximized) << false;
    QTest::newRow("full screen and active") << int(Qt::WindowFullScreen | Qt::WindowActive) << false;
}

void TestDisplayView::theButtonIsSeenInFullScreenAlone()
{
    QFETCH(int, state);
    QFETCH(bool, seen);
    DisplayView view;
    view.setWindowState(static_cast<Qt::WindowStates>(state));
    QShowEvent shown;
    QCoreApplication::sendEvent(&view, &shown);
    QCOMPARE(!view.findChild<QToolButton*>()->isHidden(), seen);
}

void TestDisplayView::theBaseIsShownAfterTheButton()
{
    QGraphicsScene scene(0, 0, 1000, 1000);
    QGraphicsView plain(&scene);
    DisplayView view;
    view.setScene(&scene);
    // While they are hidden, nothing but a show event takes the new size up.
    plain.resize(500, 400);
    view.resize(500, 400);
    view.setWindowState(Qt::WindowFullScreen);
    const QScrollBar* bar = view.horizontalScrollBar();
    const int before = bar->maximum();
    const auto* button = view.findChild<QToolButton*>();
    bool buttonWasThere = false;
    connect(bar, &QScrollBar::rangeChanged, &view, [&] { buttonWasThere = !button->isHidden(); });
    for (QWidget* shown : {static_cast<QWidget*>(&plain), static_cast<QWidget*>(&view)}) {
        QShowEvent event;
        QCoreApplication::sendEvent(shown, &event);
    }
    QVERIFY(bar->maximum() != before);
    QCOMPARE(bar->maximum(), plain.horizontalScrollBar()->maximum());
    QVERIFY(buttonWasThere);
}

void TestDisplayView::aChangeOfStateWhileVisibleLeavesTheButton()
{
    DisplayView view;
    const auto* button = view.findChild<QToolButton*>();
    view.setWindowState(Qt::WindowFullScreen);
    view.show();
    QVERIFY(button->isVisible());
    view.setWindowState(Qt::WindowNoState);
    QVERIFY(button->isVisible());
    view.hide();
    view.show();
    QVERIFY(!button->isVisible());
    view.setWindowState(Qt::WindowFullScreen);
    QVERIFY(!button->isVisible());
}

void TestDisplayView::hiddenAndShownAgainKeepsTheButtonHidden()
{
    DisplayView view;
    for (int i = 0; i < 2; ++i) {
        view.show();
        QVERIFY(view.isVisible());
        QVERIFY(view.findChild<QToolButton*>()->isHidden());
        view.hide();
    }
}

namespace {

class KeyWatcher : public QWidget
{
public:
    QList<int> keys;

protected:
    void keyPressEvent(QKeyEvent* event) override { keys << event->key(); }
};

} // namespace

void TestDisplayView::onlyTheButtonEscapes()
{
    KeyWatcher parent;
    DisplayView view(&parent);
    QSignalSpy spy(&view, &DisplayView::sigKeyEscape);
    QTest::keyClick(&view, Qt::Key_Escape);
    QCOMPARE(spy.size(), 0);
    // The base lets keys that it has no use for pass on.
    QCOMPARE(parent.keys, QList<int>{Qt::Key_Escape});
    view.findChild<QToolButton*>()->click();
    QCOMPARE(spy.size(), 1);
}

ZOR_DISPLAY_TEST_MAIN(TestDisplayView)
#include "tst_display_view.moc"
