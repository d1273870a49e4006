#include "tests/support/DialogProbe.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGraphicsView>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTranslator>

#include <qwt_plot.h>

namespace {

/// The strip's row from left to right; an empty name is a spacer.
const char* const RowNames[] = {"lTitle",     "lETitle",       "lCamera",   "lECamera",     "pBSave",
                                "",           "chBNormFFC",    "lENormFFC", "pBUpdate",     "chBShowY",
                                "",           "chBHighlights", "",          "lblPrecision", "cBoxPrecision",
                                "lECurColor", "lECurPos"};

/// Marks every text of the dialog's context and no other.
class Marker : public QTranslator
{
public:
    QString translate(const char* context, const char* source, const char*, int) const override
    {
        return qstrcmp(context, "CFFCUtility") == 0 ? QStringLiteral("~") + QLatin1String(source) : QString();
    }
    bool isEmpty() const override { return false; }
};

/// A dialog with slots of the pattern that is connected by name.
class NamedSlots : public QDialog
{
    Q_OBJECT

public:
    Ui_CFFCUtility ui;
    int clicks = 0;
    QStringList values;

public slots:
    void on_pBSave_clicked() { ++clicks; }
    void on_lENormFFC_textChanged(const QString& text) { values.append(text); }
};

} // namespace

class TestDialogForm : public QObject
{
    Q_OBJECT

private slots:
    void everyWidgetHasItsText_data();
    void everyWidgetHasItsText();
    void textsAreTranslatedInTheDialogsContext();
    void theTextStepReplacesItsItems();
    void slotsAreConnectedByNameAfterTheTexts();
    void dialogStartsWithItsSizeTitleAndIcon();
    void anObjectNameGivenBeforeStays();
    void stripHoldsItsRowInOrder();
    void stripStartsNarrowerThanTheDialog();
    void boxesHaveTheirStartStates();
    void precisionOffersTwoItems();
    void readoutsAreHiddenDisabledAndBlack_data();
    void readoutsAreHiddenDisabledAndBlack();
    void panesStartInTheirPlaces_data();
    void panesStartInTheirPlaces();
    void fiveSlotsInOrderAndNoSignal();
    void slotArgumentIsAMetaType();
};

void TestDialogForm::everyWidgetHasItsText_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("text");
    QTest::newRow("title label") << "lTitle"
                                 << "Title:";
    QTest::newRow("title is empty") << "lETitle"
                                    << "";
    QTest::newRow("camera label") << "lCamera"
                                  << "Camera:";
    QTest::newRow("camera is empty") << "lECamera"
                                     << "";
    QTest::newRow("save button") << "pBSave"
                                 << "Save";
    QTest::newRow("normalise box") << "chBNormFFC"
                                   << "Normalize FFC to";
    QTest::newRow("normalise value agrees with the dialog's own start value") << "lENormFFC"
                                                                              << "1";
    QTest::newRow("update button") << "pBUpdate"
                                   << "Update";
    QTest::newRow("row correction box") << "chBShowY"
                                        << "Show Flat Y";
    QTest::newRow("highlight box") << "chBHighlights"
                                   << "Highlights";
    QTest::newRow("precision label") << "lblPrecision"
                                     << "Precision:";
    QTest::newRow("colour read-out is empty") << "lECurColor"
                                              << "";
    QTest::newRow("position read-out is empty") << "lECurPos"
                                                << "";
}

void TestDialogForm::everyWidgetHasItsText()
{
    QFETCH(QString, name);
    QFETCH(QString, text);
    DialogProbe dialog;
    const auto* widget = dialog.findChild<QWidget*>(name);
    QVERIFY(widget);
    QCOMPARE(widget->property("text").toString(), text);
}

void TestDialogForm::textsAreTranslatedInTheDialogsContext()
{
    Marker marker;
    QVERIFY(QCoreApplication::installTranslator(&marker));
    DialogProbe dialog;
    QCoreApplication::removeTranslator(&marker);
    QCOMPARE(dialog.windowTitle(), QStringLiteral("~ FFC Utility"));
    QCOMPARE(dialog.ui.lTitle->text(), QStringLiteral("~Title:"));
    QCOMPARE(dialog.ui.lCamera->text(), QStringLiteral("~Camera:"));
    QCOMPARE(dialog.ui.pBSave->text(), QStringLiteral("~Save"));
    QCOMPARE(dialog.ui.chBNormFFC->text(), QStringLiteral("~Normalize FFC to"));
    QCOMPARE(dialog.ui.pBUpdate->text(), QStringLiteral("~Update"));
    QCOMPARE(dialog.ui.chBShowY->text(), QStringLiteral("~Show Flat Y"));
    QCOMPARE(dialog.ui.chBHighlights->text(), QStringLiteral("~Highlights"));
    QCOMPARE(dialog.ui.lblPrecision->text(), QStringLiteral("~Precision:"));
    QCOMPARE(dialog.ui.cBoxPrecision->itemText(0), QStringLiteral("~8 bit"));
    QCOMPARE(dialog.ui.cBoxPrecision->itemText(1), QStringLiteral("~12 bit"));
}

void TestDialogForm::theTextStepReplacesItsItems()
{
    QDialog dialog;
    Ui_CFFCUtility form;
    form.setupUi(&dialog);
    form.cBoxPrecision->setCurrentIndex(1);
    form.retranslateUi(&dialog);
    QCOMPARE(form.cBoxPrecision->count(), 2);
    QCOMPARE(form.cBoxPrecision->itemText(1), QStringLiteral("12 bit"));
    QCOMPARE(form.cBoxPrecision->currentIndex(), 0);
}

void TestDialogForm::slotsAreConnectedByNameAfterTheTexts()
{
    NamedSlots dialog;
    dialog.ui.setupUi(&dialog);
    QCOMPARE(dialog.values, QStringList());
    dialog.ui.pBSave->click();
    dialog.ui.lENormFFC->setText(QStringLiteral("2"));
    QCOMPARE(dialog.clicks, 1);
    QCOMPARE(dialog.values, QStringList{QStringLiteral("2")});
}

void TestDialogForm::dialogStartsWithItsSizeTitleAndIcon()
{
    DialogProbe dialog;
    QCOMPARE(dialog.objectName(), QStringLiteral("CFFCUtility"));
    QCOMPARE(dialog.size(), QSize(1174, 727));
    QCOMPARE(dialog.minimumSize(), QSize(746, 125));
    QCOMPARE(dialog.windowTitle(), QStringLiteral(" FFC Utility"));
    QVERIFY(!dialog.isModal());
    const QImage icon(QStringLiteral(":/FFCUtility/ZorIcon.png"));
    QCOMPARE(icon.size(), QSize(32, 32));
    QCOMPARE(dialog.windowIcon().pixmap(QSize(32, 32)).toImage().convertToFormat(QImage::Format_ARGB32),
             icon.convertToFormat(QImage::Format_ARGB32));
}

void TestDialogForm::anObjectNameGivenBeforeStays()
{
    QDialog dialog;
    dialog.setObjectName(QStringLiteral("mine"));
    Ui_CFFCUtility form;
    form.setupUi(&dialog);
    QCOMPARE(dialog.objectName(), QStringLiteral("mine"));
}

void TestDialogForm::stripHoldsItsRowInOrder()
{
    DialogProbe dialog;
    QHBoxLayout* row = dialog.ui.horizontalLayout;
    QCOMPARE(dialog.ui.wSettings->layout(), row);
    QCOMPARE(row->spacing(), 6);
    QCOMPARE(row->contentsMargins(), QMargins(2, 0, 2, 0));
    QCOMPARE(row->count(), int(std::size(RowNames)));
    QList<QSpacerItem*> spacers;
    for (int i = 0; i < row->count(); ++i) {
        QLayoutItem* item = row->itemAt(i);
        const QString name = RowNames[i];
        QCOMPARE(row->stretch(i), 0);
        QCOMPARE(item->alignment(), Qt::Alignment());
        QCOMPARE(item->widget() ? item->widget()->objectName() : QString(), name);
        if (name.isEmpty())
            spacers.append(item->spacerItem());
    }
    QCOMPARE(spacers, QList<QSpacerItem*>(
                          {dialog.ui.settingsSpacer1, dialog.ui.settingsSpacer2, dialog.ui.settingsSpacer3}));
    for (const QSpacerItem* spacer : qAsConst(spacers)) {
        QCOMPARE(spacer->sizeHint(), QSize(40, 20));
        QCOMPARE(spacer->sizePolicy().horizontalPolicy(), QSizePolicy::Expanding);
        QCOMPARE(spacer->sizePolicy().verticalPolicy(), QSizePolicy::Minimum);
    }
}

void TestDialogForm::stripStartsNarrowerThanTheDialog()
{
    DialogProbe dialog;
    const QWidget* strip = dialog.ui.wSettings;
    QCOMPARE(strip->pos(), QPoint(0, 680));
    QCOMPARE(strip->width(), 1131);
    QCOMPARE(strip->minimumHeight(), strip->sizeHint().height());
    QCOMPARE(strip->maximumHeight(), strip->sizeHint().height());

    QDialog bare;
    Ui_CFFCUtility form;
    form.setupUi(&bare);
    QCOMPARE(form.wSettings->geometry(), QRect(0, 680, 1131, 31));
}

void TestDialogForm::boxesHaveTheirStartStates()
{
    DialogProbe dialog;
    QVERIFY(dialog.ui.chBNormFFC->isChecked());
    QCOMPARE(dialog.ui.chBNormFFC->minimumSize(), QSize(104, 0));
    QVERIFY(!dialog.ui.chBShowY->isChecked());
    QVERIFY(!dialog.ui.chBHighlights->isChecked());
    QCOMPARE(dialog.ui.chBHighlights->minimumSize(), QSize(69, 0));
    QCOMPARE(dialog.ui.lENormFFC->inputMethodHints(), Qt::InputMethodHints(Qt::ImhDigitsOnly));
    QVERIFY(!dialog.ui.lENormFFC->validator());
}

void TestDialogForm::precisionOffersTwoItems()
{
    DialogProbe dialog;
    const QComboBox* box = dialog.ui.cBoxPrecision;
    QCOMPARE(box->count(), 2);
    QCOMPARE(box->itemText(0), QStringLiteral("8 bit"));
    QCOMPARE(box->itemText(1), QStringLiteral("12 bit"));
    QCOMPARE(box->currentIndex(), 0);
    const QSizePolicy policy = box->sizePolicy();
    QCOMPARE(policy.horizontalPolicy(), QSizePolicy::Preferred);
    QCOMPARE(policy.verticalPolicy(), QSizePolicy::Fixed);
    QCOMPARE(policy.horizontalStretch(), 0);
    QCOMPARE(policy.verticalStretch(), 0);
    QCOMPARE(policy.hasHeightForWidth(), QComboBox().sizePolicy().hasHeightForWidth());
}

void TestDialogForm::readoutsAreHiddenDisabledAndBlack_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("colour") << "lECurColor";
    QTest::newRow("position") << "lECurPos";
}

void TestDialogForm::readoutsAreHiddenDisabledAndBlack()
{
    QFETCH(QString, name);
    DialogProbe dialog;
    const auto* field = dialog.findChild<QLineEdit*>(name);
    QVERIFY(field->isHidden());
    QVERIFY(!field->isEnabled());
    QVERIFY(!field->isReadOnly());
    const QBrush black(QColor(0, 0, 0, 255), Qt::SolidPattern);
    for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        for (const auto role :
             {QPalette::WindowText, QPalette::Dark, QPalette::Mid, QPalette::Text, QPalette::ButtonText}) {
            QVERIFY(field->palette().isBrushSet(group, role));
            QCOMPARE(field->palette().brush(group, role), black);
        }
        QVERIFY(!field->palette().isBrushSet(group, QPalette::Base));
    }
}

void TestDialogForm::panesStartInTheirPlaces_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QRect>("geometry");
    QTest::addColumn<bool>("tracks");
    QTest::newRow("upper plot") << "PlotUp" << QRect(561, 0, 411, 333) << false;
    QTest::newRow("lower plot") << "PlotDown" << QRect(551, 338, 421, 333) << false;
    QTest::newRow("upper view") << "gVUp" << QRect(130, 60, 321, 231) << true;
    QTest::newRow("lower view") << "gVDown" << QRect(30, 370, 401, 211) << true;
}

void TestDialogForm::panesStartInTheirPlaces()
{
    QFETCH(QString, name);
    QFETCH(QRect, geometry);
    QFETCH(bool, tracks);
    QDialog dialog;
    Ui_CFFCUtility form;
    form.setupUi(&dialog);
    const auto* pane = dialog.findChild<QFrame*>(name);
    QCOMPARE(pane->geometry(), geometry);
    QCOMPARE(pane->frameShape(), QFrame::Box);
    QCOMPARE(pane->hasMouseTracking(), tracks);
}

void TestDialogForm::fiveSlotsInOrderAndNoSignal()
{
    const QMetaObject& meta = CFFCUtility::staticMetaObject;
    QCOMPARE(QByteArray(meta.superClass()->className()), QByteArray("QDialog"));
    QList<QByteArray> names;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        QCOMPARE(meta.method(i).methodType(), QMetaMethod::Slot);
        names.append(meta.method(i).methodSignature());
    }
    QCOMPARE(names, QList<QByteArray>({"ShowAll()", "Update()", "DoSaveFFC()", "highLightSlot()",
                                       "onViewChanged(DisplayView*)"}));
}

void TestDialogForm::slotArgumentIsAMetaType()
{
    const QMetaObject& meta = CFFCUtility::staticMetaObject;
    const QMetaMethod slot = meta.method(meta.indexOfSlot("onViewChanged(DisplayView*)"));
    QVERIFY(slot.isValid());
    QVERIFY(slot.parameterType(0) != QMetaType::UnknownType);
}

QTEST_MAIN(TestDialogForm)
#include "tst_dialog_form.moc"
