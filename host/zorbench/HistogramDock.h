#pragma once

#include <QDockWidget>
#include <QTimer>

class QCheckBox;
class QwtPlot;

namespace zor {

class FrameView;
struct FrameHistogram;

/// How often each code comes in the current frame, a curve for each channel over the codes from 0 to full
/// scale.
class HistogramDock : public QDockWidget
{
    Q_OBJECT

public:
    /// Milliseconds from one look at a stream's frames to the next.
    static constexpr int Pause = 250;

    /// The view must outlive the dock.
    explicit HistogramDock(FrameView& view, QWidget* parent = nullptr);

private:
    /// Counts the current frame, or the one that is current at the end of the pause.
    void refresh();
    void count();
    void drawCurves(const FrameHistogram& histogram);
    void setLogarithmic(bool on);
    void copy() const;

    FrameView& m_view;
    QwtPlot* m_plot;
    QCheckBox* m_logarithmic;
    QTimer m_pause;
    bool m_isOutdated = false;
};

} // namespace zor
