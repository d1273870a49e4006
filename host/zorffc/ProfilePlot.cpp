#include "host/zorffc/ProfilePlot.h"

#include <QFont>
#include <QPen>
#include <qwt_legend.h>
#include <qwt_plot.h>
#include <qwt_plot_curve.h>
#include <qwt_plot_grid.h>
#include <qwt_plot_renderer.h>
#include <qwt_scale_draw.h>
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

/// Numbers of columns or rows: nothing stands between two of them.
class EntryScale : public PlainScale
{
public:
    QwtText label(double value) const override
    {
        return value == std::floor(value) ? PlainScale::label(value) : QwtText();
    }
};

/// The plot owns its items.
void addCurve(QwtPlot& plot, const QString& name, const QColor& color, const std::vector<double>& numbers,
              const std::vector<double>& means)
{
    auto* curve = new QwtPlotCurve(text(name));
    curve->setPen(QPen(color, 2.0));
    curve->setRenderHint(QwtPlotItem::RenderAntialiased);
    curve->setLegendAttribute(QwtPlotCurve::LegendShowLine);
    curve->setLegendIconSize(QSize(36, 12));
    curve->setSamples(numbers.data(), means.data(), static_cast<int>(means.size()));
    curve->attach(&plot);
}

} // namespace

void drawProfile(QPainter& painter, const QRectF& area, const Profile& profile)
{
    std::vector<double> numbers(profile.before.size());
    for (std::size_t i = 0; i < numbers.size(); ++i)
        numbers[i] = static_cast<double>(i + 1);

    QwtPlot plot;
    plot.setCanvasBackground(Qt::white);
    plot.insertLegend(new QwtLegend, QwtPlot::TopLegend);
    plot.setAxisTitle(QwtPlot::xBottom, text(profile.axis));
    plot.setAxisTitle(QwtPlot::yLeft, text(QStringLiteral("mean [DN]")));
    plot.setAxisScaleDraw(QwtPlot::xBottom, new EntryScale);
    plot.setAxisScaleDraw(QwtPlot::yLeft, new PlainScale);
    for (const int axis : {QwtPlot::xBottom, QwtPlot::yLeft})
        plot.setAxisFont(axis, pixelFont(15));
    plot.setAxisScale(QwtPlot::xBottom, 1.0, std::max(2.0, static_cast<double>(numbers.size())));

    auto* grid = new QwtPlotGrid;
    grid->setMajorPen(QPen(QColor(0xdd, 0xdd, 0xdd), 1.0));
    grid->attach(&plot);
    // Two colours that also those tell apart who see red and green alike.
    addCurve(plot, QStringLiteral("before"), QColor(0xd5, 0x5e, 0x00), numbers, profile.before);
    addCurve(plot, QStringLiteral("after"), QColor(0x00, 0x72, 0xb2), numbers, profile.after);

    plot.resize(area.size().toSize());
    plot.replot();
    QwtPlotRenderer renderer;
    renderer.setDiscardFlag(QwtPlotRenderer::DiscardBackground);
    renderer.render(&plot, &painter, area);
}

} // namespace zor
