#pragma once

#include <QApplication>
#include <QCheckBox>
#include <QDialog>
#include <QTest>
#include <QWindow>

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

/// A widget of the utility's dialog; ends the program when there is none of that name.
inline QWidget* findInUtility(const char* name)
{
    const QDialog* dialog = utilityDialog();
    auto* widget = dialog ? dialog->findChild<QWidget*>(QLatin1String(name)) : nullptr;
    if (!widget)
        qFatal("there is no %s", name);
    return widget;
}

/// Clicks a control with the mouse at the window: a check box on its box, anything else in the middle.
inline void clickInUtility(const char* name)
{
    QWidget* control = findInUtility(name);
    const QPoint place =
        qobject_cast<QCheckBox*>(control) ? QPoint(8, control->height() / 2) : control->rect().center();
    QTest::mouseClick(control->window()->windowHandle(), Qt::LeftButton, {},
                      control->mapTo(control->window(), place));
}
