#pragma once

#include "image/ZorImgProcessor.h"

/// Marks bright pixels in a copy of each image: where the first channel's sample is 128 or more, whatever the
/// depth, the elements of the second and third channel become 0. On RGB a mark is pure red, on BGR pure blue.
/// On images of one channel these elements are the next two pixels', so that the mark is a black edge of two
/// pixels to the right of a bright area, running on into padding, the next row and up to two elements after
/// the last pixel. Images of the `Packed` classes are never marked. See docs/decisions.md.
///
/// One processor is for one thread at a time.
class HighLightProcessor final : public ZorImgProcessor
{
public:
    HighLightProcessor() = default;
    HighLightProcessor(const HighLightProcessor&) = delete;
    HighLightProcessor& operator=(const HighLightProcessor&) = delete;
    ~HighLightProcessor() override;

    /// 0 in every case. Without a source, or when it can't be copied, there is no output.
    int processImage(const _ZorImage* source) override;
    void noOperation() override {}
    int constantZero() override { return 0; }
    /// The marked copy of the last image; null before the first one.
    _ZorImage* outputImage() override { return image; }

private:
    _ZorImage* image = nullptr; ///< owned, from ZorCloneImage
};
