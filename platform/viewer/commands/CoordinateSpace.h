#pragma once

#include <QPointF>

#include <optional>
#include <string>

namespace zor::viewer {
class Viewer;

/// The spaces of commands: "img" image pixels, "win" pixels of the view widget, "base" fractions of the
/// image. In "img" and "win" a whole number names a pixel and means its middle.

/// A point of a space in image pixels (pixel corners at whole numbers); none for an unknown space or without
/// an image.
std::optional<QPointF> imagePointOf(const Viewer& viewer, const QPointF& point, const std::string& space);

/// The pixel of a space, or for "base" the whole part of the fraction, at an image point.
std::optional<QPoint> pointInSpace(const Viewer& viewer, const QPointF& image, const std::string& space);
} // namespace zor::viewer
