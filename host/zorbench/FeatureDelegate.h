#pragma once

#include <QStyledItemDelegate>

#include <string>
#include <vector>

namespace zor {

/// The right editor for the value of each feature: a combo box for what has entries, a line for texts and for
/// numbers, which lets through what the camera may be set to, a button for commands, which stays open.
class FeatureDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override;

private:
    QWidget* makeCommand(QWidget* parent) const;
    QWidget* makeChoice(const std::vector<std::string>& entries, QWidget* parent) const;
};

} // namespace zor
