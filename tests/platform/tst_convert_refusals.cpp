#include "image/ZorImageConverter.h"
#include "image/ZorPixelTypeTable.h"
#include "tests/platform/EncodedImage.h"

#include <QtTest>

/// What the converter does not take: sources of every format that do not fit together, other targets.
class TestConvertRefusals : public QObject
{
    Q_OBJECT

private slots:
    void whatDoesNotFitTogetherIsRefused_data();
    void whatDoesNotFitTogetherIsRefused();
    void otherTargetsAreRefused_data() { whatDoesNotFitTogetherIsRefused_data(); }
    void otherTargetsAreRefused();
    void sizesAndCodesOutOfRangeAreRefused_data();
    void sizesAndCodesOutOfRangeAreRefused();
    void targetsOutsideTheTableAreRefused_data();
    void targetsOutsideTheTableAreRefused();
    void nullArgumentsAreRefused();
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
        {"a row as long as 32 bits can say", [](_ZorImage& record) { record.width = 0xFFFFFFFF; }},
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

using RecordChange = void (*)(_ZorImage&);
Q_DECLARE_METATYPE(RecordChange)

void TestConvertRefusals::sizesAndCodesOutOfRangeAreRefused_data()
{
    QTest::addColumn<RecordChange>("change");
    const auto add = [](const char* name, RecordChange change) { QTest::newRow(name) << change; };
    add("row 0", [](_ZorImage& image) { image.pixelType = 0x01080100; });
    add("the row after the last",
        [](_ZorImage& image) { image.pixelType = 0x01080100 | (ZorPixelTypeCount + 1); });
    add("row 255", [](_ZorImage& image) { image.pixelType = 0x010801FF; });
    add("code 0", [](_ZorImage& image) { image.pixelType = 0; });
    add("a mono row under other upper bytes", [](_ZorImage& image) { image.pixelType = 0x01100101; });
    add("pitch 0", [](_ZorImage& image) { image.pitch = 0; });
    add("a height that needs more than its bytes", [](_ZorImage& image) { image.height = 0xFFFFFFFF; });
    add("pitch times height above 32 bits", [](_ZorImage& image) {
        image.pitch = 0x80000000;
        image.height = 3;
        image.imageSize = 10;
    });
    add("a result row above 32 bits", [](_ZorImage& image) {
        image.width = image.pitch = image.imageSize = 0xFFFFFFFF;
        image.height = 1;
    });
    add("a result above 32 bits", [](_ZorImage& image) {
        image.width = image.pitch = 3;
        image.height = 0x40000000;
        image.imageSize = 0xC0000000;
    });
}

void TestConvertRefusals::sizesAndCodesOutOfRangeAreRefused()
{
    QFETCH(RecordChange, change);
    const GuardedBytes bytes(12 * 3 + 10);
    _ZorImage source = recordFor(zor::Mono8, 10, 4, 12, 12 * 3 + 10, bytes.data());
    QVERIFY(Converted(source, zor::Mono8).isDone());
    change(source);
    QVERIFY(Converted(source, zor::Mono8).isRefused());
}

void TestConvertRefusals::targetsOutsideTheTableAreRefused_data()
{
    QTest::addColumn<qulonglong>("target");
    QTest::newRow("code 0") << qulonglong(0);
    QTest::newRow("Mono8 with a bit above the 32") << qulonglong(0x101080101);
    QTest::newRow("Mono8's row under other upper bytes") << qulonglong(0x01100101);
}

void TestConvertRefusals::targetsOutsideTheTableAreRefused()
{
    QFETCH(qulonglong, target);
    std::vector<std::uint8_t> bytes(4);
    const _ZorImage source = recordFor(zor::Mono8, 2, 2, 2, 4, bytes.data());
    QVERIFY(Converted(source, static_cast<unsigned long>(target)).isRefused());
}

void TestConvertRefusals::nullArgumentsAreRefused()
{
    std::vector<std::uint8_t> bytes(4);
    const _ZorImage source = recordFor(zor::Mono8, 2, 2, 2, 4, bytes.data());
    _ZorImage other = {};
    _ZorImage* result = &other;
    QVERIFY(ZimConvert(nullptr, zor::Mono8, &result) != 0);
    QVERIFY(result == nullptr);
    QVERIFY(ZimConvert(&source, zor::Mono8, nullptr) != 0);
}

QTEST_APPLESS_MAIN(TestConvertRefusals)
#include "tst_convert_refusals.moc"
