#include "host/camera/CameraSource.h"
#include "host/zorbench/BackgroundWork.h"
#include "host/zorbench/CameraDialog.h"
#include "tests/host/zorbench/Bench.h"

#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QtTest>

#include <memory>
#include <mutex>

using zor::BackgroundWork;
using zor::CameraDialog;
using zor::CameraInfo;
using zor::CameraInterface;
using zor::CameraInterfaces;

namespace {

/// In place of the search: what was searched, and what is found.
struct Search
{
    std::mutex mutex; ///< guards the rest, and holds a search up
    std::vector<CameraInterfaces> asked;
    std::vector<CameraInfo> found;
};

Search& search()
{
    static Search only;
    return only;
}

const CameraInfo Fake{"Fake_1", "Aravis", "Fake", "1", "0.0.0.0", "Fake"};
const CameraInfo Network{"Maker-7", "Maker", "M1", "7", "10.0.0.7", "GigEVision"};
const CameraInfo Bus{"Maker-8", "Maker", "M2", "8", "", "USB3Vision"};
const CameraInfo Nobody{"Nobody", "", "", "", "", "Fake"};

} // namespace

extern "C" std::vector<CameraInfo>
__wrap__ZN3zor11findCamerasERKSt3setINS_15CameraInterfaceESt4lessIS1_ESaIS1_EE(
    const CameraInterfaces& interfaces)
{
    const std::lock_guard<std::mutex> lock(search().mutex);
    search().asked.push_back(interfaces);
    return search().found;
}
extern "C" std::vector<CameraInfo>
__real__ZN3zor11findCamerasERKSt3setINS_15CameraInterfaceESt4lessIS1_ESaIS1_EE(
    const CameraInterfaces& interfaces);

Q_DECLARE_METATYPE(std::shared_ptr<zor::CameraSource>)

/// The dialog that asks for a camera.
class TestCameraDialog : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void eachControlHasItsName();
    void looksForCamerasWhenItIsOpened();
    void saysThatItSearches();
    void camerasAreListed();
    void preferredCameraIsSelected_data();
    void preferredCameraIsSelected();
    void saysThatNoneWasFound();
    void connects_data();
    void connects();
    void refusalIsShown();
    void closedDialogWantsNothing_data();
    void closedDialogWantsNothing();
    void secondQuestionRaisesTheFirst();

private:
    std::size_t searches() const;
    /// Opens the dialog and waits for the end of the search.
    void ask(const QString& preferredId = {});
    QTableWidget* table() { return controlOf<QTableWidget>(m_dialog.get(), "Cameras"); }
    QPushButton* button(const char* name) { return controlOf<QPushButton>(m_dialog.get(), name); }
    QString state() { return m_dialog->findChild<QLabel*>()->text(); }
    void waitForTheWork();

    std::unique_ptr<BackgroundWork> m_work;
    std::unique_ptr<CameraDialog> m_dialog;
};

void TestCameraDialog::initTestCase()
{
    qRegisterMetaType<std::shared_ptr<zor::CameraSource>>();
    // From here on it can be connected to.
    QCOMPARE(__real__ZN3zor11findCamerasERKSt3setINS_15CameraInterfaceESt4lessIS1_ESaIS1_EE(
                 {CameraInterface::Fake})
                 .size(),
             std::size_t{1});
}

void TestCameraDialog::init()
{
    search().asked.clear();
    search().found = {Fake};
    m_dialog.reset();
    m_work = std::make_unique<BackgroundWork>();
    m_dialog = std::make_unique<CameraDialog>(
        CameraInterfaces{CameraInterface::Fake, CameraInterface::Usb3Vision}, *m_work);
}

std::size_t TestCameraDialog::searches() const
{
    const std::lock_guard<std::mutex> lock(search().mutex);
    return search().asked.size();
}

void TestCameraDialog::ask(const QString& preferredId)
{
    m_dialog->ask(preferredId);
    QTRY_VERIFY(button("Search again")->isEnabled());
}

void TestCameraDialog::waitForTheWork()
{
    bool isDone = false;
    m_work->start(this, [&] { return [&] { isDone = true; }; });
    QTRY_VERIFY(isDone);
}

void TestCameraDialog::eachControlHasItsName()
{
    QVERIFY(!table()->isSortingEnabled());
    for (const char* name : {"Connect", "Search again", "Cancel"})
        QCOMPARE(button(name)->text().remove('&'), QString(name));
    QVERIFY(button("Connect")->isDefault());
    QCOMPARE(m_dialog->windowTitle(), QString("Connect to a camera"));
}

void TestCameraDialog::looksForCamerasWhenItIsOpened()
{
    waitForTheWork();
    QCOMPARE(searches(), std::size_t{0});
    ask();
    QCOMPARE(searches(), std::size_t{1});
    QVERIFY((search().asked[0] == CameraInterfaces{CameraInterface::Fake, CameraInterface::Usb3Vision}));
    search().found = {Network, Bus};
    button("Search again")->click();
    QTRY_COMPARE(table()->rowCount(), 2);
    QCOMPARE(searches(), std::size_t{2});
    m_dialog->reject();
    ask();
    QCOMPARE(searches(), std::size_t{3});
}

void TestCameraDialog::saysThatItSearches()
{
    {
        const std::lock_guard<std::mutex> lock(search().mutex);
        m_dialog->ask({});
        QCOMPARE(state(), QString::fromUtf8("Looking for cameras\u2026"));
        for (const char* name : {"Connect", "Search again"})
            QVERIFY(!button(name)->isEnabled());
        QVERIFY(button("Cancel")->isEnabled());
        QVERIFY(!table()->isEnabled());
    }
    QTRY_VERIFY(table()->isEnabled());
    QCOMPARE(state(), QString());
    QVERIFY(button("Connect")->isEnabled());
    const std::lock_guard<std::mutex> lock(search().mutex);
    button("Search again")->click();
    QCOMPARE(table()->rowCount(), 0);
    QVERIFY(!button("Connect")->isEnabled());
}

void TestCameraDialog::camerasAreListed()
{
    search().found = {Network, Bus, Fake, Nobody};
    ask();
    const auto row = [this](int number) {
        QStringList texts;
        for (int column = 0; column < table()->columnCount(); ++column)
            texts.append(table()->item(number, column)->text());
        return texts;
    };
    QStringList head;
    for (int column = 0; column < table()->columnCount(); ++column)
        head.append(table()->horizontalHeaderItem(column)->text());
    QCOMPARE(head, (QStringList{"Camera", "Serial number", "Address", "Interface"}));
    QCOMPARE(table()->rowCount(), 4);
    QCOMPARE(row(0), (QStringList{"Maker M1", "7", "10.0.0.7", "GigE Vision"}));
    QCOMPARE(row(1), (QStringList{"Maker M2", "8", "", "USB3 Vision"}));
    QCOMPARE(row(2), (QStringList{"Aravis Fake", "1", "0.0.0.0", "Fake"}));
    QCOMPARE(row(3), (QStringList{"Nobody", "", "", "Fake"}));
    QCOMPARE(table()->editTriggers(), QAbstractItemView::NoEditTriggers);
}

void TestCameraDialog::preferredCameraIsSelected_data()
{
    QTest::addColumn<QString>("preferred");
    QTest::addColumn<int>("row");
    QTest::newRow("the one of the last time") << "Maker-8" << 1;
    QTest::newRow("the first of the first time") << "" << 0;
    QTest::newRow("the first when it is not there") << "Maker-9" << 0;
}

void TestCameraDialog::preferredCameraIsSelected()
{
    QFETCH(QString, preferred);
    QFETCH(int, row);
    search().found = {Network, Bus, Fake};
    ask(preferred);
    const QList<QTableWidgetItem*> selected = table()->selectedItems();
    QCOMPARE(selected.size(), 4);
    for (const QTableWidgetItem* item : selected)
        QCOMPARE(item->row(), row);
    QCOMPARE(table()->currentRow(), row);
    QCOMPARE(m_dialog->focusWidget(), table());
    // The keyboard goes on to the buttons.
    QTest::keyClick(table(), Qt::Key_Tab);
    QVERIFY(qobject_cast<QPushButton*>(m_dialog->focusWidget()));
}

void TestCameraDialog::saysThatNoneWasFound()
{
    search().found = {};
    ask();
    QCOMPARE(state(), QString("No camera was found. Check that it has power, that its cable is plugged in, "
                              "and that it has an address in this network; then search again."));
    QVERIFY(!button("Connect")->isEnabled());
    QVERIFY(!table()->isEnabled());
    QCOMPARE(m_dialog->focusWidget(), button("Search again"));
    search().found = {Fake};
    button("Search again")->click();
    QTRY_VERIFY(button("Connect")->isEnabled());
    QCOMPARE(state(), QString());
}

void TestCameraDialog::connects_data()
{
    QTest::addColumn<int>("way");
    QTest::newRow("by the button") << 0;
    QTest::newRow("by Return") << 1;
    QTest::newRow("by a double click") << 2;
}

void TestCameraDialog::connects()
{
    QFETCH(int, way);
    search().found = {Bus, Fake};
    ask("Fake_1");
    QString id;
    std::shared_ptr<zor::CameraSource> source;
    connect(m_dialog.get(), &CameraDialog::connected, this,
            [&](const QString& to, const std::shared_ptr<zor::CameraSource>& by) {
                QVERIFY(!m_dialog->isVisible());
                id = to;
                source = by;
            });
    QSignalSpy connected(m_dialog.get(), &CameraDialog::connected);
    const QPoint place = table()->visualItemRect(table()->item(1, 0)).center();
    if (way == 0)
        button("Connect")->click();
    else if (way == 1)
        QTest::keyClick(m_dialog->focusWidget(), Qt::Key_Return);
    else {
        QTest::mouseClick(table()->viewport(), Qt::LeftButton, {}, place);
        QTest::mouseDClick(table()->viewport(), Qt::LeftButton, {}, place);
    }
    QCOMPARE(state(), QString::fromUtf8("Connecting to Aravis Fake (1)\u2026"));
    QVERIFY(!button("Connect")->isEnabled() && !button("Search again")->isEnabled());
    // Once more, out of impatience.
    QTest::keyClick(m_dialog->focusWidget(), Qt::Key_Return);
    QVERIFY(m_dialog->isVisible());
    QTRY_VERIFY(source);
    QCOMPARE(id, QString("Fake_1"));
    QCOMPARE(source->name(), std::string("Aravis Fake (1)"));
    waitForTheWork();
    QCOMPARE(connected.count(), 1);
}

void TestCameraDialog::refusalIsShown()
{
    search().found = {Nobody, Fake};
    ask();
    QSignalSpy connected(m_dialog.get(), &CameraDialog::connected);
    button("Connect")->click();
    QTRY_VERIFY2(state().startsWith("the camera Nobody cannot be opened: "), qPrintable(state()));
    QVERIFY(m_dialog->isVisible());
    QCOMPARE(connected.count(), 0);
    // The next one can be tried.
    QVERIFY(button("Search again")->isEnabled() && table()->isEnabled());
    table()->setCurrentCell(1, 0);
    button("Connect")->click();
    QTRY_COMPARE(connected.count(), 1);
}

void TestCameraDialog::closedDialogWantsNothing_data()
{
    QTest::addColumn<QString>("camera");
    QTest::newRow("no camera that was found") << "";
    QTest::newRow("no connection") << "Fake_1";
    QTest::newRow("no refusal") << "Nobody";
}

void TestCameraDialog::closedDialogWantsNothing()
{
    QFETCH(QString, camera);
    search().found = {Fake, Nobody};
    QSignalSpy connected(m_dialog.get(), &CameraDialog::connected);
    if (camera.isEmpty()) {
        m_dialog->ask({});
    } else {
        ask(camera);
        button("Connect")->click();
    }
    button("Cancel")->click();
    QVERIFY(!m_dialog->isVisible());
    const QString before = state();
    waitForTheWork();
    waitForTheWork();
    QCOMPARE(connected.count(), 0);
    QCOMPARE(state(), before);
    QVERIFY(!button("Search again")->isEnabled());
    // The next question begins anew.
    search().found = {Bus};
    ask();
    QCOMPARE(table()->rowCount(), 1);
}

void TestCameraDialog::secondQuestionRaisesTheFirst()
{
    ask();
    m_dialog->ask({});
    waitForTheWork();
    QCOMPARE(searches(), std::size_t{1});
}

QTEST_MAIN(TestCameraDialog)
#include "tst_camera_dialog.moc"
