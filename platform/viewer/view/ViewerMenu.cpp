#include "platform/viewer/view/ViewerMenu.h"

#include "platform/viewer/Viewer.h"
#include "platform/viewer/paint/Canvas.h"

#include <QClipboard>
#include <QCoreApplication>
#include <QCursor>
#include <QFileDialog>
#include <QGuiApplication>
#include <QImage>
#include <QMenu>
#include <QMessageBox>
#include <QTimer>

namespace zor::viewer {
namespace {
QString text(const char* source)
{
    return QCoreApplication::translate("ViewerMenu", source);
}
} // namespace

QMenu* ViewerMenu::create()
{
    if (!m_menu && m_viewer.view()) {
        m_menu = new QMenu(m_viewer.view());
        fill();
    }
    return m_menu;
}

void ViewerMenu::fill()
{
    Navigator& navigator = m_viewer.navigator();
    const auto add = [this](const char* label, const Deed& deed) {
        QObject::connect(m_menu->addAction(text(label)), &QAction::triggered, m_menu.data(),
                         [this, deed] { choose(deed); });
    };
    add("Zoom in", [&navigator] { navigator.zoom(Navigator::ZoomStep); });
    add("Zoom out", [&navigator] { navigator.zoom(1.0 / Navigator::ZoomStep); });
    add("Fit", [&navigator] { navigator.fit(ViewGeometry::FitWhole); });
    add("1:1", [&navigator] { navigator.oneToOne(); });
    m_menu->addSeparator();
    m_coloration = m_menu->addAction(text("Coloration"));
    m_coloration->setCheckable(true);
    QObject::connect(m_coloration.data(), &QAction::triggered, m_menu.data(),
                     [this](bool on) { choose([this, on] { setColoration(on); }); });
    m_menu->addSeparator();
    add("Copy view", [this] { copyView(); });
    add("Save view...", [this] { saveView(); });
}

bool ViewerMenu::exec()
{
    // A second event loop inside the first would end with the menu, the first one never.
    if (!m_menu || m_isOpen)
        return false;
    if (m_coloration)
        m_coloration->setChecked(m_viewer.scene().coloration);
    const std::weak_ptr<const int> alive = m_viewer.hub().life();
    m_isOpen = true;
    m_menu->exec(QCursor::pos());
    if (alive.expired())
        return true;
    m_isOpen = false;
    doChosenLater();
    return true;
}

void ViewerMenu::choose(Deed deed)
{
    m_chosen.push_back(std::move(deed));
    doChosenLater();
}

void ViewerMenu::doChosenLater()
{
    QTimer::singleShot(0, &m_life, [this] { doChosen(); });
}

// Also called by the loop of a menu that is open, where everything waits for its end.
void ViewerMenu::doChosen()
{
    const std::weak_ptr<const int> alive = m_viewer.hub().life();
    // A deed may delete the viewer.
    while (!alive.expired() && !m_isOpen && !m_chosen.empty()) {
        const Deed deed = std::move(m_chosen.front());
        m_chosen.pop_front();
        deed();
    }
}

bool ViewerMenu::destroy()
{
    const bool existed = !m_menu.isNull();
    delete m_menu;
    return existed;
}

void ViewerMenu::setColoration(bool on)
{
    m_viewer.setColoration(on);
    m_viewer.repaint();
}

void ViewerMenu::copyView() const
{
    if (Canvas* canvas = m_viewer.canvas())
        QGuiApplication::clipboard()->setImage(canvas->picture());
}

void ViewerMenu::saveView() const
{
    Canvas* canvas = m_viewer.canvas();
    if (!canvas)
        return;
    // What is on the screen now, not when the dialog closes. The viewer and the host's widget may have ended
    // by then, so that neither dialog is a child of them.
    const QImage picture = canvas->picture();
    QString name =
        QFileDialog::getSaveFileName(nullptr, text("Save view"), QString(), text("PNG images (*.png)"));
    if (name.isEmpty())
        return;
    if (!name.endsWith(QLatin1String(".png"), Qt::CaseInsensitive))
        name += QLatin1String(".png");
    if (!picture.save(name, "PNG"))
        QMessageBox::warning(nullptr, text("Save view"),
                             text("%1 could not be written. Choose another folder or free some space.")
                                 .arg(QDir::toNativeSeparators(name)));
}
} // namespace zor::viewer
