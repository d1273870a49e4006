#pragma once

#include "engine/pix/PixTypes.h"

#include <cstddef>
#include <cstring>

namespace zor {

/// The first 80 bytes of a histogram plan. The levels follow as 32-bit integers, one channel after the other.
struct PixHistogramPlan
{
    std::int32_t dataType;
    std::int32_t channels;
    std::int32_t uniform;
    char mark[4];                ///< "hist"
    std::int32_t levelCounts[4]; ///< levels of each channel
    std::int32_t spacing;        ///< distance of the first channel's levels where all are equal, else 0
    std::int32_t reserved[11];
};

static_assert(sizeof(PixHistogramPlan) == 80);

constexpr char PixHistogramMark[4] = {'h', 'i', 's', 't'};

/// Looks at the mark alone, so that a shorter block is not read past its end.
inline bool isHistogramPlan(const void* plan)
{
    return std::memcmp(static_cast<const std::uint8_t*>(plan) + offsetof(PixHistogramPlan, mark),
                       PixHistogramMark, sizeof PixHistogramMark) == 0;
}

/// Channel counts that a plan can have.
inline bool isChannelCount(std::int32_t channels)
{
    return channels == 1 || channels == 3 || channels == 4;
}

/// The level with the given index after a plan, which may start at any address.
inline std::int32_t planLevel(const void* plan, std::int32_t index)
{
    std::int32_t level;
    std::memcpy(&level,
                static_cast<const std::uint8_t*>(plan) + sizeof(PixHistogramPlan) +
                    static_cast<std::ptrdiff_t>(index) * 4,
                sizeof level);
    return level;
}

inline void setPlanLevel(void* plan, std::int32_t index, std::int32_t level)
{
    std::memcpy(static_cast<std::uint8_t*>(plan) + sizeof(PixHistogramPlan) +
                    static_cast<std::ptrdiff_t>(index) * 4,
                &level, sizeof level);
}

} // namespace zor
