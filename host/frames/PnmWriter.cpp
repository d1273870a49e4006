#include "host/frames/Pnm.h"

#include "image/PixelTypeCode.h"

namespace zor {

std::string pnmBytes(const _ZorImage& picture)
{
    const std::uint32_t depth = pixelTypeSampleBits(picture.pixelType);
    const std::size_t lineBytes = std::size_t{picture.width} * (depth > 8 ? 2 : 1);
    std::string bytes = "P5\n" + std::to_string(picture.width) + " " + std::to_string(picture.height) + "\n" +
                        std::to_string((1U << depth) - 1) + "\n";
    bytes.reserve(bytes.size() + lineBytes * picture.height);
    for (std::size_t y = 0; y < picture.height; ++y) {
        const std::uint8_t* line = picture.data + y * picture.pitch;
        if (depth == 8) {
            bytes.append(reinterpret_cast<const char*>(line), lineBytes);
            continue;
        }
        for (std::size_t i = 0; i < lineBytes; i += 2) {
            bytes.push_back(static_cast<char>(line[i + 1]));
            bytes.push_back(static_cast<char>(line[i]));
        }
    }
    return bytes;
}

} // namespace zor
