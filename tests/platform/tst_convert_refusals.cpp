#include "tests/platform/EncodedImage.h"

#include <QtTest>

/// Sources of every format that do not fit together.
class TestConvertRefusals : public QObject
{
    Q_OBJECT

private slots:
    void whatDoesNotFitTogetherIsRefused_data();
    void whatDoesNotFitTogetherIsRefused();
    void otherTargetsAreRefused_data() { whatDoesNotFitTogetherIsRefused_data(); }
    void otherTargetsAreRefused();
};

namespace {

const reference::PixelFormat& fetchedFormat()
{
    QFETCH(int, format);
    return reference::pixelFormats()[std::size_t(format)];
}

} // namespace

void TestConvertRefusals::whatDoesNotFitTogetherIsRefused_data()
{
    QTest::addColumn<int>("format");
    for (int i = 0; i < int(reference::pixelFormats().size()); ++i)
        QTest::newRow(reference::pixelFormats()[std::size_t(i)].name.c_str()) << i;
}

void TestConvertRefusals::whatDoesNotFitTogetherIsRefused()
{
    const EncodedImage image(fetchedFormat(), 5, 3, [](char, std::uint32_t, std::uint32_t) { return 1U; });
    QVERIFY(Converted(image.record(), MonoTargets[0].code).isDone());
    struct
    {
        const char* what;
        std::function<void(_ZorImage&)> change;
    } const faults[] = {
        {"a pitch one byte short", [](_ZorImage& record) { --record.pitch; }},
        {"an imageSize one byte short", [](_ZorImage& record) { --record.imageSize; }},
        {"an imageSize of 0", [](_ZorImage& record) { record.imageSize = 0; }},
        {"one line more", [](_ZorImage& record) { ++record.height; }},
        {"two columns more", [](_ZorImage& record) { record.width += 2; }},
        {"a width of 0", [](_ZorImage& record) { record.width = 0; }},
        {"a height of 0", [](_ZorImage& record) { record.height = 0; }},
        {"no pixels", [](_ZorImage& record) { record.data = nullptr; }},
        {"signed samples", [](_ZorImage& record) { record.isSigned = 1; }},
        {"another packing", [](_ZorImage& record) { record.packing ^= 0x0400; }},
        {"other pixel bits", [](_ZorImage& record) { ++record.pixelBits; }},
        {"another family in the code", [](_ZorImage& record) { record.pixelType ^= 0x07000000; }},
        {"other pixel bits in code and record",
         [](_ZorImage& record) {
             record.pixelType ^= 0x00010000;
             record.pixelBits ^= 1;
         }},
        {"a line as long as 32 bits tell", [](_ZorImage& record) { record.width = 0xFFFFFFFF; }},
    };
    for (const auto& fault : faults) {
        _ZorImage record = image.record();
        fault.change(record);
        QVERIFY2(Converted(record, MonoTargets[0].code).isRefused(), fault.what);
    }
}

void TestConvertRefusals::otherTargetsAreRefused()
{
    const EncodedImage image(fetchedFormat(), 5, 3, [](char, std::uint32_t, std::uint32_t) { return 1U; });
    for (const reference::PixelFormat& target : reference::pixelFormats()) {
        const bool isMade = std::any_of(std::begin(MonoTargets), std::end(MonoTargets),
                                        [&](const MonoTarget& made) { return made.code == target.code; });
        const Converted result(image.record(), target.code);
        QVERIFY2(isMade ? result.isDone() : result.isRefused(), target.name.c_str());
    }
}

QTEST_APPLESS_MAIN(TestConvertRefusals)
#include "tst_convert_refusals.moc"
