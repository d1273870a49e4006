#include "display/DisplayStage.h"
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
    void menuIsMadeOnceAndDeleted();
    void saveViewWritesAPng();
    void saveViewTellsOfAFailure();
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

TestImage ramp()
{
    return {ZorMono8, 640, 480, [](int x, int y, int) { return (x + 2 * y) & 255; }};
}
} // namespace

void TestViewerMenu::menuEntriesWork()
{
    ShownViewer shown(QSize(320, 240));
    shown.show(TestImage(ZorMono8, 640, 480, [](int, int, int) { return 51; }));
    QMenu* menu = menuOf(shown);
    const double fitted = shown.scale();
    entry(menu, "Zoom in")->trigger();
    QVERIFY(std::abs(shown.scale() - fitted * std::sqrt(2.0)) < 1e-9);
    entry(menu, "1:1")->trigger();
    QCOMPARE(shown.scale(), 1.0);
    entry(menu, "Zoom out")->trigger();
    QVERIFY(std::abs(shown.scale() - std::sqrt(0.5)) < 1e-9);
    entry(menu, "Fit")->trigger();
    QCOMPARE(shown.scale(), fitted);
    entry(menu, "Coloration")->trigger();
    QCOMPARE(shown.pixel(9, 9), QRgb(qRgb(0, 0, 255)));
    QCOMPARE(shown.viewer->stage()->find("image.coloration")->value(), std::int64_t{1});
    entry(menu, "Copy view")->trigger();
    const QImage copied = QGuiApplication::clipboard()->image();
    QCOMPARE(copied.size(), shown.surface()->size() * shown.view.devicePixelRatioF());
    QCOMPARE(copied.pixel(9, 9), QRgb(qRgb(0, 0, 255)));
    entry(menu, "Coloration")->trigger();
    QCOMPARE(shown.pixel(9, 9), QRgb(qRgb(51, 51, 51)));
}

void TestViewerMenu::entriesAreChosenWithMouseAndKeys()
{
    ShownViewer shown(QSize(320, 240));
    shown.show(ramp());
    QMenu* menu = menuOf(shown);
    ParameterMap map;
    QCOMPARE(shown.run("cmd.system.menu.create", &map), 1);
    const double fitted = shown.scale();

    QTimer::singleShot(50, menu, [menu] {
        QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(entry(menu, "1:1")).center());
    });
    QCOMPARE(shown.run("cmd.system.menu.exec", &map), 1);
    QCOMPARE(shown.scale(), 1.0);

    QTimer::singleShot(50, menu, [menu] {
        menu->setActiveAction(entry(menu, "1:1"));
        QTest::keyClick(menu, Qt::Key_Up);
        QTest::keyClick(menu, Qt::Key_Return);
    });
    QCOMPARE(shown.run("cmd.system.menu.exec", &map), 1);
    QCOMPARE(shown.scale(), fitted);

    QTimer::singleShot(50, menu, [menu] { QTest::keyClick(menu, Qt::Key_Escape); });
    QCOMPARE(shown.run("cmd.system.menu.exec", &map), 1);
    QCOMPARE(shown.scale(), fitted);
}

void TestViewerMenu::menuIsMadeOnceAndDeleted()
{
    ShownViewer shown(QSize(320, 240));
    shown.show(ramp());
    ParameterMap map;
    QCOMPARE(shown.run("cmd.system.menu.create", &map), 1);
    const std::string first = map["qmenu"];
    void* widget = nullptr;
    QCOMPARE(std::sscanf(map["qmenuWidget"].c_str(), "%p", &widget), 1);
    QCOMPARE(static_cast<QWidget*>(widget), static_cast<QWidget*>(&shown.view));
    QCOMPARE(shown.run("cmd.system.menu.create", &map), 1);
    QCOMPARE(map["qmenu"], first);
    QTimer::singleShot(50, [] {
        if (QWidget* menu = QApplication::activePopupWidget())
            menu->close();
    });
    QCOMPARE(shown.run("cmd.system.menu.exec", &map), 1);
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
    shown.show(ramp());
    const QImage before = shown.grab();
    answerNext<QFileDialog>([name](QFileDialog* dialog) {
        dialog->findChild<QLineEdit*>("fileNameEdit")->setText(name);
        static_cast<QDialog*>(dialog)->done(QDialog::Accepted);
    });
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    entry(menuOf(shown), "Save view...")->trigger();
    QCOMPARE(QImage(name + ".png").convertToFormat(QImage::Format_RGB32), before);
}

void TestViewerMenu::saveViewTellsOfAFailure()
{
    QTemporaryDir folder;
    const QString name = folder.filePath("absent/view.png");
    ShownViewer shown(QSize(320, 240));
    shown.show(ramp());
    QString told;
    answerNext<QFileDialog>([&](QFileDialog* dialog) {
        answerNext<QMessageBox>([&](QMessageBox* box) {
            told = box->text();
            box->accept();
        });
        dialog->findChild<QLineEdit*>("fileNameEdit")->setText(name);
        static_cast<QDialog*>(dialog)->done(QDialog::Accepted);
    });
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    entry(menuOf(shown), "Save view...")->trigger();
    QVERIFY2(told.contains("view.png"), qPrintable(told));
}

QTEST_MAIN(TestViewerMenu)
#include "tst_viewer_menu.moc"
