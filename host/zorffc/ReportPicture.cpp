#include "host/zorffc/ReportPicture.h"

#include "host/quality/NonUniformity.h"
#include "host/zorffc/GreyPicture.h"
#include "host/zorffc/ProfilePlot.h"
#include "host/zorffc/Summary.h"

#include <QFontMetrics>
#include <QGuiApplication>
#include <QLinearGradient>
#include <QPainter>
#include <QScreen>

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

void drawPanel(QPainter& painter, int left, const QString& title, const ConstImageView& image,
               const GreyRange& range)
{
    setFont(painter, 20, true, Ink);
    drawLine(painter, QRect(left, PictureTop - 36, PanelWidth, 30), Qt::AlignLeft, title);

    const QImage picture = greyPicture(image, range);
    const QSize size =
        picture.size().scaled(PanelWidth, PictureHeight, Qt::KeepAspectRatio).expandedTo(QSize(1, 1));
    // Few pixels show as squares, many are averaged.
    const bool shrinks = size.width() < picture.width();
    const auto mode = shrinks ? Qt::SmoothTransformation : Qt::FastTransformation;
    const QPoint corner(left, PictureTop + (PictureHeight - size.height()) / 2);
    painter.drawImage(corner, picture.scaled(size, Qt::IgnoreAspectRatio, mode));
    painter.setPen(PaleInk);
    painter.drawRect(QRect(corner, size).adjusted(-1, -1, 0, 0));
}

void drawGreyScale(QPainter& painter, const GreyRange& range)
{
    setFont(painter, 17, false, Ink);
    const QString black = QStringLiteral("Grey scale of both pictures: %1 DN").arg(range.black);
    const int blackWidth = painter.fontMetrics().horizontalAdvance(black);
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

void drawMeans(QPainter& painter, int left, const QString& title, const Profile& profile)
{
    // The legend stands in the plot's first line; the title shares it.
    setFont(painter, 20, true, Ink);
    drawLine(painter, QRect(left, PlotTop - 6, PanelWidth / 2, 30), Qt::AlignLeft, title);
    drawProfile(painter, QRectF(left, PlotTop, PanelWidth, PlotHeight), profile);
}

void drawFigures(QPainter& painter, const NonUniformity& before, const NonUniformity& after)
{
    const auto line = [&](int row, const QString& name, const QString& first, const QString& second) {
        const int top = FiguresTop + 28 * row;
        drawLine(painter, QRect(Margin, top, 480, 28), Qt::AlignLeft, name);
        drawLine(painter, QRect(Margin + 480, top, 120, 28), Qt::AlignRight, first);
        drawLine(painter, QRect(Margin + 600, top, 120, 28), Qt::AlignRight, second);
    };
    const auto percent = [](double value) { return QString::fromStdString(percentText(value)); };

    setFont(painter, 18, true, Ink);
    line(0, QStringLiteral("Non-uniformity (standard deviation / mean)"), QStringLiteral("before"),
         QStringLiteral("after"));
    setFont(painter, 18, false, Ink);
    line(1, QStringLiteral("of the column means"), percent(before.columns), percent(after.columns));
    line(2, QStringLiteral("of the row means"), percent(before.rows), percent(after.rows));
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
    const GreyRange range = commonGreyRange(data.before, data.after);
    drawPanel(painter, LeftPanel, QStringLiteral("Frame, before"), data.before, range);
    drawPanel(painter, RightPanel, QStringLiteral("Corrected, after"), data.after, range);
    drawGreyScale(painter, range);
    drawMeans(painter, LeftPanel, QStringLiteral("Column means"),
              {QStringLiteral("column"), columnMeans(data.before), columnMeans(data.after)});
    drawMeans(painter, RightPanel, QStringLiteral("Row means"),
              {QStringLiteral("row"), rowMeans(data.before), rowMeans(data.after)});
    drawFigures(painter, nonUniformity(data.before), nonUniformity(data.after));
    return report;
}

} // namespace zor
