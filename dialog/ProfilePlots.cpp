#include "dialog/CFFCUtility.h"

#include "engine/Allocation.h"

#include <QCheckBox>

#include <qwt_plot.h>
#include <qwt_plot_curve.h>

#include <algorithm>
#include <memory>

namespace {

const QColor Amber(255, 192, 0, 255);
const QColor Lilac(160, 160, 255, 255);
const QColor White(255, 255, 255, 255);

struct ZorRelease
{
    void operator()(double* block) const { zorRelease(block); }
};
using PlotValues = std::unique_ptr<double[], ZorRelease>;
using Curve = std::unique_ptr<QwtPlotCurve>;

PlotValues allocateSamples(std::int32_t count)
{
    return PlotValues(static_cast<double*>(zorAllocate(static_cast<std::size_t>(count) * sizeof(double))));
}

Curve makeCurve(const QString& title, const QColor& color)
{
    auto curve = std::make_unique<QwtPlotCurve>(title);
    curve->setPen(QPen(color));
    return curve;
}

/// The plot owns the curve from here on.
void attach(Curve curve, QwtPlot* plot)
{
    curve.release()->attach(plot);
}

} // namespace

void CFFCUtility::RefreshPlots()
{
    const PlotValues upX = allocateSamples(m_width);
    const PlotValues upY = allocateSamples(m_height);
    const PlotValues downX = allocateSamples(m_width);
    const PlotValues downY = allocateSamples(m_height);
    const PlotValues columns = allocateSamples(m_width);
    const PlotValues rows = allocateSamples(m_height);
    if (!upX || !upY || !downX || !downY || !columns || !rows)
        return;

    for (QwtPlot* plot : {ui.PlotDown, ui.PlotUp})
        plot->detachItems(QwtPlotItem::Rtti_PlotCurve, true);
    for (QwtPlot* plot : {ui.PlotUp, ui.PlotDown})
        plot->setCanvasBackground(QBrush(White));

    Curve upXCurve = makeCurve(QStringLiteral("Up X"), Amber);
    Curve upYCurve = makeCurve(QStringLiteral("Up Y"), Lilac);
    Curve downXCurve = makeCurve(QStringLiteral("Down X"), Amber);
    Curve downYCurve = makeCurve(QStringLiteral("Down Y"), Lilac);

    for (std::int32_t x = 0; x < m_width; ++x) {
        columns[x] = x;
        upX[x] = m_columnLine[x];
        downX[x] = m_flatColumnLine[x];
    }
    for (std::int32_t y = 0; y < m_height; ++y) {
        rows[y] = y;
        upY[y] = m_rowLine[y];
        downY[y] = m_flatRowLine[y];
    }
    upXCurve->setSamples(columns.get(), upX.get(), m_width);
    upYCurve->setSamples(rows.get(), upY.get(), m_height);
    downXCurve->setSamples(columns.get(), downX.get(), m_width);
    downYCurve->setSamples(rows.get(), downY.get(), m_height);

    attach(std::move(upXCurve), ui.PlotUp);
    attach(std::move(upYCurve), ui.PlotUp);
    attach(std::move(downXCurve), ui.PlotDown);
    // Made and filled at every refresh; a curve that nobody shows ends with it.
    if (ui.chBShowY->isChecked())
        attach(std::move(downYCurve), ui.PlotDown);

    const double end = std::max(m_width, m_height) + 1.0;
    for (QwtPlot* plot : {ui.PlotUp, ui.PlotDown})
        plot->setAxisScale(QwtPlot::yLeft, m_rangeYMin, m_rangeYMax, 0);
    for (QwtPlot* plot : {ui.PlotUp, ui.PlotDown})
        plot->setAxisScale(QwtPlot::xBottom, 0, end, 0);
    for (QwtPlot* plot : {ui.PlotUp, ui.PlotDown})
        plot->replot();
}
