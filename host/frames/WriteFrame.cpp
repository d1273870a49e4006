#include "host/frames/WriteFrame.h"

#include "host/frames/Fail.h"
#include "host/frames/PictureRows.h"
#include "host/frames/Png.h"
#include "host/frames/Pnm.h"
#include "host/frames/Raw.h"
#include "host/frames/RawRange.h"
#include "host/frames/Tiff.h"
#include "image/ZorPixelTypeTable.h"

#include <algorithm>
#include <iterator>

#include <strings.h>

namespace zor {

namespace {

struct FileKind
{
    const char* ending;
    bool grey;   ///< holds frames of one sample a pixel
    bool colour; ///< and of three
    std::string (*bytes)(const _ZorImage& frame);
};

constexpr FileKind PictureKinds[] = {
    {".pgm", true, false, pnmBytes},  {".ppm", false, true, pnmBytes}, {".png", true, true, pngBytes},
    {".tiff", true, true, tiffBytes}, {".tif", true, true, tiffBytes},
};

constexpr const char* RawEndings[] = {".raw", ".bin"};

bool holds(const FileKind& kind, std::uint32_t pixelType)
{
    if (!PictureRows::has(pixelType))
        return false;
    return samplesPerPixel(pixelType) == 1 ? kind.grey : kind.colour;
}

bool endsIn(const std::string& path, const std::string& ending)
{
    return path.size() > ending.size() &&
           ::strcasecmp(path.c_str() + path.size() - ending.size(), ending.c_str()) == 0;
}

/// The one of frameFileEndings() that the path has; empty when it has none.
std::string endingOf(const std::string& path, std::uint32_t pixelType)
{
    const std::vector<std::string> endings = frameFileEndings(pixelType);
    const auto ending = std::find_if(endings.begin(), endings.end(),
                                     [&path](const std::string& one) { return endsIn(path, one); });
    return ending == endings.end() ? std::string() : *ending;
}

[[noreturn]] void failEnding(const std::string& path, std::uint32_t pixelType)
{
    const ZorPixelTypeRow* row = exactPixelTypeRow(pixelType);
    if (!row)
        failFrame(path, "the frame is in no known pixel format; take it in one that zorffc formats lists");
    std::string list;
    const std::vector<std::string> endings = frameFileEndings(pixelType);
    for (const std::string& ending : endings)
        list += (list.empty() ? "" : &ending == &endings.back() ? " or " : ", ") + ending;
    failFrame(path,
              std::string("is no file for a frame in ") + row->name + "; use a name that ends in " + list);
}

std::string pictureBytes(const std::string& path, const FileKind& kind, const _ZorImage& frame)
{
    if (const auto problem = sampleAboveDepth(frame))
        failFrame(path, *problem + "; write it as a raw dump, or take the frame in its true format");
    try {
        return kind.bytes(frame);
    } catch (const std::runtime_error& error) {
        failFrame(path, error.what());
    }
}

} // namespace

std::vector<std::string> frameFileEndings(std::uint32_t pixelType)
{
    std::vector<std::string> endings;
    for (const FileKind& kind : PictureKinds) {
        if (holds(kind, pixelType))
            endings.emplace_back(kind.ending);
    }
    if (exactPixelTypeRow(pixelType))
        endings.insert(endings.end(), std::begin(RawEndings), std::end(RawEndings));
    return endings;
}

void checkFrameFileEnding(const std::string& path, std::uint32_t pixelType)
{
    if (endingOf(path, pixelType).empty())
        failEnding(path, pixelType);
}

std::string frameFileBytes(const std::string& path, const _ZorImage& frame)
{
    checkFrameFileEnding(path, frame.pixelType);
    const std::string ending = endingOf(path, frame.pixelType);
    for (const FileKind& kind : PictureKinds) {
        if (ending == kind.ending)
            return pictureBytes(path, kind, frame);
    }
    return rawBytes(frame, false);
}

} // namespace zor
