#include "host/camera/CameraSettings.h"

#include <algorithm>
#include <utility>

namespace zor {

namespace {

bool isSelector(const std::string& name)
{
    return name.find("Selector") != std::string::npos;
}

} // namespace

void CameraSettings::remember(const std::string& name, Setter set)
{
    const auto hasSelector = std::any_of(m_settings.begin(), m_settings.end(),
                                         [](const Setting& one) { return isSelector(one.name); });
    if (!hasSelector) {
        const auto same = std::remove_if(m_settings.begin(), m_settings.end(),
                                         [&](const Setting& one) { return one.name == name; });
        m_settings.erase(same, m_settings.end());
    }
    m_settings.push_back({name, std::move(set)});
}

void CameraSettings::apply(_ArvCamera& camera) const
{
    for (const Setting& setting : m_settings)
        setting.set(camera);
}

} // namespace zor
