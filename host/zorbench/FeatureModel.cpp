#include "host/zorbench/FeatureModel.h"

#include <QStringList>

#include <algorithm>
#include <tuple>
#include <utility>

namespace zor {

namespace {

using Kind = CameraFeature::Kind;

const char* const True = "true";
const char* const False = "false";

QString text(const std::string& utf8)
{
    return QString::fromStdString(utf8);
}

bool hasSameValue(const CameraFeature& a, const CameraFeature& b)
{
    const auto parts = [](const CameraFeature& one) {
        return std::tie(one.label, one.toolTip, one.value, one.unit, one.minimum, one.maximum, one.increment,
                        one.entries, one.visibility, one.isAvailable, one.isWritable);
    };
    return parts(a) == parts(b);
}

/// From where to where and in which steps; empty when the camera does not say.
QString rangeOf(const CameraFeature& feature)
{
    QStringList parts;
    if (!feature.minimum.empty())
        parts.append(FeatureModel::tr("from %1").arg(text(feature.minimum)));
    if (!feature.maximum.empty())
        parts.append(FeatureModel::tr("to %1").arg(text(feature.maximum)));
    if (!feature.unit.empty())
        parts.append(text(feature.unit));
    if (!feature.increment.empty())
        parts.append(FeatureModel::tr("in steps of %1").arg(text(feature.increment)));
    return parts.join(QLatin1Char(' '));
}

/// Markup, so that long lines are wrapped.
QString toolTipOf(const CameraFeature& feature)
{
    QString markup;
    for (const QString& line : {text(feature.toolTip), rangeOf(feature), text(feature.name)}) {
        if (!line.isEmpty())
            markup += QStringLiteral("<p>") + line.toHtmlEscaped() + QStringLiteral("</p>");
    }
    return markup;
}

bool hasCheckBox(const CameraFeature& feature)
{
    return feature.kind == Kind::Boolean && feature.isAvailable;
}

QString shownValue(const CameraFeature& feature)
{
    if (!feature.isAvailable)
        return FeatureModel::tr("not available");
    if (hasCheckBox(feature))
        return {};
    const QString value = text(feature.value);
    return feature.unit.empty() || value.isEmpty() ? value : value + QLatin1Char(' ') + text(feature.unit);
}

QVariant checkStateOf(const CameraFeature& feature)
{
    if (!hasCheckBox(feature))
        return {};
    return feature.value == True ? Qt::Checked : Qt::Unchecked;
}

/// What an assistive client reads where there is a picture.
QVariant accessibleValueOf(const CameraFeature& feature)
{
    if (!hasCheckBox(feature))
        return {};
    return feature.value == True ? FeatureModel::tr("on") : FeatureModel::tr("off");
}

QVariant valueOf(const CameraFeature& feature, int role)
{
    switch (role) {
    case Qt::DisplayRole:
        return shownValue(feature);
    case Qt::EditRole:
        return text(feature.value);
    case Qt::CheckStateRole:
        return checkStateOf(feature);
    case Qt::AccessibleTextRole:
        return accessibleValueOf(feature);
    default:
        return {};
    }
}

} // namespace

struct FeatureModel::Node
{
    Node(const CameraFeature& from, Node* above, int place)
        : feature(from)
        , parent(above)
        , row(place)
    {
        feature.children.clear();
        for (const CameraFeature& child : from.children)
            children.push_back(std::make_unique<Node>(child, this, static_cast<int>(children.size())));
    }

    bool hasFeaturesOf(const CameraFeature& other) const
    {
        return feature.name == other.name && feature.kind == other.kind &&
               std::equal(
                   children.begin(), children.end(), other.children.begin(), other.children.end(),
                   [](const auto& node, const CameraFeature& child) { return node->hasFeaturesOf(child); });
    }

    CameraFeature feature; ///< without children
    Node* parent;          ///< null of the root
    int row;
    std::vector<std::unique_ptr<Node>> children;
};

FeatureModel::FeatureModel(QObject* parent)
    : QAbstractItemModel(parent)
    , m_root(std::make_unique<Node>(CameraFeature(), nullptr, 0))
{
}

FeatureModel::~FeatureModel() = default;

FeatureModel::Node& FeatureModel::nodeOf(const QModelIndex& index) const
{
    return index.isValid() ? *static_cast<Node*>(index.internalPointer()) : *m_root;
}

void FeatureModel::update(const CameraFeature& root)
{
    if (m_root->hasFeaturesOf(root)) {
        updateValues(*m_root, {}, root);
        return;
    }
    beginResetModel();
    m_root = std::make_unique<Node>(root, nullptr, 0);
    endResetModel();
}

void FeatureModel::updateValues(const Node& parent, const QModelIndex& parentIndex, const CameraFeature& from)
{
    for (const auto& node : parent.children) {
        const CameraFeature& now = from.children[static_cast<std::size_t>(node->row)];
        const QModelIndex name = index(node->row, NameColumn, parentIndex);
        updateValues(*node, name, now);
        // What has not changed is left alone: its editor may be open.
        if (hasSameValue(node->feature, now))
            continue;
        node->feature = now;
        node->feature.children.clear();
        emit dataChanged(name, index(node->row, ValueColumn, parentIndex));
    }
}

const CameraFeature& FeatureModel::feature(const QModelIndex& index) const
{
    return nodeOf(index).feature;
}

QModelIndex FeatureModel::index(int row, int column, const QModelIndex& parent) const
{
    if (!hasIndex(row, column, parent))
        return {};
    return createIndex(row, column, nodeOf(parent).children[static_cast<std::size_t>(row)].get());
}

QModelIndex FeatureModel::parent(const QModelIndex& index) const
{
    Node* parent = nodeOf(index).parent;
    return parent && parent != m_root.get() ? createIndex(parent->row, NameColumn, parent) : QModelIndex();
}

int FeatureModel::rowCount(const QModelIndex& parent) const
{
    return parent.column() > NameColumn ? 0 : static_cast<int>(nodeOf(parent).children.size());
}

int FeatureModel::columnCount(const QModelIndex&) const
{
    return ColumnCount;
}

QVariant FeatureModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    return section == NameColumn ? tr("Feature") : tr("Value");
}

QVariant FeatureModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return {};
    const CameraFeature& shown = feature(index);
    if (role == FeatureRole)
        return QVariant::fromValue(&shown);
    if (role == Qt::ToolTipRole)
        return toolTipOf(shown);
    if (index.column() == ValueColumn)
        return valueOf(shown, role);
    return role == Qt::DisplayRole ? text(shown.label) : QVariant();
}

Qt::ItemFlags FeatureModel::flags(const QModelIndex& index) const
{
    if (!index.isValid())
        return Qt::NoItemFlags;
    const CameraFeature& shown = feature(index);
    Qt::ItemFlags flags = Qt::ItemIsSelectable;
    if (index.column() == NameColumn || shown.kind == Kind::Category)
        return shown.isAvailable ? flags | Qt::ItemIsEnabled : flags;
    if (!shown.isAvailable || !shown.isWritable || shown.kind == Kind::Other)
        return flags;
    return flags | Qt::ItemIsEnabled | (hasCheckBox(shown) ? Qt::ItemIsUserCheckable : Qt::ItemIsEditable);
}

bool FeatureModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (!(flags(index) & (Qt::ItemIsEditable | Qt::ItemIsUserCheckable)))
        return false;
    if (role == Qt::CheckStateRole)
        return choose(index, QLatin1String(value.toInt() == Qt::Checked ? True : False));
    if (role != Qt::EditRole)
        return false;
    if (feature(index).kind == Kind::Command) {
        emit executed(text(feature(index).name));
        return true;
    }
    return choose(index, value.toString());
}

bool FeatureModel::choose(const QModelIndex& index, const QString& value)
{
    CameraFeature& shown = nodeOf(index).feature;
    if (text(shown.value) == value)
        return true;
    shown.value = value.toStdString();
    emit dataChanged(index, index);
    emit chosen(text(shown.name), value);
    return true;
}

} // namespace zor
