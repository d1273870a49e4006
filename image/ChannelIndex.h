#pragma once

namespace zor {

/// The position of a channel letter in a pixel, one function for each order of channels; -1 for a letter that
/// the order does not have.

int channelIndexY(char16_t letter);
int channelIndexRgb(char16_t letter);
int channelIndexBgr(char16_t letter);
int channelIndexRgba(char16_t letter);
int channelIndexBgra(char16_t letter);
/// Knows no A, Cb or Cr, also for formats whose layout lists them.
int channelIndexYuv(char16_t letter);

} // namespace zor
