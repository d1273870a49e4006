#include "host/zorbench/HexModel.h"

#include "image/PixelTypeCode.h"
#include "image/unpack/NativeCodes.h"

#include <QStringList>

namespace zor {

void HexModel::show(const std::shared_ptr<const Frame>& frame, const QRect& rect)
{
    const QRect shown = frame ? rect : QRect();
    const bool isReshaped = shown.size() != m_rect.size();
    const bool isMoved = shown.topLeft() != m_rect.topLeft();
    if (isReshaped)
        beginResetModel();
    m_frame = frame;
    m_rect = shown;
    if (isReshaped) {
        endResetModel();
    } else if (!m_rect.isEmpty()) {
        // A selection stays.
        emit dataChanged(index(0, 0), index(m_rect.height() - 1, m_rect.width() - 1));
        if (isMoved) {
            emit headerDataChanged(Qt::Horizontal, 0, m_rect.width() - 1);
            emit headerDataChanged(Qt::Vertical, 0, m_rect.height() - 1);
        }
    }
}

int HexModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : m_rect.height();
}

int HexModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : m_rect.width();
}

QVariant HexModel::data(const QModelIndex& index, int role) const
{
    if (role == Qt::TextAlignmentRole)
        return Qt::AlignCenter;
    if (role != Qt::DisplayRole || !m_frame)
        return {};
    const QPoint pixel = m_rect.topLeft() + QPoint(index.column(), index.row());
    const NativeCodes native = nativeCodes(m_frame->record(), static_cast<std::uint32_t>(pixel.x()),
                                           static_cast<std::uint32_t>(pixel.y()));
    constexpr int bitsPerDigit = 4;
    const int digits =
        (static_cast<int>(pixelTypeSampleBits(m_frame->pixelType)) + bitsPerDigit - 1) / bitsPerDigit;
    QStringList codes;
    for (std::uint32_t i = 0; i < native.count; ++i)
        codes.append(QStringLiteral("%1").arg(native.codes[i], digits, 16, QLatin1Char('0')).toUpper());
    return codes.join(QLatin1Char(' '));
}

QVariant HexModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (role != Qt::DisplayRole)
        return {};
    return section + (orientation == Qt::Horizontal ? m_rect.x() : m_rect.y());
}

} // namespace zor
