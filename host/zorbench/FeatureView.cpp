#include "host/zorbench/FeatureView.h"

#include "host/zorbench/FeatureDelegate.h"

#include <QHeaderView>
#include <QTreeView>
#include <QVBoxLayout>

namespace zor {

FeatureView::FeatureView(FeatureModel& model, QWidget* parent)
    : QWidget(parent)
    , m_tree(new QTreeView(this))
{
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins({});
    rows->addWidget(m_tree);

    m_filter.setSourceModel(&model);
    m_tree->setAccessibleName(tr("Features"));
    m_tree->setModel(&m_filter);
    m_tree->setItemDelegate(new FeatureDelegate(this));
    m_tree->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_tree->setUniformRowHeights(true);
    m_tree->setAlternatingRowColors(true);
    const int character = m_tree->fontMetrics().averageCharWidth();
    m_tree->setMinimumWidth(48 * character);
    m_tree->setIndentation(2 * character);
    m_tree->header()->setMinimumSectionSize(18 * character);
    m_tree->header()->setSectionResizeMode(FeatureModel::NameColumn, QHeaderView::ResizeToContents);

    connect(m_tree, &QTreeView::activated, this, &FeatureView::use);
    const auto open = [this] { openCommands(); };
    connect(&m_filter, &QAbstractItemModel::modelReset, this, open);
    connect(&m_filter, &QAbstractItemModel::rowsInserted, this, open);
}

FeatureView::~FeatureView()
{
    // It shows the filtered features until its end.
    delete m_tree;
}

void FeatureView::setVisibility(CameraFeature::Visibility highest)
{
    m_filter.setVisibility(highest);
}

void FeatureView::use(const QModelIndex& index)
{
    const QModelIndex value = index.sibling(index.row(), FeatureModel::ValueColumn);
    const auto& feature = *value.data(FeatureModel::FeatureRole).value<const CameraFeature*>();
    const Qt::ItemFlags flags = value.flags();
    if (flags & Qt::ItemIsUserCheckable)
        m_filter.setData(value, value.data(Qt::CheckStateRole) == Qt::Checked ? Qt::Unchecked : Qt::Checked,
                         Qt::CheckStateRole);
    else if (feature.kind == CameraFeature::Kind::Command)
        m_filter.setData(value, {}, Qt::EditRole);
    else if (flags & Qt::ItemIsEditable)
        m_tree->edit(value);
}

void FeatureView::openCommands(const QModelIndex& parent)
{
    for (int row = 0; row < m_filter.rowCount(parent); ++row) {
        const QModelIndex name = m_filter.index(row, FeatureModel::NameColumn, parent);
        const auto* feature = name.data(FeatureModel::FeatureRole).value<const CameraFeature*>();
        if (feature->kind == CameraFeature::Kind::Command)
            m_tree->openPersistentEditor(name.sibling(row, FeatureModel::ValueColumn));
        openCommands(name);
    }
}

} // namespace zor
