#pragma once

class DisplayView;
class QCheckBox;
class QComboBox;
class QDialog;
class QHBoxLayout;
class QLabel;
class QLineEdit;
class QPushButton;
class QSpacerItem;
class QWidget;
class QwtPlot;

/// The widgets of the dialog: a strip of controls and four panes. The dialog owns all of them.
struct Ui_CFFCUtility
{
    QWidget* wSettings;
    QHBoxLayout* horizontalLayout;
    QLabel* lTitle;
    QLineEdit* lETitle;
    QLabel* lCamera;
    QLineEdit* lECamera;
    QPushButton* pBSave;
    QSpacerItem* settingsSpacer1;
    QCheckBox* chBNormFFC;
    QLineEdit* lENormFFC;
    QPushButton* pBUpdate;
    QCheckBox* chBShowY;
    QSpacerItem* settingsSpacer2;
    QCheckBox* chBHighlights;
    QSpacerItem* settingsSpacer3;
    QLabel* lblPrecision;
    QComboBox* cBoxPrecision;
    QLineEdit* lECurColor; ///< kept for a cursor read-out; hidden
    QLineEdit* lECurPos;   ///< as lECurColor
    QwtPlot* PlotUp;
    QwtPlot* PlotDown;
    DisplayView* gVUp;
    DisplayView* gVDown;

    /// Builds the widgets as children of the dialog, sets the texts, connects slots by name.
    void setupUi(QDialog* dialog);
    void retranslateUi(QDialog* dialog);

private:
    void setupStrip(QDialog* dialog);
    void setupPanes(QDialog* dialog);
};
