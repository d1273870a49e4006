#pragma once

#include "host/zorbench/FeatureFilter.h"
#include "host/zorbench/FeatureModel.h"

#include <QWidget>

class QTreeView;

namespace zor {

/// The tree of a camera's features, each edited in place: by a double click or Return wherever in its row.
class FeatureView : public QWidget
{
    Q_OBJECT

public:
    /// The model must outlive the view.
    explicit FeatureView(FeatureModel& model, QWidget* parent = nullptr);

    ~FeatureView() override;

    /// Shows features up to this one.
    void setVisibility(CameraFeature::Visibility highest);

private:
    /// Edits a value, turns a check box over, executes a command.
    void use(const QModelIndex& index);
    /// The buttons of all commands under this row.
    void openCommands(const QModelIndex& parent = {});

    FeatureFilter m_filter;
    QTreeView* m_tree;
};

} // namespace zor
