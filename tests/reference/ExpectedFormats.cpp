#include "tests/reference/ExpectedFormats.h"

#include <array>

namespace {

using Formats = std::vector<ExpectedFormat>;

using namespace reference;

void addMono(Formats& all)
{
    const auto add = [&all](const char* name, std::uint32_t depth, std::uint32_t packing,
                            std::uint32_t bits) {
        all.push_back({name, "Y", 1, depth, "Y", 0, Mono, bits, packing});
    };
    add("Mono8", 8, 0x01, 8);
    add("Mono10", 10, 0x02, 16);
    add("Mono10p", 10, 0x22, 10);
    add("Mono10Packed", 10, 0x12, 12);
    add("Mono10_FLExPacked", 10, 0x32, 12);
    add("Mono12", 12, 0x03, 16);
    add("Mono12p", 10, 0x23, 12);
    add("Mono12Packed", 12, 0x13, 12);
    add("Mono12_FLExPacked", 12, 0x33, 12);
    add("Mono14", 14, 0x04, 16);
    add("Mono16", 16, 0x05, 16);
    add("Mono8_FLExPacked", 8, 0x31, 8);
}

struct ColourOrder
{
    const char* name;
    const char* layout;
};

constexpr std::array<ColourOrder, 4> ColourOrders = {
    {{"GR", "G R G2 B"}, {"RG", "R G B G2"}, {"GB", "G B G2 R"}, {"BG", "B G R G2"}}};

void addBayer(Formats& all, const ColourOrder& order, const std::string& ending, std::uint32_t depth,
              std::uint32_t packing, std::uint32_t bits)
{
    all.push_back(
        {std::string("Bayer") + order.name + ending, order.layout, 1, depth, "Y", 0, Bayer, bits, packing});
}

void addPlainBayer(Formats& all, std::uint32_t depth, std::uint32_t packing, std::uint32_t bits)
{
    for (const ColourOrder& order : ColourOrders)
        addBayer(all, order, std::to_string(depth), depth, packing, bits);
}

void addDenseBayer(Formats& all, std::uint32_t depth, std::uint32_t streamPacking, std::uint32_t pairPacking)
{
    for (const ColourOrder& order : ColourOrders) {
        addBayer(all, order, std::to_string(depth) + "p", depth, streamPacking, depth);
        addBayer(all, order, std::to_string(depth) + "Packed", depth, pairPacking, 12);
    }
}

void addTrueSense(Formats& all, std::uint32_t depth, std::uint32_t packing, std::uint32_t bits)
{
    constexpr std::array<ColourOrder, 4> Patterns = {{
        {"BGGR_WBBW", "W B W G B W G W W G W R G W R W"},
        {"GBRG_WGGW", "W G W B G W B W W R W G R W G W"},
        {"GRBG_WGGW", "W G W R G W R W W B W G B W G W"},
        {"RGGB_WRRW", "W R W G R W G W W G W B G W B W"},
    }};
    for (const ColourOrder& pattern : Patterns) {
        for (std::uint32_t phase = 0; phase < 4; ++phase) {
            all.push_back({std::string("TrueSense_") + pattern.name + "_" + std::to_string(phase) + "_" +
                               std::to_string(depth),
                           pattern.layout, 1, depth, "Y", phase, TrueSense, bits, packing});
        }
    }
}

void addRgb(Formats& all)
{
    all.push_back({"RGB8", "R G B", 3, 8, "RGB", 0, Rgb, 24, 0x01});
    all.push_back({"BGR8", "B G R", 3, 8, "BGR", 0, Rgb, 24, 0x01});
    all.push_back({"RGBa8", "R G B A", 4, 8, "RGBA", 0, Rgb, 32, 0x01});
    all.push_back({"BGRa8", "B G R A", 4, 8, "BGRA", 0, Rgb, 32, 0x01});
    for (std::uint32_t packing = 2; packing <= 5; ++packing) {
        const std::uint32_t depth = 6 + 2 * packing;
        all.push_back({"RGB" + std::to_string(depth), "R G B", 3, depth, "RGB", 0, Rgb, 48, packing});
        all.push_back({"BGR" + std::to_string(depth), "B G R", 3, depth, "BGR", 0, Rgb, 48, packing});
    }
    all.push_back({"RGB_8_FLEX_Packed", "R G B", 3, 8, "RGB", 0, Rgb, 24, 0x31});
    all.push_back({"RGB_10_FLEX_Packed", "R G B", 3, 10, "RGB", 0, Rgb, 32, 0x32});
    all.push_back({"RGB_12_FLEX_Packed", "R G B", 3, 12, "RGB", 0, Rgb, 36, 0x33});
}

void addYuv(Formats& all)
{
    all.push_back({"YUV422_8_UYVY", "U Y V Y", 3, 8, "YUV", 0, Yuv, 16, 0x01});
    all.push_back({"YUV422_8", "Y U Y V", 3, 8, "YUV", 0, Yuv, 16, 0x01});
    all.push_back({"YUV422_10", "Y U Y V", 3, 10, "YUV", 0, Yuv, 32, 0x02});
    all.push_back({"YUV422_10_PACKED", "Y U Y V", 3, 10, "YUV", 0, Yuv, 20, 0x32});
    all.push_back({"YUV444_8", "Y U V A", 4, 8, "YUV", 0, Yuv, 32, 0x01});
    all.push_back({"YCbCr422_8", "Y Cb Y Cr", 3, 8, "YUV", 0, Yuv, 16, 0x01});
}

} // namespace

std::vector<ExpectedFormat> expectedFormats()
{
    Formats all;
    addMono(all);
    addPlainBayer(all, 8, 0x01, 8);
    addPlainBayer(all, 10, 0x02, 16);
    addPlainBayer(all, 12, 0x03, 16);
    addDenseBayer(all, 10, 0x22, 0x12);
    addDenseBayer(all, 12, 0x23, 0x13);
    addPlainBayer(all, 14, 0x04, 16);
    addPlainBayer(all, 16, 0x05, 16);
    addTrueSense(all, 8, 0x01, 8);
    addTrueSense(all, 10, 0x02, 16);
    addTrueSense(all, 12, 0x03, 16);
    addTrueSense(all, 14, 0x04, 16);
    addRgb(all);
    addYuv(all);
    return all;
}
