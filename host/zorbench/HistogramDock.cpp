#include "host/zorbench/HistogramDock.h"

#include "host/quality/FrameHistogram.h"
#include "host/zorbench/FrameView.h"

#include <QAction>
#include <QCheckBox>
#include <QClipboard>
#include <QGuiApplication>
#include <QVBoxLayout>

#include <qwt_legend.h>
#include <qwt_plot.h>
#include <qwt_plot_curve.h>
#include <qwt_scale_engine.h>
#include <qwt_text.h>

#include <algorithm>

namespace zor {

namespace {

/// What a logarithmic axis shows of a count of 0: below 1, at its lower end.
constexpr double LogarithmicNothing = 0.5;

QColor colourOf(char channel)
{
    switch (channel) {
    case 'R':
        return {210, 0, 0};
    case 'G':
        return {0, 140, 0};
    case 'B':
        return {0, 60, 220};
    case 'U':
        return {0, 140, 250};
    case 'V':
        return {190, 0, 160};
    case 'W':
    case 'A':
        return {130, 130, 130};
    default:
        return Qt::black;
    }
}

/// Like the words of the controls around it: a plot's own are large.
QwtText plainText(const QString& words)
{
    QwtText text(words);
    text.setFont(QGuiApplication::font());
    return text;
}

/// The outline of the bins: each count from its first code to the next bin's.
QVector<QPointF> outline(const FrameHistogram& histogram, const FrameHistogram::Channel& channel,
                         double nothing)
{
    QVector<QPointF> points;
    points.reserve(HistogramBins + 1);
    for (std::size_t bin = 0; bin <= HistogramBins; ++bin) {
        const std::uint64_t count = channel.counts[std::min(bin, HistogramBins - 1)];
        points.append({static_cast<double>(bin * histogram.codesPerBin),
                       count > 0 ? static_cast<double>(count) : nothing});
    }
    return points;
}

} // namespace

HistogramDock::HistogramDock(FrameView& view, QWidget* parent)
    : QDockWidget(tr("Histogram"), parent)
    , m_view(view)
    , m_plot(new QwtPlot(this))
    , m_logarithmic(new QCheckBox(tr("Logarithmic"), this))
    , m_pause(this)
{
    setObjectName(QStringLiteral("HistogramDock"));
    auto* content = new QWidget(this);
    auto* rows = new QVBoxLayout(content);
    rows->addWidget(m_plot, 1);
    rows->addWidget(m_logarithmic);
    setWidget(content);

    m_plot->setAccessibleName(tr("Histogram"));
    m_plot->setMinimumSize(240, 160);
    m_plot->setCanvasBackground(Qt::white);
    m_plot->setAxisTitle(QwtPlot::xBottom, plainText(tr("Code")));
    m_plot->setAxisTitle(QwtPlot::yLeft, plainText(tr("Samples")));
    for (const int axis : {QwtPlot::xBottom, QwtPlot::yLeft})
        m_plot->setAxisFont(axis, QGuiApplication::font());
    m_plot->setAxisMaxMajor(QwtPlot::yLeft, 5);
    m_plot->insertLegend(new QwtLegend, QwtPlot::TopLegend);
    m_logarithmic->setAccessibleName(m_logarithmic->text());

    auto* copyAction = new QAction(tr("Copy"), this);
    m_plot->addAction(copyAction);
    m_plot->setContextMenuPolicy(Qt::ActionsContextMenu);
    connect(copyAction, &QAction::triggered, this, &HistogramDock::copy);
    connect(m_logarithmic, &QCheckBox::toggled, this, &HistogramDock::setLogarithmic);

    setLogarithmic(false);
    m_pause.setSingleShot(true);
    m_pause.setInterval(Pause);
    connect(&m_pause, &QTimer::timeout, this, [this] {
        if (m_isOutdated)
            refresh();
    });
    connect(&m_view, &FrameView::shown, this, &HistogramDock::refresh);
    connect(this, &QDockWidget::visibilityChanged, this, &HistogramDock::refresh);
}

void HistogramDock::refresh()
{
    if (!isVisible() || !m_view.frame())
        return;
    m_isOutdated = m_pause.isActive();
    if (m_isOutdated)
        return;
    count();
    m_pause.start();
}

void HistogramDock::count()
{
    drawCurves(frameHistogram(m_view.frame()->record()));
}

void HistogramDock::drawCurves(const FrameHistogram& histogram)
{
    m_plot->detachItems(QwtPlotItem::Rtti_PlotCurve, true);
    const double nothing = m_logarithmic->isChecked() ? LogarithmicNothing : 0.0;
    for (const FrameHistogram::Channel& channel : histogram.channels) {
        // The plot owns the curve from here on.
        auto* curve = new QwtPlotCurve(QString(QLatin1Char(channel.letter)));
        curve->setStyle(QwtPlotCurve::Steps);
        curve->setCurveAttribute(QwtPlotCurve::Inverted);
        curve->setPen(colourOf(channel.letter));
        curve->setSamples(outline(histogram, channel, nothing));
        curve->attach(m_plot);
    }
    m_plot->setAxisScale(QwtPlot::xBottom, 0.0, static_cast<double>(HistogramBins * histogram.codesPerBin));
    m_plot->replot();
}

void HistogramDock::setLogarithmic(bool on)
{
    // The plot owns the engine from here on.
    if (on) {
        m_plot->setAxisScaleEngine(QwtPlot::yLeft, new QwtLogScaleEngine);
    } else {
        auto* fromNothing = new QwtLinearScaleEngine;
        fromNothing->setAttribute(QwtScaleEngine::IncludeReference);
        m_plot->setAxisScaleEngine(QwtPlot::yLeft, fromNothing);
    }
    if (m_view.frame())
        count();
}

void HistogramDock::copy() const
{
    if (!m_view.frame())
        return;
    const FrameHistogram histogram = frameHistogram(m_view.frame()->record());
    QStringList head{tr("Code")};
    for (const FrameHistogram::Channel& channel : histogram.channels)
        head.append(QString(QLatin1Char(channel.letter)));
    QStringList lines{head.join(QLatin1Char('\t'))};
    for (std::size_t bin = 0; bin < HistogramBins; ++bin) {
        QStringList fields{QString::number(bin * histogram.codesPerBin)};
        for (const FrameHistogram::Channel& channel : histogram.channels)
            fields.append(QString::number(channel.counts[bin]));
        lines.append(fields.join(QLatin1Char('\t')));
    }
    QGuiApplication::clipboard()->setText(lines.join(QLatin1Char('\n')));
}

} // namespace zor
