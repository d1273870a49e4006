#pragma once

#include <QPair>
#include <QStringList>

#include <qwt_plot.h>
#include <qwt_plot_curve.h>
#include <qwt_scale_div.h>

/// Titles of a plot's curves, from the lowest to the one on top.
inline QStringList titlesIn(const QwtPlot* plot)
{
    QStringList titles;
    for (const QwtPlotItem* item : plot->itemList(QwtPlotItem::Rtti_PlotCurve))
        titles << item->title().text();
    return titles;
}

/// The first curve of that title; null when there is none.
inline const QwtPlotCurve* curveIn(const QwtPlot* plot, const QString& title)
{
    for (const QwtPlotItem* item : plot->itemList(QwtPlotItem::Rtti_PlotCurve)) {
        if (item->title().text() == title)
            return static_cast<const QwtPlotCurve*>(item);
    }
    return nullptr;
}

/// Where an axis begins and ends.
inline QPair<double, double> limits(const QwtPlot* plot, int axis)
{
    const QwtScaleDiv& scale = plot->axisScaleDiv(axis);
    return {scale.lowerBound(), scale.upperBound()};
}
