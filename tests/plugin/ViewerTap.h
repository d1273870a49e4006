#pragma once

#include <QPointF>
#include <QRect>

#include <cstdint>
#include <vector>

class QWidget;
class ZorDisplayProcessor;
struct _ZorImage;

/// A look at the real viewers that the loaded plug-in makes for its views.
///
/// ViewerTap.cpp defines two of the factories' functions; a program's own come before those of the viewer's
/// library, which they call in their turn. The viewers and what the plug-in says to them are the real ones.
class ViewerTap
{
public:
    /// The software viewer that lives in the view; null before its first image.
    static ZorDisplayProcessor* viewerOf(const QWidget* view);

    /// Device pixels for each image pixel; 0 without a viewer.
    static double scaleOf(const QWidget* view);
    /// Sets the scale by the viewer's own command, past the adapter. The dialog hears of it as of any change.
    static void setScale(const QWidget* view, double scale);
    /// What the view shows of the image, in image pixels.
    static QRect visibleIn(const QWidget* view);
    /// The middle of what the view shows, in image pixels.
    static QPointF centreOf(const QWidget* view);

    /// The viewer's own copy of the last image; null before the first.
    static const _ZorImage* imageIn(const QWidget* view);
    /// Its bytes.
    static std::vector<std::uint8_t> bytesIn(const QWidget* view);
    /// Its rows as numbers, without what pads them.
    static std::vector<unsigned> pixelsIn(const QWidget* view);
};
