#pragma once

#include <functional>
#include <string>
#include <vector>

struct _ArvCamera;

namespace zor {

/// What a camera was set to, to be set again after it was lost.
class CameraSettings
{
public:
    /// Sets it on the camera. Throws CameraError when the camera refuses.
    using Setter = std::function<void(_ArvCamera&)>;

    /// Takes the place of the last setting when that has the same name. Earlier ones stay: what came between
    /// may go only after them, such as a place within a size.
    void remember(const std::string& name, Setter set);

    /// In the order in which they were set. Throws what a setter throws.
    void apply(_ArvCamera& camera) const;

private:
    struct Setting
    {
        std::string name;
        Setter set;
    };
    std::vector<Setting> m_settings;
};

} // namespace zor
