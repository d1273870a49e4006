#include "host/frames/FrameSize.h"

#include "host/frames/Fail.h"

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

} // namespace zor
