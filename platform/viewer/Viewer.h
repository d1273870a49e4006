#pragma once

#include "platform/viewer/NotificationHub.h"
#include "platform/viewer/paint/Scene.h"
#include "platform/viewer/picture/ProcessorChain.h"
#include "platform/viewer/view/Navigator.h"

#include <QPointer>
#include <QWidget>

#include <cstdint>

namespace zor::viewer {
class Canvas;

/// One viewer: its pictures, where it looks, who hears of it, and the canvas over the host's widget.
class Viewer
{
public:
    enum class Painting
    {
        Software,
        OpenGl
    };

    /// `view` is the host's widget; for a scroll area the canvas lies on its viewport.
    Viewer(QWidget* view, Painting painting);
    ~Viewer();

    /// Copies what it needs of the image and shows it alone.
    ViewerStatus display(const _ZorImage* image);
    /// Shows two images side by side; an image that can't be shown leaves the view as it was.
    ViewerStatus displayPair(const _ZorImage* first, const _ZorImage* second);
    /// Makes the picture from the copied images again, with the present processors and coloration.
    bool rebuild();

    /// Both null when the host has destroyed its widget.
    QWidget* view() const { return m_view; }
    QWidget* surface() const { return m_surface; }
    Canvas* canvas() const { return m_canvasWidget ? m_canvas : nullptr; }

    /// Device pixels per widget pixel.
    double pixelRatio() const;
    /// A point in the middle device pixel of a pixel of the view widget or its surface, in device pixels of
    /// the canvas; where the pixel ratio is whole, the middle of that device pixel.
    QPointF deviceAt(const QWidget* receiver, const QPointF& pixel) const;
    /// The middle of the device pixel that holds a position on one of the two widgets, which on a screen of
    /// many device pixels may be a fraction.
    QPointF deviceUnder(const QWidget* receiver, const QPointF& position) const;
    /// The widget pixel of `view` that holds a device point.
    QPoint windowAt(const QPointF& device) const;

    void repaint();
    /// Follows the widget's size; there must be a canvas.
    void resized();

    /// What is shown, and how; changed by the functions here alone.
    const Scene& scene() const { return m_scene; }
    Overlays& overlays() { return m_scene.overlays; }
    void setColoration(bool on) { m_scene.coloration = on; }
    Navigator& navigator() { return m_navigator; }
    NotificationHub& hub() { return m_hub; }
    ProcessorChain& processors() { return m_processors; }

private:
    ViewerStatus finish(ViewerStatus status, int processed);
    void makeCanvas(Painting painting);
    QPointF onSurface(const QWidget* receiver, const QPointF& position) const;

    Scene m_scene;
    NotificationHub m_hub;
    ProcessorChain m_processors;
    Navigator m_navigator;
    QPointer<QWidget> m_view;
    QPointer<QWidget> m_surface;
    QPointer<QWidget> m_canvasWidget;
    Canvas* m_canvas = nullptr;
};
} // namespace zor::viewer
