#pragma once

#include "image/ZorImage.h"

#include <cstdint>
#include <vector>

/// What ZimConvert does in this program, and what it was asked. Set afresh by each test.
struct FakeConverter
{
    int answer = 0; ///< other than 0: no record is made
    /// The record that is delivered; `data` points into `pixels`, which are copied to a block without spare
    /// bytes.
    _ZorImage record{};
    std::vector<std::uint8_t> pixels;

    int conversions = 0;
    unsigned long askedType = 0;
    const _ZorImage* askedSource = nullptr;
    int live = 0; ///< records delivered and not given back
};

extern FakeConverter fakeConverter;
