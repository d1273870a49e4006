#include "tests/plugin/ViewerTap.h"

#include "display/ZorDisplayProcessor.h"
#include "display/ZorDisplayQt.h"

#include <QMap>
#include <QWidget>
#include <QtGlobal>

#include <cstring>
#include <dlfcn.h>

namespace {

QMap<const QWidget*, ZorDisplayProcessor*>& viewers()
{
    static QMap<const QWidget*, ZorDisplayProcessor*> map;
    return map;
}

/// A function of the viewer's library, by its mangled name.
template <typename Function> Function realOne(const char* name)
{
    void* found = dlsym(RTLD_NEXT, name);
    if (!found)
        qFatal("the viewer's library has no %s", name);
    return reinterpret_cast<Function>(found);
}

int numberIn(const ParameterMap& map, const char* key)
{
    const auto entry = map.find(key);
    return entry == map.end() ? 0 : std::stoi(entry->second);
}

} // namespace

ZorDisplayProcessor* ZorDisplayCPU::CreateComponent(QWidget* widget)
{
    static const auto real =
        realOne<ZorDisplayProcessor* (*)(QWidget*)>("_ZN13ZorDisplayCPU15CreateComponentEP7QWidget");
    ZorDisplayProcessor* viewer = real(widget);
    if (viewer)
        viewers().insert(widget, viewer);
    return viewer;
}

// The adapter gives a viewer back to the factory that did not make it.
void ZorDisplayQGL::DeleteComponent(ZorDisplayProcessor* component)
{
    static const auto real =
        realOne<void (*)(ZorDisplayProcessor*)>("_ZN13ZorDisplayQGL15DeleteComponentEP19ZorDisplayProcessor");
    viewers().remove(viewers().key(component));
    real(component);
}

ZorDisplayProcessor* ViewerTap::viewerOf(const QWidget* view)
{
    return viewers().value(view);
}

double ViewerTap::scaleOf(const QWidget* view)
{
    ZorDisplayProcessor* viewer = viewerOf(view);
    double scale = 0.0;
    if (viewer)
        viewer->settings()->getDouble("display.view.scale", &scale);
    return scale;
}

void ViewerTap::setScale(const QWidget* view, double scale)
{
    ParameterMap parameters{{"cs", "base"}, {"scale", QByteArray::number(scale, 'f', 6).toStdString()}};
    viewerOf(view)->command("cmd.display.view.scale", &parameters);
}

QRect ViewerTap::visibleIn(const QWidget* view)
{
    ZorDisplayProcessor* viewer = viewerOf(view);
    ParameterMap map;
    if (!viewer || viewer->command("cmd.display.view.image", &map) != 1)
        return {};
    return {numberIn(map, "pos.x"), numberIn(map, "pos.y"), numberIn(map, "dim.w"), numberIn(map, "dim.h")};
}

QPointF ViewerTap::centreOf(const QWidget* view)
{
    const QRect rect = visibleIn(view);
    return {rect.x() + rect.width() * 0.5, rect.y() + rect.height() * 0.5};
}

const _ZorImage* ViewerTap::imageIn(const QWidget* view)
{
    ZorDisplayProcessor* viewer = viewerOf(view);
    DisplayStage* stage = viewer ? viewer->stage() : nullptr;
    return stage ? stage->image(0) : nullptr;
}

std::vector<std::uint8_t> ViewerTap::bytesIn(const QWidget* view)
{
    const _ZorImage* image = imageIn(view);
    if (!image)
        return {};
    return {image->data, image->data + image->imageSize};
}

std::vector<unsigned> ViewerTap::pixelsIn(const QWidget* view)
{
    const _ZorImage* image = imageIn(view);
    std::vector<unsigned> pixels;
    for (std::uint32_t y = 0; image && y < image->height; ++y) {
        const std::uint8_t* row = image->data + std::size_t{y} * image->pitch;
        for (std::uint32_t x = 0; x < image->width; ++x) {
            std::uint16_t value = row[x];
            if (image->depth != 8)
                std::memcpy(&value, row + std::size_t{x} * 2, 2);
            pixels.push_back(value);
        }
    }
    return pixels;
}
