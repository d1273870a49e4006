#include "platform/viewer/view/Overlays.h"

#include <algorithm>

namespace zor::viewer {
void Overlays::add(const Overlay& overlay)
{
    remove(overlay.id);
    m_overlays.push_back(overlay);
}

bool Overlays::remove(const std::string& id)
{
    const auto found = std::find_if(m_overlays.begin(), m_overlays.end(),
                                    [&](const Overlay& overlay) { return overlay.id == id; });
    if (found == m_overlays.end())
        return false;
    m_overlays.erase(found);
    return true;
}

Overlay* Overlays::find(const std::string& id)
{
    const auto found = std::find_if(m_overlays.begin(), m_overlays.end(),
                                    [&](const Overlay& overlay) { return overlay.id == id; });
    return found == m_overlays.end() ? nullptr : &*found;
}

std::int64_t packedRect(const QRect& rect)
{
    const auto word = [](int value) { return static_cast<std::uint64_t>(std::clamp(value, 0, 0xFFFF)); };
    return static_cast<std::int64_t>(word(rect.x()) | word(rect.y()) << 16 | word(rect.width()) << 32 |
                                     word(rect.height()) << 48);
}
} // namespace zor::viewer
