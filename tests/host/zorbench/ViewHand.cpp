#include "tests/host/zorbench/ViewHand.h"

#include "display/DisplayAdapter.h"
#include "display/DisplayView.h"
#include "tests/host/zorbench/Bench.h"

#include <QApplication>
#include <QMenu>
#include <QTest>
#include <QTimer>
#include <QWindow>

QPoint ViewHand::inWindow(QPoint pixel) const
{
    m_bench.view().adapter().translatePoint(&pixel.rx(), &pixel.ry(), "img", "win");
    return m_bench.view().view().mapTo(&m_bench.window(), pixel);
}

void ViewHand::press(const QPoint& pixel, Qt::KeyboardModifiers keys)
{
    QTest::mousePress(m_bench.window().windowHandle(), Qt::LeftButton, keys, inWindow(pixel));
    QCoreApplication::processEvents();
}

void ViewHand::moveTo(const QPoint& pixel)
{
    QTest::mouseMove(m_bench.window().windowHandle(), inWindow(pixel));
    QCoreApplication::processEvents();
}

void ViewHand::release(const QPoint& pixel, Qt::KeyboardModifiers keys)
{
    QTest::mouseRelease(m_bench.window().windowHandle(), Qt::LeftButton, keys, inWindow(pixel));
    QCoreApplication::processEvents();
}

void ViewHand::drag(const QPoint& from, const QPoint& to, Qt::KeyboardModifiers keys)
{
    press(from, keys);
    moveTo((from + to) / 2);
    moveTo(to);
    release(to, keys);
}

void ViewHand::chooseInMenu(const QPoint& pixel, const QString& entry)
{
    entries.clear();
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, [&] {
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        if (!menu)
            return;
        look.stop();
        corner = m_bench.view().view().mapFromGlobal(menu->pos());
        m_bench.view().adapter().translatePoint(&corner.rx(), &corner.ry(), "win", "img");
        QAction* chosen = nullptr;
        const auto actions = menu->actions();
        for (QAction* action : actions) {
            if (!action->isVisible())
                continue;
            entries.append(action->text());
            if (action->text() == entry)
                chosen = action;
        }
        if (chosen)
            QTest::mouseClick(menu, Qt::LeftButton, Qt::NoModifier, menu->actionGeometry(chosen).center());
        else
            menu->close();
    });
    look.start(1);
    QCursor::setPos(m_bench.window().mapToGlobal(inWindow(pixel)));
    QTest::mousePress(m_bench.window().windowHandle(), Qt::RightButton, Qt::NoModifier, inWindow(pixel));
    QTRY_VERIFY(!entries.isEmpty());
    QTest::mouseRelease(m_bench.window().windowHandle(), Qt::RightButton, Qt::NoModifier, inWindow(pixel));
    QCoreApplication::processEvents();
}

QRect ViewHand::overlay(const char* id) const
{
    const auto packed = static_cast<quint64>(m_bench.view().adapter().stageValue(id));
    return {int(packed & 0xFFFF), int(packed >> 16 & 0xFFFF), int(packed >> 32 & 0xFFFF), int(packed >> 48)};
}
