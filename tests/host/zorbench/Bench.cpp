#include "tests/host/zorbench/Bench.h"

#include "display/DisplayAdapter.h"

#include <QFile>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QTest>

Bench::Bench(const QString& plugInFolder, const std::string& cameraInterfaces)
    : m_plugIns(plugInFolder.isEmpty() ? m_folder.path() : plugInFolder)
    , m_cameraInterfaces(cameraInterfaces)
    , m_settings(m_folder.filePath(QStringLiteral("settings.ini")), QSettings::IniFormat)
{
    // Qt's own file dialog keeps settings too.
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, m_folder.path());
    restart();
}

void Bench::restart()
{
    if (m_window)
        m_window->close();
    m_window.reset();
    m_window = std::make_unique<zor::MainWindow>(m_settings, m_plugIns, m_cameraInterfaces);
    m_window->show();
    if (!QTest::qWaitForWindowExposed(m_window.get()))
        qFatal("the window does not open");
}

zor::FrameView& Bench::view()
{
    return *m_window->findChild<zor::FrameView*>();
}

QString Bench::write(const char* name, const QByteArray& bytes)
{
    QFile file(path(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("%s cannot be written", name);
    return file.fileName();
}

void Bench::open(const QString& file)
{
    m_window->openFiles({file});
    QCoreApplication::processEvents();
}

QAction* Bench::action(const QString& text)
{
    const auto menus = m_window->menuBar()->actions();
    for (const QAction* menu : menus) {
        const auto actions = menu->menu()->actions();
        for (QAction* action : actions) {
            if (action->text() == text)
                return action;
        }
    }
    qFatal("there is no action %s", qPrintable(text));
}

QString Bench::status(const char* name)
{
    return controlOf<QLineEdit>(m_window.get(), QLatin1String(name))->text();
}

QSize Bench::shownSize()
{
    const _ZorImage* image = view().adapter().stageImage(0);
    return image ? QSize(static_cast<int>(image->width), static_cast<int>(image->height)) : QSize();
}

QWidget* controlOf(QWidget* window, const QString& name)
{
    const auto widgets = window->findChildren<QWidget*>();
    for (QWidget* widget : widgets) {
        if (widget->accessibleName() == name)
            return widget;
    }
    qFatal("there is no control %s", qPrintable(name));
}

QByteArray countedPgm(int width, int height)
{
    QByteArray bytes = "P5\n" + QByteArray::number(width) + ' ' + QByteArray::number(height) + "\n255\n";
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x)
            bytes.append(static_cast<char>(10 * y + x));
    }
    return bytes;
}
