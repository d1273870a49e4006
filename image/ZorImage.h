#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace zor {

/// First words of every image record.
struct RecordHead
{
    std::uint32_t recordSize;    ///< always ImageRecordSize
    std::uint32_t recordVersion; ///< always ImageRecordVersion
};

/// The format block of an image record: what one pixel looks like.
/// ZorFormatFromCode fills it; code that only needs the pixel's shape takes this and not the whole record.
struct FormatBlock
{
    std::uint32_t pixelType; ///< whole pixel type code, see PixelTypeCode.h
    std::uint32_t depth;     ///< significant bits per channel
    std::uint8_t isSigned;   ///< non-zero: samples are signed
    std::uint8_t formatPadding[3];
    std::uint32_t packing; ///< the code's packing byte left in place: code & 0xFF00
    std::uint32_t channels;
    std::uint32_t pixelBits; ///< bits that one pixel takes in memory
};

constexpr std::uint32_t ImageRecordSize = 96;
constexpr std::uint32_t ImageRecordVersion = 0x20000;

} // namespace zor

/// One image, whatever its origin. The 96 bytes are exchanged as they are with the closed libraries, the
/// viewers and the host, so every offset is binding. A 64-bit little-endian machine is presumed.
///
/// `pitch` and `imageSize` are what the maker of the image delivered; they are never derived from the other
/// fields, and a row may end in padding.
struct _ZorImage : zor::RecordHead, zor::FormatBlock
{
    std::uint32_t reserved32;
    std::uint32_t width;     ///< pixels per row
    std::uint32_t height;    ///< rows
    std::uint32_t imageSize; ///< bytes of the pixel buffer
    std::uint32_t pitch;     ///< bytes from the start of one row to the start of the next
    std::uint32_t sizePadding;
    std::uint64_t reserved56[3];
    std::uint8_t* data; ///< first byte of the first row
    std::uint64_t reserved88;
};

static_assert(sizeof(void*) == 8, "the record holds a 64-bit pointer");
#if defined(__BYTE_ORDER__)
static_assert(__BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__, "the record is little-endian");
#endif
static_assert(sizeof(zor::FormatBlock) == 24 && sizeof(_ZorImage) == zor::ImageRecordSize);
static_assert(std::is_trivially_copyable_v<_ZorImage>);

// The bases lie in front of the members in their order; compilers define offsetof for such a class but warn.
#if defined(__GNUC__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Winvalid-offsetof"
#endif
static_assert(offsetof(_ZorImage, recordSize) == 0 && offsetof(_ZorImage, recordVersion) == 4);
static_assert(offsetof(_ZorImage, pixelType) == 8 && offsetof(_ZorImage, depth) == 12);
static_assert(offsetof(_ZorImage, isSigned) == 16 && offsetof(_ZorImage, formatPadding) == 17);
static_assert(offsetof(_ZorImage, packing) == 20 && offsetof(_ZorImage, channels) == 24);
static_assert(offsetof(_ZorImage, pixelBits) == 28 && offsetof(_ZorImage, reserved32) == 32);
static_assert(offsetof(_ZorImage, width) == 36 && offsetof(_ZorImage, height) == 40);
static_assert(offsetof(_ZorImage, imageSize) == 44 && offsetof(_ZorImage, pitch) == 48);
static_assert(offsetof(_ZorImage, sizePadding) == 52 && offsetof(_ZorImage, reserved56) == 56);
static_assert(offsetof(_ZorImage, data) == 80 && offsetof(_ZorImage, reserved88) == 88);
#if defined(__GNUC__)
#pragma GCC diagnostic pop
#endif
