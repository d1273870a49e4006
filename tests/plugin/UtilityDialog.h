#pragma once

#include <QApplication>
#include <QDialog>

/// The utility's dialog, as anybody in the process finds it; null when there is none.
inline QDialog* utilityDialog()
{
    const QWidgetList widgets = QApplication::topLevelWidgets();
    for (QWidget* widget : widgets) {
        if (widget->objectName() == QLatin1String("CFFCUtility"))
            return qobject_cast<QDialog*>(widget);
    }
    return nullptr;
}
