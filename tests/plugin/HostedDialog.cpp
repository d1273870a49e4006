#include "tests/plugin/HostedDialog.h"

#include "tests/plugin/StoppedClock.h"
#include "tests/plugin/UtilityDialog.h"

#include <QAbstractScrollArea>
#include <QMenu>
#include <QMouseEvent>
#include <QTest>
#include <QTimer>
#include <QWheelEvent>
#include <QWindow>

namespace {

/// A place of the view's viewport in the window's pixels.
QPoint inWindow(const QWidget* view, const QPoint& place)
{
    return static_cast<const QAbstractScrollArea*>(view)->viewport()->mapTo(view->window(), place);
}

} // namespace

HostedDialog::HostedDialog()
    : m_loader(QStringLiteral(ZOR_PLUGIN_FILE))
{
    m_plugIn = qobject_cast<ZBKInterfacePlugIn*>(m_loader.instance());
    if (!m_plugIn)
        qFatal("%s", qPrintable(m_loader.errorString()));
    m_plugIn->Init(notify, this);
    m_plugIn->Show(true);
    m_dialog = utilityDialog();
    if (!m_dialog || !QTest::qWaitForWindowExposed(m_dialog))
        qFatal("the dialog does not open");
}

HostedDialog::~HostedDialog()
{
    m_plugIn->Release();
}

void HostedDialog::hand(TestFrame frame)
{
    _ZorImage record = frame.record();
    m_plugIn->SetImage(&record);
}

void HostedDialog::show(const TestFrame& frame)
{
    hand(frame);
    m_plugIn->Update();
    QCoreApplication::processEvents();
}

void HostedDialog::pause()
{
    // What is posted restarts the throttle's clock when it arrives, and may post more.
    for (int i = 0; i < 3; ++i)
        QCoreApplication::processEvents();
    StoppedClock::advance(Throttle);
}

void HostedDialog::wheel(QWidget* view, const QPoint& where, int units)
{
    const QPoint place = inWindow(view, where);
    QWheelEvent event(place, view->window()->mapToGlobal(place), {}, QPoint(0, units), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(view->window()->windowHandle(), &event);
}

void HostedDialog::drag(QWidget* view, const QPoint& from, const QPoint& to)
{
    QWindow* window = view->window()->windowHandle();
    QTest::mousePress(window, Qt::LeftButton, {}, inWindow(view, from));
    QTest::mouseMove(window, inWindow(view, to));
    QTest::mouseRelease(window, Qt::LeftButton, {}, inWindow(view, to));
}

bool HostedDialog::useMenu(QWidget* view, const std::function<void(QMenu&)>& work, int presses)
{
    // A press that is seen again on its way through the widgets is known by its time.
    static ulong time = 0;
    const QPoint place = inWindow(view, view->rect().center());
    for (int i = 0; i < presses; ++i) {
        QMouseEvent press(QEvent::MouseButtonPress, place, view->window()->mapToGlobal(place),
                          Qt::RightButton, Qt::RightButton, Qt::NoModifier);
        press.setTimestamp(++time);
        QCoreApplication::sendEvent(view->window()->windowHandle(), &press);
    }
    bool hasReturned = true;
    QTimer turn;
    QObject::connect(&turn, &QTimer::timeout, [&] {
        if (auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget())) {
            work(*menu);
        } else {
            hasReturned = false;
            QCoreApplication::exit();
        }
    });
    turn.start(0);
    // No timer runs in here but in the menu's own event loop.
    QCoreApplication::sendPostedEvents();
    return hasReturned;
}

int HostedDialog::notify(void* context, std::uint32_t code, ZBKInterfacePlugIn*)
{
    static_cast<HostedDialog*>(context)->m_codes.append(code);
    return 0;
}
