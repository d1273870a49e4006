#pragma once

#include <QIcon>
#include <QMetaProperty>
#include <QPixmap>
#include <QSet>
#include <QStringList>

/// The value of a property in a form that QVariant can compare.
inline QVariant comparableValue(const QObject* object, const QMetaProperty& property)
{
    const QVariant value = property.read(object);
    if (property.isEnumType())
        return value.toInt();
    switch (value.userType()) {
    case QMetaType::QIcon:
        return value.value<QIcon>().isNull();
    case QMetaType::QPixmap:
        return value.value<QPixmap>().isNull();
    default:
        return value;
    }
}

/// The properties in which two widgets of one class differ, but for their names and places, and sizes that
/// follow from what they hold.
inline QStringList propertyDifferences(const QObject* one, const QObject* other)
{
    static const QSet<QByteArray> passedOver{
        "objectName", "geometry",     "frameGeometry",  "normalGeometry",  "pos",      "x",
        "y",          "frameSize",    "size",           "width",           "height",   "rect",
        "frameRect",  "childrenRect", "childrenRegion", "minimumSizeHint", "sizeHint",
    };
    QStringList names;
    const QMetaObject* meta = one->metaObject();
    for (int i = 0; i < meta->propertyCount(); ++i) {
        const QMetaProperty property = meta->property(i);
        if (!passedOver.contains(property.name()) &&
            comparableValue(one, property) != comparableValue(other, property))
            names.append(QLatin1String(property.name()));
    }
    names.sort();
    return names;
}
