#include "host/frames/FormatName.h"

#include "host/frames/Fail.h"

#include <algorithm>
#include <cctype>

namespace zor {

namespace {

bool equalButForCase(const std::string& left, const std::string& right)
{
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](unsigned char a, unsigned char b) { return std::tolower(a) == std::tolower(b); });
}

} // namespace

const ZorPixelTypeRow& formatByName(const std::string& subject, const std::string& name)
{
    const ZorPixelTypeRow* similar = nullptr;
    for (const ZorPixelTypeRow& row : ZorPixelTypeTable) {
        if (row.name == name)
            return row;
        if (equalButForCase(row.name, name))
            similar = &row;
    }
    failFrame(subject, "there is no pixel format '" + name + "'; " +
                           (similar ? "did you mean '" + std::string(similar->name) + "'?"
                                    : "see zorffc formats for the names of all"));
}

} // namespace zor
