#include "image/ZimPixelAccessIterator.h"
#include "tests/image/BitsOfBytes.h"
#include "tests/image/TestRecords.h"
#include "tests/support/FormatCodes.h"

#include <QtTest>

#include <random>
#include <vector>

namespace {

class IteratorProbe : public ZimPixelIterator
{
public:
    explicit IteratorProbe(const _ZorImage& image, std::uint32_t x = 0, std::uint32_t y = 0)
        : ZimPixelIterator(&image, x, y)
        , m_data(image.data)
    {
    }

    /// Bytes from the image's first one to the cursor, also when it is far outside.
    std::int64_t place() const
    {
        return static_cast<std::int64_t>(reinterpret_cast<std::uintptr_t>(cursor()) -
                                         reinterpret_cast<std::uintptr_t>(m_data));
    }

    using ZimPixelIterator::bitAddressed;
    using ZimPixelIterator::bits;
    using ZimPixelIterator::bytes;
    using ZimPixelIterator::position;

private:
    const std::uint8_t* m_data;
};

class CountedAccessor : public ZimPixelAccessor
{
public:
    CountedAccessor(const zor::FormatBlock& format, int& deaths)
        : ZimPixelAccessor(format)
        , m_deaths(deaths)
    {
    }
    ~CountedAccessor() override { ++m_deaths; }

private:
    int& m_deaths;
};

class AccessIteratorProbe : public ZimPixelAccessIterator
{
public:
    AccessIteratorProbe(const _ZorImage& image, int& deaths)
        : ZimPixelAccessIterator(&image, 0, 0)
    {
        delete accessor;
        accessor = new CountedAccessor(image, deaths);
    }
};

} // namespace

/// Walks over images in bytes and in bits, and samples at their cursors.
class TestPixelIterator : public QObject
{
    Q_OBJECT

private slots:
    void packedClassesAloneAreWalkedInBits();
    void linesOfBytes();
    void linesOfBits();
    void stepAndGapOfAFormat_data();
    void stepAndGapOfAFormat();
    void startsOnAnyPixel_data();
    void startsOnAnyPixel();
    void walksAgreeWithTheirStarts_data();
    void walksAgreeWithTheirStarts();
    void theWidthWalkedMayBeAnotherOne_data();
    void theWidthWalkedMayBeAnotherOne();
    void aPitchThatIsTooSmallJumpsFarAhead();
    void bytePlacesWrapAt4GiB();
    void bitPlacesWrapAt512MiB();
    void packedSamplesAreWrittenWhereTheyLie_data();
    void packedSamplesAreWrittenWhereTheyLie();
    void channelsAfterAPixelAreTheNextOnes();
    void theAccessorDiesWithTheIterator();
    void fieldsAreInTheirOrder();
};

void TestPixelIterator::packedClassesAloneAreWalkedInBits()
{
    std::uint8_t pixel = 0;
    _ZorImage image = recordOf(Mono12Packed, 1, 1, 2, &pixel);
    for (std::uint32_t packing = 0; packing <= 0x1FFFF; ++packing) {
        image.packing = packing;
        const bool expected = ((packing - 0x1200) & ~0x100u) == 0;
        const bool actual = IteratorProbe(image).bitAddressed;
        QVERIFY2(actual == expected, qPrintable(QString("packing %1: %2").arg(packing, 0, 16).arg(actual)));
        QCOMPARE(expected, packing == 0x1200 || packing == 0x1300);
    }
}

void TestPixelIterator::linesOfBytes()
{
    std::vector<std::uint8_t> pixels(208);
    const _ZorImage image = recordOf(codeOf("Mono8"), 100, 2, 104, pixels.data());
    IteratorProbe walk(image);
    QCOMPARE(walk.position->step, 1u);
    QCOMPARE(walk.position->rowGap, 4u);
    for (int x = 0; x < 100; ++x) {
        QCOMPARE(walk.place(), std::int64_t{x});
        walk.advance();
    }
    walk.nextRow(100);
    QCOMPARE(walk.place(), std::int64_t{104});
}

void TestPixelIterator::linesOfBits()
{
    std::vector<std::uint8_t> pixels(16);
    const _ZorImage image = recordOf(Mono10Packed, 5, 2, 8, pixels.data());
    IteratorProbe walk(image);
    QCOMPARE(walk.position->step, 12u);
    QCOMPARE(walk.position->rowGap, 4u);
    const std::int64_t bytesOfColumns[] = {0, 1, 3, 4, 6};
    for (std::uint32_t x = 0; x < 5; ++x) {
        QCOMPARE(walk.bits().bitOffset, 12 * x);
        QCOMPARE(walk.place(), bytesOfColumns[x]);
        walk.advance();
    }
    walk.nextRow(5);
    QCOMPARE(walk.bits().bitOffset, 64u);
    QCOMPARE(walk.place(), std::int64_t{8});
    // An even column again: its pixel starts at a byte's first bit.
    QCOMPARE(walk.bits().bitOffset % 8, 0u);
}

void TestPixelIterator::stepAndGapOfAFormat_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<bool>("inBits");
    QTest::addColumn<uint>("step");
    QTest::addColumn<uint>("rowGap");
    // Ten pixels and a pitch of 100 bytes.
    const auto add = [](const char* name, bool inBits, uint step, uint rowGap) {
        QTest::newRow(name) << QByteArray(name) << inBits << step << rowGap;
    };
    add("Mono8", false, 1, 90);
    add("Mono12", false, 2, 80);
    add("RGB8", false, 3, 70);
    add("RGBa8", false, 4, 60);
    add("RGB12", false, 6, 40);
    add("Mono12Packed", true, 12, 680);
    // Rounded down to whole bytes: these walks do not follow the pixels.
    add("Mono10p", false, 1, 90);
    add("Mono12_FLExPacked", false, 1, 90);
    add("YUV422_10_PACKED", false, 2, 80);
    add("RGB_12_FLEX_Packed", false, 4, 60);
}

void TestPixelIterator::stepAndGapOfAFormat()
{
    QFETCH(QByteArray, name);
    std::vector<std::uint8_t> pixels(200);
    const _ZorImage image = recordOf(codeOf(name.constData()), 10, 2, 100, pixels.data());
    const IteratorProbe walk(image);
    QTEST(walk.bitAddressed, "inBits");
    QTEST(uint(walk.position->step), "step");
    QTEST(uint(walk.position->rowGap), "rowGap");
    QCOMPARE(walk.position->image, &image);
}

void TestPixelIterator::startsOnAnyPixel_data()
{
    QTest::addColumn<uint>("code");
    QTest::addColumn<uint>("x");
    QTest::addColumn<uint>("y");
    QTest::addColumn<qlonglong>("place");
    QTest::newRow("bytes, first pixel") << zor::Mono8 << 0u << 0u << 0ll;
    QTest::newRow("bytes, inside") << zor::Mono8 << 7u << 3u << 3ll * 64 + 7;
    QTest::newRow("words, inside") << zor::Mono12 << 7u << 3u << 3ll * 64 + 14;
    QTest::newRow("bits, even pixel") << Mono12Packed << 6u << 3u << 3ll * 64 + 9;
    QTest::newRow("bits, odd pixel") << Mono12Packed << 7u << 3u << 3ll * 64 + 10;
    QTest::newRow("whole bytes of a stream of bits") << Mono10p << 7u << 3u << 3ll * 64 + 7;
    QTest::newRow("outside the image") << zor::Mono8 << 1000u << 500u << 500ll * 64 + 1000;
}

void TestPixelIterator::startsOnAnyPixel()
{
    QFETCH(uint, code);
    QFETCH(uint, x);
    QFETCH(uint, y);
    std::uint8_t first = 0;
    const _ZorImage image = recordOf(code, 20, 10, 64, &first);
    QTEST(qlonglong(IteratorProbe(image, x, y).place()), "place");
}

void TestPixelIterator::walksAgreeWithTheirStarts_data()
{
    QTest::addColumn<uint>("code");
    for (const ZorPixelTypeRow& row : ZorPixelTypeTable)
        QTest::newRow(row.name) << row.code;
}

// Where a walk comes to, pixel by pixel, is where an iterator starts that is made for that pixel, and both
// are what the pitch and the whole bytes or bits of a pixel give.
void TestPixelIterator::walksAgreeWithTheirStarts()
{
    QFETCH(uint, code);
    std::mt19937 random(code);
    std::uint8_t first = 0;
    const bool inBits = (code & 0xFE00) == 0x1200;
    const std::uint64_t pixelBits = code >> 16 & 0xFF;
    for (int round = 0; round < 5; ++round) {
        const std::uint32_t width = random() % 9;
        const std::uint32_t height = 1 + random() % 5;
        const auto pitch = static_cast<std::uint32_t>((width * pixelBits + 7) / 8 + random() % 6);
        const _ZorImage image = recordOf(code, width, height, pitch, &first);
        IteratorProbe walk(image);
        for (std::uint32_t y = 0; y < height; ++y) {
            for (std::uint32_t x = 0; x < width; ++x) {
                const std::uint64_t inRow = inBits ? x * pixelBits / 8 : x * (pixelBits / 8);
                const auto expected = static_cast<std::int64_t>(y * pitch + inRow);
                const std::int64_t start = IteratorProbe(image, x, y).place();
                QVERIFY2(
                    walk.place() == expected && start == expected,
                    qPrintable(QString("%1 x %2, pitch %3, pixel (%4, %5): walk %6, start %7, expected %8")
                                   .arg(width)
                                   .arg(height)
                                   .arg(pitch)
                                   .arg(x)
                                   .arg(y)
                                   .arg(walk.place())
                                   .arg(start)
                                   .arg(expected)));
                walk.advance();
            }
            walk.nextRow(width);
        }
        QCOMPARE(walk.place(), std::int64_t{height} * pitch);
    }
}

void TestPixelIterator::theWidthWalkedMayBeAnotherOne_data()
{
    QTest::addColumn<uint>("code");
    QTest::addColumn<uint>("walked");
    QTest::newRow("bytes, all of the row") << zor::Mono8 << 10u;
    QTest::newRow("bytes, less than the row") << zor::Mono8 << 4u;
    QTest::newRow("bytes, nothing of it") << zor::Mono8 << 0u;
    QTest::newRow("words, less than the row") << zor::Mono12 << 3u;
    QTest::newRow("bits, all of the row") << Mono12Packed << 10u;
    QTest::newRow("bits, an odd part of it") << Mono12Packed << 3u;
    // The way back is a wrap; in bits it ends where it should.
    QTest::newRow("bits, more than the row") << Mono12Packed << 13u;
}

void TestPixelIterator::theWidthWalkedMayBeAnotherOne()
{
    QFETCH(uint, code);
    QFETCH(uint, walked);
    std::uint8_t first = 0;
    const _ZorImage image = recordOf(code, 10, 3, 32, &first);
    IteratorProbe walk(image);
    for (uint x = 0; x < walked; ++x)
        walk.advance();
    walk.nextRow(walked);
    QCOMPARE(walk.place(), std::int64_t{32});
}

void TestPixelIterator::aPitchThatIsTooSmallJumpsFarAhead()
{
    std::uint8_t first = 0;
    const _ZorImage image = recordOf(codeOf("Mono8"), 100, 2, 96, &first);
    IteratorProbe walk(image);
    QCOMPARE(walk.position->rowGap, 0xFFFFFFFCu);
    for (int x = 0; x < 100; ++x)
        walk.advance();
    walk.nextRow(100);
    // Ahead by almost 4 GiB, not back to byte 96.
    QCOMPARE(walk.place(), std::int64_t{100} + 0xFFFFFFFC);

    const _ZorImage packed = recordOf(Mono12Packed, 8, 2, 8, &first);
    IteratorProbe bits(packed);
    QCOMPARE(bits.position->rowGap, 0xFFFFFFE0u);
    for (int x = 0; x < 8; ++x)
        bits.advance();
    bits.nextRow(8);
    QCOMPARE(bits.place(), std::int64_t{8});
}

void TestPixelIterator::bytePlacesWrapAt4GiB()
{
    std::uint8_t first = 0;
    const _ZorImage image = recordOf(codeOf("Mono16"), 100, 5000, 1u << 20, &first);
    QCOMPARE(IteratorProbe(image, 1, 4095).place(), 4095ll * (1 << 20) + 2);
    QCOMPARE(IteratorProbe(image, 1, 4096).place(), std::int64_t{2});
    // A cursor that walks on is 64 bits wide.
    IteratorProbe walk(image, 0, 4095);
    walk.nextRow(0);
    QCOMPARE(walk.place(), 4096ll * (1 << 20));
}

void TestPixelIterator::bitPlacesWrapAt512MiB()
{
    std::uint8_t first = 0;
    const _ZorImage image = recordOf(Mono10Packed, 100, 1000, 1u << 20, &first);
    QCOMPARE(IteratorProbe(image, 2, 511).place(), 511ll * (1 << 20) + 3);
    QCOMPARE(IteratorProbe(image, 2, 512).place(), std::int64_t{3});
    IteratorProbe walk(image, 0, 511);
    walk.nextRow(0);
    QCOMPARE(walk.bits().bitOffset, 0u);
    QCOMPARE(walk.place(), std::int64_t{0});
}

void TestPixelIterator::packedSamplesAreWrittenWhereTheyLie_data()
{
    QTest::addColumn<uint>("code");
    QTest::addColumn<uint>("width");
    QTest::addColumn<uint>("padding");
    for (const std::uint32_t code : {Mono10Packed, Mono12Packed}) {
        const uint depth = code == Mono10Packed ? 10 : 12;
        for (const uint width : {1u, 2u, 5u, 8u}) {
            for (const uint padding : {0u, 3u})
                QTest::addRow("%u bits, width %u, padding %u", depth, width, padding)
                    << code << width << padding;
        }
    }
}

// A group of three bytes holds two pixels: the even one's high bits first, the odd one's last, the low bits
// in the two nibbles between, the even one's in the high nibble.
void TestPixelIterator::packedSamplesAreWrittenWhereTheyLie()
{
    QFETCH(uint, code);
    QFETCH(uint, width);
    QFETCH(uint, padding);
    constexpr std::uint32_t Height = 4;
    const std::uint32_t lowBits = code == Mono10Packed ? 2 : 4;
    const std::uint32_t pitch = (width * 12 + 7) / 8 + padding;
    std::vector<std::uint8_t> pixels(std::size_t{pitch} * Height, 0xA5);
    const _ZorImage image = recordOf(code, width, Height, pitch, pixels.data());
    std::mt19937 random(width);
    std::vector<std::uint32_t> values;
    ZimPixelAccessIterator walk(&image, 0, 0);
    for (std::uint32_t y = 0; y < Height; ++y) {
        for (std::uint32_t x = 0; x < width; ++x) {
            values.push_back(random() % (256u << lowBits));
            walk.write(0, static_cast<int>(values.back()), x);
            QCOMPARE(walk.read(0, x), asSigned(values.back() >> lowBits, 8));
            walk.advance();
        }
        walk.nextRow(width);
    }
    for (std::uint32_t y = 0; y < Height; ++y) {
        const std::uint8_t* row = pixels.data() + std::size_t{y} * pitch;
        for (std::uint32_t x = 0; x < width; ++x) {
            const std::size_t group = std::size_t{x / 2} * 24;
            const std::uint32_t high = bitsAt(row, group + (x % 2 == 0 ? 0 : 16), 8);
            const std::uint32_t low = bitsAt(row, group + (x % 2 == 0 ? 12 : 8), 4);
            const std::uint32_t expected = values[std::size_t{y} * width + x];
            QCOMPARE(high << lowBits | low, expected);
        }
        for (std::uint32_t i = (width * 12 + 7) / 8; i < pitch; ++i)
            QCOMPARE(int(row[i]), 0xA5);
    }
}

void TestPixelIterator::channelsAfterAPixelAreTheNextOnes()
{
    std::uint8_t pixels[] = {10, 20, 30, 40, 50, 60};
    const _ZorImage mono = recordOf(codeOf("Mono8"), 3, 2, 3, pixels);
    ZimPixelAccessIterator walk(&mono, 2, 0);
    QCOMPARE(walk.read(0, 2), 30);
    QCOMPARE(walk.read(1, 2), 40);
    const _ZorImage rgb = recordOf(codeOf("RGB8"), 1, 2, 3, pixels);
    ZimPixelAccessIterator colour(&rgb, 0, 1);
    colour.write(2, 99, 0);
    QCOMPARE(int(pixels[5]), 99);
    QCOMPARE(colour.read(2, 0), 99);
}

void TestPixelIterator::theAccessorDiesWithTheIterator()
{
    std::uint8_t pixel = 0;
    const _ZorImage image = recordOf(codeOf("Mono8"), 1, 1, 1, &pixel);
    int deaths = 0;
    {
        const ZimPixelIterator* walk = new AccessIteratorProbe(image, deaths);
        QCOMPARE(deaths, 0);
        delete walk;
    }
    QCOMPARE(deaths, 1);
    // The image is not the iterator's.
    QCOMPARE(image.data, &pixel);
}

void TestPixelIterator::fieldsAreInTheirOrder()
{
    std::uint8_t pixel = 0;
    const auto distance = [](const void* from, const void* to) {
        return static_cast<const char*>(to) - static_cast<const char*>(from);
    };
    const _ZorImage image = recordOf(codeOf("Mono8"), 1, 1, 1, &pixel);
    const IteratorProbe walk(image);
    QCOMPARE(distance(&walk, &walk.position), std::ptrdiff_t{8});
    QCOMPARE(distance(&walk, &walk.bitAddressed), std::ptrdiff_t{16});
    const zor::ByteWalkPosition& bytes = walk.bytes();
    QCOMPARE(distance(&bytes, &bytes.image), std::ptrdiff_t{0});
    QCOMPARE(distance(&bytes, &bytes.step), std::ptrdiff_t{8});
    QCOMPARE(distance(&bytes, &bytes.rowGap), std::ptrdiff_t{12});
    QCOMPARE(distance(&bytes, &bytes.cursor), std::ptrdiff_t{16});
    const _ZorImage packed = recordOf(Mono12Packed, 1, 1, 2, &pixel);
    const IteratorProbe bitWalk(packed);
    const zor::BitWalkPosition& bits = bitWalk.bits();
    QCOMPARE(distance(&bits, &bits.bitOffset), std::ptrdiff_t{16});
    QCOMPARE(distance(&bits, &bits.cursor), std::ptrdiff_t{24});
}

QTEST_APPLESS_MAIN(TestPixelIterator)
#include "tst_pixel_iterator.moc"
