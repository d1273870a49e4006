#pragma once

#include <QPoint>
#include <QPointer>

class QAction;
class QMenu;

namespace zorview {
class Viewer;

/// The viewer's context menu: zoom, fit, 1 : 1, coloration, copy and save of the view.
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
    /// Shows the menu at the pointer and returns when it has closed; false without a menu.
    bool exec();
    /// False when there is none.
    bool destroy();

private:
    void fill();
    void setColoration(bool on);
    void copyView() const;
    void saveView() const;

    Viewer& m_viewer;
    QPointer<QMenu> m_menu;
    QPointer<QAction> m_coloration;
};
} // namespace zorview
