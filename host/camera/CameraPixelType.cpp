#include "host/camera/CameraPixelType.h"

#include "image/ZorPixelTypeTable.h"

#include <algorithm>
#include <cstring>
#include <iterator>

namespace zor {

namespace {

struct PfncFormat
{
    std::uint32_t code; ///< as PFNC assigns it
    const char* name;   ///< as the pixel type table has it
};

// PFNC's family, bits per pixel and identifier. The names are PFNC's but for its RGBa8 and BGRa8 family,
// which the table has under the same names, so that no row needs a second one.
// clang-format off
constexpr PfncFormat PfncFormats[] = {
    {0x01080001, "Mono8"},          {0x01100003, "Mono10"},         {0x010A0046, "Mono10p"},
    {0x010C0004, "Mono10Packed"},   {0x01100005, "Mono12"},         {0x010C0047, "Mono12p"},
    {0x010C0006, "Mono12Packed"},   {0x01100025, "Mono14"},         {0x01100007, "Mono16"},

    {0x01080008, "BayerGR8"},       {0x01080009, "BayerRG8"},       {0x0108000A, "BayerGB8"},
    {0x0108000B, "BayerBG8"},
    {0x0110000C, "BayerGR10"},      {0x0110000D, "BayerRG10"},      {0x0110000E, "BayerGB10"},
    {0x0110000F, "BayerBG10"},
    {0x010A0056, "BayerGR10p"},     {0x010A0058, "BayerRG10p"},     {0x010A0054, "BayerGB10p"},
    {0x010A0052, "BayerBG10p"},
    {0x010C0026, "BayerGR10Packed"}, {0x010C0027, "BayerRG10Packed"}, {0x010C0028, "BayerGB10Packed"},
    {0x010C0029, "BayerBG10Packed"},
    {0x01100010, "BayerGR12"},      {0x01100011, "BayerRG12"},      {0x01100012, "BayerGB12"},
    {0x01100013, "BayerBG12"},
    {0x010C0057, "BayerGR12p"},     {0x010C0059, "BayerRG12p"},     {0x010C0055, "BayerGB12p"},
    {0x010C0053, "BayerBG12p"},
    {0x010C002A, "BayerGR12Packed"}, {0x010C002B, "BayerRG12Packed"}, {0x010C002C, "BayerGB12Packed"},
    {0x010C002D, "BayerBG12Packed"},
    {0x01100109, "BayerGR14"},      {0x0110010A, "BayerRG14"},      {0x0110010B, "BayerGB14"},
    {0x0110010C, "BayerBG14"},
    {0x0110002E, "BayerGR16"},      {0x0110002F, "BayerRG16"},      {0x01100030, "BayerGB16"},
    {0x01100031, "BayerBG16"},

    {0x02180014, "RGB8"},           {0x02180015, "BGR8"},           {0x02200016, "RGBa8"},
    {0x02200017, "BGRa8"},          {0x02300018, "RGB10"},          {0x02300019, "BGR10"},
    {0x0230001A, "RGB12"},          {0x0230001B, "BGR12"},          {0x0230005E, "RGB14"},
    {0x0230004A, "BGR14"},          {0x02300033, "RGB16"},          {0x0230004B, "BGR16"},
    {0x0210001F, "YUV422_8_UYVY"},  {0x02100032, "YUV422_8"},       {0x0210003B, "YCbCr422_8"},
};
// clang-format on

} // namespace

std::optional<std::uint32_t> pixelTypeOfPfnc(std::uint32_t pfncCode)
{
    const auto* format = std::find_if(std::begin(PfncFormats), std::end(PfncFormats),
                                      [&](const PfncFormat& one) { return one.code == pfncCode; });
    if (format == std::end(PfncFormats))
        return std::nullopt;
    const auto* row =
        std::find_if(std::begin(ZorPixelTypeTable), std::end(ZorPixelTypeTable),
                     [&](const ZorPixelTypeRow& one) { return std::strcmp(one.name, format->name) == 0; });
    if (row == std::end(ZorPixelTypeTable))
        return std::nullopt;
    return row->code;
}

} // namespace zor
