#include "host/zorffc/report/ProfilePlot.h"

#include <QFont>
#include <QPen>
#include <qwt_legend.h>
#include <qwt_plot_curve.h>
#include <qwt_plot_grid.h>
#include <qwt_plot_layout.h>
#include <qwt_plot_renderer.h>
#include <qwt_scale_draw.h>
#include <qwt_scale_engine.h>
#include <qwt_scale_widget.h>
#include <qwt_symbol.h>
#include <qwt_text.h>

#include <algorithm>
#include <cmath>

namespace zor {

namespace {

QFont pixelFont(int pixels)
{
    QFont font;
    font.setPixelSize(pixels);
    return font;
}

QwtText text(const QString& words)
{
    QwtText result(words);
    result.setFont(pixelFont(17));
    return result;
}

/// Plain numbers: a decimal point and no group separators in every locale.
class PlainScale : public QwtScaleDraw
{
public:
    QwtText label(double value) const override { return QString::number(value); }
};

/// Numbers of columns or rows: there is nothing between two of them or beside them.
class EntryScale : public PlainScale
{
public:
    explicit EntryScale(std::size_t count)
        : m_count(static_cast<double>(count))
    {
    }

    QwtText label(double value) const override
    {
        const bool isEntry = value == std::floor(value) && value >= 1.0 && value <= m_count;
        return isEntry ? PlainScale::label(value) : QwtText();
    }

private:
    double m_count;
};

/// The plot owns its items. A single entry makes no line and shows as a dot of `dot` pixels.
void addCurve(QwtPlot& plot, const QString& name, const QColor& color, int dot,
              const std::vector<double>& numbers, const std::vector<double>& means)
{
    auto* curve = new QwtPlotCurve(text(name));
    curve->setPen(QPen(color, 2.0));
    curve->setRenderHint(QwtPlotItem::RenderAntialiased);
    curve->setLegendAttribute(QwtPlotCurve::LegendShowLine);
    curve->setLegendIconSize(QSize(36, 12));
    if (means.size() == 1)
        curve->setSymbol(new QwtSymbol(QwtSymbol::Ellipse, color, QPen(color), QSize(dot, dot)));
    curve->setSamples(numbers.data(), means.data(), static_cast<int>(means.size()));
    curve->attach(&plot);
}

} // namespace

MeanRange commonMeanRange(const Profile& first, const Profile& second)
{
    MeanRange range{first.before.front(), first.before.front()};
    for (const auto* means : {&first.before, &first.after, &second.before, &second.after}) {
        const auto [low, high] = std::minmax_element(means->begin(), means->end());
        range = {std::min(range.low, *low), std::max(range.high, *high)};
    }
    return range;
}

ProfilePlot::ProfilePlot(const Profile& profile, const MeanRange& range)
{
    std::vector<double> numbers(profile.before.size());
    for (std::size_t i = 0; i < numbers.size(); ++i)
        numbers[i] = static_cast<double>(i + 1);

    m_plot.setCanvasBackground(Qt::white);
    m_plot.insertLegend(new QwtLegend, QwtPlot::TopLegend);
    m_plot.setAxisTitle(QwtPlot::xBottom, text(profile.axis));
    m_plot.setAxisTitle(QwtPlot::yLeft, text(QStringLiteral("mean [DN]")));
    m_plot.setAxisScaleDraw(QwtPlot::xBottom, new EntryScale(numbers.size()));
    m_plot.setAxisScaleDraw(QwtPlot::yLeft, new PlainScale);
    for (const int axis : {QwtPlot::xBottom, QwtPlot::yLeft})
        m_plot.setAxisFont(axis, pixelFont(15));

    // A single entry is in the middle.
    if (numbers.size() == 1)
        m_plot.setAxisScale(QwtPlot::xBottom, 0.0, 2.0, 1.0);
    else
        m_plot.setAxisScale(QwtPlot::xBottom, 1.0, static_cast<double>(numbers.size()));
    constexpr int steps = 8;
    double low = range.low;
    double high = range.high;
    double step = 0.0;
    // Some room, so that no curve runs along the edge.
    const double margin = 0.03 * (high - low);
    QwtLinearScaleEngine engine;
    engine.setMargins(margin, margin);
    engine.autoScale(steps, low, high, step);
    m_plot.setAxisScale(QwtPlot::yLeft, low, high, step);
    // Room for half of the last number, the same in every plot.
    constexpr int halfNumber = 30;
    m_plot.axisWidget(QwtPlot::xBottom)->setMinBorderDist(halfNumber, halfNumber);
    m_plot.plotLayout()->setAlignCanvasToScales(true);

    auto* grid = new QwtPlotGrid;
    grid->setMajorPen(QPen(QColor(0xdd, 0xdd, 0xdd), 1.0));
    grid->attach(&m_plot);
    // Two colours that people who see red and green alike can tell apart too.
    addCurve(m_plot, QStringLiteral("before"), QColor(0xd5, 0x5e, 0x00), 16, numbers, profile.before);
    addCurve(m_plot, QStringLiteral("after"), QColor(0x00, 0x72, 0xb2), 8, numbers, profile.after);
}

QRectF ProfilePlot::canvas(const QRectF& area)
{
    m_plot.replot();
    m_plot.plotLayout()->activate(&m_plot, area, QwtPlotLayout::IgnoreScrollbars);
    return m_plot.plotLayout()->canvasRect();
}

void ProfilePlot::draw(QPainter& painter, const QRectF& area)
{
    m_plot.replot();
    QwtPlotRenderer renderer;
    renderer.setDiscardFlag(QwtPlotRenderer::DiscardBackground);
    renderer.render(&m_plot, &painter, area);
}

} // namespace zor
