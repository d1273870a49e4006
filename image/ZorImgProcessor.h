#pragma once

#include "image/ZorImage.h"

/// A processor that a viewer runs on each image between what it is given and what it shows. The order of the
/// operations is binding.
class ZorImgProcessor
{
public:
    virtual ~ZorImgProcessor() = default;

    virtual int constantOne() { return 1; }

    /// Works on one image, which it does not change and which is good only during the call.
    virtual int processImage(const _ZorImage* source) = 0;

    virtual void noOperation() = 0;
    virtual int constantZero() = 0;

    /// The outcome of the last processImage; stays the property of the processor.
    virtual _ZorImage* outputImage() = 0;

    virtual int baseZero() { return 0; }
    virtual bool baseTrue() { return true; }
    virtual bool baseTrueToo() { return true; }
};
