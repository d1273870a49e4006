#include "platform/converter/BayerCell.h"

#include "image/ZorPixelTypeTable.h"

namespace zor::platform {

namespace {

BayerCell::Colour colourOf(char letter)
{
    return letter == 'R' ? BayerCell::Red : letter == 'B' ? BayerCell::Blue : BayerCell::Green;
}

} // namespace

BayerCell::BayerCell(std::uint32_t pixelType)
{
    const char* order = pixelTypeTableRow(pixelType)->name + sizeof("Bayer") - 1;
    const Colour first = colourOf(order[0]);
    const Colour second = colourOf(order[1]);
    // The second line has the colour that the first one lacks, diagonal to the one that is not green.
    const auto missing = [](Colour colour) { return colour == Red ? Blue : Red; };
    m_colours[0][0] = first;
    m_colours[0][1] = second;
    m_colours[1][0] = first == Green ? missing(second) : Green;
    m_colours[1][1] = first == Green ? Green : missing(first);
}

} // namespace zor::platform
