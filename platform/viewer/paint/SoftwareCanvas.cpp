#include "platform/viewer/paint/SoftwareCanvas.h"

#include "platform/viewer/paint/Decorations.h"
#include "platform/viewer/paint/DeviceSize.h"
#include "platform/viewer/paint/Resampler.h"
#include "platform/viewer/paint/Scene.h"

#include <QPainter>

namespace zor::viewer {
SoftwareCanvas::SoftwareCanvas(Scene& scene, QWidget* parent)
    : QWidget(parent)
    , m_scene(scene)
{
    setAttribute(Qt::WA_OpaquePaintEvent);
}

void SoftwareCanvas::render()
{
    const QSize size = deviceSize(*this).expandedTo(QSize(1, 1));
    m_scene.setDeviceSize(size);
    if (m_frame.size() != size)
        m_frame = QImage(size, QImage::Format_RGB32);
    m_frame.setDevicePixelRatio(1.0);
    bool isCovered = m_scene.paneCount() == 1 && !m_scene.first.isEmpty();
    for (int pane = 0; pane < m_scene.paneCount(); ++pane) {
        const MipLevels& mips = m_scene.picture(pane).mipLevels();
        if (mips.isEmpty())
            break;
        const ResampleRule rule = makeResampleRule(m_scene.geometry, mips);
        isCovered = isCovered && rule.covered().size() == size;
        if (!isCovered && pane == 0)
            m_frame.fill(BackgroundColour);
        resample(mips, rule, m_scene.tone(pane), m_scene.paneRect(pane).topLeft(), m_frame);
    }
    if (m_scene.first.isEmpty())
        m_frame.fill(BackgroundColour);
    QPainter painter(&m_frame);
    paintDecorations(painter, m_scene);
}

void SoftwareCanvas::paintEvent(QPaintEvent*)
{
    render();
    // At the screen's own resolution the frame is copied pixel by pixel, whatever the widget's place.
    m_frame.setDevicePixelRatio(devicePixelRatioF());
    QPainter painter(this);
    painter.drawImage(QPointF(0.0, 0.0), m_frame);
}

QImage SoftwareCanvas::picture()
{
    render();
    return m_frame.copy();
}
} // namespace zor::viewer
