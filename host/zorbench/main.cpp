#include "host/zorbench/Arguments.h"
#include "host/zorbench/BenchFont.h"
#include "host/zorbench/MainWindow.h"
#include "host/zorbench/Places.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QSettings>
#include <QTimer>

#include <iostream>

int main(int argc, char** argv)
{
    const zor::Arguments arguments = zor::parseArguments(argc, argv);
    if (arguments.exitCode)
        return *arguments.exitCode;

    // The view keeps its pictures on the GPU when it goes to the full screen and back.
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    QApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("zorbench"));
    QApplication::setFont(zor::benchFont());

    const zor::Places places = zor::placesOf(QCoreApplication::applicationDirPath());
    if (!QDir::setCurrent(places.home))
        std::cerr << "zorbench: " << qPrintable(places.home)
                  << ": cannot be entered, so that the full screen's button has no picture; install zorbench "
                     "again"
                  << std::endl;

    QSettings settings(QStringLiteral("ZorBench"), QStringLiteral("zorbench"));
    zor::MainWindow window(settings,
                           arguments.plugInFolder.empty() ? places.plugIns
                                                          : QFile::decodeName(arguments.plugInFolder.c_str()),
                           arguments.cameraInterfaces);
    QObject::connect(&window, &zor::MainWindow::closed, &application, &QCoreApplication::quit);
    window.show();
    QStringList files;
    for (const std::string& frame : arguments.frames)
        files.append(QFile::decodeName(frame.c_str()));
    // When the events run: a viewer lets them in while it starts, and a window that is closed before that
    // ends nothing.
    QTimer::singleShot(0, &window, [&window, &files] { window.openFiles(files); });
    return QApplication::exec();
}
