#pragma once

#include <functional>
#include <string>
#include <vector>

struct _ArvCamera;

namespace zor {

/// A GenICam feature as a camera describes it, with its present value.
struct CameraFeature
{
    enum class Kind
    {
        Category, ///< has children and no value
        Integer,
        Float,
        Boolean, ///< "true" or "false"
        Enumeration,
        Text,
        Command, ///< is executed
        Other,   ///< cannot be shown as text
    };
    /// For whom it is, after GenICam.
    enum class Visibility
    {
        Beginner,
        Expert,
        Guru,
    };

    Kind kind = Kind::Other;
    std::string name;    ///< by which it is set
    std::string label;   ///< as a person reads it
    std::string toolTip; ///< one text of the camera's, empty when it has none
    std::string value;
    std::string unit;
    std::string minimum; ///< empty where there is none
    std::string maximum;
    std::string increment;
    std::vector<std::string> entries; ///< of an enumeration: what it can be set to now
    Visibility visibility = Visibility::Beginner;
    bool isAvailable = true;
    bool isWritable = false;
    std::vector<CameraFeature> children;
};

/// The tree of the camera's features: its root category. Reads each value from the camera, which takes a
/// while over a network. What cannot be read is not available. Features that the camera calls invisible are
/// left out. `isLost` is asked between two of them; throws CameraError when it says so.
CameraFeature readFeatures(_ArvCamera& camera, const std::function<bool()>& isLost);

/// Sets a feature from text. Throws CameraError when there is none of that name, when the text is no value
/// for it or is outside its range, and when the camera refuses.
void setFeature(_ArvCamera& camera, const std::string& name, const std::string& value);

} // namespace zor
