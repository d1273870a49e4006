#include "host/zorbench/FeatureFilter.h"

#include "host/zorbench/FeatureModel.h"

namespace zor {

void FeatureFilter::setVisibility(CameraFeature::Visibility highest)
{
    m_highest = highest;
    invalidateFilter();
}

bool FeatureFilter::filterAcceptsRow(int row, const QModelIndex& parent) const
{
    const auto& model = static_cast<const FeatureModel&>(*sourceModel());
    const QModelIndex index = model.index(row, FeatureModel::NameColumn, parent);
    const CameraFeature& feature = model.feature(index);
    if (feature.visibility > m_highest)
        return false;
    if (feature.kind != CameraFeature::Kind::Category)
        return true;
    for (int child = 0; child < model.rowCount(index); ++child) {
        if (filterAcceptsRow(child, index))
            return true;
    }
    return false;
}

} // namespace zor
