#include "platform/viewer/view/Navigator.h"

#include <cmath>

namespace zor::viewer {
namespace {
// Scales and positions come as texts with six decimals, positions as fractions.
constexpr double TextStep = 1e-6;

bool isRequestFor(const QPointF& centre, const QPointF& reported, const QSize& image)
{
    return std::abs(centre.x() - reported.x()) <= image.width() * TextStep &&
           std::abs(centre.y() - reported.y()) <= image.height() * TextStep;
}
} // namespace

Navigator::Navigator(ViewGeometry& geometry, std::function<void(bool)> moved)
    : m_geometry(geometry)
    , m_reported(geometry)
    , m_moved(std::move(moved))
{
}

void Navigator::settle()
{
    const bool isElsewhere = m_geometry.isElsewhere(m_reported);
    if (isElsewhere)
        m_reported = m_geometry;
    m_moved(isElsewhere);
}

bool Navigator::zoom(double factor, const QPointF& anchor)
{
    return zoomTo(m_geometry.scale() * factor, anchor);
}

bool Navigator::zoomTo(double scale, const QPointF& anchor)
{
    if (!m_geometry.hasImage())
        return false;
    const double limited = m_geometry.limitedScale(scale);
    if (limited != m_geometry.scale()) {
        m_geometry.setScale(limited, anchor);
        settle();
    }
    return true;
}

bool Navigator::fit(int mode)
{
    if (!m_geometry.hasImage() || mode < ViewGeometry::FitWhole || mode > ViewGeometry::FitHeight)
        return false;
    m_geometry.fit(mode);
    settle();
    return true;
}

bool Navigator::toggleFit(const QPointF& anchor)
{
    if (m_geometry.fitMode() == ViewGeometry::NoFit)
        return fit(ViewGeometry::FitWhole);
    if (!m_geometry.hasImage())
        return false;
    // Also where the fit is at 1 : 1, so that the next double click fits again.
    m_geometry.setScale(1.0, anchor);
    settle();
    return true;
}

bool Navigator::pan(const QPointF& device)
{
    if (!m_geometry.hasImage())
        return false;
    if (!device.isNull()) {
        m_geometry.setCentre(m_geometry.centre() - device / m_geometry.scale());
        settle();
    }
    return true;
}

bool Navigator::setScale(double scale)
{
    if (!m_geometry.hasImage() || !std::isfinite(scale) || scale <= 0.0)
        return false;
    if (std::abs(scale - m_geometry.scale()) > TextStep) {
        m_geometry.setScale(scale, m_geometry.middle());
        settle();
    }
    return true;
}

bool Navigator::setCentre(const QPointF& centre)
{
    if (!m_geometry.hasImage() || !std::isfinite(centre.x()) || !std::isfinite(centre.y()))
        return false;
    if (!isRequestFor(centre, m_geometry.reportedCentre(), m_geometry.imageSize())) {
        m_geometry.setCentre(centre);
        settle();
    }
    return true;
}
} // namespace zor::viewer
