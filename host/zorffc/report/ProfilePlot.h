#pragma once

#include <QPainter>
#include <QRectF>
#include <QString>
#include <qwt_plot.h>

#include <vector>

namespace zor {

/// One profile before and after the correction.
struct Profile
{
    QString axis; ///< what the entries are: "column", "row"
    std::vector<double> before;
    std::vector<double> after;
};

/// The means that a plot's axis spans, in DN.
struct MeanRange
{
    double low;
    double high;
};

/// The range that holds all entries of both profiles, so that their plots can be compared.
MeanRange commonMeanRange(const Profile& first, const Profile& second);

/// Both curves of a profile over the entry numbers, from 1, with axes, grid and legend. The first entry is at
/// the canvas's left edge, the last one at its right, a single one in the middle. Needs a DrawingApplication.
class ProfilePlot
{
public:
    ProfilePlot(const Profile& profile, const MeanRange& range);

    /// Where the canvas lies when the plot is drawn into the area.
    QRectF canvas(const QRectF& area);

    void draw(QPainter& painter, const QRectF& area);

private:
    QwtPlot m_plot;
};

} // namespace zor
