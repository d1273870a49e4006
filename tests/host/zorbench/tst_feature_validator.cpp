#include "host/zorbench/FeatureValidator.h"
#include "tests/host/zorbench/CameraFeatures.h"

#include <QtTest>

using zor::CameraFeature;
using zor::FeatureValidator;
using Kind = CameraFeature::Kind;

/// What may be written for a numeric feature.
class TestFeatureValidator : public QObject
{
    Q_OBJECT

private slots:
    void textIsJudged_data();
    void textIsJudged();
};

void TestFeatureValidator::textIsJudged_data()
{
    QTest::addColumn<bool>("isWhole");
    QTest::addColumn<QStringList>("range"); // minimum, maximum, increment
    QTest::addColumn<QString>("text");
    QTest::addColumn<QValidator::State>("state");
    QTest::addColumn<QString>("fixed");
    const QValidator::State good = QValidator::Acceptable;
    const QValidator::State beginning = QValidator::Intermediate;
    const QValidator::State wrong = QValidator::Invalid;
    const QStringList steps{"10", "100", "8"};
    const QStringList none{"", "", ""};
    const QStringList gain{"-0.5", "23.98", ""};

    QTest::newRow("whole: the least") << true << steps << "10" << good << "10";
    QTest::newRow("whole: a step further") << true << steps << "18" << good << "18";
    QTest::newRow("whole: between two steps") << true << steps << "25" << beginning << "18";
    QTest::newRow("whole: too small") << true << steps << "9" << beginning << "10";
    QTest::newRow("whole: too large, down to the last step") << true << steps << "101" << beginning << "98";
    QTest::newRow("whole: the end between two steps") << true << steps << "100" << beginning << "98";
    QTest::newRow("whole: nothing yet") << true << steps << "" << beginning << "";
    QTest::newRow("whole: a sign") << true << steps << "-" << beginning << "-";
    QTest::newRow("whole: a fraction") << true << steps << "18.0" << wrong << "18.0";
    QTest::newRow("whole: a word") << true << steps << "ten" << wrong << "ten";
    QTest::newRow("whole: steps without a least") << true << QStringList{"", "", "4"} << "-6" << good << "-6";
    QTest::newRow("whole: largest of 64 bits")
        << true << none << "9223372036854775807" << good << "9223372036854775807";
    QTest::newRow("whole: more than 64 bits")
        << true << none << "9223372036854775808" << beginning << "9223372036854775808";
    QTest::newRow("whole: steps over all 64 bits")
        << true << QStringList{"-9223372036854775808", "9223372036854775807", "1000"} << "9223372036854775807"
        << beginning << "9223372036854775192";
    QTest::newRow("whole: no step of 0") << true << QStringList{"0", "9", "0"} << "7" << good << "7";

    QTest::newRow("any: inside") << false << gain << "3.25" << good << "3.25";
    QTest::newRow("any: the least") << false << gain << "-0.5" << good << "-0.5";
    QTest::newRow("any: with an exponent") << false << gain << "1e-3" << good << "0.001";
    QTest::newRow("any: too large") << false << gain << "24" << beginning << "23.98";
    QTest::newRow("any: too small") << false << gain << "-1" << beginning << "-0.5";
    QTest::newRow("any: an exponent to come") << false << gain << "1e" << beginning << "1e";
    QTest::newRow("any: a comma") << false << gain << "1,5" << wrong << "1,5";
    QTest::newRow("any: no number") << false << gain << "nan" << wrong << "nan";
    QTest::newRow("any: without limits") << false << none << "-1e300" << good << "-1e+300";
    QTest::newRow("any: steps do not count")
        << false << QStringList{"0", "1", "0.5"} << "0.3" << good << "0.3";
}

void TestFeatureValidator::textIsJudged()
{
    QFETCH(bool, isWhole);
    QFETCH(QStringList, range);
    QFETCH(QString, text);
    CameraFeature feature = featureOf(isWhole ? Kind::Integer : Kind::Float, "Number", "");
    feature.minimum = range[0].toStdString();
    feature.maximum = range[1].toStdString();
    feature.increment = range[2].toStdString();
    // Numbers of this locale have a comma; those of cameras have a point.
    QLocale::setDefault(QLocale(QLocale::German));
    const FeatureValidator validator(feature);
    int position = 0;
    QTEST(validator.validate(text, position), "state");
    validator.fixup(text);
    QFETCH(QString, fixed);
    QCOMPARE(text, fixed);
}

QTEST_MAIN(TestFeatureValidator)
#include "tst_feature_validator.moc"
