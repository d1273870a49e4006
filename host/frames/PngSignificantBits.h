#pragma once

#include "host/frames/StoredSamples.h"

namespace zor {

/// Takes over what a PNG file's sBIT entry says. The format wants samples of fewer significant bits brought
/// up to the file's bits by a shift, the bits below zero or a repetition of the high ones; not every writer
/// does so. Samples that all fit the significant bits are taken as they are. Else, when all of them are
/// brought up, they are shifted down again, which gives the camera's values exactly. Anything else stays for
/// the depth check.
void applySignificantBits(StoredSamples& samples, std::uint32_t fileBits, std::uint32_t significantBits);

} // namespace zor
