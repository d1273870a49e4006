#include "tests/platform/viewer/ViewerTools.h"

#include "display/ZorDisplayQt.h"
#include "image/ImageRecord.h"
#include "image/PixelTypeCode.h"

#include <QApplication>
#include <QMouseEvent>
#include <QTest>
#include <QWheelEvent>

#include <algorithm>

TestImage::TestImage(std::uint32_t pixelType, int width, int height, const Value& value, int padding)
    : m_record(zor::imageRecord(pixelType))
{
    m_record.width = static_cast<std::uint32_t>(width);
    m_record.height = static_cast<std::uint32_t>(height);
    const int channels = static_cast<int>(m_record.channels);
    const int bytes = static_cast<int>(m_record.pixelBits) / 8 / channels;
    m_record.pitch = static_cast<std::uint32_t>(width * channels * bytes + padding);
    m_record.imageSize = m_record.pitch * m_record.height;
    m_pixels.resize(m_record.imageSize);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            for (int c = 0; c < channels; ++c) {
                const int sample = value(x, y, c);
                std::uint8_t* at = m_pixels.data() + static_cast<std::size_t>(y) * m_record.pitch +
                                   static_cast<std::size_t>((x * channels + c) * bytes);
                at[0] = static_cast<std::uint8_t>(sample);
                if (bytes == 2)
                    at[1] = static_cast<std::uint8_t>(sample >> 8);
            }
    m_record.data = m_pixels.data();
}

void TestImage::poison()
{
    std::fill(m_pixels.begin(), m_pixels.end(), std::uint8_t{0xA5});
    m_pixels = std::vector<std::uint8_t>();
}

std::int64_t Listener::notify(const char* name, ParameterMap* parameters)
{
    heard.push_back({QString::fromUtf8(name), *parameters});
    if (act)
        act(heard.back());
    return 0;
}

int Listener::count(const char* code) const
{
    return static_cast<int>(std::count_if(
        heard.begin(), heard.end(), [code](const Heard& one) { return one.parameters.at("code") == code; }));
}

ParameterMap Listener::last(const char* code) const
{
    const auto found = std::find_if(heard.rbegin(), heard.rend(),
                                    [code](const Heard& one) { return one.parameters.at("code") == code; });
    return found == heard.rend() ? ParameterMap() : found->parameters;
}

TestImage flat(int value, int width, int height)
{
    return {zor::Mono8, width, height, [value](int, int, int) { return value; }};
}

TestImage ramp(int width, int height)
{
    return {zor::Mono8, width, height, [](int x, int y, int) { return (x * 3 + y * 7) & 255; }};
}

/// As viewers read addresses.
static std::string addressText(void* address)
{
    char text[64] = {};
    std::snprintf(text, sizeof text, "%p", address);
    return text;
}

int addProcessor(ZorDisplayProcessor* viewer, ZorImgProcessor* processor)
{
    viewer->settings()->setText("processor", addressText(processor).c_str());
    return viewer->settings()->run("processing.proc.add");
}

int addListener(ZorDisplayProcessor* viewer, ZorDisplayCommand* listener)
{
    ParameterMap parameters{{"proc", addressText(listener)}};
    return viewer->command("cmd.system.notification.add", &parameters);
}

ShownViewer::ShownViewer(const QSize& size, bool isGpu, QObject* host)
{
    if (host) {
        view.installEventFilter(host);
        view.viewport()->installEventFilter(host);
    }
    // A frame, so that the view's pixels and the surface's differ.
    view.setFrameStyle(QFrame::Box | QFrame::Plain);
    view.setLineWidth(3);
    view.resize(size + QSize(6, 6));
    view.show();
    viewer = isGpu ? ZorDisplayQGL::CreateComponent(&view) : ZorDisplayCPU::CreateComponent(&view);
    if (!viewer)
        qFatal("no viewer on this screen");
    addListener(viewer, &listener);
    run("cmd.display.view.nofication", {{"flags", "7"}});
    run("cmd.parameter.set", {{"name", "image.notification.flags.set"}, {"value", "1"}});
    QCoreApplication::processEvents();
}

bool HostFilter::eventFilter(QObject*, QEvent* event)
{
    types.append(event->type());
    return false;
}

ShownViewer::~ShownViewer()
{
    ZorDisplayCPU::DeleteComponent(viewer);
}

std::string decimals(double value)
{
    return QByteArray::number(value, 'f', 6).toStdString();
}

void ShownViewer::setScale(double scale)
{
    run("cmd.display.view.scale", {{"scale", decimals(scale)}, {"cs", "base"}});
}

void ShownViewer::lookAt(double x, double y)
{
    run("cmd.display.view.at", {{"pos.x", decimals(x)}, {"pos.y", decimals(y)}, {"cs", "base"}});
}

double ShownViewer::scale() const
{
    double scale = -1.0;
    viewer->settings()->getDouble("display.view.scale", &scale);
    return scale;
}

QRect ShownViewer::visible()
{
    ParameterMap map;
    run("cmd.display.view.image", &map);
    return {numberIn(map, "pos.x"), numberIn(map, "pos.y"), numberIn(map, "dim.w"), numberIn(map, "dim.h")};
}

QPointF ShownViewer::centre()
{
    const QRect rect = visible();
    return {rect.x() + rect.width() * 0.5, rect.y() + rect.height() * 0.5};
}

QImage ShownViewer::grab()
{
    QCoreApplication::processEvents();
    QImage image = view.viewport()->grab().toImage().convertToFormat(QImage::Format_RGB32);
    image.setDevicePixelRatio(1.0);
    return image;
}

namespace {
QPointF globalPlace(QWidget* surface, const QPointF& where)
{
    return where + surface->mapToGlobal(QPoint(0, 0));
}
} // namespace

void ShownViewer::wheel(const QPointF& where, int units)
{
    QWheelEvent event(where, globalPlace(surface(), where), QPoint(), QPoint(0, units), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(surface(), &event);
}

void ShownViewer::move(const QPointF& where, Qt::MouseButtons buttons, Qt::KeyboardModifiers modifiers)
{
    QMouseEvent event(QEvent::MouseMove, where, globalPlace(surface(), where), Qt::NoButton, buttons,
                      modifiers);
    QCoreApplication::sendEvent(surface(), &event);
}

void ShownViewer::press(const QPointF& where, QEvent::Type type)
{
    QMouseEvent event(type, where, globalPlace(surface(), where), Qt::LeftButton, Qt::LeftButton,
                      Qt::NoModifier);
    QCoreApplication::sendEvent(surface(), &event);
}

void ShownViewer::release(const QPointF& where)
{
    QMouseEvent event(QEvent::MouseButtonRelease, where, globalPlace(surface(), where), Qt::LeftButton,
                      Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(surface(), &event);
}

void ShownViewer::drag(const QPoint& from, const QPoint& to, Qt::KeyboardModifiers modifiers)
{
    QTest::mousePress(surface(), Qt::LeftButton, modifiers, from);
    move((from + to) / 2, Qt::LeftButton, modifiers);
    move(to, Qt::LeftButton, modifiers);
    QTest::mouseRelease(surface(), Qt::LeftButton, modifiers, to);
}

int numberIn(const ParameterMap& map, const char* key)
{
    const auto found = map.find(key);
    bool ok = false;
    const int number = found == map.end() ? 0 : QByteArray::fromStdString(found->second).toInt(&ok);
    return ok ? number : -99999;
}

void ShownViewer::addDumpOverlay()
{
    run("cmd.display.overlay.rect.add", {{"objectID", "@dump"},
                                         {"rect.x", "20"},
                                         {"rect.y", "30"},
                                         {"rect.w", "40"},
                                         {"rect.h", "24"},
                                         {"adjust", "1"}});
}

void ShownViewer::showDumpOverlay()
{
    show(TestImage(zor::Mono8, 640, 480, [](int, int, int) { return 99; }));
    setScale(2.0 * view.devicePixelRatioF());
    lookAt(80.0 / 640.0, 60.0 / 480.0);
    addDumpOverlay();
}
