#include "image/ZimPixelAccessor.h"

#include "image/PixelTypeCode.h"
#include "image/ZimCustomAccessor.h"
#include "image/ZimTPixelAccessor.h"

#include <cstring>

namespace {

using Accessor8s = ZimTPixelAccessor<char, unsigned char>;
using Accessor8u = ZimTPixelAccessor<unsigned char, unsigned char>;
using Accessor16s = ZimTPixelAccessor<short, unsigned short>;
using Accessor16u = ZimTPixelAccessor<unsigned short, unsigned short>;
using Accessor32s = ZimTPixelAccessor<long, unsigned long>;
using Accessor32u = ZimTPixelAccessor<unsigned long, unsigned long>;

/// The object of the kinds that need no typed one.
struct Marker
{
};

template <class Sample> Sample elementAt(const std::uint8_t* pixel, int channel)
{
    Sample sample;
    std::memcpy(&sample, pixel + std::ptrdiff_t{channel} * std::ptrdiff_t{sizeof sample}, sizeof sample);
    return sample;
}

template <class Sample> void setElement(std::uint8_t* pixel, int channel, int value)
{
    const auto sample = static_cast<Sample>(value);
    std::memcpy(pixel + std::ptrdiff_t{channel} * std::ptrdiff_t{sizeof sample}, &sample, sizeof sample);
}

std::uint8_t lowByte(std::uint32_t bits)
{
    return static_cast<std::uint8_t>(bits & 0xFF);
}

std::uint8_t highByte(std::uint32_t bits)
{
    return static_cast<std::uint8_t>(bits >> 8 & 0xFF);
}

/// The bits of `kept` that the mask names, and `bits`.
std::uint8_t joined(std::uint8_t kept, unsigned mask, unsigned bits)
{
    return lowByte((kept & mask) | bits);
}

/// `evenMask`: bits of the second byte that are not an even pixel's. `oddMask`: bits of the first byte that
/// stay when an odd pixel is written.
void writeOverlapping(std::uint8_t* pixel, std::uint32_t value, bool isOdd, unsigned evenMask,
                      unsigned oddMask)
{
    if (isOdd) {
        pixel[0] = joined(pixel[0], oddMask, lowByte(value << 4));
        pixel[1] = highByte(value << 4);
    } else {
        pixel[0] = lowByte(value);
        pixel[1] = joined(pixel[1], evenMask, highByte(value) & ~evenMask);
    }
}

/// `lowBits`: bits of the value that lie in the middle byte of the group.
void writePacked(std::uint8_t* pixel, std::uint32_t value, bool isOdd, unsigned lowBits)
{
    const std::uint32_t low = value & ((1u << lowBits) - 1);
    const std::uint8_t high = lowByte(value >> lowBits);
    if (isOdd) {
        pixel[0] = joined(pixel[0], 0xF0, low);
        pixel[1] = high;
    } else {
        pixel[0] = high;
        pixel[1] = joined(pixel[1], 0x0F, low << 4);
    }
}

} // namespace

// The sign is looked at before the packing: signed samples are always whole ones.
ZimPixelAccessor::ZimPixelAccessor(const zor::FormatBlock& format)
{
    if (format.depth <= 8) {
        kind = format.isSigned ? Signed8 : Unsigned8;
        impl = format.isSigned ? static_cast<void*>(new Accessor8s) : new Accessor8u;
    } else if (format.depth <= 16 && format.isSigned) {
        kind = Signed16;
        impl = new Accessor16s;
    } else if (format.depth <= 16 && zor::isBitAddressed(format.packing)) {
        kind = zor::Packing{format.packing} == zor::Packing::Packed10 ? Packed10 : Packed12;
        impl = new Marker;
    } else if (format.depth <= 16) {
        kind = Unsigned16;
        impl = new Accessor16u;
    } else if (format.depth <= 32) {
        kind = format.isSigned ? Signed32 : Unsigned32;
        impl = format.isSigned ? static_cast<void*>(new Accessor32s) : new Accessor32u;
    }
}

ZimPixelAccessor::~ZimPixelAccessor()
{
    if (kind == Signed8)
        delete static_cast<Accessor8s*>(impl);
    else if (kind == Unsigned8)
        delete static_cast<Accessor8u*>(impl);
    else if (kind == Signed16)
        delete static_cast<Accessor16s*>(impl);
    else if (kind == Unsigned16)
        delete static_cast<Accessor16u*>(impl);
    else if (kind == Signed32)
        delete static_cast<Accessor32s*>(impl);
    else if (kind == Unsigned32)
        delete static_cast<Accessor32u*>(impl);
    else if (kind >= Overlapping10 && kind <= Packed12)
        delete static_cast<Marker*>(impl);
    else
        delete static_cast<zor::CustomAccessor*>(impl);
    impl = nullptr;
}

int ZimPixelAccessor::read(const std::uint8_t* pixel, int channel, unsigned column) const
{
    const bool isOdd = (column & 1) != 0;
    if (kind == Signed8)
        return elementAt<std::int8_t>(pixel, channel);
    if (kind == Unsigned8)
        return elementAt<std::uint8_t>(pixel, channel);
    if (kind == Signed16)
        return elementAt<std::int16_t>(pixel, channel);
    if (kind == Unsigned16)
        return elementAt<std::uint16_t>(pixel, channel);
    if (kind == Signed32 || kind == Unsigned32)
        return elementAt<std::int32_t>(pixel, channel);
    if (kind == Overlapping10 || kind == Overlapping12) {
        const int word = elementAt<std::uint16_t>(pixel, 0);
        return isOdd ? word >> 4 : word & (kind == Overlapping10 ? 0x3FF : 0xFFF);
    }
    if (kind == High10)
        return elementAt<std::uint16_t>(pixel, 0) >> 6;
    if (kind == High12)
        return elementAt<std::uint16_t>(pixel, 0) >> 4;
    if (kind == Packed10 || kind == Packed12)
        return elementAt<std::int8_t>(pixel, isOdd ? 1 : 0);
    if (kind == Custom)
        return static_cast<zor::CustomAccessor*>(impl)->read(pixel, channel, column);
    return -1;
}

void ZimPixelAccessor::write(std::uint8_t* pixel, int channel, int value, unsigned column) const
{
    const bool isOdd = (column & 1) != 0;
    const auto bits = static_cast<std::uint16_t>(value);
    if (kind == Signed8 || kind == Unsigned8)
        setElement<std::uint8_t>(pixel, channel, value);
    else if (kind == Signed16 || kind == Unsigned16)
        setElement<std::uint16_t>(pixel, channel, value);
    else if (kind == Signed32 || kind == Unsigned32)
        setElement<std::uint32_t>(pixel, channel, value);
    else if (kind == Overlapping10)
        // Two bits more than the pixel needs are kept of the shared byte: deliberate, see docs/decisions.md.
        writeOverlapping(pixel, bits, isOdd, 0xFC, 0x3F);
    else if (kind == Overlapping12)
        writeOverlapping(pixel, bits, isOdd, 0xF0, 0x0F);
    else if (kind == High10)
        setElement<std::uint16_t>(pixel, 0, bits << 6);
    else if (kind == High12)
        setElement<std::uint16_t>(pixel, 0, bits << 4);
    else if (kind == Packed10)
        writePacked(pixel, bits, isOdd, 2);
    else if (kind == Packed12)
        writePacked(pixel, bits, isOdd, 4);
    else if (kind == Custom)
        static_cast<zor::CustomAccessor*>(impl)->write(pixel, channel, value, column);
}
