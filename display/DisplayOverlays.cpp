// The two rectangles that DisplayAdapterQT lets its viewer draw over the image.

#include "display/DisplayAdapterQT.h"
#include "display/ParameterText.h"
#include "display/ZorDisplayProcessor.h"

namespace {

constexpr char DumpOverlay[] = "dump";
constexpr char InspectOverlay[] = "inspect";

} // namespace

void DisplayAdapterQT::setOverlayDefaults()
{
    ParameterMap& dump = overlayObjects[DumpOverlay];
    paramSetText(&dump, "line.clr", textFromColor(196, 196, 0).c_str());
    paramSetInt(&dump, "line.width", 1);
    paramSetText(&dump, "objectID", "@dump");
    paramSetInt(&dump, "adjust", 1);

    ParameterMap& inspect = overlayObjects[InspectOverlay];
    paramSetText(&inspect, "line.clr", textFromColor(0, 140, 250).c_str());
    paramSetInt(&inspect, "line.width", 1);
    paramSetText(&inspect, "objectID", "@inspect");
}

bool DisplayAdapterQT::setDumpRect(std::int32_t x, std::int32_t y, std::int32_t w, std::int32_t h,
                                   const char* space)
{
    if (!(features & DisplayFeatureDump))
        return fail(DisplayErrDisabled);
    return setOverlayRect(DumpOverlay, x, y, w, h, space);
}

bool DisplayAdapterQT::setInspectRect(std::int32_t x, std::int32_t y, std::int32_t w, std::int32_t h,
                                      const char* space)
{
    if (!(features & DisplayFeatureInspect))
        return fail(DisplayErrDisabled);
    return setOverlayRect(InspectOverlay, x, y, w, h, space);
}

bool DisplayAdapterQT::showDumpOverlay(bool on)
{
    if (!(features & DisplayFeatureDump))
        return fail(DisplayErrDisabled);
    // Without a viewer nothing is shown. With one the menu follows the wish, also when the command fails.
    dumpShown = false;
    if (!beginCommand())
        return false;
    dumpShown = on;
    return showOverlay(DumpOverlay, on);
}

bool DisplayAdapterQT::showInspectOverlay(bool on)
{
    if (!(features & DisplayFeatureInspect))
        return fail(DisplayErrDisabled);
    return beginCommand() && showOverlay(InspectOverlay, on);
}

bool DisplayAdapterQT::setOverlayRect(const char* overlay, std::int32_t x, std::int32_t y, std::int32_t w,
                                      std::int32_t h, const char* space)
{
    if (!beginCommand())
        return false;
    ParameterMap& parameters = overlayObjects[overlay];
    paramSetInt(&parameters, "rect.x", x);
    paramSetInt(&parameters, "rect.y", y);
    paramSetInt(&parameters, "rect.w", w);
    paramSetInt(&parameters, "rect.h", h);
    paramSetText(&parameters, "cs", space && *space ? space : "img");
    return true;
}

bool DisplayAdapterQT::showOverlay(const char* overlay, bool on)
{
    return processor->command(on ? "cmd.display.overlay.rect.add" : "cmd.display.overlay.del",
                              &overlayObjects[overlay]) == 1;
}
