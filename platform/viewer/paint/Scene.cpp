#include "platform/viewer/paint/Scene.h"

#include <algorithm>

namespace zor::viewer {
namespace {
// Device pixels between the two panes of a pair.
constexpr int Gap = 2;
} // namespace

void Scene::setDeviceSize(const QSize& size)
{
    if (size == m_device)
        return;
    m_device = size;
    geometry.setViewSize(paneRect(0).size());
}

void Scene::arrange()
{
    if (first.isEmpty())
        second.clear();
    geometry.setViewSize(paneRect(0).size());
    geometry.setImageSize(first.size().expandedTo(second.size()));
}

QRect Scene::paneRect(int pane) const
{
    if (paneCount() == 1)
        return {QPoint(0, 0), m_device};
    const int width = std::max(1, (m_device.width() - Gap) / 2);
    return {pane * (m_device.width() - width), 0, width, m_device.height()};
}

int Scene::paneAt(const QPointF& device) const
{
    return paneCount() == 2 && device.x() >= paneRect(1).x() ? 1 : 0;
}

QPointF Scene::inPane(const QPointF& device, int pane) const
{
    return device - QPointF(paneRect(std::min(pane, paneCount() - 1)).topLeft());
}
} // namespace zor::viewer
