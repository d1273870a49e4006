#pragma once

#include <cstdint>
#include <optional>
#include <vector>

namespace zor {

/// Walks the text of a PGM or PPM file: numbers between white space, comments from # to the end of the line.
class PnmText
{
public:
    explicit PnmText(const std::vector<std::uint8_t>& bytes, std::size_t position)
        : m_bytes(bytes)
        , m_position(position)
    {
    }

    /// The next decimal number, at most 10 digits; none when something else or the end comes next.
    std::optional<std::uint64_t> number();

    /// Steps over the one white space, or the comment with its line end, that ends the header. False when
    /// neither is there.
    bool endOfHeader();

    /// Whether nothing but white space and comments follows.
    bool atEnd();

    std::size_t position() const { return m_position; }

private:
    void skipBlanks();
    void skipComment();

    const std::vector<std::uint8_t>& m_bytes;
    std::size_t m_position;
};

/// White space as the C locale knows it, whatever locale is set.
constexpr bool isPnmSpace(std::uint8_t byte)
{
    return byte == ' ' || (byte >= '\t' && byte <= '\r');
}

} // namespace zor
