#include "platform/viewer/paint/gl/GlTiles.h"

#include "platform/viewer/paint/AxisMap.h"
#include "platform/viewer/paint/gl/GlTables.h"

#include <QOpenGLExtraFunctions>
#include <QRect>

#include <algorithm>
#include <cstring>

namespace zor::viewer {
namespace {
struct Layout
{
    GLint internal;
    GLenum format;
    GLenum type;
};

Layout layoutOf(const PixelShape& shape)
{
    const GLenum type = shape.bytes == 1 ? GL_UNSIGNED_BYTE : GL_UNSIGNED_SHORT;
    if (shape.channels == 1)
        return {shape.bytes == 1 ? GL_R8UI : GL_R16UI, GL_RED_INTEGER, type};
    return {shape.bytes == 1 ? GL_RGB8UI : GL_RGB16UI, GL_RGB_INTEGER, type};
}

// The rows of a part of a level without gaps between them.
std::vector<std::uint8_t> packedRows(const Samples& level, int pixelBytes, const QRect& part)
{
    const std::size_t row = static_cast<std::size_t>(part.width()) * static_cast<std::size_t>(pixelBytes);
    std::vector<std::uint8_t> packed(row * static_cast<std::size_t>(part.height()));
    for (int y = 0; y < part.height(); ++y)
        std::memcpy(packed.data() + row * static_cast<std::size_t>(y),
                    level.row(part.y() + y) + static_cast<std::ptrdiff_t>(part.x()) * pixelBytes, row);
    return packed;
}
} // namespace

void GlTiles::release(QOpenGLExtraFunctions& gl)
{
    for (const auto& tile : m_tiles)
        gl.glDeleteTextures(1, &tile.second.name);
    m_tiles.clear();
}

GLuint GlTiles::texture(QOpenGLExtraFunctions& gl, const MipLevels& mips, int level, int x, int y)
{
    const QSize size(mips.level(0).width, mips.level(0).height);
    if (size != m_size || mips.shape() != m_shape) {
        release(gl);
        m_size = size;
        m_shape = mips.shape();
    }
    Tile& tile = m_tiles[{level, x / m_edge, y / m_edge}];
    const bool isNew = tile.name == 0;
    if (isNew) {
        tile.name = makeTable(gl);
    }
    if (tile.generation != mips.generation()) {
        gl.glBindTexture(GL_TEXTURE_2D, tile.name);
        load(gl, mips, level, x / m_edge * m_edge, y / m_edge * m_edge, isNew);
        tile.generation = mips.generation();
    }
    return tile.name;
}

void GlTiles::load(QOpenGLExtraFunctions& gl, const MipLevels& mips, int level, int x, int y, bool isNew)
{
    const Samples& samples = mips.level(level);
    const PixelShape& shape = mips.shape();
    const Layout layout = layoutOf(shape);
    const int reach = m_edge + AxisMap::MostTaps - 1;
    const QRect part(x, y, std::min(reach, samples.width - x), std::min(reach, samples.height - y));
    const int pixelBytes = shape.bytes * shape.channels;
    const bool isEven = samples.pitch % static_cast<std::size_t>(pixelBytes) == 0;
    std::vector<std::uint8_t> packed;
    const std::uint8_t* first = samples.row(y) + static_cast<std::ptrdiff_t>(x) * pixelBytes;
    if (!isEven) {
        packed = packedRows(samples, pixelBytes, part);
        first = packed.data();
    }
    gl.glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    gl.glPixelStorei(GL_UNPACK_ROW_LENGTH,
                     isEven ? static_cast<GLint>(samples.pitch / static_cast<std::size_t>(pixelBytes)) : 0);
    if (isNew)
        gl.glTexImage2D(GL_TEXTURE_2D, 0, layout.internal, part.width(), part.height(), 0, layout.format,
                        layout.type, first);
    else
        gl.glTexSubImage2D(GL_TEXTURE_2D, 0, 0, 0, part.width(), part.height(), layout.format, layout.type,
                           first);
    gl.glPixelStorei(GL_UNPACK_ROW_LENGTH, 0);
    gl.glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
}
} // namespace zor::viewer
