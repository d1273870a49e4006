#include "platform/viewer/paint/Resampler.h"

#include "platform/viewer/paint/RowKernels.h"
#include "platform/viewer/picture/RowBands.h"

#include <QImage>

#include <cstring>

namespace zor::viewer {
namespace {
constexpr int LeastRowsToShare = 32;

/// Device rows of one level. One for each thread: it holds the row in between.
template <class Sample> class BoxRows
{
public:
    BoxRows(const Samples& samples, int channels, const ResampleRule::Box& box)
        : m_samples(samples)
        , m_box(box)
        , m_channels(channels)
    {
        if (box.x.count() == 0 || isPicked())
            return;
        m_origin = box.x.first.front();
        m_between.resize(static_cast<std::size_t>(box.x.first.back() + box.x.taps - m_origin) *
                         static_cast<std::size_t>(channels));
    }

    void row(int deviceRow, std::uint16_t* target)
    {
        const auto index = static_cast<std::size_t>(deviceRow);
        const int first = m_box.y.first[index];
        if (isPicked()) {
            pickColumns(sampleRow(first), m_box.x, m_channels, target);
            return;
        }
        const std::ptrdiff_t skipped = static_cast<std::ptrdiff_t>(m_origin) * m_channels;
        const Sample* rows[AxisMap::MostTaps];
        for (int tap = 0; tap < AxisMap::MostTaps; ++tap)
            rows[tap] = sampleRow(first + (tap < m_box.y.taps ? tap : 0)) + skipped;
        meanOfRows(rows[0], rows[1], rows[2], m_box.y.weights[index], m_between.data(), m_between.size());
        meanOfColumns(m_between.data(), m_origin, m_box.x, m_channels, target);
    }

private:
    /// From 1 : 1 on each device pixel is one sample.
    bool isPicked() const { return m_box.x.taps == 1 && m_box.y.taps == 1; }
    const Sample* sampleRow(int y) const { return reinterpret_cast<const Sample*>(m_samples.row(y)); }

    const Samples& m_samples;
    const ResampleRule::Box& m_box;
    int m_channels;
    int m_origin = 0;                     ///< image pixel that the row in between begins with
    std::vector<std::uint16_t> m_between; ///< averaged along y only
};

template <class Sample>
void resampleAs(const MipLevels& mips, const ResampleRule& rule, const Tone& tone, const QPoint& origin,
                QImage& target)
{
    const QRect covered = rule.covered().translated(origin);
    const int channels = mips.shape().channels;
    const auto width = static_cast<std::size_t>(covered.width());
    const std::size_t count = width * static_cast<std::size_t>(channels);
    std::uint8_t* bits = target.bits();
    const auto bitsPitch = static_cast<std::size_t>(target.bytesPerLine());
    const auto targetRow = [&](int row) {
        return reinterpret_cast<std::uint32_t*>(bits +
                                                static_cast<std::size_t>(covered.y() + row) * bitsPitch) +
               covered.x();
    };
    const AxisMap& y = rule.fine.y;
    const auto isRepeated = [&](int row) {
        const auto index = static_cast<std::size_t>(row);
        return y.taps == 1 && rule.blend == 0 && y.first[index] == y.first[index - 1];
    };

    forRowBands(covered.height(), LeastRowsToShare, [&](int begin, int end) {
        BoxRows<Sample> fine(mips.level(rule.fine.level), channels, rule.fine);
        BoxRows<Sample> coarse(mips.level(rule.coarse.level), channels, rule.coarse);
        std::vector<std::uint16_t> fineRow(count);
        std::vector<std::uint16_t> coarseRow(rule.blend > 0 ? count : 0);
        for (int row = begin; row < end; ++row) {
            if (row > begin && isRepeated(row)) {
                std::memcpy(targetRow(row), targetRow(row - 1), width * sizeof(std::uint32_t));
                continue;
            }
            fine.row(row, fineRow.data());
            if (rule.blend > 0) {
                coarse.row(row, coarseRow.data());
                mixRows(fineRow.data(), coarseRow.data(), rule.blend, count);
            }
            toneRow(tone, fineRow.data(), targetRow(row), covered.width());
        }
    });
}
} // namespace

void resample(const MipLevels& mips, const ResampleRule& rule, const Tone& tone, const QPoint& origin,
              QImage& target)
{
    if (rule.covered().isEmpty())
        return;
    if (mips.shape().bytes == 1)
        resampleAs<std::uint8_t>(mips, rule, tone, origin, target);
    else
        resampleAs<std::uint16_t>(mips, rule, tone, origin, target);
}
} // namespace zor::viewer
