#include "host/average/CaptureSettings.h"
#include "host/average/KeptFrame.h"
#include "tests/support/FormatCodes.h"

#include <QtTest>

using namespace zor;

/// What frames have in common, and a frame that is kept while that is so.
class TestCaptureSettings : public QObject
{
    Q_OBJECT

private slots:
    void theFirstDifferenceIsSaid_data();
    void theFirstDifferenceIsSaid();
    void aFrameHasASizeAndAFormat();
    void aKeptFrameGoesWithItsSettings_data();
    void aKeptFrameGoesWithItsSettings();
    void aKeptFrameStaysWhileNothingDiffers();
    void whereNoFrameIsKeptNoneIsDropped();
};

namespace {

constexpr CaptureSettings Before{640, 480, Mono8, 10000.0, 1.5};

} // namespace

Q_DECLARE_METATYPE(zor::CaptureSettings)

void TestCaptureSettings::theFirstDifferenceIsSaid_data()
{
    QTest::addColumn<CaptureSettings>("before");
    QTest::addColumn<CaptureSettings>("now");
    QTest::addColumn<QString>("difference");
    const auto row = [](const char* name, const CaptureSettings& before, const CaptureSettings& now,
                        const char* difference) {
        QTest::newRow(name) << before << now << QString::fromUtf8(difference);
    };
    const CaptureSettings bare{640, 480, Mono8, {}, {}};
    row("none", Before, Before, "");
    row("none where the source says little", bare, bare, "");
    row("the width", Before, {641, 480, Mono8, 10000.0, 1.5},
        "the size is 641 x 480 pixels and was 640 x 480 pixels");
    row("the height", Before, {640, 481, Mono8, 10000.0, 1.5},
        "the size is 640 x 481 pixels and was 640 x 480 pixels");
    row("the format", Before, {640, 480, Mono12, 10000.0, 1.5}, "the pixel format is Mono12 and was Mono8");
    row("an unknown format", Before, {640, 480, 7, 10000.0, 1.5},
        "the pixel format is the unknown code 7 and was Mono8");
    row("the exposure time", Before, {640, 480, Mono8, 20000.0, 1.5},
        "the exposure time is 20000 µs and was 10000 µs");
    row("the gain", Before, {640, 480, Mono8, 10000.0, 2.0}, "the gain is 2 and was 1.5");
    row("all: the first is said", Before, {1, 2, Mono16, 1.0, 1.0},
        "the size is 1 x 2 pixels and was 640 x 480 pixels");
    row("format, exposure time and gain", Before, {640, 480, Mono16, 1.0, 1.0},
        "the pixel format is Mono16 and was Mono8");
    row("exposure time and gain", Before, {640, 480, Mono8, 1.0, 1.0},
        "the exposure time is 1 µs and was 10000 µs");
    row("an exposure time that was not known", bare, {640, 480, Mono8, 100.0, {}},
        "the exposure time is 100 µs and was not known");
    row("a gain that is not known any more", {640, 480, Mono8, {}, 0.0}, bare,
        "the gain is not known and was 0");
    row("a difference in the last digit shows", Before, {640, 480, Mono8, 10000.000000000002, 1.5},
        "the exposure time is 10000.000000000002 µs and was 10000 µs");
    row("no exponents", {1, 1, Mono8, 1e21, {}}, {1, 1, Mono8, 1e-7, {}},
        "the exposure time is 0.0000001 µs and was 1000000000000000000000 µs");
}

void TestCaptureSettings::theFirstDifferenceIsSaid()
{
    QFETCH(CaptureSettings, before);
    QFETCH(CaptureSettings, now);
    QFETCH(QString, difference);
    QCOMPARE(QString::fromStdString(firstDifference(now, before)), difference);
    QCOMPARE(now == before, difference.isEmpty());
    QCOMPARE(now != before, !difference.isEmpty());
}

void TestCaptureSettings::aFrameHasASizeAndAFormat()
{
    Frame frame;
    frame.width = 3;
    frame.height = 2;
    frame.pixelType = Mono12;
    QVERIFY((settingsOf(frame) == CaptureSettings{3, 2, Mono12, {}, {}}));
}

void TestCaptureSettings::aKeptFrameGoesWithItsSettings_data()
{
    QTest::addColumn<CaptureSettings>("now");
    QTest::newRow("size") << CaptureSettings{640, 400, Mono8, 10000.0, 1.5};
    QTest::newRow("format") << CaptureSettings{640, 480, Mono12, 10000.0, 1.5};
    QTest::newRow("exposure time") << CaptureSettings{640, 480, Mono8, 5000.0, 1.5};
    QTest::newRow("gain") << CaptureSettings{640, 480, Mono8, 10000.0, {}};
}

void TestCaptureSettings::aKeptFrameGoesWithItsSettings()
{
    QFETCH(CaptureSettings, now);
    const auto frame = std::make_shared<const Frame>();
    KeptFrame kept;
    kept.keep(frame, Before);
    QCOMPARE(kept.follow(now), firstDifference(now, Before));
    QVERIFY(!kept.frame());
    // It is said once.
    QCOMPARE(kept.follow(now), std::string());
}

void TestCaptureSettings::aKeptFrameStaysWhileNothingDiffers()
{
    const auto frame = std::make_shared<const Frame>();
    KeptFrame kept;
    kept.keep(std::make_shared<const Frame>(), {1, 1, Mono8, {}, {}});
    kept.keep(frame, Before);
    QCOMPARE(kept.follow(Before), std::string());
    QCOMPARE(kept.frame(), frame);
    kept.drop();
    QVERIFY(!kept.frame());
}

void TestCaptureSettings::whereNoFrameIsKeptNoneIsDropped()
{
    KeptFrame kept;
    QVERIFY(!kept.frame());
    QCOMPARE(kept.follow(Before), std::string());
}

QTEST_APPLESS_MAIN(TestCaptureSettings)
#include "tst_capture_settings.moc"
