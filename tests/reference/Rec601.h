#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>

/// Rec. 601 at full range, in real numbers.
namespace reference {

struct Colour
{
    double red;
    double green;
    double blue;
};

inline double luma(const Colour& colour)
{
    return 0.299 * colour.red + 0.587 * colour.green + 0.114 * colour.blue;
}

/// How far from the true luma, in codes of the target, a luma may be that is rounded once in the source's
/// codes, with weights of 14 bits, and brought to the target's depth then.
inline double lumaTolerance(std::uint32_t sourceBits, std::uint32_t targetBits)
{
    const double sourceCodes = 0.5 + std::ldexp(1.0, int(sourceBits) - 15);
    const double depthChange = sourceBits == targetBits ? 0 : 1;
    return depthChange +
           sourceCodes * (std::ldexp(1.0, int(targetBits)) - 1) / (std::ldexp(1.0, int(sourceBits)) - 1);
}

/// What a sample of `bits` bits of this component, R, G, B, A, Y, W, U (Cb) or V (Cr), has to be before it is
/// rounded.
inline double component(char letter, const Colour& colour, std::uint32_t bits)
{
    const double fullScale = std::ldexp(1.0, int(bits)) - 1;
    const double middle = std::ldexp(1.0, int(bits) - 1);
    switch (letter) {
    case 'R':
        return colour.red;
    case 'G':
        return colour.green;
    case 'B':
        return colour.blue;
    case 'A':
        return fullScale;
    case 'U':
        return std::min(fullScale, middle + 0.5 / (1 - 0.114) * (colour.blue - luma(colour)));
    case 'V':
        return std::min(fullScale, middle + 0.5 / (1 - 0.299) * (colour.red - luma(colour)));
    default:
        return luma(colour);
    }
}

} // namespace reference
