#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace zor {

/// Normal random numbers by one look-up each.
class NormalTable
{
public:
    static constexpr unsigned IndexBits = 14;

    /// The one table, made at the first call.
    static const NormalTable& instance();

    /// Mean 0, standard deviation 1, when all values of the lowest `IndexBits` bits are equally likely; the
    /// bits above mean nothing.
    float at(std::uint64_t bits) const { return m_values[bits & (Size - 1)]; }

private:
    static constexpr std::size_t Size = std::size_t{1} << IndexBits;

    NormalTable();

    std::array<float, Size> m_values;
};

} // namespace zor
