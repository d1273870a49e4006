#pragma once

#include "host/camera/CameraFeature.h"

#include <QSortFilterProxyModel>

namespace zor {

/// Of a FeatureModel what is for a certain operator: nothing of a higher visibility, and no category that is
/// left without features.
class FeatureFilter : public QSortFilterProxyModel
{
    Q_OBJECT

public:
    using QSortFilterProxyModel::QSortFilterProxyModel;

    void setVisibility(CameraFeature::Visibility highest);

protected:
    bool filterAcceptsRow(int row, const QModelIndex& parent) const override;

private:
    CameraFeature::Visibility m_highest = CameraFeature::Visibility::Beginner;
};

} // namespace zor
