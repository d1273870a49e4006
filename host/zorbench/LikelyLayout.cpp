#include "host/zorbench/LikelyLayout.h"

#include "host/frames/FormatName.h"
#include "image/Pitch.h"

namespace zor {

namespace {

struct Size
{
    std::uint32_t width;
    std::uint32_t height;
};

/// Of the sensors in industrial cameras, and of pictures.
constexpr Size CommonSizes[] = {
    {640, 480},   {320, 240},   {512, 512},   {640, 512},   {656, 494},   {720, 540},   {752, 480},
    {800, 600},   {808, 608},   {1024, 768},  {1024, 1024}, {1280, 720},  {1280, 960},  {1280, 1024},
    {1392, 1040}, {1440, 1080}, {1456, 1088}, {1600, 1200}, {1624, 1232}, {1624, 1240}, {1920, 1080},
    {1920, 1200}, {1936, 1216}, {1936, 1464}, {2048, 1088}, {2048, 1536}, {2048, 2048}, {2432, 2048},
    {2448, 2048}, {2464, 2056}, {2560, 1440}, {2592, 1944}, {2592, 2048}, {2840, 2840}, {3072, 2048},
    {3088, 2064}, {3208, 2200}, {3840, 2160}, {4096, 2160}, {4096, 3000}, {4096, 3072}, {4096, 4096},
    {4112, 3008}, {4504, 4096}, {4512, 4512}, {5120, 4096}, {5120, 5120}, {5320, 4600}, {5328, 4608},
    {5472, 3648}, {6576, 4384}, {6600, 4400}, {7920, 6004}, {8192, 5460}, {8192, 8192}, {9344, 7000},
};

/// With 1, 2, 1.5 and 3 bytes a pixel. What has 10 to 16 bits is shown as 16.
constexpr const char* CommonFormats[] = {"Mono8", "Mono16", "Mono12p", "RGB8"};

} // namespace

std::optional<RawLayout> likelyLayout(std::uint64_t bytes)
{
    for (const char* format : CommonFormats) {
        const std::uint32_t code = formatByName({}, format).code;
        for (const Size& size : CommonSizes) {
            if (tightPitch(code, size.width) * size.height == bytes)
                return RawLayout{format, size.width, size.height, {}};
        }
    }
    return std::nullopt;
}

} // namespace zor
