#pragma once

#include "platform/viewer/picture/MipLevels.h"

#include <QOpenGLFunctions>
#include <QRect>

#include <map>
#include <tuple>

class QOpenGLExtraFunctions;

namespace zor::viewer {
/// The mip levels of one image in tiles of integer textures, loaded when they are first drawn. Each tile
/// reaches AxisMap::MostTaps - 1 samples over its right and lower edge, so that a device pixel finds all its
/// samples in the square of the first.
class GlTiles
{
public:
    /// The edge must be positive; what was loaded with another edge must have been released.
    void setEdge(int edge) { m_edge = edge; }
    int edge() const { return m_edge; }

    /// The texture that holds sample (x, y) of a level; needs a current context.
    GLuint texture(QOpenGLExtraFunctions& gl, const MipLevels& mips, int level, int x, int y);
    /// Frees all textures; needs the context that they were made in.
    void release(QOpenGLExtraFunctions& gl);

private:
    struct Tile
    {
        GLuint name = 0;
        std::uint64_t generation = 0; ///< of the mip levels that were loaded
    };

    void load(QOpenGLExtraFunctions& gl, const MipLevels& mips, int level, int x, int y, bool isNew);

    int m_edge = 4096;
    PixelShape m_shape;
    QSize m_size; ///< of the image that the textures are laid out for
    std::map<std::tuple<int, int, int>, Tile> m_tiles;
};
} // namespace zor::viewer
