#pragma once

#include <QPainter>
#include <QRectF>
#include <QString>

#include <vector>

namespace zor {

/// One profile before and after the correction.
struct Profile
{
    QString axis; ///< what the entries are: "column", "row"
    std::vector<double> before;
    std::vector<double> after;
};

/// Draws both curves over the entry numbers, from 1, with axes, grid and legend. Needs a QApplication.
void drawProfile(QPainter& painter, const QRectF& area, const Profile& profile);

} // namespace zor
