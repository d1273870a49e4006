#pragma once

#include "image/ZorImage.h"

/// Makes and frees image records and their pixels. Compiled into both image libraries, so that a record that
/// one of them made can be given back through the other.
namespace zor::platform {

/// Bytes after `imageSize` that belong to every pixel buffer made here: a mark that is drawn a few samples
/// past the last pixel stays inside the block.
constexpr std::size_t SpareBytes = 16;

/// A record with size, version and the format block of `pixelType`, every other field 0, no pixels.
/// Null when there is no memory. The caller gives it back with freeRecord, or with freeHeader when it got no
/// pixels here.
_ZorImage* makeRecord(std::uint32_t pixelType);

/// Gives the record a pixel buffer of `imageSize` bytes and the spare ones, which are 0; the pixels
/// themselves are not set. The record must have none yet. False when there is no memory; the record then
/// stays as it is.
bool makePixels(_ZorImage* record, std::uint32_t imageSize);

/// Frees the record and its pixels. Null is tolerated.
void freeRecord(_ZorImage* record);

/// Frees the record alone: what its `data` points to, if anything, is somebody else's. Null is tolerated.
void freeHeader(_ZorImage* record);

} // namespace zor::platform
