#include "host/frames/Pnm.h"

#include "host/frames/PictureRows.h"

namespace zor {

std::string pnmBytes(const _ZorImage& frame)
{
    PictureRows rows(frame);
    std::string bytes = (rows.channels() == 3 ? "P6\n" : "P5\n") + std::to_string(frame.width) + " " +
                        std::to_string(frame.height) + "\n" + std::to_string(rows.fullScale()) + "\n";
    bytes.reserve(bytes.size() + rows.rowBytes() * frame.height);
    for (std::uint32_t y = 0; y < frame.height; ++y) {
        const std::uint8_t* row = rows.row(y);
        if (rows.sampleBytes() == 1) {
            bytes.append(reinterpret_cast<const char*>(row), rows.rowBytes());
            continue;
        }
        for (std::size_t i = 0; i < rows.rowBytes(); i += 2) {
            bytes.push_back(static_cast<char>(row[i + 1]));
            bytes.push_back(static_cast<char>(row[i]));
        }
    }
    return bytes;
}

} // namespace zor
