#include "display/DisplayStage.h"
#include "display/ZorDisplayQt.h"
#include "image/PixelTypeCode.h"
#include "tests/platform/viewer/ViewerTools.h"

#include <QApplication>
#include <QClipboard>
#include <QFileDialog>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <cmath>

/// The viewer's context menu: its entries, and its life between the commands.
class TestViewerMenu : public QObject
{
    Q_OBJECT

private slots:
    void menuEntriesWork();
    void entriesAreChosenWithMouseAndKeys();
    void openMenuShowsWhetherTheColorationIsOn();
    void hostsEntriesAreDoneWhileTheMenuIsRun();
    void menuOpensOnceAtATime();
    void choiceWaitsForASecondMenu();
    void choiceEndsWithTheViewer();
    void viewerAndMenuMayEndWhileTheMenuIsOpen_data();
    void viewerAndMenuMayEndWhileTheMenuIsOpen();
    void menuIsMadeOnceAndDeleted();
    void saveViewWritesAPng();
    void saveViewReportsAFailure_data();
    void saveViewReportsAFailure();
    void viewMayEndWhileItIsSaved_data();
    void viewMayEndWhileItIsSaved();
};

namespace {
QAction* entry(QMenu* menu, const char* text)
{
    for (QAction* action : menu->actions())
        if (action->text() == QLatin1String(text))
            return action;
    qFatal("no menu entry %s", text);
}

QMenu* menuOf(ShownViewer& shown)
{
    ParameterMap map;
    if (shown.run("cmd.system.menu.create", &map) != 1)
        qFatal("no menu");
    void* address = nullptr;
    if (std::sscanf(map["qmenu"].c_str(), "%p", &address) != 1)
        qFatal("no address of the menu");
    return static_cast<QMenu*>(address);
}

/// What the viewer answers when the menu is run, with `work` done on the open menu.
int runMenu(ShownViewer& shown, const std::function<void(QMenu*)>& work)
{
    QMenu* menu = menuOf(shown);
    QTimer::singleShot(0, menu, [menu, work] { work(menu); });
    return shown.run("cmd.system.menu.exec");
}

void escape(QMenu* menu)
{
    QTest::keyClick(menu, Qt::Key_Escape);
}

void click(QMenu* menu, const char* text)
{
    QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(entry(menu, text)).center());
}

/// Chooses an entry while the menu is closed.
void trigger(QMenu* menu, const char* text)
{
    entry(menu, text)->trigger();
    QCoreApplication::processEvents();
}

/// Answers the next modal widget of a kind from a timer.
template <class Box> void answerNext(const std::function<void(Box*)>& answer)
{
    auto* timer = new QTimer(qApp);
    timer->start(20);
    QObject::connect(timer, &QTimer::timeout, timer, [timer, answer] {
        if (auto* box = qobject_cast<Box*>(QApplication::activeModalWidget())) {
            timer->deleteLater();
            timer->stop();
            answer(box);
        }
    });
}
} // namespace

void TestViewerMenu::menuEntriesWork()
{
    ShownViewer shown(QSize(320, 240));
    shown.show(TestImage(zor::Mono8, 640, 480, [](int, int, int) { return 51; }));
    QMenu* menu = menuOf(shown);
    const double fitted = shown.scale();
    trigger(menu, "Zoom in");
    QVERIFY(std::abs(shown.scale() - fitted * std::sqrt(2.0)) < 1e-9);
    trigger(menu, "1:1");
    QCOMPARE(shown.scale(), 1.0);
    trigger(menu, "Zoom out");
    QVERIFY(std::abs(shown.scale() - std::sqrt(0.5)) < 1e-9);
    trigger(menu, "Fit");
    QCOMPARE(shown.scale(), fitted);
    trigger(menu, "Coloration");
    QCOMPARE(shown.pixel(9, 9), QRgb(qRgb(0, 0, 255)));
    QCOMPARE(shown.viewer->stage()->find("image.coloration")->value(), std::int64_t{1});
    trigger(menu, "Copy view");
    const QImage copied = QGuiApplication::clipboard()->image();
    QCOMPARE(copied.size(), shown.surface()->size() * shown.view.devicePixelRatioF());
    QCOMPARE(copied.pixel(9, 9), QRgb(qRgb(0, 0, 255)));
    trigger(menu, "Coloration");
    QCOMPARE(shown.pixel(9, 9), QRgb(qRgb(51, 51, 51)));
}

// Not before the caller has the menu back, which may hear nothing of the view until then.
void TestViewerMenu::entriesAreChosenWithMouseAndKeys()
{
    ShownViewer shown(QSize(320, 240));
    shown.show(ramp(640, 480));
    const double fitted = shown.scale();

    const auto clickAndGoOn = [](QMenu* menu) {
        click(menu, "1:1");
        QCoreApplication::processEvents();
    };
    QCOMPARE(runMenu(shown, clickAndGoOn), 1);
    QCOMPARE(shown.scale(), fitted);
    QCoreApplication::processEvents();
    QCOMPARE(shown.scale(), 1.0);

    const auto choose = [](QMenu* menu) {
        menu->setActiveAction(entry(menu, "1:1"));
        QTest::keyClick(menu, Qt::Key_Up);
        QTest::keyClick(menu, Qt::Key_Return);
    };
    QCOMPARE(runMenu(shown, choose), 1);
    QCOMPARE(shown.scale(), 1.0);
    QCoreApplication::processEvents();
    QCOMPARE(shown.scale(), fitted);

    QCOMPARE(runMenu(shown, escape), 1);
    QCoreApplication::processEvents();
    QCOMPARE(shown.scale(), fitted);
}

void TestViewerMenu::openMenuShowsWhetherTheColorationIsOn()
{
    ShownViewer shown(QSize(320, 240));
    shown.show(ramp(640, 480));
    for (const bool isOn : {true, false}) {
        shown.viewer->stage()->find("image.coloration")->setValue(isOn ? 1 : 0);
        bool isChecked = !isOn;
        const auto look = [&](QMenu* menu) {
            isChecked = entry(menu, "Coloration")->isChecked();
            escape(menu);
        };
        QCOMPARE(runMenu(shown, look), 1);
        QCOMPARE(isChecked, isOn);
    }
}

void TestViewerMenu::hostsEntriesAreDoneWhileTheMenuIsRun()
{
    ShownViewer shown(QSize(320, 240));
    shown.show(ramp(640, 480));
    QMenu* menu = menuOf(shown);
    QAction* own = menu->addAction("Host's entry");
    bool isDone = false;
    connect(own, &QAction::triggered, own, [&] { isDone = true; });
    QCOMPARE(runMenu(shown, [](QMenu* open) { click(open, "Host's entry"); }), 1);
    QVERIFY(isDone);
}

void TestViewerMenu::menuOpensOnceAtATime()
{
    ShownViewer shown(QSize(320, 240));
    shown.show(ramp(640, 480));
    int second = -1;
    const auto askAgain = [&](QMenu* menu) {
        // Closes a menu that opens once more, so that its event loop ends.
        QTimer closing;
        connect(&closing, &QTimer::timeout, menu, &QMenu::close);
        closing.start(0);
        second = shown.run("cmd.system.menu.exec");
        if (second == 0)
            escape(menu);
        else
            QCoreApplication::exit();
    };
    QCOMPARE(runMenu(shown, askAgain), 1);
    QCOMPARE(second, 0);
    QCOMPARE(runMenu(shown, escape), 1);
}

void TestViewerMenu::choiceWaitsForASecondMenu()
{
    ShownViewer shown(QSize(320, 240));
    shown.show(ramp(640, 480));
    const double fitted = shown.scale();
    QCOMPARE(runMenu(shown, [](QMenu* menu) { click(menu, "1:1"); }), 1);
    double scaleBelow = 0.0;
    const auto look = [&](QMenu* menu) {
        QCoreApplication::processEvents();
        scaleBelow = shown.scale();
        click(menu, "Zoom in");
    };
    QCOMPARE(runMenu(shown, look), 1);
    QCOMPARE(scaleBelow, fitted);
    QCoreApplication::processEvents();
    QVERIFY2(std::abs(shown.scale() - std::sqrt(2.0)) < 1e-9, qPrintable(QString::number(shown.scale())));
}

void TestViewerMenu::choiceEndsWithTheViewer()
{
    ShownViewer shown(QSize(320, 240));
    shown.show(ramp(640, 480));
    QCOMPARE(runMenu(shown, [](QMenu* menu) { click(menu, "1:1"); }), 1);
    shown.listener.heard.clear();
    ZorDisplayCPU::DeleteComponent(shown.viewer);
    shown.viewer = nullptr;
    QCoreApplication::processEvents();
    QVERIFY(shown.listener.heard.empty());
}

void TestViewerMenu::viewerAndMenuMayEndWhileTheMenuIsOpen_data()
{
    QTest::addColumn<bool>("isViewer");
    QTest::newRow("the viewer") << true;
    QTest::newRow("its menu") << false;
}

void TestViewerMenu::viewerAndMenuMayEndWhileTheMenuIsOpen()
{
    QFETCH(bool, isViewer);
    ShownViewer shown(QSize(320, 240));
    shown.show(ramp(640, 480));
    const auto end = [&](QMenu*) {
        if (isViewer) {
            ZorDisplayCPU::DeleteComponent(shown.viewer);
            shown.viewer = nullptr;
        } else {
            QCOMPARE(shown.run("cmd.system.menu.delete"), 1);
        }
    };
    QCOMPARE(runMenu(shown, end), 1);
    QVERIFY(!shown.view.findChild<QMenu*>());
    if (!isViewer)
        QCOMPARE(runMenu(shown, escape), 1);
}

void TestViewerMenu::menuIsMadeOnceAndDeleted()
{
    ShownViewer shown(QSize(320, 240));
    shown.show(ramp(640, 480));
    ParameterMap map;
    QCOMPARE(shown.run("cmd.system.menu.create", &map), 1);
    const std::string first = map["qmenu"];
    void* widget = nullptr;
    QCOMPARE(std::sscanf(map["qmenuWidget"].c_str(), "%p", &widget), 1);
    QCOMPARE(static_cast<QWidget*>(widget), static_cast<QWidget*>(&shown.view));
    QCOMPARE(shown.run("cmd.system.menu.create", &map), 1);
    QCOMPARE(map["qmenu"], first);
    QCOMPARE(runMenu(shown, [](QMenu* menu) { menu->close(); }), 1);
    QCOMPARE(shown.run("cmd.system.menu.delete", &map), 1);
    QCOMPARE(map["qmenu"], std::string());
    QCOMPARE(shown.run("cmd.system.menu.exec", &map), 0);
    QCOMPARE(shown.run("cmd.system.menu.delete", &map), 0);
}

void TestViewerMenu::saveViewWritesAPng()
{
    QTemporaryDir folder;
    const QString name = folder.filePath("view");
    ShownViewer shown(QSize(320, 240));
    shown.show(ramp(640, 480));
    const QImage before = shown.grab();
    answerNext<QFileDialog>([name](QFileDialog* dialog) {
        dialog->findChild<QLineEdit*>("fileNameEdit")->setText(name);
        static_cast<QDialog*>(dialog)->done(QDialog::Accepted);
    });
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    trigger(menuOf(shown), "Save view...");
    QCOMPARE(QImage(name + ".png").convertToFormat(QImage::Format_RGB32), before);
}

void TestViewerMenu::saveViewReportsAFailure_data()
{
    QTest::addColumn<bool>("isEnded");
    QTest::newRow("the viewer is there") << false;
    QTest::newRow("the viewer ends while the name is chosen") << true;
}

void TestViewerMenu::saveViewReportsAFailure()
{
    QFETCH(bool, isEnded);
    QTemporaryDir folder;
    const QString name = folder.filePath("absent/view.png");
    ShownViewer shown(QSize(320, 240));
    shown.show(ramp(640, 480));
    QString message;
    answerNext<QFileDialog>([&](QFileDialog* dialog) {
        answerNext<QMessageBox>([&](QMessageBox* box) {
            message = box->text();
            box->accept();
        });
        if (isEnded) {
            ZorDisplayCPU::DeleteComponent(shown.viewer);
            shown.viewer = nullptr;
        }
        dialog->findChild<QLineEdit*>("fileNameEdit")->setText(name);
        static_cast<QDialog*>(dialog)->done(QDialog::Accepted);
    });
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    trigger(menuOf(shown), "Save view...");
    QVERIFY2(message.contains("view.png"), qPrintable(message));
}

void TestViewerMenu::viewMayEndWhileItIsSaved_data()
{
    QTest::addColumn<bool>("isBox");
    QTest::newRow("while the name is asked for") << false;
    QTest::newRow("while a failure is reported") << true;
}

// The host's widget too.
void TestViewerMenu::viewMayEndWhileItIsSaved()
{
    QFETCH(bool, isBox);
    QTemporaryDir folder;
    const QString name = folder.filePath(isBox ? "missing/view.png" : "view.png");
    auto* view = new QGraphicsView;
    view->show();
    ZorDisplayProcessor* viewer = ZorDisplayCPU::CreateComponent(view);
    QCOMPARE(viewer->display(ramp(640, 480).record()), 0);
    QCOMPARE(viewer->command("cmd.system.menu.create", nullptr), 1);
    const QPointer<QMenu> menu = view->findChild<QMenu*>();
    const auto endView = [&] {
        ZorDisplayCPU::DeleteComponent(viewer);
        delete view;
    };
    answerNext<QFileDialog>([&](QFileDialog* dialog) {
        dialog->findChild<QLineEdit*>("fileNameEdit")->setText(name);
        const QPointer<QDialog> living = dialog;
        if (isBox)
            answerNext<QMessageBox>([&](QMessageBox* box) {
                const QPointer<QMessageBox> livingBox = box;
                endView();
                if (livingBox)
                    livingBox->accept();
            });
        else
            endView();
        if (living)
            living->done(QDialog::Accepted);
    });
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    trigger(menu, "Save view...");
    QVERIFY(!menu);
    QCOMPARE(QFile::exists(name), !isBox);
}

QTEST_MAIN(TestViewerMenu)
#include "tst_viewer_menu.moc"
