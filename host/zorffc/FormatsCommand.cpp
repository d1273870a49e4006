#include "host/zorffc/Commands.h"

#include "host/quality/MonoFrame.h"
#include "host/zorffc/CommandError.h"
#include "host/zorffc/StandardStreams.h"
#include "image/MonoTarget.h"
#include "image/ZorPixelTypeTable.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdlib>
#include <iomanip>
#include <memory>
#include <sstream>
#include <string>

namespace zor {

namespace {

const char* familyName(std::uint32_t code)
{
    switch (pixelTypeFamily(code)) {
    case PixelFamily::Mono:
        return "Mono";
    case PixelFamily::Rgb:
        return "RGB";
    case PixelFamily::Bayer:
        return "Bayer";
    case PixelFamily::TrueSense:
        return "TrueSense";
    case PixelFamily::Yuv:
        return "YUV";
    }
    return "";
}

const char* packingName(std::uint32_t code)
{
    switch (pixelTypePackingClass(code)) {
    case PackingClass::Unpacked:
        return "unpacked";
    case PackingClass::Packed:
        return "packed";
    case PackingClass::P:
        return "p";
    case PackingClass::Flex:
        return "flex";
    }
    return "";
}

std::string codeText(std::uint32_t code)
{
    std::ostringstream text;
    text << "0x" << std::uppercase << std::hex << std::setw(8) << std::setfill('0') << code;
    return text.str();
}

bool containsButForCase(std::string text, std::string part)
{
    for (std::string* both : {&text, &part})
        std::transform(both->begin(), both->end(), both->begin(),
                       [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
    return text.find(part) != std::string::npos;
}

constexpr std::size_t Columns = 10;
using Line = std::array<std::string, Columns>;

/// The width of each column, below 0 for text, which is aligned left. The layout comes last, because it alone
/// holds blanks.
constexpr std::array<int, Columns> Widths = {3, -24, -10, -9, 5, 4, -8, 8, -6, 0};

const Line Header = {"row",  "name",    "code",     "family", "depth",
                     "bits", "packing", "channels", "target", "layout"};

Line lineOf(const ZorPixelTypeRow& row)
{
    return {std::to_string(pixelTypeNumber(row.code)),
            row.name,
            codeText(row.code),
            familyName(row.code),
            std::to_string(row.depth),
            std::to_string(pixelTypeBits(row.code)),
            packingName(row.code),
            std::to_string(row.channels),
            pixelTypeName(computeFormat(row.depth)),
            row.channelLayout};
}

void print(std::ostream& table, const Line& line)
{
    for (std::size_t column = 0; column < Columns; ++column)
        table << (column == 0 ? "" : "  ") << (Widths[column] < 0 ? std::left : std::right)
              << std::setw(std::abs(Widths[column])) << line[column];
    table << "\n";
}

void printFormats(const std::string& part)
{
    std::ostringstream table;
    print(table, Header);
    bool found = false;
    for (const ZorPixelTypeRow& row : ZorPixelTypeTable) {
        if (!containsButForCase(row.name, part) && !containsButForCase(familyName(row.code), part))
            continue;
        found = true;
        print(table, lineOf(row));
    }
    if (!found)
        throw CommandError("TEXT: no pixel format has '" + part +
                           "' in its name or family; leave it out to see all");
    // No file depends on the table being read, so a reader may leave before its end.
    if (writeOutput(table.str()) == Delivery::Failed)
        throw CommandError("standard output cannot be written");
}

} // namespace

void addFormatsCommand(CLI::App& app)
{
    const auto part = std::make_shared<std::string>();
    CLI::App* command = app.add_subcommand("formats", "Prints the table of the pixel formats");
    command
        ->add_option("TEXT", *part,
                     "Only formats with this text in their name or family, in small or capital letters")
        ->type_name("");
    command->callback([part] { printFormats(*part); });
}

} // namespace zor
