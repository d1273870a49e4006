#pragma once

#include "display/DisplayAdapter.h"
#include "display/ParameterMap.h"

#include <atomic>
#include <map>

class QMenu;
class QWidget;
class ZorDisplayProcessor;

/// The display adapter of a Qt widget: each operation becomes a command to a closed viewer that draws into
/// the widget; the viewer's notifications become events for the widget.
///
/// Owns its viewer. May be made on any thread; it then lives on the view's. The view outlives the adapter.
/// Only prepareImage and the notifications may come from other threads, everything else is serialised by the
/// caller.
class DisplayAdapterQT : public DisplayAdapter
{
    Q_OBJECT

public:
    class DisplayEvent;
    class DisplayMouseEv;
    class DisplayMessageEv;
    class DisplayImageProcessedEv;

    /// Makes no viewer yet. `features` are DisplayFeature bits. A null view is allowed: nothing is sent then.
    DisplayAdapterQT(QWidget* target, bool useGpu, std::uint32_t featureBits);
    ~DisplayAdapterQT() override;

    bool hasViewer() const override;
    bool isGpuViewer() const override;
    DisplaySettings* viewerSettings() override;
    bool handleDisplayEvent(QEvent* event) override;
    bool prepareImage(const _ZorImage* image, bool force) override;
    std::uint32_t lastError() const override;
    bool displayImage(const _ZorImage* image) override;
    bool setColoration(bool on) override;
    bool zoomView(bool in) override;
    bool fitView(std::int32_t mode) override;
    bool viewAt(double x, double y) override;
    bool viewScale(double scale) override;
    bool displayImagePair(const _ZorImage* first, const _ZorImage* second) override;
    bool showDumpOverlay(bool on) override;
    bool setDumpRect(std::int32_t x, std::int32_t y, std::int32_t w, std::int32_t h,
                     const char* space) override;
    bool showInspectOverlay(bool on) override;
    bool setInspectRect(std::int32_t x, std::int32_t y, std::int32_t w, std::int32_t h,
                        const char* space) override;
    bool translatePoint(int* x, int* y, const char* source, const char* destination) override;
    bool addNotification(ZorDisplayCommand* listener) override;
    bool viewImageRect(QRect* rect) override;
    bool setParameter(const char* name, const char* value) override;
    std::string parameter(const char* name) const override;
    std::uint32_t featureFlags() const override;
    void setFeatureFlags(std::uint32_t flags) override;
    std::int64_t stageValue(const char* name) override;
    _ZorImage* stageImage(std::uint8_t which) override;
    DisplayStageItem* stageItem(const char* name) override;

    /// Hears the events of the view alone.
    bool eventFilter(QObject* object, QEvent* event) override;

    /// Gives the adapter's own events to handleDisplayEvent; false for all others. The event is not null.
    bool routeEvent(QEvent* event);

    /// Posts the event to the view and takes it over; without a view the event is deleted and false given.
    bool postToView(QEvent* event);

    /// As postToView, and waits, without limit, until an event has reached handleDisplayEvent.
    bool postToViewAndWait(QEvent* event);

private:
    /// What the viewer calls back through, on whatever thread it likes.
    class DisplayNotification : public ZorDisplayCommand
    {
    public:
        explicit DisplayNotification(DisplayAdapterQT* owner)
            : adapter(owner)
        {
        }
        ~DisplayNotification() override = default;

        std::int64_t notify(const char* name, ParameterMap* parameters) override;

        void open() { gate.exchange(true); }
        void close() { gate.exchange(false); }

    private:
        std::int64_t mouseDown(ParameterMap& parameters);
        std::int64_t mouseUp(ParameterMap& parameters);

        DisplayAdapterQT* adapter;
        /// False while the context menu is built and open: nothing is delivered then.
        std::atomic<bool> gate{true};
    };

    bool startViewer();
    void createViewer();
    void configureViewer(ParameterMap& parameters);
    void setOverlayDefaults();
    bool showContextMenu();
    void addHexDumpEntries(QMenu* menu);
    void hexDumpToggled();
    void hexDumpHere();

    /// Clears the error code; false, with the code set, when there is no viewer.
    bool beginCommand();
    bool fail(std::uint32_t code);
    bool sendToView(QEvent& event);
    bool setOverlayRect(const char* overlay, std::int32_t x, std::int32_t y, std::int32_t w, std::int32_t h,
                        const char* space);
    bool showOverlay(const char* overlay, bool on);

    DisplayNotification notification;
    QWidget* view;
    ZorDisplayProcessor* processor = nullptr;
    std::uint32_t features;
    /// Ends the wait of postToViewAndWait.
    std::atomic<bool> done{false};
    /// Geometry and pixel type of the last prepared image, without pixels. Not given back at destruction.
    _ZorImage* imageHeader = nullptr;
    std::uint32_t errorCode = 0;
    bool gpu;
    std::map<std::string, ParameterMap> overlayObjects;
    ParameterMap viewerParameters;
    bool dumpShown = false;
    /// The viewer's menu and the adapter's entries in it, as pointer texts.
    ParameterMap menuParameters;
};
