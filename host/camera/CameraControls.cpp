#include "host/camera/CameraControls.h"

#include "host/camera/GLibTools.h"

#include <algorithm>
#include <utility>

namespace zor {

namespace {

std::optional<CameraNumber> numberOf(ArvCamera& camera, gboolean (*isThere)(ArvCamera*, GError**),
                                     double (*value)(ArvCamera*, GError**),
                                     void (*bounds)(ArvCamera*, double*, double*, GError**))
{
    CameraNumber number;
    ErrorSlot first;
    if (isThere(&camera, first) == FALSE)
        return std::nullopt;
    ErrorSlot second;
    number.value = value(&camera, second);
    ErrorSlot third;
    bounds(&camera, &number.minimum, &number.maximum, third);
    if (first.isSet() || second.isSet() || third.isSet())
        return std::nullopt;
    return number;
}

std::vector<std::string> listOf(ArvCamera& camera, const char** (*names)(ArvCamera*, guint*, GError**))
{
    ErrorSlot ignored;
    guint count = 0;
    const char** found = names(&camera, &count, ignored);
    std::vector<std::string> list;
    for (guint i = 0; found && i < count; ++i)
        list.push_back(textOf(found[i]));
    g_free(found);
    return list;
}

using Bounds = void (*)(ArvCamera*, gint*, gint*, GError**);
using Increment = gint (*)(ArvCamera*, GError**);

CameraExtent extentOf(ArvCamera& camera, int value, Bounds bounds, Increment increment)
{
    CameraExtent extent;
    extent.value = value;
    checked("region", bounds, &camera, &extent.minimum, &extent.maximum);
    extent.increment = std::max(1, checked("region", increment, &camera));
    return extent;
}

std::optional<CameraRegion> regionOf(ArvCamera& camera)
{
    try {
        int x = 0;
        int y = 0;
        int width = 0;
        int height = 0;
        checked("region", arv_camera_get_region, &camera, &x, &y, &width, &height);
        return CameraRegion{
            extentOf(camera, x, arv_camera_get_x_offset_bounds, arv_camera_get_x_offset_increment),
            extentOf(camera, y, arv_camera_get_y_offset_bounds, arv_camera_get_y_offset_increment),
            extentOf(camera, width, arv_camera_get_width_bounds, arv_camera_get_width_increment),
            extentOf(camera, height, arv_camera_get_height_bounds, arv_camera_get_height_increment)};
    } catch (const CameraError&) {
        return std::nullopt;
    }
}

} // namespace

CameraControls readControls(ArvCamera& camera)
{
    CameraControls controls;
    controls.exposureTime = numberOf(camera, arv_camera_is_exposure_time_available,
                                     arv_camera_get_exposure_time, arv_camera_get_exposure_time_bounds);
    controls.gain =
        numberOf(camera, arv_camera_is_gain_available, arv_camera_get_gain, arv_camera_get_gain_bounds);
    controls.frameRate = numberOf(camera, arv_camera_is_frame_rate_available, arv_camera_get_frame_rate,
                                  arv_camera_get_frame_rate_bounds);
    controls.region = regionOf(camera);
    ErrorSlot noFormat;
    controls.pixelFormat = textOf(arv_camera_get_pixel_format_as_string(&camera, noFormat));
    controls.pixelFormats = listOf(camera, arv_camera_dup_available_pixel_formats_as_strings);
    controls.triggerSources = listOf(camera, arv_camera_dup_available_trigger_sources);
    if (waitsForTrigger(camera)) {
        ErrorSlot noSource;
        controls.trigger = textOf(arv_camera_get_trigger_source(&camera, noSource));
    }
    return controls;
}

void setExposureTime(ArvCamera& camera, double microseconds)
{
    checked("exposure time", arv_camera_set_exposure_time, &camera, microseconds);
}

void setGain(ArvCamera& camera, double gain)
{
    checked("gain", arv_camera_set_gain, &camera, gain);
}

void setFrameRate(ArvCamera& camera, double framesPerSecond)
{
    checked("frame rate", arv_camera_set_frame_rate, &camera, framesPerSecond);
}

void setPixelFormat(ArvCamera& camera, const std::string& format)
{
    checked("pixel format", arv_camera_set_pixel_format_from_string, &camera, format.c_str());
}

bool waitsForTrigger(ArvCamera& camera)
{
    ErrorSlot none;
    if (arv_camera_is_feature_available(&camera, "TriggerMode", none) == FALSE)
        return false;
    ErrorSlot unreadable;
    return textOf(arv_camera_get_string(&camera, "TriggerMode", unreadable)) == "On";
}

void setTrigger(ArvCamera& camera, const std::string& source)
{
    if (source.empty())
        checked("trigger", arv_camera_clear_triggers, &camera);
    else
        checked("trigger", arv_camera_set_trigger, &camera, source.c_str());
}

void setRegion(ArvCamera& camera, int x, int y, int width, int height)
{
    checked("region", arv_camera_set_region, &camera, x, y, width, height);
}

void setFullRegion(ArvCamera& camera)
{
    const auto bounds = [&](Bounds of) {
        gint least = 0;
        gint most = 0;
        checked("region", of, &camera, &least, &most);
        return std::pair{least, most};
    };
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    checked("region", arv_camera_get_region, &camera, &x, &y, &width, &height);
    // How far it may go depends on where it begins.
    x = bounds(arv_camera_get_x_offset_bounds).first;
    y = bounds(arv_camera_get_y_offset_bounds).first;
    setRegion(camera, x, y, width, height);
    setRegion(camera, x, y, bounds(arv_camera_get_width_bounds).second,
              bounds(arv_camera_get_height_bounds).second);
}

} // namespace zor
