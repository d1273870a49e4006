#include "image/ZorImageApi.h"
#include "tests/support/FormatCodes.h"
#include "tests/support/RecordOf.h"

#include <QtTest>

#include <cstring>
#include <vector>

/// Making, cloning and giving back image records.
class TestImageApi : public QObject
{
    Q_OBJECT

private slots:
    void aHeaderHasGeometryAndFormatButNoPixels();
    void aHeaderKeepsAnUnknownCode();
    void aHeaderReplacesNothingButTheSlot();
    void releasingNothingIsAllowed();
    void aReleaseNullsTheSlot();
    void aCloneIsAFullCopyWithItsOwnPixels();
    void aCloneHasSpareBytesAfterItsPixels();
    void aFilledSlotIsUsedAgainOrReleased_data();
    void aFilledSlotIsUsedAgainOrReleased();
    void anImageWithoutAreaIsCloned_data();
    void anImageWithoutAreaIsCloned();
    void aCloneOfTheSlotsOwnRecordIsItself();
    void aCloneThatFailsNullsTheSlot();
};

namespace {

_ZorImage filledRecord(std::vector<std::uint8_t>& pixels)
{
    _ZorImage record = recordOf(zor::Mono8, 3, 2, 4, pixels);
    record.reserved32 = 0x11;
    record.sizePadding = 0x22;
    record.reserved56[0] = 0x33;
    record.reserved56[2] = 0x44;
    record.reserved88 = 0x55;
    return record;
}

} // namespace

void TestImageApi::aHeaderHasGeometryAndFormatButNoPixels()
{
    _ZorImage* header = nullptr;
    QCOMPARE(ZorCreateImageHeader(&header, std::uint64_t{1040} << 32 | 1392, Mono12p, 0, 0, 0), 0);
    QVERIFY(header != nullptr);
    _ZorImage expected = {};
    expected.recordSize = 96;
    expected.recordVersion = 0x20000;
    expected.pixelType = Mono12p;
    expected.depth = 10;
    expected.packing = 0x2300;
    expected.channels = 1;
    expected.pixelBits = 12;
    expected.width = 1392;
    expected.height = 1040;
    QCOMPARE(std::memcmp(header, &expected, sizeof(expected)), 0);
    QCOMPARE(ZorReleaseImageHeader(&header), 0);
}

void TestImageApi::aHeaderKeepsAnUnknownCode()
{
    _ZorImage* header = nullptr;
    QCOMPARE(ZorCreateImageHeader(&header, 0xFFFFFFFFFFFFFFFF, 0x010801FF, 0, 0, 0), 0);
    QCOMPARE(header->pixelType, 0x010801FFU);
    QCOMPARE(header->depth, 0U);
    QCOMPARE(header->width, 0xFFFFFFFFU);
    QCOMPARE(header->height, 0xFFFFFFFFU);
    ZorReleaseImageHeader(&header);
}

void TestImageApi::aHeaderReplacesNothingButTheSlot()
{
    _ZorImage old = {};
    _ZorImage* header = &old;
    QCOMPARE(ZorCreateImageHeader(&header, 1, zor::Mono8, 0, 0, 0), 0);
    QVERIFY(header != &old);
    ZorReleaseImageHeader(&header);
    QVERIFY(ZorCreateImageHeader(nullptr, 1, zor::Mono8, 0, 0, 0) != 0);
}

void TestImageApi::releasingNothingIsAllowed()
{
    _ZorImage* nothing = nullptr;
    QCOMPARE(ZorReleaseImageHeader(&nothing), 0);
    QCOMPARE(ZorReleaseImageHeader(nullptr), 0);
    QCOMPARE(ZorReleaseImage(&nothing), 0);
    QCOMPARE(ZorReleaseImage(nullptr), 0);
    QVERIFY(nothing == nullptr);
}

void TestImageApi::aReleaseNullsTheSlot()
{
    _ZorImage* header = nullptr;
    QCOMPARE(ZorCreateImageHeader(&header, 1, zor::Mono8, 0, 0, 0), 0);
    QCOMPARE(ZorReleaseImageHeader(&header), 0);
    QVERIFY(header == nullptr);

    std::vector<std::uint8_t> pixels(8);
    const _ZorImage source = filledRecord(pixels);
    _ZorImage* clone = nullptr;
    QCOMPARE(ZorCloneImage(&clone, &source), 0);
    QCOMPARE(ZorReleaseImage(&clone), 0);
    QVERIFY(clone == nullptr);
}

void TestImageApi::aCloneIsAFullCopyWithItsOwnPixels()
{
    std::vector<std::uint8_t> pixels = {1, 2, 3, 4, 5, 6, 7, 8};
    const _ZorImage source = filledRecord(pixels);
    _ZorImage* clone = nullptr;
    QCOMPARE(ZorCloneImage(&clone, &source), 0);
    QVERIFY(clone != nullptr && clone != &source);
    QVERIFY(clone->data != nullptr && clone->data != source.data);
    QCOMPARE(std::memcmp(clone->data, pixels.data(), pixels.size()), 0);
    _ZorImage expected = source;
    expected.data = clone->data;
    QCOMPARE(std::memcmp(clone, &expected, sizeof(expected)), 0);
    clone->data[0] = 99;
    QCOMPARE(int(pixels[0]), 1);
    ZorReleaseImage(&clone);
}

void TestImageApi::aCloneHasSpareBytesAfterItsPixels()
{
    std::vector<std::uint8_t> pixels(8, 0xFF);
    const _ZorImage source = filledRecord(pixels);
    _ZorImage* clone = nullptr;
    QCOMPARE(ZorCloneImage(&clone, &source), 0);
    for (int i = 0; i < 16; ++i) {
        QCOMPARE(int(clone->data[8 + i]), 0);
        clone->data[8 + i] = 0xAA;
    }
    ZorReleaseImage(&clone);
}

void TestImageApi::aFilledSlotIsUsedAgainOrReleased_data()
{
    QTest::addColumn<int>("firstSize");
    QTest::addColumn<int>("secondSize");
    QTest::newRow("same size") << 8 << 8;
    QTest::newRow("a larger image") << 8 << 9000;
    QTest::newRow("a smaller image") << 9000 << 8;
    QTest::newRow("to no pixels") << 8 << 0;
    QTest::newRow("from no pixels") << 0 << 8;
}

void TestImageApi::aFilledSlotIsUsedAgainOrReleased()
{
    QFETCH(int, firstSize);
    QFETCH(int, secondSize);
    std::vector<std::uint8_t> first(std::size_t(firstSize), 1);
    std::vector<std::uint8_t> second(std::size_t(secondSize), 2);
    _ZorImage* clone = nullptr;
    const _ZorImage firstSource = filledRecord(first);
    QCOMPARE(ZorCloneImage(&clone, &firstSource), 0);
    const _ZorImage secondSource = filledRecord(second);
    QCOMPARE(ZorCloneImage(&clone, &secondSource), 0);
    QCOMPARE(clone->imageSize, std::uint32_t(secondSize));
    for (int i = 0; i < secondSize; ++i)
        QCOMPARE(int(clone->data[i]), 2);
    ZorReleaseImage(&clone);
}

void TestImageApi::anImageWithoutAreaIsCloned_data()
{
    QTest::addColumn<quint32>("width");
    QTest::addColumn<quint32>("height");
    QTest::addColumn<bool>("pixels");
    QTest::newRow("width 0") << 0U << 2U << true;
    QTest::newRow("height 0") << 3U << 0U << true;
    QTest::newRow("a header without pixels") << 3U << 2U << false;
}

void TestImageApi::anImageWithoutAreaIsCloned()
{
    QFETCH(quint32, width);
    QFETCH(quint32, height);
    QFETCH(bool, pixels);
    std::vector<std::uint8_t> bytes(8, 7);
    _ZorImage source = filledRecord(bytes);
    source.width = width;
    source.height = height;
    if (!pixels) {
        source.data = nullptr;
        source.imageSize = 0;
    }
    _ZorImage* clone = nullptr;
    QCOMPARE(ZorCloneImage(&clone, &source), 0);
    QCOMPARE(clone->width, width);
    QCOMPARE(clone->height, height);
    QCOMPARE(clone->imageSize, source.imageSize);
    QCOMPARE(clone->data != nullptr, pixels);
    ZorReleaseImage(&clone);
}

void TestImageApi::aCloneOfTheSlotsOwnRecordIsItself()
{
    std::vector<std::uint8_t> pixels = {1, 2, 3, 4, 5, 6, 7, 8};
    const _ZorImage source = filledRecord(pixels);
    _ZorImage* clone = nullptr;
    QCOMPARE(ZorCloneImage(&clone, &source), 0);
    _ZorImage* before = clone;
    QCOMPARE(ZorCloneImage(&clone, clone), 0);
    QCOMPARE(clone, before);
    QCOMPARE(int(clone->data[7]), 8);
    ZorReleaseImage(&clone);
}

void TestImageApi::aCloneThatFailsNullsTheSlot()
{
    std::vector<std::uint8_t> pixels(8);
    _ZorImage source = filledRecord(pixels);
    _ZorImage* clone = nullptr;
    QCOMPARE(ZorCloneImage(&clone, &source), 0);
    QVERIFY(ZorCloneImage(&clone, nullptr) != 0);
    QVERIFY(clone == nullptr);

    QCOMPARE(ZorCloneImage(&clone, &source), 0);
    source.data = nullptr;
    QVERIFY(ZorCloneImage(&clone, &source) != 0);
    QVERIFY(clone == nullptr);

    QVERIFY(ZorCloneImage(nullptr, &source) != 0);
}

QTEST_APPLESS_MAIN(TestImageApi)
#include "tst_image_api.moc"
