#pragma once

#include <optional>
#include <string>
#include <vector>

struct _ArvCamera;

namespace zor {

/// A number that a camera is set to, with what it may be.
struct CameraNumber
{
    double value = 0.0;
    double minimum = 0.0;
    double maximum = 0.0;
};

/// A part of a region: where it begins or how far it goes, in pixels.
struct CameraExtent
{
    int value = 0;
    int minimum = 0;
    int maximum = 0;
    int increment = 1;
};

/// The part of the sensor that is read out.
struct CameraRegion
{
    CameraExtent x;
    CameraExtent y;
    CameraExtent width;
    CameraExtent height;
};

/// What nearly every camera can be set to, whatever the names of its features are. What a camera lacks is
/// empty.
struct CameraControls
{
    std::optional<CameraNumber> exposureTime; ///< in µs
    std::optional<CameraNumber> gain;         ///< in the camera's own unit
    std::optional<CameraNumber> frameRate;    ///< in frames per second
    std::optional<CameraRegion> region;
    std::string pixelFormat; ///< as the camera calls it
    std::vector<std::string> pixelFormats;
    /// The source that starts each frame; empty when frames come by themselves.
    std::string trigger;
    std::vector<std::string> triggerSources;
};

/// Reads them from the camera.
CameraControls readControls(_ArvCamera& camera);

// Each of these sets one of them. They throw CameraError when the camera refuses.

void setExposureTime(_ArvCamera& camera, double microseconds);
void setGain(_ArvCamera& camera, double gain);
void setFrameRate(_ArvCamera& camera, double framesPerSecond);
void setPixelFormat(_ArvCamera& camera, const std::string& format);

/// True when each frame waits for a trigger.
bool waitsForTrigger(_ArvCamera& camera);

/// Each frame waits for this source; for an empty one frames come by themselves. Throws CameraError.
void setTrigger(_ArvCamera& camera, const std::string& source);

/// Sets the place and the size of the part of the sensor that is read out. Throws CameraError.
void setRegion(_ArvCamera& camera, int x, int y, int width, int height);

/// The whole sensor is read out. Throws CameraError.
void setFullRegion(_ArvCamera& camera);

} // namespace zor
