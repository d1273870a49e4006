#include "platform/viewer/paint/gl/GlCanvas.h"

#include "platform/viewer/paint/Decorations.h"
#include "platform/viewer/paint/DeviceSize.h"
#include "platform/viewer/paint/Scene.h"
#include "platform/viewer/paint/gl/GlContext.h"
#include "platform/viewer/paint/gl/GlShaders.h"
#include "platform/viewer/paint/gl/GlTables.h"
#include "platform/viewer/paint/gl/TileRuns.h"

#include <QOpenGLContext>
#include <QOpenGLExtraFunctions>
#include <QOpenGLShaderProgram>
#include <QOpenGLVertexArrayObject>

#include <algorithm>

namespace zor::viewer {
namespace {
// Texture units.
enum Unit
{
    FineUnit = 0,
    CoarseUnit = 1,
    AxesUnit = 2,
    TonesUnit = 3
};

constexpr int AxisRows = 4;

void useTexture(QOpenGLExtraFunctions& gl, Unit unit, GLuint name)
{
    gl.glActiveTexture(GL_TEXTURE0 + unit);
    gl.glBindTexture(GL_TEXTURE_2D, name);
}
} // namespace

GlCanvas::GlCanvas(Scene& scene, QWidget* parent)
    : QOpenGLWidget(parent)
    , m_scene(scene)
{
    setFormat(glFormat());
}

GlCanvas::~GlCanvas()
{
    releaseGl();
}

// The context goes and a new one comes when the widget moves to another window.
void GlCanvas::releaseGl()
{
    if (!m_program)
        return;
    makeCurrent();
    QOpenGLExtraFunctions& gl = *context()->extraFunctions();
    for (GlTiles& tiles : m_tiles)
        tiles.release(gl);
    m_decorations.release(gl);
    gl.glDeleteTextures(1, &m_axes);
    gl.glDeleteTextures(1, &m_tones);
    m_vertices.reset();
    m_program.reset();
    doneCurrent();
    disconnect(context(), nullptr, this, nullptr);
}

void GlCanvas::initializeGL()
{
    connect(
        context(), &QOpenGLContext::aboutToBeDestroyed, this, [this] { releaseGl(); }, Qt::DirectConnection);
    QOpenGLExtraFunctions& gl = *context()->extraFunctions();
    const bool isEs = context()->isOpenGLES();
    m_program = std::make_unique<QOpenGLShaderProgram>();
    m_program->addShaderFromSourceCode(QOpenGLShader::Vertex, vertexShader(isEs));
    m_program->addShaderFromSourceCode(QOpenGLShader::Fragment, fragmentShader(isEs));
    m_program->link();
    m_vertices = std::make_unique<QOpenGLVertexArrayObject>();
    m_vertices->create();
    m_decorations.make(gl, isEs);
    m_axes = makeTable(gl);
    m_tones = makeTable(gl);
    setTileEdge(m_edge);
}

void GlCanvas::setTileEdge(int edge)
{
    m_edge = edge;
    if (!m_program)
        return;
    makeCurrent();
    QOpenGLExtraFunctions& gl = *context()->extraFunctions();
    GLint largest = 0;
    gl.glGetIntegerv(GL_MAX_TEXTURE_SIZE, &largest);
    for (GlTiles& tiles : m_tiles) {
        tiles.release(gl);
        tiles.setEdge(std::min(edge, largest - AxisMap::MostTaps + 1));
    }
    update();
}

QImage GlCanvas::picture()
{
    return grabFramebuffer();
}

void GlCanvas::paintGL()
{
    QOpenGLExtraFunctions& gl = *context()->extraFunctions();
    m_size = deviceSize(*this).expandedTo(QSize(1, 1));
    m_scene.setDeviceSize(m_size);
    gl.glViewport(0, 0, m_size.width(), m_size.height());
    gl.glDisable(GL_BLEND);
    gl.glDisable(GL_DEPTH_TEST);
    gl.glDisable(GL_SCISSOR_TEST);
    const QColor background(BackgroundColour);
    gl.glClearColor(static_cast<float>(background.redF()), static_cast<float>(background.greenF()),
                    static_cast<float>(background.blueF()), 1.0F);
    gl.glClear(GL_COLOR_BUFFER_BIT);
    m_vertices->bind();
    if (m_program->isLinked()) {
        m_program->bind();
        for (int pane = 0; pane < m_scene.paneCount(); ++pane)
            paintPane(pane);
        if (m_scene.paneCount() == 1)
            m_tiles[1].release(gl);
        m_program->release();
        gl.glActiveTexture(GL_TEXTURE0);
    }
    m_decorations.paint(gl, m_scene, m_size);
}

void GlCanvas::paintPane(int pane)
{
    const MipLevels& mips = m_scene.picture(pane).mipLevels();
    if (mips.isEmpty())
        return;
    const ResampleRule rule = makeResampleRule(m_scene.geometry, mips);
    if (rule.covered().isEmpty())
        return;
    const Tone tone = m_scene.tone(pane);
    loadAxes(rule);
    loadTones(tone);
    setUniforms(rule, tone, m_scene.paneRect(pane).topLeft());
    drawTiles(rule, pane);
}

void GlCanvas::loadAxes(const ResampleRule& rule)
{
    const std::array<const AxisMap*, AxisRows> axes{&rule.fine.x, &rule.fine.y, &rule.coarse.x,
                                                    &rule.coarse.y};
    const int width = std::max(rule.fine.x.count(), rule.fine.y.count());
    using Texel = std::array<GLint, 4>;
    std::vector<Texel> table(static_cast<std::size_t>(width) * AxisRows);
    for (std::size_t row = 0; row < AxisRows; ++row) {
        Texel* texel = table.data() + row * static_cast<std::size_t>(width);
        for (std::size_t i = 0; i < axes[row]->first.size(); ++i) {
            const AxisMap::Weights& weights = axes[row]->weights[i];
            *texel++ = {axes[row]->first[i], weights[0], weights[1], weights[2]};
        }
    }
    QOpenGLExtraFunctions& gl = *context()->extraFunctions();
    useTexture(gl, AxesUnit, m_axes);
    gl.glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA32I, width, AxisRows, 0, GL_RGBA_INTEGER, GL_INT, table.data());
}

void GlCanvas::loadTones(const Tone& tone)
{
    std::array<std::uint8_t, 256 * 4> bytes;
    for (std::size_t level = 0; level < 256; ++level) {
        const QRgb colour = tone.table[level];
        bytes[level * 4] = static_cast<std::uint8_t>(qRed(colour));
        bytes[level * 4 + 1] = static_cast<std::uint8_t>(qGreen(colour));
        bytes[level * 4 + 2] = static_cast<std::uint8_t>(qBlue(colour));
        bytes[level * 4 + 3] = 255;
    }
    QOpenGLExtraFunctions& gl = *context()->extraFunctions();
    useTexture(gl, TonesUnit, m_tones);
    gl.glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8UI, 256, 1, 0, GL_RGBA_INTEGER, GL_UNSIGNED_BYTE, bytes.data());
}

void GlCanvas::setUniforms(const ResampleRule& rule, const Tone& tone, const QPoint& origin)
{
    QOpenGLExtraFunctions& gl = *context()->extraFunctions();
    const auto place = [this](const char* name) { return m_program->uniformLocation(name); };
    const auto setPoint = [&](const char* name, int x, int y) { gl.glUniform2i(place(name), x, y); };
    gl.glUniform1i(place("axes"), AxesUnit);
    gl.glUniform1i(place("fine"), FineUnit);
    gl.glUniform1i(place("coarse"), CoarseUnit);
    gl.glUniform1i(place("tones"), TonesUnit);
    setPoint("fineTaps", rule.fine.x.taps, rule.fine.y.taps);
    setPoint("coarseTaps", rule.coarse.x.taps, rule.coarse.y.taps);
    gl.glUniform1ui(place("blend"), static_cast<GLuint>(rule.blend));
    setPoint("viewSize", m_size.width(), m_size.height());
    setPoint("covered", origin.x() + rule.fine.x.begin, origin.y() + rule.fine.y.begin);
    gl.glUniform1i(place("shift"), tone.shift);
    gl.glUniform1i(place("isColour"), tone.isColour ? 1 : 0);
    gl.glUniform1i(place("blueFirst"), tone.blueFirst ? 1 : 0);
}

// One rectangle for each pair of tiles, of the fine and the coarse level, that device pixels need together.
void GlCanvas::drawTiles(const ResampleRule& rule, int pane)
{
    QOpenGLExtraFunctions& gl = *context()->extraFunctions();
    GlTiles& tiles = m_tiles[static_cast<std::size_t>(pane)];
    const MipLevels& mips = m_scene.picture(pane).mipLevels();
    const QPoint corner = m_scene.paneRect(pane).topLeft() + rule.covered().topLeft();
    const int edge = tiles.edge();
    const bool isMixed = rule.blend > 0;
    const std::vector<TileRun> across = tileRuns(rule.fine.x, isMixed ? &rule.coarse.x : nullptr, edge);
    const std::vector<TileRun> down = tileRuns(rule.fine.y, isMixed ? &rule.coarse.y : nullptr, edge);
    for (const TileRun& y : down)
        for (const TileRun& x : across) {
            if (isMixed) {
                useTexture(gl, CoarseUnit, 0);
                const GLuint coarse = tiles.texture(gl, mips, rule.coarse.level, x.coarse, y.coarse);
                useTexture(gl, CoarseUnit, coarse);
                gl.glUniform2i(m_program->uniformLocation("coarseOrigin"), x.coarse, y.coarse);
            }
            gl.glActiveTexture(GL_TEXTURE0 + FineUnit);
            const GLuint fine = tiles.texture(gl, mips, rule.fine.level, x.fine, y.fine);
            useTexture(gl, FineUnit, fine);
            if (!isMixed)
                useTexture(gl, CoarseUnit, fine);
            gl.glUniform2i(m_program->uniformLocation("fineOrigin"), x.fine, y.fine);
            gl.glUniform4i(m_program->uniformLocation("area"), corner.x() + x.begin, corner.y() + y.begin,
                           x.count, y.count);
            gl.glDrawArrays(GL_TRIANGLE_STRIP, 0, 4);
        }
}
} // namespace zor::viewer
