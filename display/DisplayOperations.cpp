// The operations of DisplayAdapterQT that reach the viewer at once.

#include "display/DisplayAdapterQT.h"
#include "display/ParameterText.h"
#include "display/ZorDisplayProcessor.h"

#include <QRect>

DisplaySettings* DisplayAdapterQT::viewerSettings()
{
    return processor ? processor->settings() : nullptr;
}

bool DisplayAdapterQT::displayImage(const _ZorImage* image)
{
    if (!processor)
        return fail(DisplayErrNoViewer);
    errorCode = static_cast<std::uint32_t>(processor->display(image)) & 0xFFFF;
    return errorCode == 0;
}

bool DisplayAdapterQT::setColoration(bool on)
{
    if (!beginCommand())
        return false;
    DisplayStageItem* item = stageItem("image.coloration");
    if (!item)
        return false;
    item->setValue(on ? 1 : 0);
    processor->command("cmd.image.rebuild", nullptr);
    return true;
}

bool DisplayAdapterQT::zoomView(bool in)
{
    if (!beginCommand())
        return false;
    return processor->command(in ? "cmd.display.view.zoom.in" : "cmd.display.view.zoom.out", nullptr) != 0;
}

bool DisplayAdapterQT::fitView(std::int32_t mode)
{
    ParameterMap parameters;
    if (!beginCommand())
        return false;
    paramSetInt(&parameters, "mode", mode == 2 || mode == 3 ? mode : 1);
    return processor->command("cmd.display.view.fit", &parameters) == 1;
}

bool DisplayAdapterQT::viewAt(double x, double y)
{
    ParameterMap parameters;
    if (!beginCommand())
        return false;
    paramSetDouble(&parameters, "pos.x", x);
    paramSetDouble(&parameters, "pos.y", y);
    paramSetText(&parameters, "cs", "base");
    return processor->command("cmd.display.view.at", &parameters) == 1;
}

bool DisplayAdapterQT::viewScale(double scale)
{
    ParameterMap parameters;
    if (!beginCommand())
        return false;
    paramSetDouble(&parameters, "scale", scale);
    paramSetText(&parameters, "cs", "base");
    return processor->command("cmd.display.view.scale", &parameters) == 1;
}

bool DisplayAdapterQT::displayImagePair(const _ZorImage* first, const _ZorImage* second)
{
    if (!beginCommand())
        return false;
    if (!first || !second || first->imageSize == 0 || second->imageSize == 0)
        return fail(DisplayErrArgument);
    return processor->displayPair(first, second) != 0;
}

bool DisplayAdapterQT::translatePoint(int* x, int* y, const char* source, const char* destination)
{
    ParameterMap parameters;
    if (!beginCommand())
        return false;
    if (!x || !y || !source || !destination)
        return fail(DisplayErrArgument);
    paramSetInt(&parameters, "pos.x", *x);
    paramSetInt(&parameters, "pos.y", *y);
    paramSetText(&parameters, "cs.src", source);
    paramSetText(&parameters, "cs.dst", destination);
    if (processor->command("cmd.display.view.translate", &parameters) == 0)
        return fail(DisplayErrCommand);
    *x = zor::paramIndexedInt(parameters, "pos.x");
    *y = zor::paramIndexedInt(parameters, "pos.y");
    return zor::paramIndexedInt(parameters, "result") != 0;
}

bool DisplayAdapterQT::addNotification(ZorDisplayCommand* listener)
{
    ParameterMap parameters;
    if (!beginCommand())
        return false;
    if (!listener)
        return fail(DisplayErrArgument);
    paramSetText(&parameters, "proc", textFromPointer(listener).c_str());
    return processor->command("cmd.system.notification.add", &parameters) != 0;
}

bool DisplayAdapterQT::viewImageRect(QRect* rect)
{
    ParameterMap parameters;
    if (!beginCommand())
        return false;
    if (!rect)
        return fail(DisplayErrArgument);
    if (processor->command("cmd.display.view.image", &parameters) == 0)
        return false;
    *rect = QRect(paramInt(&parameters, "pos.x"), paramInt(&parameters, "pos.y"),
                  paramInt(&parameters, "dim.w"), paramInt(&parameters, "dim.h"));
    return true;
}

std::int64_t DisplayAdapterQT::stageValue(const char* name)
{
    if (name && *name) {
        DisplayStageItem* item = stageItem(name);
        return item ? item->value() : 0;
    }
    DisplayStage* stage = processor ? processor->stage() : nullptr;
    return stage ? stage->value() : 0;
}

_ZorImage* DisplayAdapterQT::stageImage(std::uint8_t which)
{
    DisplayStage* stage = processor ? processor->stage() : nullptr;
    return stage ? stage->image(which) : nullptr;
}

DisplayStageItem* DisplayAdapterQT::stageItem(const char* name)
{
    if (!name || !*name)
        return nullptr;
    DisplayStage* stage = processor ? processor->stage() : nullptr;
    return stage ? stage->find(name) : nullptr;
}
