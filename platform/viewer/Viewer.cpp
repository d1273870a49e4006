#include "platform/viewer/Viewer.h"

#include "platform/viewer/paint/DeviceSize.h"
#include "platform/viewer/paint/SoftwareCanvas.h"
#include "platform/viewer/paint/gl/GlCanvas.h"
#include "platform/viewer/picture/RecordShape.h"

#include <QAbstractScrollArea>

#include <algorithm>
#include <cmath>

namespace zor::viewer {
namespace {
constexpr double FarthestPixel = 1e9;

// A position is a device pixel's place divided by the ratio: the way back must not fall short of it.
double deviceMiddle(double position, double ratio)
{
    constexpr double Rounding = 1e-6;
    return std::floor(position * ratio + Rounding) + 0.5;
}

// The middle device pixel of a widget pixel, counted from that pixel's first one. It is the same for all of
// them, also where the ratio is a fraction: so their distances are even, and each place is found again.
double innerMiddle(double ratio)
{
    return std::floor(ratio * 0.5) + 0.5;
}

// Of two equally near pixels the first: the middle of the second belongs to the next image pixel.
int nearestPixel(double device, double ratio)
{
    const double place = (device - innerMiddle(ratio)) / ratio;
    return static_cast<int>(std::ceil(std::clamp(place - 0.5, -FarthestPixel, FarthestPixel)));
}

QWidget* surfaceOf(QWidget* view)
{
    const auto* area = qobject_cast<QAbstractScrollArea*>(view);
    return area ? area->viewport() : view;
}
} // namespace

Viewer::Viewer(QWidget* view, Painting painting)
    : m_navigator(m_scene.geometry,
                  [this](bool isElsewhere) {
                      repaint();
                      if (isElsewhere)
                          m_hub.viewChanged();
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
        auto* canvas = new GlCanvas(m_scene, m_surface);
        m_canvas = canvas;
        m_canvasWidget = canvas;
    } else {
        auto* canvas = new SoftwareCanvas(m_scene, m_surface);
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
    const ViewerStatus status = m_scene.first.load(image, m_processors, &processed);
    if (status == ViewerStatus::Ok)
        m_scene.second.clear();
    return finish(status, processed);
}

ViewerStatus Viewer::displayPair(const _ZorImage* first, const _ZorImage* second)
{
    // The second is taken first: whichever of the two is refused, nothing has changed.
    Picture beside;
    int processed = 0;
    int processedBeside = 0;
    ViewerStatus status = beside.load(second, m_processors, &processedBeside);
    if (status == ViewerStatus::Ok)
        status = m_scene.first.load(first, m_processors, &processed);
    if (status == ViewerStatus::Ok)
        m_scene.second.swap(beside);
    return finish(status, processed != 0 ? processed : processedBeside);
}

// Each notification may delete this.
ViewerStatus Viewer::finish(ViewerStatus status, int processed)
{
    m_scene.arrange();
    const std::weak_ptr<const int> alive = m_hub.life();
    m_navigator.settle();
    if (status == ViewerStatus::Ok && !alive.expired())
        m_hub.processed(processed);
    return status;
}

bool Viewer::rebuild()
{
    if (m_scene.first.isEmpty())
        return false;
    int processed = 0;
    ViewerStatus status = m_scene.first.reload(m_processors, &processed);
    if (status == ViewerStatus::Ok && !m_scene.second.isEmpty())
        status = m_scene.second.reload(m_processors, &processed);
    m_scene.arrange();
    m_navigator.settle();
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
    const double middle = innerMiddle(pixelRatio());
    return onSurface(receiver, pixel) * pixelRatio() + QPointF(middle, middle);
}

QPointF Viewer::deviceUnder(const QWidget* receiver, const QPointF& position) const
{
    const QPointF place = onSurface(receiver, position);
    const double ratio = pixelRatio();
    return {deviceMiddle(place.x(), ratio), deviceMiddle(place.y(), ratio)};
}

// The way back by deviceAt meets the same image pixel, for image pixels of at least the size of a widget
// pixel.
QPoint Viewer::windowAt(const QPointF& device) const
{
    const double ratio = pixelRatio();
    const QPoint onSurface(nearestPixel(device.x(), ratio), nearestPixel(device.y(), ratio));
    return m_surface && m_view && m_surface != m_view ? m_surface->mapTo(m_view, onSurface) : onSurface;
}

void Viewer::repaint()
{
    if (m_canvasWidget)
        m_canvasWidget->update();
}

void Viewer::resized()
{
    m_canvasWidget->setGeometry(m_surface->rect());
    m_scene.setDeviceSize(deviceSize(*m_canvasWidget));
    m_navigator.settle();
}
} // namespace zor::viewer
