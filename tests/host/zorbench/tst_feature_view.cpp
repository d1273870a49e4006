#include "host/zorbench/FeatureView.h"
#include "tests/host/zorbench/Bench.h"
#include "tests/host/zorbench/CameraFeatures.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeView>
#include <QtTest>

#include <memory>

using zor::CameraFeature;
using zor::FeatureModel;
using zor::FeatureView;

/// How the operator sets features in their tree.
class TestFeatureView : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void numberIsWritten_data();
    void numberIsWritten();
    void choiceIsMade();
    void boxIsTurnedOver_data();
    void boxIsTurnedOver();
    void commandIsExecuted_data();
    void commandIsExecuted();
    void whatCanOnlyBeReadHasNoEditor();
    void lockedCommandHasNoUse();
    void visibilityIsThatOfTheOperator();
    void openRowsStayOpen();

private:
    QTreeView* tree() { return controlOf<QTreeView>(m_view.get(), "Features"); }
    /// The row of these words.
    QModelIndex row(const QString& label);
    /// Makes the row the current one and presses Return on it.
    void pressReturnOn(const QString& label);
    template <typename Editor> Editor* editor(const QString& label)
    {
        for (Editor* one : tree()->findChildren<Editor*>()) {
            if (one->accessibleName() == label)
                return one;
        }
        return nullptr;
    }

    std::unique_ptr<FeatureModel> m_model;
    std::unique_ptr<FeatureView> m_view;
};

void TestFeatureView::init()
{
    m_view.reset();
    m_model = std::make_unique<FeatureModel>();
    m_view = std::make_unique<FeatureView>(*m_model);
    m_view->resize(500, 500);
    m_view->show();
    m_model->update(someFeatures());
    tree()->expandAll();
}

QModelIndex TestFeatureView::row(const QString& label)
{
    for (QModelIndex one = tree()->model()->index(0, 0); one.isValid(); one = tree()->indexBelow(one)) {
        if (one.data() == label)
            return one;
    }
    return {};
}

void TestFeatureView::pressReturnOn(const QString& label)
{
    QVERIFY(row(label).isValid());
    tree()->setCurrentIndex(row(label));
    QTest::keyClick(tree(), Qt::Key_Return);
}

void TestFeatureView::numberIsWritten_data()
{
    QTest::addColumn<QString>("label");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QList<QVariantList>>("chosen");
    QTest::newRow("as it is") << "The Width"
                              << "1280" << QList<QVariantList>{{"Width", "1280"}};
    QTest::newRow("brought to a step") << "The Width"
                                       << "1290" << QList<QVariantList>{{"Width", "1280"}};
    QTest::newRow("brought into the range") << "The Gain"
                                            << "99" << QList<QVariantList>{{"Gain", "23.98"}};
    QTest::newRow("no number") << "The Gain"
                               << "" << QList<QVariantList>{};
    QTest::newRow("any text") << "The Name"
                              << "right 2" << QList<QVariantList>{{"Name", "right 2"}};
}

void TestFeatureView::numberIsWritten()
{
    QFETCH(QString, label);
    QFETCH(QString, text);
    QSignalSpy chosen(m_model.get(), &FeatureModel::chosen);
    const QString before = row(label).sibling(row(label).row(), 1).data(Qt::EditRole).toString();
    pressReturnOn(label);
    auto* line = editor<QLineEdit>(label);
    QVERIFY(line);
    QCOMPARE(line->text(), before);
    line->selectAll();
    QTest::keyClick(line, Qt::Key_Delete);
    QTest::keyClicks(line, text);
    QTest::keyClick(line, Qt::Key_Return);
    QCoreApplication::processEvents();
    QTEST(static_cast<const QList<QVariantList>&>(chosen), "chosen");
    // What is no value is not left behind either.
    tree()->setFocus();
    QCoreApplication::processEvents();
    QTEST(static_cast<const QList<QVariantList>&>(chosen), "chosen");
}

void TestFeatureView::choiceIsMade()
{
    QSignalSpy chosen(m_model.get(), &FeatureModel::chosen);
    pressReturnOn("The Format");
    auto* box = editor<QComboBox>("The Format");
    QVERIFY(box);
    QCOMPARE(box->count(), 2);
    QCOMPARE(box->currentText(), QString("Mono8"));
    QTest::keyClick(box, Qt::Key_Down);
    QCOMPARE(chosen, (QList<QVariantList>{{"Format", "Mono12"}}));
    // Chosen is chosen.
    QTRY_VERIFY(!editor<QComboBox>("The Format"));
}

void TestFeatureView::boxIsTurnedOver_data()
{
    QTest::addColumn<bool>("byMouse");
    QTest::newRow("by Return") << false;
    QTest::newRow("by a click") << true;
}

void TestFeatureView::boxIsTurnedOver()
{
    QFETCH(bool, byMouse);
    QSignalSpy chosen(m_model.get(), &FeatureModel::chosen);
    const auto turnOver = [&] {
        if (!byMouse) {
            pressReturnOn("The Reverse");
            return;
        }
        const QModelIndex value = row("The Reverse").sibling(row("The Reverse").row(), 1);
        QStyleOptionViewItem option;
        option.initFrom(tree());
        option.rect = tree()->visualRect(value);
        option.features = QStyleOptionViewItem::HasCheckIndicator;
        const QRect box =
            tree()->style()->subElementRect(QStyle::SE_ItemViewItemCheckIndicator, &option, tree());
        QTest::mouseClick(tree()->viewport(), Qt::LeftButton, {}, box.center());
    };
    turnOver();
    turnOver();
    QCOMPARE(chosen, (QList<QVariantList>{{"Reverse", "true"}, {"Reverse", "false"}}));
}

void TestFeatureView::commandIsExecuted_data()
{
    QTest::addColumn<int>("way");
    QTest::newRow("by its button") << 0;
    QTest::newRow("by Return") << 1;
    QTest::newRow("by a double click") << 2;
}

void TestFeatureView::commandIsExecuted()
{
    QFETCH(int, way);
    QSignalSpy executed(m_model.get(), &FeatureModel::executed);
    auto* button = editor<QPushButton>("The Reset");
    QVERIFY(button && button->isVisible());
    QCOMPARE(button->text(), QString("Execute"));
    const QPoint place = tree()->visualRect(row("The Reset")).center();
    if (way == 0)
        button->click();
    else if (way == 1)
        pressReturnOn("The Reset");
    else {
        QTest::mouseClick(tree()->viewport(), Qt::LeftButton, {}, place);
        QTest::mouseDClick(tree()->viewport(), Qt::LeftButton, {}, place);
    }
    QCOMPARE(executed, (QList<QVariantList>{{"Reset"}}));
    QCOMPARE(editor<QPushButton>("The Reset"), button);
}

void TestFeatureView::whatCanOnlyBeReadHasNoEditor()
{
    QSignalSpy chosen(m_model.get(), &FeatureModel::chosen);
    pressReturnOn("The Version");
    pressReturnOn("The Image");
    QVERIFY(tree()->findChildren<QLineEdit*>().isEmpty());
    QCOMPARE(chosen.count(), 0);
}

void TestFeatureView::lockedCommandHasNoUse()
{
    CameraFeature root = someFeatures();
    root.children[0].children[5].isWritable = false;
    m_model->update(root);
    auto* button = editor<QPushButton>("The Reset");
    QVERIFY(!button->isEnabled());
    QSignalSpy executed(m_model.get(), &FeatureModel::executed);
    pressReturnOn("The Reset");
    QCOMPARE(executed.count(), 0);
    m_model->update(someFeatures());
    QVERIFY(button->isEnabled());
}

void TestFeatureView::visibilityIsThatOfTheOperator()
{
    CameraFeature root = someFeatures();
    root.children[0].children[5].visibility = CameraFeature::Visibility::Guru;
    root.children[1].visibility = CameraFeature::Visibility::Expert;
    m_model->update({});
    m_model->update(root);
    tree()->expandAll();
    QVERIFY(!row("The Reset").isValid() && !row("The Device").isValid());
    QTRY_VERIFY(!editor<QPushButton>("The Reset"));
    m_view->setVisibility(CameraFeature::Visibility::Expert);
    QVERIFY(!row("The Reset").isValid() && row("The Device").isValid());
    m_view->setVisibility(CameraFeature::Visibility::Guru);
    QVERIFY(row("The Reset").isValid());
    QVERIFY(editor<QPushButton>("The Reset"));
    m_view->setVisibility(CameraFeature::Visibility::Beginner);
    QVERIFY(!row("The Reset").isValid());
}

void TestFeatureView::openRowsStayOpen()
{
    tree()->collapse(row("The Device"));
    CameraFeature root = someFeatures();
    root.children[0].children[0].value = "320";
    m_model->update(root);
    QVERIFY(tree()->isExpanded(row("The Image")));
    QVERIFY(!tree()->isExpanded(row("The Device")));
}

QTEST_MAIN(TestFeatureView)
#include "tst_feature_view.moc"
