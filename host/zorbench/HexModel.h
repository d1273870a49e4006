#pragma once

#include "host/frames/Frame.h"

#include <QAbstractTableModel>
#include <QRect>

#include <memory>

namespace zor {

/// The native codes of a piece of a frame in hexadecimal, a cell for each pixel, under the numbers of its
/// columns and rows. A pixel of several samples has them side by side, in the order of its format.
class HexModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    using QAbstractTableModel::QAbstractTableModel;

    /// The rectangle lies on the frame. Null: nothing.
    void show(const std::shared_ptr<const Frame>& frame, const QRect& rect);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

private:
    std::shared_ptr<const Frame> m_frame;
    QRect m_rect;
};

} // namespace zor
