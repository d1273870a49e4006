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
