#pragma once

#include "image/ZorImage.h"

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace zor {

/// A frame read from a file: pixels with the geometry and format that an image record needs.
struct Frame
{
    std::uint32_t width = 0;  ///< pixels
    std::uint32_t height = 0; ///< rows
    std::uint32_t pitch = 0;  ///< bytes from row to row
    std::uint32_t pixelType = 0;
    std::vector<std::uint8_t> pixels;
    /// Where the depth comes from, as a person reads it: "maxval 4095", "largest sample 3981", "--depth 12".
    std::string depthSource;
    /// The depth comes from the largest sample alone, and the stored words have room for more bits.
    bool depthGuessed = false;

    /// A record that borrows this frame's pixels: valid while the frame lives and is not changed.
    _ZorImage record() const;
};

/// What to make of the samples of a TIFF file whose 0 is white.
enum class WhiteIsZero
{
    Stored,   ///< the samples as they are
    Inverted, ///< full scale of 8 or 16 bits less the sample
};

/// How the pixels of a raw dump lie, which has no header of its own.
struct RawLayout
{
    std::string format; ///< name of a pixel format
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    std::optional<std::uint32_t> pitch; ///< tight rows when not given
    bool packedOrderRecord = false;     ///< `Packed` low bits lie as in a record, not as on the wire
};

/// How a file is to be read.
struct FrameOptions
{
    std::optional<std::uint32_t> depth; ///< 8, 10, 12 or 16: overrides the depth of a picture file
    bool depthIsOffered = true;         ///< texts may advise to give a depth
    /// Needed for a TIFF file whose 0 is white, refused for any other file.
    std::optional<WhiteIsZero> whiteIsZero;
    /// Set for a raw dump.
    std::optional<RawLayout> raw;
};

/// A frame could not be read or written. The text is one line that names the file, what is wrong and what to
/// do.
class FrameError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// The content of a file begins like no picture: it may be a raw dump.
class NoPicture : public FrameError
{
public:
    using FrameError::FrameError;
};

/// A TIFF file whose 0 is white is to be read with `whiteIsZero` given.
class WhiteIsZeroAsked : public FrameError
{
public:
    using FrameError::FrameError;
};

/// Reads a frame from a PGM, PPM, PNG or TIFF file, recognised by its content, or from a raw dump when
/// `options.raw` is set. A picture file in grey becomes a frame in the mono format of its depth, one in
/// colour or with a palette becomes one in RGB8, RGB10, RGB12 or RGB16. Throws FrameError, without
/// `options.raw` also NoPicture, without `options.whiteIsZero` also WhiteIsZeroAsked.
Frame readFrame(const std::string& path, const FrameOptions& options);

} // namespace zor
