#pragma once

#include "image/ZorImage.h"

/// Headers of the image library as a test wants them: counted, and failing on demand. They are kept until
/// reset, so that a test may look at one that was given back.
class FakeImageHeaders
{
public:
    /// From now on creation fails.
    static void failFromNowOn();
    static int created();
    static int released();
    /// The header that was made last.
    static const _ZorImage* last();
    /// Frees all headers; creation works again.
    static void reset();
};
