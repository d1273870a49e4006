#include "host/zorbench/FeatureFilter.h"
#include "host/zorbench/FeatureModel.h"
#include "tests/host/zorbench/CameraFeatures.h"

#include <QAbstractItemModelTester>
#include <QtTest>

using zor::CameraFeature;
using zor::FeatureFilter;
using zor::FeatureModel;
using Visibility = CameraFeature::Visibility;

namespace {

/// The value of a row, by the words beside it; invalid when there is none.
QModelIndex valueOf(const QAbstractItemModel& model, const QString& label, const QModelIndex& under = {})
{
    for (int row = 0; row < model.rowCount(under); ++row) {
        const QModelIndex name = model.index(row, FeatureModel::NameColumn, under);
        if (name.data() == label)
            return name.sibling(row, FeatureModel::ValueColumn);
        const QModelIndex found = valueOf(model, label, name);
        if (found.isValid())
            return found;
    }
    return {};
}

/// The words of all rows, categories before what is in them.
QStringList labelsOf(const QAbstractItemModel& model, const QModelIndex& under = {})
{
    QStringList labels;
    for (int row = 0; row < model.rowCount(under); ++row) {
        const QModelIndex name = model.index(row, FeatureModel::NameColumn, under);
        labels.append(name.data().toString());
        labels.append(labelsOf(model, name));
    }
    return labels;
}

} // namespace

/// The tree of a camera's features as a view sees it.
class TestFeatureModel : public QObject
{
    Q_OBJECT

private slots:
    void rowsAreTheFeatures();
    void modelKeepsTheRulesOfModels();
    void valueIsShownByItsKind_data();
    void valueIsShownByItsKind();
    void whatCannotBeSetIsGrey_data();
    void whatCannotBeSetIsGrey();
    void toolTipSaysWhatTheCameraSays();
    void settingIsPassedOn_data();
    void settingIsPassedOn();
    void sameValueIsNotSet();
    void commandIsExecutedEachTime();
    void valuesChangeInTheirRows();
    void settingThatWasNotTakenGoesBack();
    void otherFeaturesMakeOtherRows_data();
    void otherFeaturesMakeOtherRows();
    void onlyFeaturesOfTheVisibilityAreShown_data();
    void onlyFeaturesOfTheVisibilityAreShown();
};

void TestFeatureModel::rowsAreTheFeatures()
{
    FeatureModel model;
    QCOMPARE(model.rowCount(), 0);
    model.update(someFeatures());
    QCOMPARE(labelsOf(model), (QStringList{"The Image", "The Width", "The Gain", "The Reverse", "The Format",
                                           "The Name", "The Reset", "The Device", "The Version"}));
    QCOMPARE(model.columnCount(), 2);
    QCOMPARE(model.headerData(0, Qt::Horizontal, Qt::DisplayRole).toString(), QString("Feature"));
    QCOMPARE(model.headerData(1, Qt::Horizontal, Qt::DisplayRole).toString(), QString("Value"));
    QVERIFY(!model.headerData(0, Qt::Vertical, Qt::DisplayRole).isValid());
    const QModelIndex width = valueOf(model, "The Width");
    QCOMPARE(model.feature(width).name, std::string("Width"));
    QVERIFY(model.feature(model.index(0, 0)).children.empty());
    QCOMPARE(model.data(width, FeatureModel::FeatureRole).value<const CameraFeature*>(),
             &model.feature(width));
}

void TestFeatureModel::modelKeepsTheRulesOfModels()
{
    FeatureModel model;
    QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
    model.update(someFeatures());
    CameraFeature changed = someFeatures();
    changed.children[0].children[1].value = "2";
    model.update(changed);
    model.update({});
    QCOMPARE(model.rowCount(), 0);
}

void TestFeatureModel::valueIsShownByItsKind_data()
{
    QTest::addColumn<QString>("label");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<QVariant>("checked");
    QTest::addColumn<QString>("spoken");
    QTest::newRow("a number with its unit") << "The Width"
                                            << "640 px" << QVariant() << "";
    QTest::newRow("a number without a unit") << "The Gain"
                                             << "1.5" << QVariant() << "";
    QTest::newRow("a choice") << "The Format"
                              << "Mono8" << QVariant() << "";
    QTest::newRow("a text") << "The Name"
                            << "left" << QVariant() << "";
    QTest::newRow("a box that is off") << "The Reverse"
                                       << "" << QVariant(Qt::Unchecked) << "off";
    QTest::newRow("a box that is on") << "The Mirror"
                                      << "" << QVariant(Qt::Checked) << "on";
    QTest::newRow("a command") << "The Reset"
                               << "" << QVariant() << "";
    QTest::newRow("a category") << "The Image"
                                << "" << QVariant() << "";
    QTest::newRow("not available") << "The Zoom"
                                   << "not available" << QVariant() << "";
    QTest::newRow("a box that is not available") << "The Lamp"
                                                 << "not available" << QVariant() << "";
    QTest::newRow("a unit without a number") << "The Heat"
                                             << "" << QVariant() << "";
}

void TestFeatureModel::valueIsShownByItsKind()
{
    using Kind = CameraFeature::Kind;
    QFETCH(QString, label);
    CameraFeature root = someFeatures();
    std::vector<CameraFeature>& rows = root.children[1].children;
    rows.push_back(featureOf(Kind::Boolean, "Mirror", "true"));
    rows.push_back(featureOf(Kind::Integer, "Zoom", ""));
    rows.back().isAvailable = false;
    rows.push_back(featureOf(Kind::Boolean, "Lamp", ""));
    rows.back().isAvailable = false;
    rows.push_back(featureOf(Kind::Float, "Heat", ""));
    rows.back().unit = "C";
    FeatureModel model;
    model.update(root);
    const QModelIndex value = valueOf(model, label);
    QVERIFY(value.isValid());
    QTEST(value.data().toString(), "shown");
    QFETCH(QVariant, checked);
    QCOMPARE(value.data(Qt::CheckStateRole), checked.isValid() ? QVariant(checked.toInt()) : QVariant());
    QTEST(value.data(Qt::AccessibleTextRole).toString(), "spoken");
    // The words beside the value have none of it.
    QVERIFY(!value.sibling(value.row(), FeatureModel::NameColumn).data(Qt::CheckStateRole).isValid());
}

void TestFeatureModel::whatCannotBeSetIsGrey_data()
{
    QTest::addColumn<bool>("isAvailable");
    QTest::addColumn<bool>("isWritable");
    QTest::addColumn<bool>("isNameGrey");
    QTest::addColumn<bool>("isValueGrey");
    QTest::newRow("can be set") << true << true << false << false;
    QTest::newRow("can only be read") << true << false << false << true;
    QTest::newRow("is not available") << false << true << true << true;
}

void TestFeatureModel::whatCannotBeSetIsGrey()
{
    QFETCH(bool, isAvailable);
    QFETCH(bool, isWritable);
    CameraFeature root = someFeatures();
    for (CameraFeature& one : root.children[0].children) {
        one.isAvailable = isAvailable;
        one.isWritable = isWritable;
    }
    FeatureModel model;
    model.update(root);
    QSignalSpy chosen(&model, &FeatureModel::chosen);
    QSignalSpy executed(&model, &FeatureModel::executed);
    for (const char* label :
         {"The Width", "The Gain", "The Reverse", "The Format", "The Name", "The Reset"}) {
        const QModelIndex value = valueOf(model, label);
        const QModelIndex name = value.sibling(value.row(), FeatureModel::NameColumn);
        QTEST(!name.flags().testFlag(Qt::ItemIsEnabled), "isNameGrey");
        QTEST(!value.flags().testFlag(Qt::ItemIsEnabled), "isValueGrey");
        const bool isBox = QString(label) == "The Reverse";
        const bool canBeSet = isAvailable && isWritable;
        QCOMPARE(value.flags().testFlag(Qt::ItemIsEditable), canBeSet && !isBox);
        QCOMPARE(value.flags().testFlag(Qt::ItemIsUserCheckable), canBeSet && isBox);
        QVERIFY(!name.flags().testFlag(Qt::ItemIsEditable));
        QVERIFY(value.flags().testFlag(Qt::ItemIsSelectable));
        QCOMPARE(model.setData(value, isBox ? QVariant(Qt::Checked) : QVariant("1"),
                               isBox ? Qt::CheckStateRole : Qt::EditRole),
                 canBeSet);
        QVERIFY(!model.setData(name, "1", Qt::EditRole));
    }
    QCOMPARE(chosen.count(), isAvailable && isWritable ? 5 : 0);
    QCOMPARE(executed.count(), isAvailable && isWritable ? 1 : 0);
}

void TestFeatureModel::toolTipSaysWhatTheCameraSays()
{
    FeatureModel model;
    model.update(someFeatures());
    const QModelIndex width = valueOf(model, "The Width");
    const QString words(
        "<p>Columns, &lt;at most&gt; 4096</p><p>from 16 to 4096 px in steps of 16</p><p>Width</p>");
    QCOMPARE(width.data(Qt::ToolTipRole).toString(), words);
    QCOMPARE(width.sibling(width.row(), 0).data(Qt::ToolTipRole).toString(), words);
    QCOMPARE(valueOf(model, "The Name").data(Qt::ToolTipRole).toString(), QString("<p>Name</p>"));
}

void TestFeatureModel::settingIsPassedOn_data()
{
    QTest::addColumn<QString>("label");
    QTest::addColumn<int>("role");
    QTest::addColumn<QVariant>("to");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("value");
    QTest::newRow("a number") << "The Width" << int(Qt::EditRole) << QVariant("1280") << "Width"
                              << "1280";
    QTest::newRow("a choice") << "The Format" << int(Qt::EditRole) << QVariant("Mono12") << "Format"
                              << "Mono12";
    QTest::newRow("a text") << "The Name" << int(Qt::EditRole) << QVariant(QString::fromUtf8("\u00fcber"))
                            << "Name" << QString::fromUtf8("\u00fcber");
    QTest::newRow("a box") << "The Reverse" << int(Qt::CheckStateRole) << QVariant(Qt::Checked) << "Reverse"
                           << "true";
}

void TestFeatureModel::settingIsPassedOn()
{
    QFETCH(QString, label);
    QFETCH(int, role);
    QFETCH(QVariant, to);
    QFETCH(QString, name);
    QFETCH(QString, value);
    FeatureModel model;
    model.update(someFeatures());
    QSignalSpy chosen(&model, &FeatureModel::chosen);
    QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
    const QModelIndex index = valueOf(model, label);
    QVERIFY(model.setData(index, to, role));
    QCOMPARE(chosen.count(), 1);
    QCOMPARE(chosen[0], (QVariantList{name, value}));
    // It shows at once.
    QCOMPARE(changed.count(), 1);
    QCOMPARE(index.data(Qt::EditRole).toString(), value);
    QVERIFY(!model.setData(index, to, Qt::UserRole + 1));
}

void TestFeatureModel::sameValueIsNotSet()
{
    FeatureModel model;
    model.update(someFeatures());
    QSignalSpy chosen(&model, &FeatureModel::chosen);
    QVERIFY(model.setData(valueOf(model, "The Width"), "640", Qt::EditRole));
    QVERIFY(model.setData(valueOf(model, "The Reverse"), Qt::Unchecked, Qt::CheckStateRole));
    QCOMPARE(chosen.count(), 0);
}

void TestFeatureModel::commandIsExecutedEachTime()
{
    FeatureModel model;
    model.update(someFeatures());
    QSignalSpy executed(&model, &FeatureModel::executed);
    QSignalSpy chosen(&model, &FeatureModel::chosen);
    const QModelIndex reset = valueOf(model, "The Reset");
    QVERIFY(model.setData(reset, {}, Qt::EditRole));
    QVERIFY(model.setData(reset, {}, Qt::EditRole));
    QCOMPARE(executed, (QList<QVariantList>{{"Reset"}, {"Reset"}}));
    QCOMPARE(chosen.count(), 0);
}

void TestFeatureModel::valuesChangeInTheirRows()
{
    FeatureModel model;
    model.update(someFeatures());
    const QPersistentModelIndex gain = valueOf(model, "The Gain");
    QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
    QSignalSpy reset(&model, &QAbstractItemModel::modelReset);
    CameraFeature now = someFeatures();
    model.update(now);
    QCOMPARE(changed.count(), 0);
    now.children[0].children[1].value = "3.25";
    model.update(now);
    // Only what has changed, whose editor may be open.
    QCOMPARE(changed.count(), 1);
    QCOMPARE(changed[0][0].toModelIndex(), gain.sibling(gain.row(), 0));
    QCOMPARE(changed[0][1].toModelIndex(), QModelIndex(gain));
    QCOMPARE(gain.data().toString(), QString("3.25"));
    now.children[0].children[1].maximum = "12";
    model.update(now);
    QCOMPARE(changed.count(), 2);
    QCOMPARE(reset.count(), 0);
    QCOMPARE(labelsOf(model).size(), 9);
}

void TestFeatureModel::settingThatWasNotTakenGoesBack()
{
    FeatureModel model;
    model.update(someFeatures());
    const QModelIndex width = valueOf(model, "The Width");
    QVERIFY(model.setData(width, "4096", Qt::EditRole));
    model.update(someFeatures());
    QCOMPARE(width.data().toString(), QString("640 px"));
}

void TestFeatureModel::otherFeaturesMakeOtherRows_data()
{
    QTest::addColumn<int>("change");
    QTest::newRow("another name") << 0;
    QTest::newRow("another kind") << 1;
    QTest::newRow("one less") << 2;
    QTest::newRow("one more") << 3;
}

void TestFeatureModel::otherFeaturesMakeOtherRows()
{
    QFETCH(int, change);
    CameraFeature other = someFeatures();
    std::vector<CameraFeature>& rows = other.children[0].children;
    if (change == 0)
        rows[0].name = "Height";
    else if (change == 1)
        rows[0].kind = CameraFeature::Kind::Float;
    else if (change == 2)
        rows.pop_back();
    else
        rows.push_back(rows[0]);
    FeatureModel model;
    model.update(someFeatures());
    QSignalSpy reset(&model, &QAbstractItemModel::modelReset);
    model.update(other);
    QCOMPARE(reset.count(), 1);
    QCOMPARE(labelsOf(model).size(), 2 + static_cast<int>(rows.size()) + 1);
}

void TestFeatureModel::onlyFeaturesOfTheVisibilityAreShown_data()
{
    QTest::addColumn<int>("highest");
    QTest::addColumn<QStringList>("labels");
    const QStringList beginner{"The Image",  "The Width", "The Reverse",
                               "The Format", "The Name",  "The Reset"};
    QTest::newRow("beginner") << int(Visibility::Beginner) << beginner;
    QStringList expert = beginner;
    expert.insert(2, "The Gain");
    QTest::newRow("expert") << int(Visibility::Expert) << expert;
    QTest::newRow("guru") << int(Visibility::Guru) << expert + QStringList{"The Device", "The Version"};
}

void TestFeatureModel::onlyFeaturesOfTheVisibilityAreShown()
{
    QFETCH(int, highest);
    CameraFeature root = someFeatures();
    root.children[0].children[1].visibility = Visibility::Expert;
    root.children[1].children[0].visibility = Visibility::Guru;
    root.children.push_back(categoryOf("Empty", {}));
    root.children.push_back(categoryOf("Secrets", {featureOf(CameraFeature::Kind::Text, "Key", "k")}));
    root.children.back().visibility = static_cast<Visibility>(3);
    FeatureModel model;
    FeatureFilter filter;
    QAbstractItemModelTester tester(&filter, QAbstractItemModelTester::FailureReportingMode::Fatal);
    filter.setSourceModel(&model);
    model.update(root);
    filter.setVisibility(static_cast<Visibility>(highest));
    QTEST(labelsOf(filter), "labels");
}

QTEST_MAIN(TestFeatureModel)
#include "tst_feature_model.moc"
