#pragma once

#include "display/DisplaySettings.h"
#include "display/DisplayStage.h"
#include "display/ZorDisplayCommand.h"
#include "image/ZorImage.h"

#include <QObject>

#include <cstdint>
#include <string>

class QEvent;
class QRect;

/// What a view offers beyond plain images.
enum DisplayFeature : std::uint32_t
{
    DisplayFeatureInspect = 1,     ///< the inspect overlay works
    DisplayFeatureDump = 2,        ///< the dump overlay works and the context menu has the hex dump entries
    DisplayFeatureViewEvents = 4,  ///< the viewer reports changes of zoom and position
    DisplayFeatureImageEvents = 8, ///< the viewer reports finished images
};

/// What DisplayAdapter::lastError returns. 0 is no error; other values are a status of the viewer.
enum DisplayError : std::uint32_t
{
    DisplayErrCommand = 1,  ///< the viewer could not translate a point
    DisplayErrDisabled = 3, ///< the feature of this overlay is off
    DisplayErrArgument = 7, ///< a required argument is null or empty
    DisplayErrNoViewer = 8, ///< no viewer exists, or none yet
};

/// One image view, whichever viewer draws it. The order of the operations is binding.
///
/// A bool result is true on success. After a failure lastError gives the reason, or 0 where the viewer just
/// refused. Nothing throws. Without a viewer, which comes with the first prepareImage, viewerSettings and the
/// stage's operations answer null or 0 and leave the error code alone. Every other operation that needs one
/// fails with DisplayErrNoViewer, those of an overlay whose feature is off with DisplayErrDisabled.
/// Coordinate spaces are "img" (image pixels), "win" (widget pixels) and "base" (fractions of the image).
class DisplayAdapter : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    virtual bool hasViewer() const = 0;
    virtual bool isGpuViewer() const = 0;

    /// The viewer's settings, owned by it; null without a viewer. Leaves the error code alone.
    virtual DisplaySettings* viewerSettings() = 0;

    /// The adapter's own events; true when the event was one of them.
    virtual bool handleDisplayEvent(QEvent* event) = 0;

    /// Readies the viewer for images of this geometry and pixel type, which costs nothing when neither
    /// changed and `force` is false. True when they changed, which says nothing about success. May be called
    /// on any thread; it waits for the view's thread, so the caller must hold nothing that that thread needs.
    virtual bool prepareImage(const _ZorImage* image, bool force) = 0;

    /// 0, a DisplayError, or the low 16 bits of a viewer's status.
    virtual std::uint32_t lastError() const = 0;

    /// Shows an image, which may be freed on return.
    virtual bool displayImage(const _ZorImage* image) = 0;

    /// False colours on or off.
    virtual bool setColoration(bool on) = 0;

    virtual bool zoomView(bool in) = 0;

    /// 1 the whole image, 2 its width, 3 its height; any other value counts as 1.
    virtual bool fitView(std::int32_t mode) = 0;

    /// Centres the view at a point given in fractions of the image.
    virtual bool viewAt(double x, double y) = 0;

    virtual bool viewScale(double scale) = 0;

    /// Shows two images with pixels side by side.
    virtual bool displayImagePair(const _ZorImage* first, const _ZorImage* second) = 0;

    virtual bool showDumpOverlay(bool on) = 0;

    /// Stores the rectangle that the next showDumpOverlay(true) shows. A null or empty space means "img".
    virtual bool setDumpRect(std::int32_t x, std::int32_t y, std::int32_t w, std::int32_t h,
                             const char* space) = 0;

    virtual bool showInspectOverlay(bool on) = 0;

    /// As setDumpRect, for the inspect overlay.
    virtual bool setInspectRect(std::int32_t x, std::int32_t y, std::int32_t w, std::int32_t h,
                                const char* space) = 0;

    /// Moves a point from one coordinate space to another, in place. The point is written also when the
    /// viewer finds it outside, which gives false with the error code 0.
    virtual bool translatePoint(int* x, int* y, const char* source, const char* destination) = 0;

    /// Adds a listener to the viewer's notifications. The caller keeps it alive as long as the viewer.
    virtual bool addNotification(ZorDisplayCommand* listener) = 0;

    /// The part of the image that is seen, in image pixels.
    virtual bool viewImageRect(QRect* rect) = 0;

    /// Stores a viewer parameter for the next start-up. False for a null name or value. Needs no viewer and
    /// leaves the error code alone.
    virtual bool setParameter(const char* name, const char* value) = 0;

    /// What setParameter stored; the empty text for an unknown name.
    virtual std::string parameter(const char* name) const = 0;

    virtual std::uint32_t featureFlags() const = 0;

    /// Replaces the DisplayFeature bits. Those of view and image events count at the next start-up.
    virtual void setFeatureFlags(std::uint32_t flags) = 0;

    /// The value of a stage item, or of the stage itself for a null or empty name; 0 where there is none.
    virtual std::int64_t stageValue(const char* name) = 0;

    /// The record that the stage holds, owned by the viewer; null where there is none.
    virtual _ZorImage* stageImage(std::uint8_t which) = 0;

    /// A stage item, owned by the viewer; null where there is none.
    virtual DisplayStageItem* stageItem(const char* name) = 0;
};
