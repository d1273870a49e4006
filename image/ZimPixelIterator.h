#pragma once

#include "image/ZorImage.h"

namespace zor {

/// The place of a walk over an image, which is not owned.
struct WalkPosition
{
    const _ZorImage* image;
    std::uint32_t step;   ///< from one pixel to the next
    std::uint32_t rowGap; ///< from the end of a row's pixels to the start of the next row
};

/// Steps and gaps in bytes.
struct ByteWalkPosition : WalkPosition
{
    std::uint8_t* cursor; ///< the current pixel
};

/// Steps and gaps in bits.
struct BitWalkPosition : WalkPosition
{
    std::uint32_t bitOffset; ///< of the current pixel, from the image's first bit
    std::uint8_t* cursor;    ///< the byte that holds that bit
};

} // namespace zor

/// A walk over the pixels of an image, which outlives it: in bits for the two `Packed` classes, in whole
/// bytes for every other format. A format whose pixels are no whole bytes otherwise has its step rounded
/// down, and such a walk does not follow the pixels: deliberate, see docs/decisions.md.
///
/// Steps, gaps and offsets are unsigned 32-bit numbers, which wrap before they are added to an address. There
/// is no end marker and no check: the walking loop counts columns and rows.
class ZimPixelIterator
{
public:
    /// Starts at pixel (x, y).
    ZimPixelIterator(const _ZorImage* image, std::uint32_t x, std::uint32_t y);
    ZimPixelIterator(const ZimPixelIterator&) = delete;
    ZimPixelIterator& operator=(const ZimPixelIterator&) = delete;
    virtual ~ZimPixelIterator();

    /// The current pixel; of a pixel that starts inside a byte, that byte.
    std::uint8_t* cursor() const { return bitAddressed ? bits().cursor : bytes().cursor; }

    /// One pixel to the right.
    void advance() { move(position->step); }

    /// From the end of `widthWalked` pixels of a row to the first pixel of the next one. The width may be
    /// another image's.
    void nextRow(std::uint32_t widthWalked)
    {
        move((position->image->width - widthWalked) * position->step + position->rowGap);
    }

protected:
    zor::WalkPosition* position = nullptr; ///< owned
    bool bitAddressed = false;             ///< the position is a BitWalkPosition

    zor::ByteWalkPosition& bytes() const { return *static_cast<zor::ByteWalkPosition*>(position); }
    zor::BitWalkPosition& bits() const { return *static_cast<zor::BitWalkPosition*>(position); }

private:
    // By the address as a number: with a pitch that is too small a jump ends far outside the image.
    static std::uint8_t* ahead(std::uint8_t* from, std::uint32_t distance)
    {
        return reinterpret_cast<std::uint8_t*>(reinterpret_cast<std::uintptr_t>(from) + distance);
    }

    void move(std::uint32_t distance)
    {
        if (bitAddressed) {
            bits().bitOffset += distance;
            bits().cursor = ahead(position->image->data, bits().bitOffset >> 3);
        } else {
            bytes().cursor = ahead(bytes().cursor, distance);
        }
    }
};
