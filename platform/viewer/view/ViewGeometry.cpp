#include "platform/viewer/view/ViewGeometry.h"

#include <algorithm>
#include <cmath>

namespace zor::viewer {
namespace {
constexpr double LeastPictureSide = 16.0;

/// Whole pixels along one axis.
struct Span
{
    int first;
    int length;
};

// The middle of an even span is an edge between pixels, that of an odd span the middle of a pixel. The one
// nearer to the centre makes the length even or odd, and the length is the nearest of its kind. `centre` is
// on the image.
Span spanAround(double centre, double length)
{
    const int twiceTheMiddle = static_cast<int>(std::floor(centre * 2.0 + 0.5));
    const int odd = twiceTheMiddle % 2;
    const int pairs = static_cast<int>(std::floor((std::min(length, 1e9) - odd) * 0.5 + 0.5));
    const int whole = std::max(2 - odd, 2 * pairs + odd);
    return {(twiceTheMiddle - whole) / 2, whole};
}
} // namespace

void ViewGeometry::setImageSize(const QSize& size)
{
    const QSize before = m_image;
    m_image = size;
    if (!hasImage())
        m_fit = FitWhole;
    else if (m_fit != NoFit)
        applyFit();
    else if (before != size)
        m_centre = {m_centre.x() / before.width() * size.width(),
                    m_centre.y() / before.height() * size.height()};
}

void ViewGeometry::setViewSize(const QSize& size)
{
    m_view = size.expandedTo(QSize(1, 1));
    if (m_fit != NoFit)
        applyFit();
}

void ViewGeometry::fit(int mode)
{
    m_fit = mode;
    applyFit();
}

void ViewGeometry::applyFit()
{
    if (!hasImage())
        return;
    const double across = static_cast<double>(m_view.width()) / m_image.width();
    const double down = static_cast<double>(m_view.height()) / m_image.height();
    m_scale = m_fit == FitWidth ? across : m_fit == FitHeight ? down : std::min(across, down);
    m_scale = std::min(m_scale, MaximumScale);
    m_centre = {m_image.width() * 0.5, m_image.height() * 0.5};
}

double ViewGeometry::limitedScale(double scale) const
{
    const double longer = std::max(1, std::max(m_image.width(), m_image.height()));
    // A fit in a small window may lie below the common limit; it is then the limit.
    const double least = std::min({1.0, LeastPictureSide / longer, m_scale});
    return std::clamp(scale, least, MaximumScale);
}

QPointF ViewGeometry::limitedCentre(const QPointF& centre) const
{
    return {std::clamp(centre.x(), 0.0, static_cast<double>(m_image.width())),
            std::clamp(centre.y(), 0.0, static_cast<double>(m_image.height()))};
}

void ViewGeometry::setScale(double scale, const QPointF& anchor)
{
    const QPointF held = toImage(anchor);
    m_fit = NoFit;
    m_scale = limitedScale(scale);
    m_centre = limitedCentre(held - (anchor - middle()) / m_scale);
}

void ViewGeometry::setCentre(const QPointF& centre)
{
    m_fit = NoFit;
    m_centre = limitedCentre(centre);
}

bool ViewGeometry::isOnImage(const QPoint& pixel) const
{
    return QRect(QPoint(0, 0), m_image).contains(pixel);
}

QRect ViewGeometry::visibleRect() const
{
    const Span across = spanAround(m_centre.x(), m_view.width() / m_scale);
    const Span down = spanAround(m_centre.y(), m_view.height() / m_scale);
    return {across.first, down.first, across.length, down.length};
}

QPointF ViewGeometry::reportedCentre() const
{
    const QRect rect = visibleRect();
    return {rect.x() + rect.width() * 0.5, rect.y() + rect.height() * 0.5};
}

bool ViewGeometry::isElsewhere(const ViewGeometry& other) const
{
    if (m_image != other.m_image)
        return true;
    const QPointF moved = (m_centre - other.m_centre) * m_scale;
    const double grown = (m_scale / other.m_scale - 1.0) * std::max(m_view.width(), m_view.height()) * 0.5;
    return std::abs(moved.x()) > 0.5 || std::abs(moved.y()) > 0.5 || std::abs(grown) > 0.5;
}
} // namespace zor::viewer
