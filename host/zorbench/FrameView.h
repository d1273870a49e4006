#pragma once

#include "host/frames/Frame.h"

#include <QPoint>
#include <QWidget>

#include <memory>
#include <optional>

class DisplayAdapter;
class DisplayView;

namespace zor {

/// The current frame as the operator sees it: a view with a viewer, in its window or on the whole screen.
///
/// A viewer runs the event loop while it starts, so that any operation may come in while another one is on
/// the stack. What is to be shown is therefore kept, and shown when the operation before has returned.
class FrameView : public QWidget
{
    Q_OBJECT

public:
    explicit FrameView(QWidget* parent = nullptr);
    ~FrameView() override;

    void setFrame(std::shared_ptr<const Frame> frame);
    /// Null before the first one.
    const std::shared_ptr<const Frame>& frame() const { return m_frame; }

    /// Draws by the GPU or by software. Where there is no GPU viewer the software goes on.
    void setGpu(bool on);
    bool usesGpu() const { return m_gpu; }

    /// Shows frames of colour filters and YUV in colour, or else their luma. On at first.
    void setColour(bool on);
    bool showsColour() const { return m_inColour; }

    // Without a frame these do nothing.
    void fit();
    void oneToOne();
    void zoomIn();
    void zoomOut();

    /// Pixels of the screen for one of the frame; nothing without a frame.
    std::optional<double> scale() const;

    void setFullScreen(bool on);
    bool isOnFullScreen() const;

    /// The view, which is a window of its own on the full screen.
    DisplayView& view() { return *m_view; }
    DisplayAdapter& adapter() { return *m_adapter; }

signals:
    /// The current frame, a new one or the same by another viewer, has come to the view.
    void shown();
    /// The frame has another scale or place in the view.
    void moved();
    /// The cursor is over this place, in image pixels, also beyond the edges.
    void pointed(const QPoint& pixel);
    /// The cursor has left the view.
    void left();
    void fullScreenChanged(bool on);
    void gpuChanged(bool on);
    void colourChanged(bool on);
    /// One sentence without the frame's name: why the viewer does not show it.
    void refused(const QString& reason);

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    void makeAdapter();
    void refresh();
    void showOnce();
    /// The frame, or its colours; null where there is no frame.
    std::shared_ptr<const Frame> shownFrame() const;
    void tellRefusal();

    DisplayView* m_view;
    std::unique_ptr<DisplayAdapter> m_adapter; ///< ends before the view
    std::shared_ptr<const Frame> m_frame;
    bool m_gpu = false;
    bool m_inColour = true;
    bool m_isShowing = false;
    bool m_isOutdated = false;
};

} // namespace zor
