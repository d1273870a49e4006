#include "tests/plugin/LoadedUtility.h"

#include <QAbstractScrollArea>
#include <QFile>
#include <QPointer>
#include <QTest>
#include <QTimer>

namespace {

QWidget* upperViewport()
{
    return static_cast<QAbstractScrollArea*>(findInUtility("gVUp"))->viewport();
}

} // namespace

LoadedUtility::LoadedUtility()
    : m_loader(QStringLiteral(ZOR_PLUGIN_FILE))
{
    m_loader.setLoadHints({});
    m_plugIn = qobject_cast<ZBKInterfacePlugIn*>(m_loader.instance());
    if (!m_plugIn)
        qFatal("%s", qPrintable(m_loader.errorString()));
}

bool LoadedUtility::unload()
{
    return m_loader.unload();
}

bool LoadedUtility::isMapped()
{
    QFile maps(QStringLiteral("/proc/self/maps"));
    if (!maps.open(QIODevice::ReadOnly))
        qFatal("this system doesn't tell what is mapped");
    const QByteArray mapped = maps.readAll();
    return mapped.contains("/ZorFFCUtility.so") || mapped.contains("/libZorDisplayQt.so");
}

void LoadedUtility::show(TestFrame frame)
{
    _ZorImage record = frame.record();
    m_plugIn->SetImage(&record);
    m_plugIn->Update();
}

void LoadedUtility::readPixels()
{
    for (int i = 0; i < 16; ++i)
        QTest::keyClick(upperViewport(), Qt::Key_Plus);
    upperViewport()->grab();
}

bool LoadedUtility::openMenu(const std::function<void()>& whileOpen)
{
    bool wasOpen = false;
    QTimer closer;
    QObject::connect(&closer, &QTimer::timeout, &closer, [&] {
        if (const QPointer<QWidget> menu = QApplication::activePopupWidget()) {
            wasOpen = true;
            if (whileOpen)
                whileOpen();
            if (menu)
                menu->close();
        }
    });
    closer.start(1);
    QTest::mouseClick(upperViewport(), Qt::RightButton);
    return QTest::qWaitFor([&wasOpen] { return wasOpen && !QApplication::activePopupWidget(); });
}
