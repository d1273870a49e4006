#pragma once

#include <QString>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <random>
#include <vector>

/// What the engine's tests share: repeatable chance, blocks that end where their allocation ends, and texts
/// that say where two blocks differ.
namespace enginetest {

/// Outputs are filled with each of these before a call: a byte that a call should write and does not cannot
/// look right both times, nor one that it should not write and does.
constexpr std::uint8_t Poisons[] = {0xA5, 0x5A};

class Random
{
public:
    explicit Random(unsigned seed)
        : m_engine(seed)
    {
    }

    /// From `low` to `high`, both among them.
    int between(int low, int high) { return std::uniform_int_distribution<int>(low, high)(m_engine); }

    double real(double low, double high)
    {
        return std::uniform_real_distribution<double>(low, high)(m_engine);
    }

    bool oneIn(int count) { return between(1, count) == 1; }

    /// Gains as frames produce them, and those that they should not: 0, negative, beyond 16, infinite, NaN.
    double gain()
    {
        switch (between(0, 11)) {
        case 0:
            return 0.0;
        case 1:
            return 1.0;
        case 2:
            return real(0.0, 1.0);
        case 3:
            return real(2.0, 16.0);
        case 4:
            return real(16.0, 70000.0);
        case 5:
            return real(-40.0, 0.0);
        case 6:
            return real(-1e12, 1e12);
        case 7:
            return oneIn(2) ? std::numeric_limits<double>::infinity()
                            : -std::numeric_limits<double>::infinity();
        case 8:
            return std::numeric_limits<double>::quiet_NaN();
        default:
            return real(0.7, 2.5);
        }
    }

private:
    std::mt19937 m_engine;
};

/// An image in a block of its own that starts `lead` bytes after an aligned address and ends with the last
/// pixel of its last row.
struct Block
{
    Block(int imageWidth, int imageHeight, int rowStep, int bytesPerPixel, int leadBytes, std::uint8_t fill)
        : width(imageWidth)
        , height(imageHeight)
        , step(rowStep)
        , lead(leadBytes)
        , storage(
              static_cast<std::size_t>(leadBytes + (imageHeight - 1) * rowStep + imageWidth * bytesPerPixel),
              fill)
    {
    }

    std::uint8_t* data() { return storage.data() + lead; }
    template <typename Pixel> Pixel* pixels() { return reinterpret_cast<Pixel*>(data()); }

    std::size_t at(int x, int y, int bytesPerPixel) const
    {
        return static_cast<std::size_t>(lead + y * step + x * bytesPerPixel);
    }
    std::uint16_t word(int x, int y) const
    {
        const std::size_t first = at(x, y, 2);
        return static_cast<std::uint16_t>(storage[first] + 256 * storage[first + 1]);
    }
    void setWord(int x, int y, int value)
    {
        const std::size_t first = at(x, y, 2);
        storage[first] = static_cast<std::uint8_t>(value & 0xFF);
        storage[first + 1] = static_cast<std::uint8_t>((value >> 8) & 0xFF);
    }
    void randomize(Random& random)
    {
        for (std::uint8_t& byte : storage)
            byte = static_cast<std::uint8_t>(random.between(0, 255));
    }

    int width;
    int height;
    int step;
    int lead;
    std::vector<std::uint8_t> storage;
};

/// A step that holds a row: tight, padded to 4 bytes, a little or much larger; odd ones among them on demand.
inline int randomStep(Random& random, int rowBytes, bool mayBeOdd)
{
    int step = rowBytes;
    switch (random.between(0, 3)) {
    case 0:
        break;
    case 1:
        step = (rowBytes + 3) / 4 * 4;
        break;
    case 2:
        step = rowBytes + random.between(1, 9);
        break;
    default:
        step = rowBytes * 3 + random.between(0, 5);
        break;
    }
    return mayBeOdd ? step : (step + 1) / 2 * 2;
}

inline Block randomBlock(Random& random, int width, int height, int bytesPerPixel, std::uint8_t fill,
                         bool mayBeOdd = true)
{
    const int step = randomStep(random, width * bytesPerPixel, mayBeOdd);
    return Block(width, height, step, bytesPerPixel, random.between(0, 3), fill);
}

/// Empty when the bytes are equal, else the first place where they are not.
inline QString difference(const std::vector<std::uint8_t>& actual, const std::vector<std::uint8_t>& expected,
                          int lead, int step, const QString& inputs)
{
    if (actual.size() != expected.size())
        return QString("%1: %2 bytes instead of %3").arg(inputs).arg(actual.size()).arg(expected.size());
    for (std::size_t i = 0; i < actual.size(); ++i) {
        if (actual[i] == expected[i])
            continue;
        const int offset = static_cast<int>(i) - lead;
        return QString("%1: row %2, byte %3: expected 0x%4, actual 0x%5")
            .arg(inputs)
            .arg(step != 0 ? offset / step : 0)
            .arg(step != 0 ? offset % step : offset)
            .arg(expected[i], 2, 16, QChar('0'))
            .arg(actual[i], 2, 16, QChar('0'));
    }
    return QString();
}

inline QString difference(const Block& actual, const std::vector<std::uint8_t>& expected,
                          const QString& inputs)
{
    const QString shape =
        QString("%1, %2x%3, step %4").arg(inputs).arg(actual.width).arg(actual.height).arg(actual.step);
    return difference(actual.storage, expected, actual.lead, actual.step, shape);
}

} // namespace enginetest

/// Fails the test function with the text of a difference, passes on an empty one.
#define VERIFY_SAME(text)                                                                                    \
    do {                                                                                                     \
        const QString found = (text);                                                                        \
        QVERIFY2(found.isEmpty(), qPrintable(found));                                                        \
    } while (false)
