// What the menus of the main window offer.

#include "host/zorbench/MainWindow.h"

#include "display/DisplayView.h"
#include "host/colour/ColourFrame.h"
#include "host/zorbench/PlugIn.h"
#include "host/zorbench/PlugInFolder.h"
#include "host/zorbench/Tell.h"

#include <QFileDialog>
#include <QMenu>
#include <QMenuBar>
#include <QTimer>

namespace zor {

void MainWindow::makeFileMenu()
{
    QMenu* menu = menuBar()->addMenu(tr("File"));
    menu->addAction(tr("Open\u2026"), this, &MainWindow::askForFiles, QKeySequence::Open);
    QMenu* recent = menu->addMenu(tr("Recent files"));
    fillRecentFiles(recent);
    // Afterwards: it may be one of its own items that changes the list.
    connect(
        &m_recent, &RecentFiles::changed, recent, [this, recent] { fillRecentFiles(recent); },
        Qt::QueuedConnection);
    QAction* save =
        menu->addAction(tr("Save frame\u2026"), this, &MainWindow::askWhereToSave, QKeySequence::Save);
    save->setEnabled(false);
    connect(m_view, &FrameView::shown, save, [save] { save->setEnabled(true); });
    menu->addSeparator();
    makeStreamActions(menu);
    menu->addSeparator();
    menu->addAction(tr("Quit"), this, &QWidget::close, QKeySequence::Quit);
}

void MainWindow::askForFiles()
{
    auto* dialog = new QFileDialog(this, tr("Open"), lastFolder());
    // Looks and works the same everywhere, also for an assistive client.
    dialog->setOption(QFileDialog::DontUseNativeDialog);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setFileMode(QFileDialog::ExistingFiles);
    dialog->setNameFilters({tr("All files (*)"), tr("Pictures (*.pgm *.ppm *.png *.tif *.tiff)")});
    connect(dialog, &QFileDialog::filesSelected, this, &MainWindow::openFiles);
    dialog->open();
}

void MainWindow::askWhereToSave()
{
    m_saver.ask(m_view->frame(), lastFolder(), m_name);
}

void MainWindow::fillRecentFiles(QMenu* menu)
{
    menu->clear();
    const QStringList files = m_recent.files();
    menu->setEnabled(!files.isEmpty());
    for (const QString& file : files) {
        // An ampersand marks the next letter in a menu, two are one.
        const QString text = QString(file).replace(QLatin1Char('&'), QLatin1String("&&"));
        menu->addAction(text, this, [this, file] { openFiles({file}); });
    }
}

void MainWindow::makeViewMenu()
{
    QMenu* menu = menuBar()->addMenu(tr("View"));
    menu->addAction(tr("Fit"), m_view, &FrameView::fit, Qt::CTRL + Qt::Key_0);
    menu->addAction(tr("1:1"), m_view, &FrameView::oneToOne, Qt::CTRL + Qt::Key_1);
    menu->addAction(tr("Zoom in"), m_view, &FrameView::zoomIn, QKeySequence::ZoomIn);
    menu->addAction(tr("Zoom out"), m_view, &FrameView::zoomOut, QKeySequence::ZoomOut);
    QAction* fullScreen = menu->addAction(tr("Full screen"));
    fullScreen->setShortcut(Qt::Key_F11);
    fullScreen->setCheckable(true);
    connect(fullScreen, &QAction::triggered, m_view, &FrameView::setFullScreen);
    connect(m_view, &FrameView::fullScreenChanged, fullScreen, &QAction::setChecked);
    // Their keys work on the full screen too, where the view is a window of its own.
    m_view->view().addActions(menu->actions());

    addDocks(menu);
    menu->addSeparator();
    QAction* colour = menu->addAction(tr("Colour"));
    colour->setCheckable(true);
    colour->setChecked(m_view->showsColour());
    connect(colour, &QAction::triggered, m_view, &FrameView::setColour);
    connect(m_view, &FrameView::colourChanged, colour, &QAction::setChecked);
    connect(m_view, &FrameView::shown, colour,
            [this, colour] { colour->setEnabled(hasHiddenColour(m_view->frame()->pixelType)); });
    QAction* gpu = menu->addAction(tr("GPU viewer"));
    gpu->setCheckable(true);
    connect(gpu, &QAction::triggered, m_view, &FrameView::setGpu);
    connect(m_view, &FrameView::gpuChanged, gpu, &QAction::setChecked);

    menu->addSeparator();
    menu->addAction(makeSimulatorDock());
}

void MainWindow::makePlugInMenu(const QString& folder)
{
    QMenu* menu = menuBar()->addMenu(tr("Plug-ins"));
    const PlugInFolder found = loadPlugIns(folder);
    for (ZBKInterfacePlugIn* loaded : found.plugIns) {
        auto* plugIn = new PlugIn(*loaded, this);
        m_plugIns.append(plugIn);
        QAction* action = menu->addAction(plugIn->name());
        action->setCheckable(true);
        connect(plugIn, &PlugIn::openChanged, action, &QAction::setChecked);
        connect(action, &QAction::triggered, plugIn, [plugIn, action] {
            plugIn->open();
            // Choosing an action that is checked takes its mark, but does not close the window.
            action->setChecked(plugIn->isOpen());
        });
    }
    if (found.refusals.isEmpty())
        return;
    const QString sentence = tr("Not every plug-in can be used: %1.").arg(found.refusals.join(tr("; ")));
    QTimer::singleShot(0, this, [this, sentence] { tell(this, sentence); });
}

} // namespace zor
