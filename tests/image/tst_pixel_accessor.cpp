#include "image/ZimCustomAccessor.h"
#include "image/ZimTPixelAccessor.h"
#include "image/ZorFormatFromCode.h"
#include "image/ZorPixelTypeTable.h"
#include "tests/image/AccessorProbe.h"
#include "tests/support/VirtualPlace.h"

#include <QtTest>

#include <array>
#include <cstring>
#include <typeinfo>
#include <vector>

/// Which rule a format gets, which object it holds and how it ends.
class TestPixelAccessor : public QObject
{
    Q_OBJECT

private slots:
    void theFormatChoosesTheKind_data();
    void theFormatChoosesTheKind();
    void theTypedObjectFitsTheKind_data();
    void theTypedObjectFitsTheKind();
    void formatsOfTheTableAreWholeSamplesOrPacked();
    void depthsAbove32AreHarmless();
    void kindsOutsideTheTableDoNothing_data();
    void kindsOutsideTheTableDoNothing();
    void aCustomObjectGetsTheSameArguments();
    void theTypedObjectDiesByItsDestructor_data();
    void theTypedObjectDiesByItsDestructor();
    void anyOtherObjectDiesByItsDestructor_data();
    void anyOtherObjectDiesByItsDestructor();
    void markersAreFreedPlainly_data();
    void markersAreFreedPlainly();
    void fieldsAreInTheirOrder();
};

namespace {

zor::FormatBlock format(std::uint32_t depth, bool isSigned = false, std::uint32_t packing = 0x0100)
{
    zor::FormatBlock block{};
    block.depth = depth;
    block.isSigned = isSigned ? 1 : 0;
    block.packing = packing;
    return block;
}

class CountedCustom : public zor::CustomAccessor
{
public:
    explicit CountedCustom(int& deaths)
        : m_deaths(deaths)
    {
    }
    ~CountedCustom() override { ++m_deaths; }
    int read(const std::uint8_t* pixel, int channel, unsigned column) override
    {
        readPixel = pixel;
        numbers = {channel, static_cast<int>(column)};
        return 4711;
    }
    void write(std::uint8_t* pixel, int channel, int value, unsigned column) override
    {
        writtenPixel = pixel;
        numbers = {channel, value, static_cast<int>(column)};
    }

    const std::uint8_t* readPixel = nullptr;
    std::uint8_t* writtenPixel = nullptr;
    std::vector<int> numbers;

private:
    int& m_deaths;
};

template <class Base> class Counted : public Base
{
public:
    explicit Counted(int& deaths)
        : m_deaths(deaths)
    {
    }
    ~Counted() override { ++m_deaths; }

private:
    int& m_deaths;
};

template <class T, class UT> bool isTyped(void* object)
{
    using Accessor = ZimTPixelAccessor<T, UT>;
    const auto* typed = static_cast<Accessor*>(object);
    return typeid(*typed) == typeid(Accessor);
}

/// A typed object whose end is counted, as an accessor keeps it.
template <class T, class UT> void* countedTyped(int& deaths)
{
    ZimTPixelAccessor<T, UT>* typed = new Counted<ZimTPixelAccessor<T, UT>>(deaths);
    return typed;
}

using TypeTest = bool (*)(void*);
using TypedMaker = void* (*)(int&);

} // namespace

Q_DECLARE_METATYPE(TypeTest)
Q_DECLARE_METATYPE(TypedMaker)

void TestPixelAccessor::theFormatChoosesTheKind_data()
{
    QTest::addColumn<uint>("depth");
    QTest::addColumn<bool>("isSigned");
    QTest::addColumn<uint>("packing");
    QTest::addColumn<uint>("kind");
    const auto add = [](const char* name, uint depth, bool isSigned, uint packing, uint kind) {
        QTest::newRow(name) << depth << isSigned << packing << kind;
    };
    add("signed, depth 0", 0, true, 0x0100, 0);
    add("signed, depth 8", 8, true, 0x0100, 0);
    add("unsigned, depth 0", 0, false, 0x0100, 1);
    add("unsigned, depth 8", 8, false, 0x0100, 1);
    add("depth 8 asks for no packing", 8, false, 0x1200, 1);
    add("signed, depth 9", 9, true, 0x0200, 2);
    add("signed, depth 16", 16, true, 0x0500, 2);
    add("signed before 10-bit Packed", 10, true, 0x1200, 2);
    add("signed before 12-bit Packed", 12, true, 0x1300, 2);
    add("10-bit Packed", 10, false, 0x1200, 10);
    add("12-bit Packed", 12, false, 0x1300, 11);
    add("Packed at depth 9", 9, false, 0x1200, 10);
    add("Packed at depth 16", 16, false, 0x1300, 11);
    add("unsigned, depth 9", 9, false, 0x0200, 3);
    add("unsigned, depth 16", 16, false, 0x0500, 3);
    add("8 bits Packed are no class", 10, false, 0x1100, 3);
    add("14 bits Packed are no class", 14, false, 0x1400, 3);
    add("a stream of bits", 10, false, 0x2200, 3);
    add("fields of bits", 12, false, 0x3300, 3);
    add("signed, depth 17", 17, true, 0, 4);
    add("signed, depth 32", 32, true, 0, 4);
    add("unsigned, depth 17", 17, false, 0, 5);
    add("unsigned, depth 32", 32, false, 0, 5);
    add("depth 17 asks for no packing", 17, false, 0x1200, 5);
}

void TestPixelAccessor::theFormatChoosesTheKind()
{
    QFETCH(uint, depth);
    QFETCH(bool, isSigned);
    QFETCH(uint, packing);
    const AccessorProbe accessor(format(depth, isSigned, packing));
    QTEST(uint(accessor.kind), "kind");
    QVERIFY(accessor.impl);
}

void TestPixelAccessor::theTypedObjectFitsTheKind_data()
{
    QTest::addColumn<uint>("depth");
    QTest::addColumn<bool>("isSigned");
    QTest::addColumn<TypeTest>("isThat");
    QTest::newRow("signed 8 bits") << 8u << true << TypeTest(isTyped<char, unsigned char>);
    QTest::newRow("unsigned 8 bits") << 8u << false << TypeTest(isTyped<unsigned char, unsigned char>);
    QTest::newRow("signed 16 bits") << 16u << true << TypeTest(isTyped<short, unsigned short>);
    QTest::newRow("unsigned 16 bits") << 16u << false << TypeTest(isTyped<unsigned short, unsigned short>);
    QTest::newRow("signed 32 bits") << 32u << true << TypeTest(isTyped<long, unsigned long>);
    QTest::newRow("unsigned 32 bits") << 32u << false << TypeTest(isTyped<unsigned long, unsigned long>);
}

void TestPixelAccessor::theTypedObjectFitsTheKind()
{
    QFETCH(uint, depth);
    QFETCH(bool, isSigned);
    QFETCH(TypeTest, isThat);
    const AccessorProbe accessor(format(depth, isSigned));
    QVERIFY(isThat(accessor.impl));
}

void TestPixelAccessor::formatsOfTheTableAreWholeSamplesOrPacked()
{
    QMap<uint, int> formats;
    for (const ZorPixelTypeRow& row : ZorPixelTypeTable) {
        const AccessorProbe accessor(ZorFormatFromCode(row.code));
        const QByteArray name(row.name);
        const bool isPacked =
            name.endsWith("Packed") && !name.endsWith("FLExPacked") && !name.endsWith("FLEX_Packed");
        const uint expected = isPacked ? (name.contains("10") ? 10 : 11) : row.depth <= 8 ? 1 : 3;
        QVERIFY2(accessor.kind == expected,
                 qPrintable(QString("%1: %2, expected %3").arg(row.name).arg(accessor.kind).arg(expected)));
        ++formats[accessor.kind];
    }
    QCOMPARE(formats.value(10), 5);
    QCOMPARE(formats.value(11), 5);
    QCOMPARE(formats.value(1) + formats.value(3), int(ZorPixelTypeCount) - 10);
}

void TestPixelAccessor::depthsAbove32AreHarmless()
{
    for (const bool isSigned : {false, true}) {
        for (const uint depth : {33u, 64u, 0xFFFFFFFFu}) {
            const AccessorProbe accessor(format(depth, isSigned));
            QVERIFY(!accessor.impl);
            std::array<std::uint8_t, 8> bytes = {1, 2, 3, 4, 5, 6, 7, 8};
            const std::array<std::uint8_t, 8> before = bytes;
            QCOMPARE(accessor.read(bytes.data(), 0, 0), -1);
            accessor.write(bytes.data(), 0, 99, 0);
            QCOMPARE(bytes, before);
        }
    }
}

void TestPixelAccessor::kindsOutsideTheTableDoNothing_data()
{
    QTest::addColumn<uint>("kind");
    QTest::newRow("after kind 11") << 12u;
    QTest::newRow("before the custom one") << 1955u;
    QTest::newRow("after the custom one") << 1957u;
    QTest::newRow("the highest number") << 0xFFFFFFFFu;
}

void TestPixelAccessor::kindsOutsideTheTableDoNothing()
{
    QFETCH(uint, kind);
    int deaths = 0;
    const AccessorProbe accessor(kind, static_cast<zor::CustomAccessor*>(new CountedCustom(deaths)));
    std::array<std::uint8_t, 4> bytes = {1, 2, 3, 4};
    QCOMPARE(accessor.read(bytes.data(), 0, 0), -1);
    accessor.write(bytes.data(), 0, 99, 1);
    QCOMPARE(bytes, (std::array<std::uint8_t, 4>{1, 2, 3, 4}));
}

void TestPixelAccessor::aCustomObjectGetsTheSameArguments()
{
    int deaths = 0;
    auto* custom = new CountedCustom(deaths);
    const AccessorProbe accessor(1956, static_cast<zor::CustomAccessor*>(custom));
    std::uint8_t pixel = 0;
    QCOMPARE(accessor.read(&pixel, -3, 12), 4711);
    QCOMPARE(custom->readPixel, static_cast<const std::uint8_t*>(&pixel));
    QCOMPARE(custom->numbers, (std::vector<int>{-3, 12}));
    accessor.write(&pixel, 2, -70000, 13);
    QCOMPARE(custom->writtenPixel, &pixel);
    QCOMPARE(custom->numbers, (std::vector<int>{2, -70000, 13}));

    if (!ZOR_HAS_VIRTUAL_PLACE)
        QSKIP("places in the class are known for another ABI");
    // The destructor comes first and takes two places.
    QCOMPARE(virtualPlace(&zor::CustomAccessor::read), std::size_t{2});
    QCOMPARE(virtualPlace(&zor::CustomAccessor::write), std::size_t{3});
}

void TestPixelAccessor::theTypedObjectDiesByItsDestructor_data()
{
    QTest::addColumn<uint>("kind");
    QTest::addColumn<TypedMaker>("make");
    QTest::newRow("kind 0") << 0u << TypedMaker(countedTyped<char, unsigned char>);
    QTest::newRow("kind 1") << 1u << TypedMaker(countedTyped<unsigned char, unsigned char>);
    QTest::newRow("kind 2") << 2u << TypedMaker(countedTyped<short, unsigned short>);
    QTest::newRow("kind 3") << 3u << TypedMaker(countedTyped<unsigned short, unsigned short>);
    QTest::newRow("kind 4") << 4u << TypedMaker(countedTyped<long, unsigned long>);
    QTest::newRow("kind 5") << 5u << TypedMaker(countedTyped<unsigned long, unsigned long>);
}

void TestPixelAccessor::theTypedObjectDiesByItsDestructor()
{
    QFETCH(uint, kind);
    QFETCH(TypedMaker, make);
    int deaths = 0;
    {
        const AccessorProbe accessor(kind, make(deaths));
        QCOMPARE(deaths, 0);
    }
    QCOMPARE(deaths, 1);
}

void TestPixelAccessor::anyOtherObjectDiesByItsDestructor_data()
{
    QTest::addColumn<uint>("kind");
    QTest::newRow("the custom kind") << 1956u;
    QTest::newRow("a kind outside the table") << 12u;
    QTest::newRow("the highest number") << 0xFFFFFFFFu;
}

void TestPixelAccessor::anyOtherObjectDiesByItsDestructor()
{
    QFETCH(uint, kind);
    int deaths = 0;
    {
        const AccessorProbe accessor(kind, static_cast<zor::CustomAccessor*>(new CountedCustom(deaths)));
        QCOMPARE(deaths, 0);
    }
    QCOMPARE(deaths, 1);
}

void TestPixelAccessor::markersAreFreedPlainly_data()
{
    QTest::addColumn<uint>("kind");
    for (uint kind = 6; kind <= 11; ++kind)
        QTest::addRow("kind %u", kind) << kind;
}

// The byte is no object: a destructor called through it would jump anywhere, and a lost one is a leak that
// the checker reports.
void TestPixelAccessor::markersAreFreedPlainly()
{
    QFETCH(uint, kind);
    void* marker = ::operator new(1);
    *static_cast<std::uint8_t*>(marker) = 0xFF;
    {
        const AccessorProbe accessor(kind, marker);
        QCOMPARE(accessor.impl, marker);
    }
}

void TestPixelAccessor::fieldsAreInTheirOrder()
{
    const AccessorProbe accessor(format(12, false, 0x1300));
    const auto* start = reinterpret_cast<const std::uint8_t*>(&accessor);
    QCOMPARE(reinterpret_cast<const std::uint8_t*>(&accessor.impl) - start, std::ptrdiff_t{8});
    QCOMPARE(reinterpret_cast<const std::uint8_t*>(&accessor.kind) - start, std::ptrdiff_t{16});
    QCOMPARE(sizeof(ZimPixelAccessor), std::size_t{24});

    const ZimTPixelAccessor<short, unsigned short> typed;
    std::int32_t field = 0;
    std::memcpy(&field, reinterpret_cast<const std::uint8_t*>(&typed) + 8, sizeof field);
    QCOMPARE(field, -1);
    QCOMPARE(sizeof typed, std::size_t{16});
}

QTEST_APPLESS_MAIN(TestPixelAccessor)
#include "tst_pixel_accessor.moc"
