#pragma once

#include "platform/viewer/view/ViewGeometry.h"

#include <functional>

namespace zor::viewer {
/// Moves a view on request of commands, mouse and keys, and reports when it has really moved.
class Navigator
{
public:
    /// One step of keys, menu and zoom commands; two of them double the scale.
    static constexpr double ZoomStep = 1.41421356237309505;

    /// `moved` runs after every change that has to be painted, with true when the view is more than half a
    /// device pixel from where it was at the last true. It comes last in all that is done here and may delete
    /// the navigator.
    Navigator(ViewGeometry& geometry, std::function<void(bool)> moved);

    /// All answer false, and do nothing, without an image or for a value that makes no sense.
    bool zoom(double factor, const QPointF& anchor);
    bool zoom(double factor) { return zoom(factor, m_geometry.middle()); }
    bool fit(int mode);
    /// From a fit to 1 : 1 about the anchor, from anything else to the whole image.
    bool toggleFit(const QPointF& anchor);
    bool oneToOne() { return zoomTo(1.0, m_geometry.middle()); }
    /// Moves the picture by so many device pixels.
    bool pan(const QPointF& device);

    /// A scale or centre (image pixels) that is asked for by somebody else, taken as it is. What the view
    /// itself reports, to the six decimals of a text, is no change, so that a view that follows another and
    /// is followed by it comes to rest with its fit. Anything else ends the fit, however little it differs.
    bool setScale(double scale);
    bool setCentre(const QPointF& centre);

    /// After a change of the geometry by others: a new image, another size of the view.
    void settle();

private:
    bool zoomTo(double scale, const QPointF& anchor);

    ViewGeometry& m_geometry;
    ViewGeometry m_reported; ///< as it was when `moved` last said true
    std::function<void(bool)> m_moved;
};
} // namespace zor::viewer
