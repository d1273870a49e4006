#include "platform/viewer/picture/MipLevels.h"

#include <QSize>
#include <QTest>

using namespace zor::viewer;

/// Which memory the mip levels show: the image's own, a copy of it, or that of an earlier image.
class TestMipMemory : public QObject
{
    Q_OBJECT

private slots:
    void wideSamplesAtOddAddressesAreCopied_data();
    void wideSamplesAtOddAddressesAreCopied();
    void memoryIsUsedAgain_data();
    void memoryIsUsedAgain();
};

void TestMipMemory::wideSamplesAtOddAddressesAreCopied_data()
{
    QTest::addColumn<int>("bytes");
    QTest::addColumn<int>("begin");
    QTest::addColumn<int>("pitch");
    QTest::addColumn<bool>("isCopied");
    QTest::newRow("two bytes, an odd pitch") << 2 << 0 << 7 << true;
    QTest::newRow("two bytes, an odd beginning") << 2 << 1 << 8 << true;
    QTest::newRow("two bytes, both even") << 2 << 0 << 8 << false;
    QTest::newRow("one byte, an odd pitch") << 1 << 0 << 7 << false;
    QTest::newRow("one byte, an odd beginning") << 1 << 1 << 8 << false;
}

void TestMipMemory::wideSamplesAtOddAddressesAreCopied()
{
    QFETCH(int, bytes);
    QFETCH(int, begin);
    QFETCH(int, pitch);
    QFETCH(bool, isCopied);
    // Nothing follows the last sample, so that whoever reads on is found out.
    std::vector<std::uint8_t> image(static_cast<std::size_t>(begin + 2 * pitch + 3 * bytes));
    for (std::size_t i = 0; i < image.size(); ++i)
        image[i] = static_cast<std::uint8_t>(i * 37);
    PixelShape shape;
    shape.bytes = bytes;
    shape.depth = 8 * bytes;
    const Samples samples{image.data() + begin, static_cast<std::size_t>(pitch), 3, 3};
    MipLevels mips;
    mips.reserve(samples, shape);
    mips.build(samples, shape);
    QCOMPARE(mips.level(0).data != samples.data, isCopied);
    if (bytes == 2) {
        QCOMPARE(reinterpret_cast<std::uintptr_t>(mips.level(0).data) % 2, std::uintptr_t{0});
        QCOMPARE(mips.level(0).pitch % 2, std::size_t{0});
    }
    for (int y = 0; y < 3; ++y)
        for (int x = 0; x < 3; ++x) {
            const std::uint8_t* at = samples.row(y) + x * bytes;
            QCOMPARE(mips.sample(x, y, 0), bytes == 1 ? at[0] : at[0] | at[1] << 8);
        }
}

void TestMipMemory::memoryIsUsedAgain_data()
{
    QTest::addColumn<int>("side");
    QTest::addColumn<bool>("isUsedAgain");
    QTest::newRow("an image of the same size") << 64 << true;
    QTest::newRow("a smaller one") << 48 << true;
    QTest::newRow("a much smaller one gives the memory back") << 20 << false;
    QTest::newRow("a larger one needs more") << 70 << false;
}

void TestMipMemory::memoryIsUsedAgain()
{
    QFETCH(int, side);
    QFETCH(bool, isUsedAgain);
    const std::vector<std::uint8_t> pixels(70 * 70);
    PixelShape shape;
    MipLevels mips;
    const auto show = [&](int length) {
        const Samples samples{pixels.data(), 70, length, length};
        mips.reserve(samples, shape);
        mips.build(samples, shape);
        return mips.level(1).data;
    };
    const std::uint8_t* before = show(64);
    QCOMPARE(show(side) == before, isUsedAgain);
}

QTEST_GUILESS_MAIN(TestMipMemory)
#include "tst_mip_memory.moc"
