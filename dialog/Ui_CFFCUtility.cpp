#include "dialog/Ui_CFFCUtility.h"

#include "display/DisplayView.h"

#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QDialog>
#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpacerItem>

#include <qwt_plot.h>

namespace {

/// Makes a named widget, without a place yet.
template <typename Widget> Widget* makeWidget(const char* name, QWidget* parent)
{
    auto* widget = new Widget(parent);
    widget->setObjectName(QLatin1String(name));
    return widget;
}

/// Makes a named widget and adds it to the row that the parent's layout forms.
template <typename Widget> Widget* addToRow(const char* name, QWidget* parent)
{
    auto* widget = makeWidget<Widget>(name, parent);
    parent->layout()->addWidget(widget);
    return widget;
}

QSpacerItem* addSpacer(QHBoxLayout* row)
{
    auto* spacer = new QSpacerItem(40, 20, QSizePolicy::Expanding, QSizePolicy::Minimum);
    row->addItem(spacer);
    return spacer;
}

/// A field that nobody edits reads in black although it is disabled.
void makeReadout(QLineEdit* field)
{
    const QBrush black(QColor(0, 0, 0, 255), Qt::SolidPattern);
    QPalette palette;
    for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled})
        for (const QPalette::ColorRole role :
             {QPalette::WindowText, QPalette::Dark, QPalette::Mid, QPalette::Text, QPalette::ButtonText})
            palette.setBrush(group, role, black);
    field->setPalette(palette);
    field->setEnabled(false);
}

template <typename Pane> Pane* makePane(const char* name, QWidget* parent, const QRect& geometry)
{
    auto* pane = makeWidget<Pane>(name, parent);
    pane->setGeometry(geometry);
    pane->setFrameShape(QFrame::Box);
    return pane;
}

QString text(const char* source)
{
    return QCoreApplication::translate("CFFCUtility", source);
}

} // namespace

void Ui_CFFCUtility::setupUi(QDialog* dialog)
{
    if (dialog->objectName().isEmpty())
        dialog->setObjectName(QStringLiteral("CFFCUtility"));
    dialog->resize(1174, 727);
    dialog->setMinimumSize(746, 125);
    QIcon icon;
    icon.addFile(QStringLiteral(":/FFCUtility/ZorIcon.png"), QSize(), QIcon::Normal, QIcon::Off);
    dialog->setWindowIcon(icon);

    setupStrip(dialog);
    setupPanes(dialog);
    retranslateUi(dialog);
    QMetaObject::connectSlotsByName(dialog);
}

void Ui_CFFCUtility::setupStrip(QDialog* dialog)
{
    wSettings = makeWidget<QWidget>("wSettings", dialog);
    wSettings->setGeometry(0, 680, 1131, 31);
    horizontalLayout = new QHBoxLayout(wSettings);
    horizontalLayout->setObjectName(QStringLiteral("horizontalLayout"));
    horizontalLayout->setSpacing(6);
    horizontalLayout->setContentsMargins(2, 0, 2, 0);

    lTitle = addToRow<QLabel>("lTitle", wSettings);
    lETitle = addToRow<QLineEdit>("lETitle", wSettings);
    lCamera = addToRow<QLabel>("lCamera", wSettings);
    lECamera = addToRow<QLineEdit>("lECamera", wSettings);
    pBSave = addToRow<QPushButton>("pBSave", wSettings);
    settingsSpacer1 = addSpacer(horizontalLayout);

    chBNormFFC = addToRow<QCheckBox>("chBNormFFC", wSettings);
    chBNormFFC->setMinimumSize(104, 0);
    chBNormFFC->setChecked(true);
    lENormFFC = addToRow<QLineEdit>("lENormFFC", wSettings);
    lENormFFC->setInputMethodHints(Qt::ImhDigitsOnly);
    pBUpdate = addToRow<QPushButton>("pBUpdate", wSettings);
    chBShowY = addToRow<QCheckBox>("chBShowY", wSettings);
    settingsSpacer2 = addSpacer(horizontalLayout);

    chBHighlights = addToRow<QCheckBox>("chBHighlights", wSettings);
    chBHighlights->setMinimumSize(69, 0);
    settingsSpacer3 = addSpacer(horizontalLayout);

    lblPrecision = addToRow<QLabel>("lblPrecision", wSettings);
    cBoxPrecision = addToRow<QComboBox>("cBoxPrecision", wSettings);
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    policy.setHeightForWidth(cBoxPrecision->sizePolicy().hasHeightForWidth());
    cBoxPrecision->setSizePolicy(policy);

    lECurColor = addToRow<QLineEdit>("lECurColor", wSettings);
    makeReadout(lECurColor);
    lECurPos = addToRow<QLineEdit>("lECurPos", wSettings);
    makeReadout(lECurPos);
}

void Ui_CFFCUtility::setupPanes(QDialog* dialog)
{
    PlotUp = makePane<QwtPlot>("PlotUp", dialog, QRect(561, 0, 411, 333));
    PlotDown = makePane<QwtPlot>("PlotDown", dialog, QRect(551, 338, 421, 333));
    gVUp = makePane<DisplayView>("gVUp", dialog, QRect(130, 60, 321, 231));
    gVUp->setMouseTracking(true);
    gVDown = makePane<DisplayView>("gVDown", dialog, QRect(30, 370, 401, 211));
    gVDown->setMouseTracking(true);
}

void Ui_CFFCUtility::retranslateUi(QDialog* dialog)
{
    dialog->setWindowTitle(text(" FFC Utility"));
    lTitle->setText(text("Title:"));
    lCamera->setText(text("Camera:"));
    pBSave->setText(text("Save"));
    chBNormFFC->setText(text("Normalize FFC to"));
    lENormFFC->setText(text("1"));
    pBUpdate->setText(text("Update"));
    chBShowY->setText(text("Show Flat Y"));
    chBHighlights->setText(text("Highlights"));
    lblPrecision->setText(text("Precision:"));
    cBoxPrecision->clear();
    cBoxPrecision->insertItems(0, {text("8 bit"), text("12 bit")});
}
