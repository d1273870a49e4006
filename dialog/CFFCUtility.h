#pragma once

#include "dialog/DeferredRequests.h"
#include "dialog/OwnedMutex.h"
#include "dialog/Ui_CFFCUtility.h"
#include "display/DisplayView.h"
#include "plugin/ZBKInterfacePlugIn.h"

#include <QDialog>
#include <QTime>

#include <atomic>
#include <cstdint>
#include <list>

class CGridSplitter;
namespace zor {
class DialogUse;
}
class DisplayAdapter;
class HighLightProcessor;
struct _ZorImage;

/// The utility's one window and the owner of all its working data: the copy of the frame, what the correction
/// derives from it, the host link. Slots, event handlers and the host's calls belong on the GUI thread.
///
/// Blocks named below come from zorAllocate and are null when absent. The locks are always taken in the order
/// m_viewLock, m_dataLock.
///
/// The members lie in several files, one for each group; what a group computes is in engine/.
class CFFCUtility : public QDialog
{
    Q_OBJECT

public:
    explicit CFFCUtility(QWidget* parent);
    ~CFFCUtility() override;

    // The host link and the frame's end: CFFCUtility.cpp.

    /// Whom to notify, and as whom. The callback may be null.
    void SetHost(ZBKHostCallback callback, void* context, ZBKInterfacePlugIn* plugIn);
    void SetHostInfo(ZBKHostInfo info);

    /// The owner gives the dialog up: nobody is notified any more, and the dialog deletes itself, at once or
    /// when its operations that are on the stack have returned.
    void Discard();

    // What may have to wait for a refresh to end: DialogRequests.cpp, with Update() below.

    /// Drops the frame and everything derived from it, and on request the adapters. Waits for a refresh that
    /// runs on another thread. While this thread holds the view lock, as inside a refresh, the frame is
    /// dropped after that, and a request with the adapters raises std::system_error.
    void ResetData(bool destroyAdapters);
    /// The one place that releases the frame and what was computed from it; the gain lists and texts stay.
    /// Takes no lock.
    virtual void ResetFrame();
    // The frame's beginning: FrameIntake.cpp.

    /// Takes a private copy of a frame, converted to mono of its own depth. The record stays the caller's.
    /// Ignores null, a record without pixels, and any frame while a refresh runs. Computes nothing.
    void SetFrame(_ZorImage* image);

    /// The utility has no image to give.
    bool HasResult();
    /// Stores null.
    void GetResult(void** result);

    // The order of the stages: RunCorrection.cpp.

    /// Runs all stages of the correction under the wait cursor, stopping at the first that fails.
    bool RunCorrection();

public slots:
    // What the operator sees: LiveViews.cpp, with highLightSlot() and onViewChanged() below.

    /// Hands the frame and the corrected image to the two views and rebuilds the plots. Nothing happens
    /// without a result.
    void ShowAll();
    /// Reads the normalise settings, corrects the frame and shows the result. Nothing happens without a
    /// frame. While this thread holds the view lock, as inside a refresh, it is done after that.
    void Update();
    /// DoSaveFFC.cpp. Asks for a name and writes the gains to a coefficient file.
    void DoSaveFFC();
    /// Takes the mark of bright pixels from the upper view or gives it, and refreshes. While this thread
    /// holds the view lock, as inside a refresh, it is done after that, as the box is ticked now.
    void highLightSlot();
    /// One view was zoomed or panned: the other follows, at most once in 50 ms.
    void onViewChanged(DisplayView* view);

protected:
    // DialogEvents.cpp.
    void resizeEvent(QResizeEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void showEvent(QShowEvent* event) override;

    // The stages of the correction: engine/stages/, one file each. Each answers false when its input is
    // missing or, after a box, when it can't have its memory.

    /// Column gains, and the means of columns and rows, of the frame.
    bool ComputeColumnGains();
    /// m_flatX: the frame under the column gains.
    bool ApplyColumnGains(bool withOffset);
    /// Row gains of m_flatX.
    bool ComputeRowGains();
    /// m_flatY: m_flatX, built anew, under the row gains.
    bool ApplyRowGains();
    bool ComputeHistogram();
    /// The lines that the plots draw. Pass 0: of the frame, 1: of the corrected image. `row` and `column` are
    /// both -1, for the means, or a row and a column of an image of 16-bit pixels.
    bool TakeProfileLines(std::int32_t pass, std::int32_t row, std::int32_t column);
    /// The plots' value axes.
    void ComputeRanges();

    /// The pixels of the lower view's record, from one of the two working images.
    void FillLowerImage(_ZorImage& lower, const std::uint16_t* corrected);
    /// ProfilePlots.cpp. Rebuilds the curves and axes of both plots from the four lines.
    void RefreshPlots();

    ZBKHostCallback m_hostCallback = nullptr;
    void* m_hostContext = nullptr;
    ZBKInterfacePlugIn* m_plugIn = nullptr;
    Ui_CFFCUtility ui;
    CGridSplitter* m_grid = nullptr;           ///< the four panes
    DisplayAdapter* m_adapterUp = nullptr;     ///< owned
    DisplayAdapter* m_adapterDown = nullptr;   ///< owned
    void* m_reservedPointers[2] = {};          ///< read by nothing
    HighLightProcessor* m_highLight = nullptr; ///< the viewer's
    /// Adapters and buffers while a refresh runs. Who gives it back carries out what waited for it.
    zor::OwnedMutex m_viewLock{[this] { ViewLockReleased(); }};
    zor::OwnedMutex m_dataLock; ///< the frame's data while it is dropped
    ZBKHostInfo m_hostInfo;
    bool m_shown = false; ///< the host knows that the dialog is open

    // The frame: one byte a pixel at depth 8, two bytes otherwise.
    std::int32_t m_width = 0;  ///< pixels
    std::int32_t m_height = 0; ///< rows
    std::uint8_t* m_image = nullptr;
    std::int32_t m_step = 0;  ///< bytes from row to row
    std::int32_t m_depth = 0; ///< 8, 10, 12 or 16
    std::int32_t m_pairSmoothing = 0;
    std::uint64_t m_imageBytes = 0;
    std::uint32_t m_pixelFormat = 0; ///< pixel type code

    // What the correction makes of it.
    std::list<double> m_columnGains;
    std::list<double> m_rowGains;
    std::uint16_t* m_flatX = nullptr; ///< corrected by the column gains
    std::int32_t m_flatXStep = 0;     ///< bytes from row to row
    std::uint16_t* m_flatY = nullptr; ///< corrected by both; when set, a result exists
    std::int32_t m_flatYStep = 0;
    std::int32_t* m_histogram = nullptr;
    std::int32_t m_histogramLevels = -1;
    std::int32_t m_histogramPeak = -1;
    std::int32_t m_histogramReserved = -1; ///< read by nothing
    std::int32_t m_histogramFloor = -1;
    std::uint16_t* m_columnMean = nullptr;
    std::uint16_t* m_flatColumnMean = nullptr;
    std::uint16_t* m_rowMean = nullptr;
    std::uint16_t* m_flatRowMean = nullptr;
    std::uint16_t* m_columnLine = nullptr;
    std::uint16_t* m_flatColumnLine = nullptr;
    std::uint16_t* m_rowLine = nullptr;
    std::uint16_t* m_flatRowLine = nullptr;
    std::int32_t m_rangeXMax = -1;
    std::int32_t m_rangeXMin = -1;
    std::int32_t m_rangeYMax = -1;
    std::int32_t m_rangeYMin = -1;
    std::int32_t m_imageMax = -1;
    std::int32_t m_imageMin = -1;
    std::int32_t m_flatMax = -1;
    std::int32_t m_flatMin = -1;

    // The texts of the last save.
    QString m_title;
    QString m_camera;
    QString m_date;

    std::int32_t m_normalize = 1;
    double m_normalizeValue = 1.0;
    std::int64_t m_reservedValue = 0; ///< read by nothing
    std::int32_t m_reservedFlag = 1;  ///< read by nothing
    QTime m_viewClock;                ///< since the last change of a view that was followed

private:
    friend class zor::DialogUse;

    /// True when the request has to wait because this thread holds the view lock.
    bool Deferred(zor::DeferredRequests::Request request);
    /// An operation that is on the stack carries the requests out at its end.
    void ViewLockReleased();
    /// Carries out the requests that waited, when this thread no longer holds the view lock.
    void CarryOutRequests();
    void SetHighlights(bool on);

    zor::DeferredRequests m_requests;
    std::atomic<int> m_uses{1}; ///< the owner's and those on the stack; the last one deletes the dialog
};
