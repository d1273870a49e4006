#pragma once

#include "image/ZorImage.h"

/// Reads and writes single samples of an image of any format. `pixel` is the cursor of a ZimPixelIterator;
/// `column` is the pixel's place in its row, of which the lowest bit counts. Nothing is checked against the
/// image, and no address has to be aligned.
///
/// Whole samples are the elements of an array that starts at the pixel, numbered by `channel`: after the
/// pixel's own channels come the next pixel's. The other kinds ignore `channel`.
///
/// In the two `Packed` classes read and write work on different scales, on purpose: a read gives the pixel's
/// high byte alone, as a signed number, while a write takes the full 10 or 12 bits.
class ZimPixelAccessor
{
public:
    /// The rule for one pixel of this shape. Above 32 bits a channel there is none: reads give -1 and writes
    /// do nothing.
    explicit ZimPixelAccessor(const zor::FormatBlock& format);
    ZimPixelAccessor(const ZimPixelAccessor&) = delete;
    ZimPixelAccessor& operator=(const ZimPixelAccessor&) = delete;
    virtual ~ZimPixelAccessor();

    int read(const std::uint8_t* pixel, int channel, unsigned column) const;
    /// Stores the low bits of `value`, as many as a sample has.
    void write(std::uint8_t* pixel, int channel, int value, unsigned column) const;

protected:
    /// The constructor picks one of 0 to 5, 10 and 11. The others have their rules, but nothing here picks
    /// them.
    enum Kind : std::uint32_t
    {
        Signed8 = 0,
        Unsigned8 = 1,
        Signed16 = 2,
        Unsigned16 = 3,
        Signed32 = 4,
        Unsigned32 = 5,
        Overlapping10 = 6, ///< two pixels share a byte: the even one's low bits come first
        Overlapping12 = 7,
        High10 = 8, ///< in the high bits of a 16-bit word
        High12 = 9,
        Packed10 = 10,
        Packed12 = 11,
        Custom = 1956,
        NoKind = 0xFFFFFFFF,
    };

    /// Owned: a ZimTPixelAccessor, one byte without meaning for kinds 6 to 11, a CustomAccessor otherwise.
    void* impl = nullptr;
    std::uint32_t kind = NoKind;
};
