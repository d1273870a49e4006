#include "display/DisplayAdapterQT.h"

#include "display/ParameterText.h"
#include "display/ZorDisplayProcessor.h"
#include "display/ZorDisplayQt.h"

#include <QThread>
#include <QWidget>

DisplayAdapterQT::DisplayAdapterQT(QWidget* target, bool useGpu, std::uint32_t featureBits)
    : notification(this)
    , view(target)
    , features(featureBits)
    , gpu(useGpu)
{
    if (!view)
        return;
    // Qt runs a filter only on the thread of the filtered object.
    if (view->thread() != thread())
        moveToThread(view->thread());
    view->installEventFilter(this);
}

DisplayAdapterQT::~DisplayAdapterQT()
{
    if (processor && menuParameters.count("qmenu"))
        processor->command("cmd.system.menu.delete", &menuParameters);
    // Crossed on purpose: the viewer goes to the factory that did not make it, a null one too. Either
    // factory destroys any viewer.
    if (gpu)
        ZorDisplayCPU::DeleteComponent(processor);
    else
        ZorDisplayQGL::DeleteComponent(processor);
    // imageHeader is not released here on purpose: the viewer was configured with it.
}

bool DisplayAdapterQT::hasViewer() const
{
    return processor != nullptr;
}

bool DisplayAdapterQT::isGpuViewer() const
{
    return gpu;
}

std::uint32_t DisplayAdapterQT::lastError() const
{
    return errorCode;
}

bool DisplayAdapterQT::setParameter(const char* name, const char* value)
{
    return value && paramSetText(&viewerParameters, name, value);
}

std::string DisplayAdapterQT::parameter(const char* name) const
{
    return paramText(&viewerParameters, name);
}

std::uint32_t DisplayAdapterQT::featureFlags() const
{
    return features;
}

void DisplayAdapterQT::setFeatureFlags(std::uint32_t flags)
{
    features = flags;
}

bool DisplayAdapterQT::beginCommand()
{
    errorCode = 0;
    return hasViewer() || fail(DisplayErrNoViewer);
}

bool DisplayAdapterQT::fail(std::uint32_t code)
{
    errorCode = code;
    return false;
}
