#pragma once

#include "host/camera/CameraFeature.h"

#include <QAbstractItemModel>
#include <QMetaType>

#include <memory>
#include <vector>

namespace zor {

/// The tree of a camera's features: a category or a feature in each row, with its value beside it.
///
/// What the operator sets shows at once; update() then says what the camera made of it.
class FeatureModel : public QAbstractItemModel
{
    Q_OBJECT

public:
    enum Column
    {
        NameColumn,
        ValueColumn,
        ColumnCount,
    };
    /// A const CameraFeature*, as of feature().
    static constexpr int FeatureRole = Qt::UserRole;

    explicit FeatureModel(QObject* parent = nullptr);
    ~FeatureModel() override;

    /// Shows the children of the root. As long as a camera has the same features, their rows stay.
    void update(const CameraFeature& root);

    /// Of a row, without children. Valid until update().
    const CameraFeature& feature(const QModelIndex& index) const;

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& index) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    /// Of the value: a text in Qt::EditRole, a Qt::CheckState in Qt::CheckStateRole. For a command any text
    /// executes it.
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;

signals:
    /// The camera is to be set.
    void chosen(const QString& name, const QString& value);
    void executed(const QString& command);

private:
    struct Node;

    Node& nodeOf(const QModelIndex& index) const;
    void updateValues(const Node& parent, const QModelIndex& index, const CameraFeature& from);
    bool choose(const QModelIndex& index, const QString& value);

    std::unique_ptr<Node> m_root;
};

} // namespace zor

Q_DECLARE_METATYPE(const zor::CameraFeature*)
