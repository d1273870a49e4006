#pragma once

#include "image/ZorImage.h"

#include <cstdint>
#include <list>
#include <memory>
#include <vector>

/// What ZimConvert does in this program, and what it was asked. Set afresh by each test.
class FakeConverter
{
public:
    int answer = 0; ///< other than 0: no record is made

    /// Delivers this record from now on, with these pixels in a block of exactly their size. Without it every
    /// conversion delivers a copy of its source.
    void deliver(const _ZorImage& record, std::vector<std::uint8_t> pixels);

    int conversions = 0;
    unsigned long askedType = 0;
    const _ZorImage* askedSource = nullptr;

    /// Records delivered and not given back. They stay the converter's, so a loss is counted here and is no
    /// leak of the program.
    int live() const { return static_cast<int>(m_delivered.size()); }

    /// What ZimConvert and ZorReleaseImage call.
    int convert(const _ZorImage* source, unsigned long targetPixelType, _ZorImage** result);
    void release(_ZorImage** slot);

private:
    struct Delivered
    {
        _ZorImage record;
        std::unique_ptr<std::uint8_t[]> pixels;
    };
    bool m_echoes = true;
    _ZorImage m_record{};
    std::vector<std::uint8_t> m_pixels;
    std::list<Delivered> m_delivered;
};

extern FakeConverter fakeConverter;
