#include "display/ZorDisplayQt.h"

#include "platform/viewer/ViewerComponent.h"
#include "platform/viewer/paint/gl/GlContext.h"

#include <QThread>

namespace {
using zor::viewer::Viewer;
using zor::viewer::ViewerComponent;

bool isUsable(const QWidget* widget)
{
    return widget && widget->thread() == QThread::currentThread();
}

// Every component is a ViewerComponent, whichever factory made it and whichever gets it back.
void destroy(ZorDisplayProcessor* component)
{
    delete static_cast<ViewerComponent*>(component);
}
} // namespace

ZorDisplayProcessor* ZorDisplayCPU::CreateComponent(QWidget* widget)
{
    return isUsable(widget) ? new ViewerComponent(widget, Viewer::Painting::Software) : nullptr;
}

void ZorDisplayCPU::DeleteComponent(ZorDisplayProcessor* component)
{
    destroy(component);
}

ZorDisplayProcessor* ZorDisplayQGL::CreateComponent(QWidget* widget)
{
    if (!isUsable(widget) || !zor::viewer::hasGlContext())
        return nullptr;
    return new ViewerComponent(widget, Viewer::Painting::OpenGl);
}

void ZorDisplayQGL::DeleteComponent(ZorDisplayProcessor* component)
{
    destroy(component);
}
