#include "platform/viewer/paint/gl/GlShaders.h"

namespace zor::viewer {
namespace {
QByteArray head(bool isEs)
{
    return isEs ? "#version 300 es\nprecision highp float;\nprecision highp int;\n"
                  "precision highp sampler2D;\n"
                  "precision highp usampler2D;\nprecision highp isampler2D;\n"
                : "#version 330 core\n";
}

const char VertexBody[] = R"(
uniform ivec4 area;     // x, y, width, height in device pixels, y down
uniform ivec2 viewSize;

void main()
{
    ivec2 corner = area.xy + ivec2(gl_VertexID & 1, gl_VertexID >> 1) * area.zw;
    vec2 place = vec2(corner) / vec2(viewSize) * 2.0 - 1.0;
    gl_Position = vec4(place.x, -place.y, 0.0, 1.0);
}
)";

const char FragmentBody[] = R"(
// Row 0: x of the fine level, 1: y of it, 2 and 3: the same of the coarse one. A texel is the first sample
// and the three weights.
uniform isampler2D axes;
uniform usampler2D fine;
uniform usampler2D coarse;
uniform ivec2 fineOrigin;   // first sample of the tile
uniform ivec2 coarseOrigin;
uniform ivec2 fineTaps;
uniform ivec2 coarseTaps;
uniform uint blend;         // of 256
uniform ivec2 viewSize;
uniform ivec2 covered;      // first device pixel of the tables
uniform usampler2D tones;
uniform int shift;
uniform bool isColour;
uniform bool blueFirst;
out vec4 colour;

uvec3 box(usampler2D level, ivec2 origin, ivec2 taps, ivec4 x, ivec4 y)
{
    ivec2 first = ivec2(x.x, y.x) - origin;
    uvec3 total = uvec3(128u);
    for (int i = 0; i < taps.x; ++i) {
        uvec3 rows = uvec3(128u);
        for (int j = 0; j < taps.y; ++j)
            rows += texelFetch(level, first + ivec2(i, j), 0).rgb * uint(y[j + 1]);
        total += (rows >> 8u) * uint(x[i + 1]);
    }
    return total >> 8u;
}

void main()
{
    ivec2 device = ivec2(int(gl_FragCoord.x), viewSize.y - 1 - int(gl_FragCoord.y)) - covered;
    ivec4 x = texelFetch(axes, ivec2(device.x, 0), 0);
    ivec4 y = texelFetch(axes, ivec2(device.y, 1), 0);
    uvec3 sampled = box(fine, fineOrigin, fineTaps, x, y);
    if (blend > 0u) {
        x = texelFetch(axes, ivec2(device.x, 2), 0);
        y = texelFetch(axes, ivec2(device.y, 3), 0);
        uvec3 next = box(coarse, coarseOrigin, coarseTaps, x, y);
        sampled = (sampled * (256u - blend) + next * blend + 128u) >> 8u;
    }
    uvec3 level = shift >= 0 ? sampled >> uint(shift) : sampled << uint(-shift);
    level = min(level, uvec3(255u));
    if (!isColour)
        level = texelFetch(tones, ivec2(int(level.r), 0), 0).rgb;
    else if (blueFirst)
        level = level.bgr;
    colour = vec4(vec3(level) / 255.0, 1.0);
}
)";

const char LayerBody[] = R"(
uniform sampler2D layer;
uniform ivec2 viewSize;
out vec4 colour;

void main()
{
    colour = texelFetch(layer, ivec2(int(gl_FragCoord.x), viewSize.y - 1 - int(gl_FragCoord.y)), 0);
}
)";
} // namespace

QByteArray vertexShader(bool isEs)
{
    return head(isEs) + VertexBody;
}
QByteArray fragmentShader(bool isEs)
{
    return head(isEs) + FragmentBody;
}
QByteArray layerShader(bool isEs)
{
    return head(isEs) + LayerBody;
}
} // namespace zor::viewer
