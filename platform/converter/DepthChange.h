#pragma once

#include <cstddef>
#include <cstdint>

namespace zor::platform {

/// Brings samples from one depth (8 to 16 bits) to another, in place. Down is a right shift. Up from s to t
/// bits is (v << (t - s)) | (v >> (2s - t)): the high bits are repeated below, so that 0 stays 0 and full
/// scale stays full scale. No sample may exceed `fromBits`.
void changeDepth(std::uint16_t* samples, std::size_t count, std::uint32_t fromBits, std::uint32_t toBits);

/// Stores samples of up to 8 bits as bytes.
void storeBytes(const std::uint16_t* samples, std::size_t count, std::uint8_t* destination);

/// Stores samples as little-endian words of 16 bits.
void storeWords(const std::uint16_t* samples, std::size_t count, std::uint8_t* destination);

} // namespace zor::platform
