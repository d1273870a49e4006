#include "platform/viewer/paint/SampleText.h"

#include "platform/viewer/paint/Scene.h"
#include "platform/viewer/picture/PixelNumbers.h"

#include <QFont>
#include <QFontMetricsF>
#include <QGlyphRun>
#include <QPainter>
#include <QRawFont>

#include <algorithm>

namespace zor::viewer {
namespace {
// Share of a pixel's side that the text may take.
constexpr double TextShare = 0.84;
constexpr double LargestText = 18.0;

int digitsOf(int depth)
{
    int digits = 1;
    for (int most = (1 << depth) - 1; most >= 10; most /= 10)
        ++digits;
    return digits;
}

QFont valueFont(double scale, int depth, int lines)
{
    // No literal: Qt keeps the names of fonts, and this library may be unloaded.
    QFont font(QLatin1String("monospace"));
    // The same on every canvas: coloured edges can't be laid over a picture.
    font.setStyleHint(QFont::Monospace, QFont::NoSubpixelAntialias);
    constexpr int Probe = 100;
    font.setPixelSize(Probe);
    const QFontMetricsF metrics(font);
    const double room = scale * TextShare;
    const QString digits(digitsOf(depth), QLatin1Char('0'));
    const double across = room / metrics.size(Qt::TextSingleLine, digits).width();
    const double down = room / (metrics.height() * lines);
    font.setPixelSize(std::max(1, static_cast<int>(std::min({across * Probe, down * Probe, LargestText}))));
    return font;
}

/// The digits of many numbers, drawn in one go: laying out each number as a text takes longer than all else
/// of a paint.
class DigitRun
{
public:
    explicit DigitRun(const QRawFont& font)
        : m_font(font)
        , m_digits(font.glyphIndexesForString(QStringLiteral("0123456789")))
        , m_advance(font.advancesForGlyphIndexes(m_digits).value(0).x())
    {
    }

    /// The number's baseline begins so that it is centred on `middle`.
    void add(int number, double middle, double baseline)
    {
        int count = 1;
        for (int rest = number; rest >= 10; rest /= 10)
            ++count;
        double x = middle + (count * 0.5 - 1.0) * m_advance;
        for (int i = 0; i < count; ++i, number /= 10, x -= m_advance) {
            m_indexes.append(m_digits.value(number % 10));
            m_positions.append(QPointF(x, baseline));
        }
    }

    void draw(QPainter& painter, const QColor& colour) const
    {
        if (m_indexes.isEmpty())
            return;
        QGlyphRun run;
        run.setRawFont(m_font);
        run.setGlyphIndexes(m_indexes);
        run.setPositions(m_positions);
        painter.setPen(colour);
        painter.drawGlyphRun(QPointF(0.0, 0.0), run);
    }

private:
    QRawFont m_font;
    QVector<quint32> m_digits;
    double m_advance;
    QVector<quint32> m_indexes;
    QVector<QPointF> m_positions;
};
} // namespace

bool isBright(const Tone& tone, const MipLevels& mips, int x, int y)
{
    const auto level = [&](int channel) {
        return static_cast<int>(
            toneLevel(static_cast<std::uint32_t>(mips.sample(x, y, channel)), tone.shift));
    };
    if (tone.isColour) {
        const int red = tone.blueFirst ? 2 : 0;
        return qGray(level(red), level(1), level(2 - red)) >= 128;
    }
    return qGray(tone.table[static_cast<std::size_t>(level(0))]) >= 128;
}

void paintSampleValues(QPainter& painter, const Scene& scene, int pane, const QRect& pixels)
{
    const MipLevels& mips = scene.picture(pane).mipLevels();
    const PixelNumbers numbers(scene.picture(pane).shown());
    const Tone tone = scene.tone(pane);
    const QRawFont font =
        QRawFont::fromFont(valueFont(scene.geometry.scale(), mips.shape().depth, numbers.count()));
    const double lineHeight = font.ascent() + font.descent();
    DigitRun black(font);
    DigitRun white(font);
    for (int y = pixels.top(); y <= pixels.bottom(); ++y)
        for (int x = pixels.left(); x <= pixels.right(); ++x) {
            DigitRun& run = isBright(tone, mips, x, y) ? black : white;
            const QPointF centre = scene.geometry.toDevice(QPointF(x + 0.5, y + 0.5));
            const PixelNumbers::Numbers lines = numbers.at(x, y);
            for (int line = 0; line < lines.count; ++line) {
                const double top = centre.y() + (line - numbers.count() * 0.5) * lineHeight;
                run.add(lines.values[static_cast<std::size_t>(line)], centre.x(), top + font.ascent());
            }
        }
    black.draw(painter, Qt::black);
    white.draw(painter, Qt::white);
}
} // namespace zor::viewer
