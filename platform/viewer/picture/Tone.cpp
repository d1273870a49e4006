#include "platform/viewer/picture/Tone.h"

namespace zor::viewer {
namespace {
constexpr std::uint32_t Opaque = 0xFF000000u;

std::uint32_t falseColour(int level)
{
    struct Stop
    {
        int red, green, blue;
    };
    constexpr int Steps = 5;
    constexpr Stop stops[Steps + 1] = {{0, 0, 0},     {0, 0, 255}, {0, 255, 255},
                                       {255, 255, 0}, {255, 0, 0}, {255, 255, 255}};
    const int scaled = level * Steps;
    const int index = level == 255 ? Steps - 1 : scaled / 255;
    const int part = scaled - index * 255;
    const auto mix = [part](int from, int to) {
        return static_cast<std::uint32_t>((from * (255 - part) + to * part + 127) / 255);
    };
    const Stop& a = stops[index];
    const Stop& b = stops[index + 1];
    return Opaque | mix(a.red, b.red) << 16 | mix(a.green, b.green) << 8 | mix(a.blue, b.blue);
}

std::uint32_t grey(std::uint32_t level)
{
    return Opaque | level * 0x010101u;
}

void colourRow(const Tone& tone, const std::uint16_t* samples, std::uint32_t* target, int pixels)
{
    const int red = tone.blueFirst ? 2 : 0;
    for (int x = 0; x < pixels; ++x, samples += 3)
        target[x] = Opaque | toneLevel(samples[red], tone.shift) << 16 |
                    toneLevel(samples[1], tone.shift) << 8 | toneLevel(samples[2 - red], tone.shift);
}

// The shift's sign is settled outside the loop, which the compiler can then turn into vector code.
void greyRow(int shift, const std::uint16_t* samples, std::uint32_t* target, int pixels)
{
    if (shift >= 0)
        for (int x = 0; x < pixels; ++x)
            target[x] = grey(toneLevel(samples[x], shift));
    else
        for (int x = 0; x < pixels; ++x)
            target[x] = grey(toneLevel(std::uint32_t{samples[x]} << -shift, 0));
}
} // namespace

Tone makeTone(const PixelShape& shape, bool coloration)
{
    Tone tone;
    tone.shift = shape.depth - 8;
    tone.isColour = shape.channels == 3;
    tone.blueFirst = shape.blueFirst;
    tone.isGrey = !coloration;
    for (int level = 0; level < 256; ++level)
        tone.table[static_cast<std::size_t>(level)] =
            coloration ? falseColour(level) : grey(static_cast<std::uint32_t>(level));
    return tone;
}

void toneRow(const Tone& tone, const std::uint16_t* samples, std::uint32_t* target, int pixels)
{
    if (tone.isColour)
        colourRow(tone, samples, target, pixels);
    else if (tone.isGrey)
        greyRow(tone.shift, samples, target, pixels);
    else
        for (int x = 0; x < pixels; ++x)
            target[x] = tone.table[toneLevel(samples[x], tone.shift)];
}
} // namespace zor::viewer
