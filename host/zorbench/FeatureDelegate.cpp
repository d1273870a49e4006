#include "host/zorbench/FeatureDelegate.h"

#include "host/zorbench/FeatureModel.h"
#include "host/zorbench/FeatureValidator.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>

#include <algorithm>

namespace zor {

namespace {

using Kind = CameraFeature::Kind;

const CameraFeature& featureOf(const QModelIndex& index)
{
    return *index.data(FeatureModel::FeatureRole).value<const CameraFeature*>();
}

} // namespace

QSize FeatureDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    // Room for the frames of the editors.
    const QSize text = QStyledItemDelegate::sizeHint(option, index);
    return {text.width(), std::max(text.height(), option.fontMetrics.height() + 10)};
}

QWidget* FeatureDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem&,
                                       const QModelIndex& index) const
{
    const CameraFeature& feature = featureOf(index);
    QWidget* editor = nullptr;
    if (feature.kind == Kind::Command) {
        editor = makeCommand(parent);
    } else if (feature.kind == Kind::Enumeration) {
        editor = makeChoice(feature.entries, parent);
    } else {
        auto* line = new QLineEdit(parent);
        if (feature.kind != Kind::Text)
            line->setValidator(new FeatureValidator(feature, line));
        editor = line;
    }
    editor->setAccessibleName(QString::fromStdString(feature.label));
    return editor;
}

QWidget* FeatureDelegate::makeCommand(QWidget* parent) const
{
    auto* button = new QPushButton(tr("Execute"), parent);
    connect(button, &QPushButton::clicked, this,
            [this, button] { emit const_cast<FeatureDelegate*>(this)->commitData(button); });
    return button;
}

QWidget* FeatureDelegate::makeChoice(const std::vector<std::string>& entries, QWidget* parent) const
{
    auto* box = new QComboBox(parent);
    for (const std::string& entry : entries)
        box->addItem(QString::fromStdString(entry));
    connect(box, QOverload<int>::of(&QComboBox::activated), this, [this, box] {
        auto* self = const_cast<FeatureDelegate*>(this);
        emit self->commitData(box);
        emit self->closeEditor(box);
    });
    return box;
}

void FeatureDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const
{
    if (auto* button = qobject_cast<QPushButton*>(editor))
        button->setEnabled(index.flags() & Qt::ItemIsEnabled);
    else
        QStyledItemDelegate::setEditorData(editor, index);
}

void FeatureDelegate::setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const
{
    const auto* line = qobject_cast<QLineEdit*>(editor);
    // The line is left with the mouse as well.
    if (line && !line->hasAcceptableInput())
        return;
    QStyledItemDelegate::setModelData(editor, model, index);
}

} // namespace zor
