#include "host/frames/Pnm.h"

#include "host/frames/DepthRule.h"
#include "host/frames/Fail.h"
#include "host/frames/FileBytes.h"
#include "host/frames/FrameLimits.h"
#include "host/frames/PnmText.h"

#include <algorithm>

namespace zor {

namespace {

struct Header
{
    std::uint32_t width;
    std::uint32_t height;
    std::uint32_t channels;
    std::uint32_t maxval;
    std::size_t count() const { return std::size_t{width} * height * channels; }
};

[[noreturn]] void failPnm(const std::string& path, const std::string& what)
{
    failFrame(path, what + "; write or copy the file again");
}

Header readHeader(const std::string& path, PnmText& text, std::uint32_t channels)
{
    const auto width = text.number();
    const auto height = width ? text.number() : std::nullopt;
    const auto maxval = height ? text.number() : std::nullopt;
    if (!maxval)
        failPnm(path, "its header ends or is garbled before width, height and maxval are complete");
    if (*maxval < 1 || *maxval > 65535)
        failPnm(path, "its maxval " + std::to_string(*maxval) + " is not 1 to 65535");
    checkFrameSize(path, *width, *height, *width * channels * (*maxval > 255 ? 2 : 1));
    return {static_cast<std::uint32_t>(*width), static_cast<std::uint32_t>(*height), channels,
            static_cast<std::uint32_t>(*maxval)};
}

void checkMaxval(const std::string& path, std::uint64_t sample, const Header& header, std::size_t index)
{
    if (sample > header.maxval)
        failFrame(path, "the sample " + std::to_string(sample) + " at " +
                            pixelPlace(header.width, index / header.channels) +
                            " is above the file's maxval " + std::to_string(header.maxval) +
                            "; correct the maxval in the header or write the file again");
}

std::vector<std::uint16_t> readBinary(const std::string& path, const std::vector<std::uint8_t>& bytes,
                                      PnmText& text, const Header& header)
{
    if (!text.endOfHeader())
        failPnm(path, "its header does not end with white space");
    const std::size_t sampleBytes = header.maxval > 255 ? 2 : 1;
    const std::size_t expected = header.count() * sampleBytes;
    const std::size_t found = bytes.size() - text.position();
    const auto raster = bytes.begin() + static_cast<std::ptrdiff_t>(text.position());
    if (found < expected ||
        !std::all_of(raster + static_cast<std::ptrdiff_t>(expected), bytes.end(), isPnmSpace))
        failPnm(path, "its header asks for " + std::to_string(expected) + " bytes of samples, the file has " +
                          std::to_string(found));

    std::vector<std::uint16_t> values(header.count());
    for (std::size_t i = 0; i < values.size(); ++i) {
        const std::uint8_t* sample = bytes.data() + text.position() + i * sampleBytes;
        values[i] = sampleBytes == 1 ? sample[0] : static_cast<std::uint16_t>(sample[0] << 8 | sample[1]);
        checkMaxval(path, values[i], header, i);
    }
    return values;
}

std::vector<std::uint16_t> readDecimal(const std::string& path, const std::vector<std::uint8_t>& bytes,
                                       PnmText& text, const Header& header)
{
    // A digit and a blank a sample, the last blank may be missing.
    const std::size_t found = bytes.size() - text.position();
    if (found / 2 + 1 < header.count())
        failPnm(path, "its header asks for " + std::to_string(header.count()) + " samples, the " +
                          std::to_string(found) + " bytes after it cannot hold as many");

    std::vector<std::uint16_t> values(header.count());
    for (std::size_t i = 0; i < values.size(); ++i) {
        const auto value = text.number();
        if (!value)
            failPnm(path, "its header asks for " + std::to_string(header.count()) + " samples, after " +
                              std::to_string(i) + " of them the file ends or holds no number");
        checkMaxval(path, *value, header, i);
        values[i] = static_cast<std::uint16_t>(*value);
    }
    if (!text.atEnd())
        failPnm(path,
                "its header asks for " + std::to_string(header.count()) + " samples, the file holds more");
    return values;
}

} // namespace

StoredSamples readPnm(const std::string& path)
{
    const std::vector<std::uint8_t> bytes = readBytes(path);
    if (bytes.size() < 3 || !(isPnmSpace(bytes[2]) || bytes[2] == '#'))
        failPnm(path, "its header ends or is garbled after the first two letters");
    PnmText text(bytes, 2);
    const std::uint8_t kind = bytes[1];
    const Header header = readHeader(path, text, kind == '3' || kind == '6' ? 3 : 1);

    StoredSamples samples;
    samples.width = header.width;
    samples.height = header.height;
    samples.channels = header.channels;
    samples.values = kind == '5' || kind == '6' ? readBinary(path, bytes, text, header)
                                                : readDecimal(path, bytes, text, header);
    samples.stated = {bitsForValue(header.maxval), "maxval " + std::to_string(header.maxval)};
    return samples;
}

} // namespace zor
