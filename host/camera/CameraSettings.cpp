#include "host/camera/CameraSettings.h"

#include <utility>

namespace zor {

void CameraSettings::remember(const std::string& name, Setter set)
{
    if (!m_settings.empty() && m_settings.back().name == name)
        m_settings.pop_back();
    m_settings.push_back({name, std::move(set)});
}

void CameraSettings::apply(_ArvCamera& camera) const
{
    for (const Setting& setting : m_settings)
        setting.set(camera);
}

} // namespace zor
