#include "host/frames/PnmText.h"

namespace zor {

std::optional<std::uint64_t> PnmText::number()
{
    skipBlanks();
    constexpr std::size_t MaxDigits = 10;
    const std::size_t start = m_position;
    std::uint64_t value = 0;
    while (m_position < m_bytes.size() && m_bytes[m_position] >= '0' && m_bytes[m_position] <= '9') {
        value = value * 10 + (m_bytes[m_position] - std::uint64_t{'0'});
        if (++m_position - start > MaxDigits)
            return std::nullopt;
    }
    return m_position > start ? std::optional(value) : std::nullopt;
}

bool PnmText::endOfHeader()
{
    if (m_position >= m_bytes.size())
        return false;
    if (m_bytes[m_position] == '#') {
        skipComment();
        return true;
    }
    return isPnmSpace(m_bytes[m_position++]);
}

bool PnmText::atEnd()
{
    skipBlanks();
    return m_position == m_bytes.size();
}

void PnmText::skipBlanks()
{
    while (m_position < m_bytes.size()) {
        if (m_bytes[m_position] == '#')
            skipComment();
        else if (isPnmSpace(m_bytes[m_position]))
            ++m_position;
        else
            return;
    }
}

void PnmText::skipComment()
{
    while (m_position < m_bytes.size()) {
        const std::uint8_t byte = m_bytes[m_position++];
        if (byte == '\n' || byte == '\r')
            return;
    }
}

} // namespace zor
