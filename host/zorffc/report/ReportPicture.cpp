#include "host/zorffc/report/ReportPicture.h"

#include "engine/CellImage.h"
#include "host/quality/NonUniformity.h"
#include "host/zorffc/Summary.h"
#include "host/zorffc/report/GreyPicture.h"
#include "host/zorffc/report/ProfilePlot.h"

#include <QFontMetrics>
#include <QGuiApplication>
#include <QLinearGradient>
#include <QPainter>
#include <QScreen>
#include <QStringList>

#include <new>

namespace zor {

namespace {

constexpr int Margin = 40;
constexpr int Gap = 40;
constexpr int PanelWidth = (ReportWidth - 2 * Margin - Gap) / 2;
constexpr int LeftPanel = Margin;
constexpr int RightPanel = Margin + PanelWidth + Gap;

constexpr int PictureTop = 164;
constexpr int PictureHeight = 520;
constexpr int ScaleTop = PictureTop + PictureHeight + 18;
constexpr int PlotTop = ScaleTop + 50;
constexpr int PlotHeight = 370;
constexpr int FiguresTop = PlotTop + PlotHeight + 10;

const QColor Ink(0x22, 0x22, 0x22);
const QColor PaleInk(0x66, 0x66, 0x66);

void setFont(QPainter& painter, int pixels, bool bold, const QColor& color)
{
    QFont font;
    font.setPixelSize(pixels);
    font.setBold(bold);
    painter.setFont(font);
    painter.setPen(color);
}

/// One line of text; what does not fit into the area's width is cut in its middle.
void drawLine(QPainter& painter, const QRect& area, int flags, const QString& text)
{
    const QString fitting = painter.fontMetrics().elidedText(text, Qt::ElideMiddle, area.width());
    painter.drawText(area, flags | Qt::AlignVCenter | Qt::TextSingleLine, fitting);
}

void drawHeading(QPainter& painter, const ReportData& data)
{
    constexpr int width = ReportWidth - 2 * Margin;
    setFont(painter, 32, true, Ink);
    drawLine(painter, QRect(Margin, 26, width, 44), Qt::AlignLeft, data.heading);
    setFont(painter, 18, false, PaleInk);
    drawLine(painter, QRect(Margin, 74, width, 28), Qt::AlignLeft, data.details);
}

/// `place` is as wide as the plot's canvas below, so that columns are above their means.
void drawPanel(QPainter& painter, const QRect& place, const QString& title, const ConstImageView& image,
               const GreyRange& range)
{
    setFont(painter, 20, true, Ink);
    drawLine(painter, QRect(place.left(), place.top() - 36, place.width(), 30), Qt::AlignLeft, title);

    const QSize size =
        QSize(image.width, image.height).scaled(place.size(), Qt::KeepAspectRatio).expandedTo(QSize(1, 1));
    const QPoint corner(place.left(), place.top() + (place.height() - size.height()) / 2);
    painter.drawImage(corner, greyPicture(image, range, size));
    painter.setPen(PaleInk);
    painter.drawRect(QRect(corner, size).adjusted(-1, -1, 0, 0));
}

void drawGreyScale(QPainter& painter, const GreyRange& range)
{
    setFont(painter, 17, false, Ink);
    const QString black = QStringLiteral("Grey scale of both pictures: %1 DN").arg(range.black);
    const int blackWidth = painter.fontMetrics().size(Qt::TextSingleLine, black).width();
    const QRect ramp(Margin + blackWidth + 12, ScaleTop, 420, 20);
    drawLine(painter, QRect(Margin, ScaleTop - 4, PanelWidth, 28), Qt::AlignLeft, black);
    drawLine(painter, QRect(ramp.right() + 12, ScaleTop - 4, PanelWidth, 28), Qt::AlignLeft,
             QStringLiteral("%1 DN").arg(range.white));

    QLinearGradient gradient(ramp.topLeft(), ramp.topRight());
    gradient.setColorAt(0.0, Qt::black);
    gradient.setColorAt(1.0, Qt::white);
    painter.fillRect(ramp, gradient);
    painter.setPen(PaleInk);
    painter.drawRect(ramp.adjusted(-1, -1, 0, 0));
}

QRectF plotArea(int left)
{
    return QRectF(left, PlotTop, PanelWidth, PlotHeight);
}

/// Where a panel's picture goes: between the edges of the canvas of the plot below it.
QRect pictureArea(int left, ProfilePlot& plot)
{
    const QRectF canvas = plot.canvas(plotArea(left));
    const int canvasLeft = qRound(canvas.left());
    return QRect(canvasLeft, PictureTop, qRound(canvas.right()) - canvasLeft, PictureHeight);
}

void drawMeans(QPainter& painter, int left, const QString& title, ProfilePlot& plot)
{
    // The legend is in the plot's first line; the title shares it.
    setFont(painter, 20, true, Ink);
    drawLine(painter, QRect(left, PlotTop - 6, PanelWidth / 2, 30), Qt::AlignLeft, title);
    plot.draw(painter, plotArea(left));
}

/// One line of the figures on either side. `valueWidth` pixels at each of the two right ends.
void drawFigureLine(QPainter& painter, int left, int line, int valueWidth, const QStringList& words)
{
    const int top = FiguresTop + 28 * line;
    const int right = left + PanelWidth - 20;
    const int nameWidth = PanelWidth - 20 - 2 * valueWidth;
    drawLine(painter, QRect(left, top, nameWidth, 28), Qt::AlignLeft, words[0]);
    drawLine(painter, QRect(right - 2 * valueWidth, top, valueWidth, 28), Qt::AlignRight, words[1]);
    drawLine(painter, QRect(right - valueWidth, top, valueWidth, 28), Qt::AlignRight, words[2]);
}

void drawFigures(QPainter& painter, const ReportData& data)
{
    const auto percent = [](double value) { return QString::fromStdString(percentText(value)); };
    const NonUniformity before = nonUniformity(data.before);
    const NonUniformity after = nonUniformity(data.after);
    const QString limit = QString::number(saturationLimit(data.before.depth));

    constexpr int valueWidth = 130;
    const QStringList times{QStringLiteral("before"), QStringLiteral("after")};
    setFont(painter, 18, true, Ink);
    drawFigureLine(painter, LeftPanel, 0, valueWidth,
                   QStringList(QStringLiteral("Non-uniformity (standard deviation / mean)")) + times);
    drawFigureLine(painter, RightPanel, 0, valueWidth,
                   QStringList(QStringLiteral("Pixels and gains")) + times);
    setFont(painter, 18, false, Ink);
    drawFigureLine(painter, LeftPanel, 1, valueWidth,
                   {QStringLiteral("of the column means"), percent(before.columns), percent(after.columns)});
    drawFigureLine(painter, LeftPanel, 2, valueWidth,
                   {QStringLiteral("of the row means"), percent(before.rows), percent(after.rows)});
    drawFigureLine(painter, RightPanel, 1, valueWidth,
                   {QStringLiteral("pixels at the limit of ") + limit + QStringLiteral(" DN"),
                    percent(saturatedShare(data.before) * 100.0),
                    percent(saturatedShare(data.after) * 100.0)});
    drawLine(painter, QRect(RightPanel, FiguresTop + 56, PanelWidth - 20, 28), Qt::AlignLeft,
             QStringLiteral("gains in the file: columns ") + data.columnGains + QStringLiteral(", rows ") +
                 data.rowGains);
}

} // namespace

QImage drawReport(const ReportData& data)
{
    QImage report(ReportWidth, ReportHeight, QImage::Format_RGB32);
    if (report.isNull())
        throw std::bad_alloc();
    // The plots' renderer scales by the ratio of both resolutions; equal ones leave the fonts as they are.
    const QScreen* screen = QGuiApplication::primaryScreen();
    report.setDotsPerMeterX(qRound(screen->logicalDotsPerInchX() / 0.0254));
    report.setDotsPerMeterY(qRound(screen->logicalDotsPerInchY() / 0.0254));
    report.fill(Qt::white);

    QPainter painter(&report);
    painter.setRenderHint(QPainter::TextAntialiasing);
    drawHeading(painter, data);

    const Profile columns{QStringLiteral("column"), columnMeans(data.before), columnMeans(data.after)};
    const Profile rows{QStringLiteral("row"), rowMeans(data.before), rowMeans(data.after)};
    const MeanRange means = commonMeanRange(columns, rows);
    ProfilePlot columnPlot(columns, means);
    ProfilePlot rowPlot(rows, means);

    const GreyRange greys = commonGreyRange(data.before, data.after);
    drawPanel(painter, pictureArea(LeftPanel, columnPlot), QStringLiteral("Frame, before"), data.before,
              greys);
    drawPanel(painter, pictureArea(RightPanel, rowPlot), QStringLiteral("Corrected, after"), data.after,
              greys);
    drawGreyScale(painter, greys);
    drawMeans(painter, LeftPanel, QStringLiteral("Column means"), columnPlot);
    drawMeans(painter, RightPanel, QStringLiteral("Row means"), rowPlot);
    drawFigures(painter, data);
    return report;
}

} // namespace zor
