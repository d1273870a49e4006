#pragma once

#include <QDockWidget>
#include <QRect>
#include <QTimer>

class QTableView;

namespace zor {

class FrameView;
class HexModel;

/// The hex pixel dump: native codes of a rectangle of the frame, which the dump overlay marks. The view's
/// context menu shows, hides and moves it, and the mouse moves and sizes the overlay.
class HexDumpDock : public QDockWidget
{
    Q_OBJECT

public:
    /// Sides of the rectangle at first, and the longest ones, in pixels. A larger overlay is dumped from its
    /// upper left corner on.
    static constexpr int FirstWidth = 16;
    static constexpr int FirstHeight = 8;
    static constexpr int LongestSide = 64;

    /// Milliseconds from one look at a stream's frames to the next.
    static constexpr int Pause = 250;

    /// The view must outlive the dock.
    explicit HexDumpDock(FrameView& view, QWidget* parent = nullptr);

private:
    void toggle();
    void moveTo(const QPoint& pixel);
    /// Takes over where the operator has dragged the overlay to.
    void followOverlay();
    void refresh();
    /// Brings overlay and codes to a rectangle, or as near to it as the frame's edges let them be.
    void place(const QRect& rect);
    void showCodes();
    /// Gives all cells the size that the format's digits and the headers' numbers need.
    void fitCells();
    QSize frameSize() const;
    /// In the middle of what is seen.
    QRect firstRect() const;

    FrameView& m_view;
    HexModel* m_codes;
    QTableView* m_table;
    QRect m_rect; ///< where the overlay is; empty before the first showing
    QTimer m_pause;
    bool m_isOutdated = false; ///< a frame came in the pause
};

} // namespace zor
