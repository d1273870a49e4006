#pragma once

#include "engine/ImageView.h"

#include <QImage>
#include <QString>

namespace zor {

/// What a report shows.
struct ReportData
{
    QString heading;
    QString details;     ///< one line below the heading
    QString columnGains; ///< the range of the file's, as a person reads it
    QString rowGains;
    ConstImageView before;
    ConstImageView after; ///< of the same size and depth
};

constexpr int ReportWidth = 1600; ///< pixels
constexpr int ReportHeight = 1240;

/// Both images in one grey scale, both profiles in one range, each as wide as the image above it where the
/// image is not too tall, and the figures. Needs a DrawingApplication.
QImage drawReport(const ReportData& data);

} // namespace zor
