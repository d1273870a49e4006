#pragma once

#include "image/ZorImage.h"

/// The closed image library. It allocates what these functions return; every record goes back through the
/// function that matches its creation. All answer 0 for success.
extern "C" {

/// Makes a record of the given size (width in the low, height in the high 32 bits) and pixel type without
/// pixels: `data` null, `imageSize` and `pitch` 0. The three further words are passed as 0.
int ZorCreateImageHeader(_ZorImage** slot, std::uint64_t size, std::uint32_t pixelType, std::uint32_t first,
                         std::uint32_t second, std::uint32_t third);

/// Frees a record of ZorCreateImageHeader and nulls the slot. A null slot or record is tolerated.
int ZorReleaseImageHeader(_ZorImage** slot);

/// A full copy of a record and its pixels. What the slot holds is used again or released; on failure the slot
/// is null. The source's pixels may be, or lie among, those of the record in the slot.
int ZorCloneImage(_ZorImage** slot, const _ZorImage* source);

/// Frees a cloned or converted record with its pixels and nulls the slot. A null slot or record is tolerated.
int ZorReleaseImage(_ZorImage** slot);
}
