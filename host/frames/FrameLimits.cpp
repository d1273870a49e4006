#include "host/frames/FrameLimits.h"

#include "host/frames/Fail.h"

#include <algorithm>

namespace zor {

void checkFrameSize(const std::string& path, std::uint64_t width, std::uint64_t height,
                    std::uint64_t bytesPerLine)
{
    const std::string size = std::to_string(width) + "x" + std::to_string(height);
    if (width == 0 || height == 0 || width > MaxFrameSide || height > MaxFrameSide)
        failFrame(path, "its size " + size + " is not usable; each side is 1 to " +
                            std::to_string(MaxFrameSide) + "; check the size or write the file again");
    if (bytesPerLine > MaxFrameBytes / height)
        failFrame(path, "its size " + size + " with " + std::to_string(bytesPerLine) +
                            " bytes a line is above the limit of " + std::to_string(MaxFrameBytes) +
                            " bytes; use a smaller frame");
}

void checkFileHolds(const std::string& path, std::uint64_t fileBytes, std::uint64_t sampleBytes,
                    const Inflation& inflation)
{
    const std::uint64_t needed = (sampleBytes - std::min(sampleBytes, inflation.freely)) / inflation.factor;
    if (fileBytes < needed)
        failFrame(path, "its header asks for " + std::to_string(sampleBytes) +
                            " bytes of samples, which takes a file of at least " + std::to_string(needed) +
                            " bytes; it has " + std::to_string(fileBytes) + "; write or copy the file again");
}

} // namespace zor
