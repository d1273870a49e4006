#pragma once

#include <QObject>
#include <QPointer>

#include <deque>
#include <functional>

class QAction;
class QMenu;

namespace zor::viewer {
class Viewer;

/// The viewer's context menu: zoom, fit, 1 : 1, coloration, copy and save of the view. What is chosen there
/// is done when the menu's caller has it back and the event loop runs again, and never once the viewer has
/// ended: a caller may hear nothing of the view while the menu is open. Entries that a host adds are its own
/// affair.
class ViewerMenu
{
public:
    explicit ViewerMenu(Viewer& viewer)
        : m_viewer(viewer)
    {
    }
    ~ViewerMenu() { destroy(); }

    /// The menu, made at the first call; null without a view.
    QMenu* create();
    /// Shows the menu at the pointer and returns when it has closed; false without a menu, and while it is
    /// open. Menu and viewer may be deleted meanwhile.
    bool exec();
    /// False when there is none.
    bool destroy();

private:
    using Deed = std::function<void()>;

    void fill();
    void choose(Deed deed);
    void doChosenLater();
    void doChosen();
    void setColoration(bool on);
    void copyView() const;
    void saveView() const;

    Viewer& m_viewer;
    QPointer<QMenu> m_menu;
    QPointer<QAction> m_coloration;
    bool m_isOpen = false;
    std::deque<Deed> m_chosen; ///< and not done yet
    QObject m_life;            ///< at its end nothing is due any more
};
} // namespace zor::viewer
