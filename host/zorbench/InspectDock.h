#pragma once

#include "host/zorbench/RegionDrag.h"

#include <QDockWidget>
#include <QRect>

class QAction;
class QLabel;
class QTableWidget;

namespace zor {

class FrameView;

/// Figures of the rectangle that the operator draws on the frame with Shift and the mouse: of each channel
/// mean, extremes, standard deviation and count of the native codes. The rectangle stays for the next
/// frames, as far as it lies on them, until a click with Shift, the escape key, or the closing of the dock.
class InspectDock : public QDockWidget
{
    Q_OBJECT

public:
    /// The view must outlive the dock.
    explicit InspectDock(FrameView& view, QWidget* parent = nullptr);

private:
    void inspect(const QRect& rect);
    void clear();
    /// Brings figures and rectangle up to the current frame.
    void refresh();
    void showFigures();

    FrameView& m_view;
    RegionDrag m_drag;
    QLabel* m_region;
    QTableWidget* m_figures;
    QAction* m_clear;
    QRect m_rect; ///< as drawn; null: there is none
};

} // namespace zor
