#pragma once

#include <QVector>

#include <cstdint>
#include <vector>

/// 16-bit cells as numbers from 0 to 65535, as data tables hold them.
using Words = QVector<int>;

inline std::vector<std::uint8_t> bytesOf(const Words& words)
{
    std::vector<std::uint8_t> bytes;
    for (const int word : words) {
        bytes.push_back(static_cast<std::uint8_t>(word & 0xFF));
        bytes.push_back(static_cast<std::uint8_t>((word >> 8) & 0xFF));
    }
    return bytes;
}

inline Words wordsOf(const std::vector<std::uint8_t>& bytes)
{
    Words words;
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2)
        words.push_back(bytes[i] + 256 * bytes[i + 1]);
    return words;
}
