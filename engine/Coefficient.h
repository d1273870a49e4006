#pragma once

#include <cstdint>

namespace zor {

/// The value of a gain in the coefficient file: in effect the truncation of value x 2^fractionBits.
/// The integer part is not limited and wraps in 32 bits. `fractionBits` above 31 gives 0. A negative value
/// keeps a residue of |value| + |integer part|: -0.5 gives +128 at 8 bits, -1.5 gives -1, -2.25 gives -257.
/// +infinity gives all fraction bits set, NaN 0.
std::int32_t EncodeCoefficient(double value, std::uint8_t fractionBits);

} // namespace zor
