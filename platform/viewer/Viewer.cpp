#include "platform/viewer/Viewer.h"

#include "platform/viewer/DeviceSize.h"
#include "platform/viewer/GlCanvas.h"
#include "platform/viewer/RecordShape.h"
#include "platform/viewer/SoftwareCanvas.h"

#include <QAbstractScrollArea>

#include <algorithm>
#include <cmath>

namespace zorview {
namespace {
constexpr double FarthestPixel = 1e9;

QWidget* surfaceOf(QWidget* view)
{
    const auto* area = qobject_cast<QAbstractScrollArea*>(view);
    return area ? area->viewport() : view;
}
} // namespace

Viewer::Viewer(QWidget* view, Painting painting)
    : navigator(scene.geometry,
                [this](bool isElsewhere) {
                    repaint();
                    if (isElsewhere)
                        hub.viewChanged();
                })
    , m_view(view)
    , m_surface(surfaceOf(view))
{
    makeCanvas(painting);
}

Viewer::~Viewer()
{
    delete m_canvasWidget;
}

// On the surface, the canvas stays below every other child of the view.
void Viewer::makeCanvas(Painting painting)
{
    if (painting == Painting::OpenGl) {
        auto* canvas = new GlCanvas(scene, m_surface);
        m_canvas = canvas;
        m_canvasWidget = canvas;
    } else {
        auto* canvas = new SoftwareCanvas(scene, m_surface);
        m_canvas = canvas;
        m_canvasWidget = canvas;
    }
    m_canvasWidget->setAttribute(Qt::WA_TransparentForMouseEvents);
    m_canvasWidget->setFocusPolicy(Qt::NoFocus);
    m_canvasWidget->lower();
    m_canvasWidget->show();
    resized();
}

ViewerStatus Viewer::display(const _ZorImage* image)
{
    int processed = 0;
    const ViewerStatus status = scene.first.load(image, chain, &processed);
    if (status == ViewerStatus::Ok)
        scene.second.clear();
    scene.arrange();
    navigator.settle();
    if (status == ViewerStatus::Ok)
        hub.processed(processed);
    return status;
}

ViewerStatus Viewer::displayPair(const _ZorImage* first, const _ZorImage* second)
{
    // The second is taken first: whichever of the two is refused, nothing has changed.
    Picture beside;
    int processed = 0;
    ViewerStatus status = beside.load(second, chain, &processed);
    if (status == ViewerStatus::Ok)
        status = scene.first.load(first, chain, &processed);
    if (status == ViewerStatus::Ok)
        scene.second.swap(beside);
    scene.arrange();
    navigator.settle();
    if (status == ViewerStatus::Ok)
        hub.processed(processed);
    return status;
}

bool Viewer::rebuild()
{
    if (scene.first.isEmpty())
        return false;
    int processed = 0;
    ViewerStatus status = scene.first.reload(chain, &processed);
    if (status == ViewerStatus::Ok && !scene.second.isEmpty())
        status = scene.second.reload(chain, &processed);
    scene.arrange();
    navigator.settle();
    return status == ViewerStatus::Ok;
}

double Viewer::pixelRatio() const
{
    return m_canvasWidget ? m_canvasWidget->devicePixelRatioF() : 1.0;
}

QPointF Viewer::onSurface(const QWidget* receiver, const QPointF& position) const
{
    if (m_surface && receiver && receiver != m_surface)
        return position + m_surface->mapFrom(receiver, QPoint(0, 0));
    return position;
}

QPointF Viewer::deviceAt(const QWidget* receiver, const QPointF& pixel) const
{
    return deviceUnder(receiver, pixel + QPointF(0.5, 0.5));
}

QPointF Viewer::deviceUnder(const QWidget* receiver, const QPointF& position) const
{
    // A position is a device pixel's place divided by the ratio: the way back must not fall short of it.
    constexpr double Rounding = 1e-6;
    const QPointF device = onSurface(receiver, position) * pixelRatio();
    return {std::floor(device.x() + Rounding) + 0.5, std::floor(device.y() + Rounding) + 0.5};
}

// The nearest one, of two that are as near the first: the way back by deviceAt then meets the same image
// pixel, for image pixels of at least the size of a widget pixel.
QPoint Viewer::windowAt(const QPointF& device) const
{
    const double ratio = pixelRatio();
    const QPointF origin = deviceAt(m_surface, QPointF(0.0, 0.0));
    const auto pixel = [ratio](double place) {
        return static_cast<int>(std::ceil(std::clamp(place / ratio - 0.5, -FarthestPixel, FarthestPixel)));
    };
    const QPoint onSurface(pixel(device.x() - origin.x()), pixel(device.y() - origin.y()));
    return m_surface && m_view && m_surface != m_view ? m_surface->mapTo(m_view, onSurface) : onSurface;
}

void Viewer::repaint()
{
    if (m_canvasWidget)
        m_canvasWidget->update();
}

void Viewer::resized()
{
    if (!m_canvasWidget || !m_surface)
        return;
    m_canvasWidget->setGeometry(m_surface->rect());
    scene.setDeviceSize(deviceSize(*m_canvasWidget));
    navigator.settle();
}
} // namespace zorview
