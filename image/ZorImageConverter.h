#pragma once

#include "image/ZorImage.h"

extern "C" {

/// The closed converter: brings an image to another pixel format. On 0 the record in the slot belongs to the
/// caller, who gives it back with ZorReleaseImage; any other answer is a failure.
int ZimConvert(const _ZorImage* source, unsigned long targetPixelType, _ZorImage** result);
}
