#include "tests/reference/PixelFormats.h"

#include "tests/reference/ExpectedFormats.h"

#include <algorithm>

namespace reference {

namespace {

bool contains(const std::string& text, const char* part)
{
    return text.find(part) != std::string::npos;
}

/// The last number in the name.
std::uint32_t bitsInName(const std::string& name)
{
    const std::size_t last = name.find_last_of("0123456789");
    const std::size_t before = name.find_last_not_of("0123456789", last);
    return std::uint32_t(std::stoul(name.substr(before + 1)));
}

/// The two letters of the name are the upper row. Green is on a diagonal, red and blue on the other.
std::vector<std::string> bayerCell(const std::string& name)
{
    const std::string upper = name.substr(5, 2);
    if (upper == "GR")
        return {"GR", "BG"};
    if (upper == "RG")
        return {"RG", "GB"};
    if (upper == "GB")
        return {"GB", "RG"};
    return {"BG", "GR"};
}

/// Four blocks of two by two sites, in the order of the name's first four letters. In each, panchromatic
/// sites are on the diagonal that begins top left and the block's colour on the other two. A phase begins one
/// column later (1), one row later (2), or both (3).
std::vector<std::string> trueSenseCell(const std::string& name)
{
    const std::string blocks = name.substr(10, 4);
    const char phase = name[20];
    const std::uint32_t column = phase == '1' || phase == '3' ? 1 : 0;
    const std::uint32_t row = phase == '2' || phase == '3' ? 1 : 0;
    std::vector<std::string> cell(4);
    for (std::uint32_t y = row; y < row + 4; ++y) {
        for (std::uint32_t x = column; x < column + 4; ++x)
            cell[y - row] += (x + y) % 2 == 0 ? 'W' : blocks[y % 4 / 2 * 2 + x % 4 / 2];
    }
    return cell;
}

std::vector<std::string> cellOf(const ExpectedFormat& format)
{
    if (format.family == Mono)
        return {"Y"};
    if (format.family == Bayer)
        return bayerCell(format.name);
    if (format.family == TrueSense)
        return trueSenseCell(format.name);
    if (format.name == "YUV422_8_UYVY")
        return {"UYVY"};
    if (format.name == "YUV444_8")
        return {"YUVA"};
    if (contains(format.name, "422"))
        return {"YUYV"};
    const std::string colours = contains(format.name, "BGR") ? "BGR" : "RGB";
    return {contains(format.name, "a8") ? colours + "A" : colours};
}

PixelFormat formatOf(const ExpectedFormat& expected, std::uint32_t row)
{
    PixelFormat format = {};
    format.name = expected.name;
    format.code = expected.family << 24 | expected.pixelBits << 16 | expected.packingByte << 8 | row;
    format.family = expected.family;
    format.heldBits = bitsInName(expected.name);
    format.pixelBits = expected.pixelBits;
    format.cell = cellOf(expected);
    format.samplesPerPixel = contains(expected.name, "422") ? 2 : expected.channels;

    const bool flex = contains(expected.name, "FLE") || contains(expected.name, "PACKED");
    format.inPairs = contains(expected.name, "Packed") && !flex;
    const bool stream = expected.name.back() == 'p';
    // Whole bytes hold what is not packed, and all their bits count.
    if (flex || stream || format.inPairs)
        format.storedBits = format.heldBits;
    else
        format.storedBits = format.heldBits == 8 ? 8 : 16;
    return format;
}

} // namespace

char PixelFormat::component(std::uint32_t x, std::uint32_t y, std::uint32_t sample) const
{
    const std::string& row = cell[y % cell.size()];
    return row[(x * samplesPerPixel + sample) % row.size()];
}

std::uint64_t PixelFormat::bitPlace(std::uint64_t x, std::uint32_t sample, std::uint32_t bit) const
{
    if (!inPairs)
        return x * pixelBits + sample * storedBits + bit;
    // The high bits of the even pixel are byte 0, those of the odd one byte 2; in byte 1 are the low bits, of
    // the even pixel from bit 4 on, of the odd one from bit 0 on.
    const std::uint32_t lowBits = heldBits - 8;
    const std::uint64_t pair = x / 2 * 24;
    const bool odd = x % 2 == 1;
    if (bit < lowBits)
        return pair + 8 + (odd ? 0 : 4) + bit;
    return pair + (odd ? 16 : 0) + bit - lowBits;
}

std::uint32_t PixelFormat::value(const std::uint8_t* row, std::uint64_t x, std::uint32_t sample) const
{
    std::uint32_t value = 0;
    for (std::uint32_t bit = 0; bit < storedBits; ++bit) {
        const std::uint64_t place = bitPlace(x, sample, bit);
        if ((row[place / 8] >> (place % 8)) % 2 == 1)
            value += 1U << bit;
    }
    return std::min(value, (1U << heldBits) - 1);
}

const std::vector<PixelFormat>& pixelFormats()
{
    static const std::vector<PixelFormat> formats = [] {
        std::vector<PixelFormat> all;
        for (const ExpectedFormat& expected : expectedFormats())
            all.push_back(formatOf(expected, std::uint32_t(all.size() + 1)));
        return all;
    }();
    return formats;
}

std::uint32_t depthChanged(std::uint32_t value, std::uint32_t from, std::uint32_t to)
{
    std::uint32_t result = 0;
    for (std::uint32_t i = 0; i < to; ++i) {
        const std::uint32_t bit = value >> (from - 1 - i % from) & 1;
        result = result * 2 + bit;
    }
    return result;
}

} // namespace reference
