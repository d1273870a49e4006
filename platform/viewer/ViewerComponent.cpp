#include "platform/viewer/ViewerComponent.h"

#include "platform/viewer/commands/CommandTable.h"
#include "platform/viewer/picture/RecordShape.h"

#include <QThread>

namespace zor::viewer {
ViewerComponent::ViewerComponent(QWidget* view, Viewer::Painting painting)
    : m_viewer(view, painting)
    , m_input(m_viewer)
    , m_settings(m_viewer)
    , m_menu(m_viewer)
    , m_stage(m_viewer)
{
}

template <class Work> std::int32_t ViewerComponent::onWidgetThread(const Work& work)
{
    if (QThread::currentThread() == m_input.thread())
        return work();
    std::int32_t result = 0;
    {
        // Its end is the call. Qt 5.9 lacks an invokeMethod() that takes a function.
        const QObject messenger;
        QObject::connect(
            &messenger, &QObject::destroyed, &m_input, [&] { result = work(); },
            Qt::BlockingQueuedConnection);
    }
    return result;
}

std::int32_t ViewerComponent::command(const char* name, ParameterMap* parameters)
{
    return onWidgetThread([&] { return runCommand({m_viewer, m_settings, m_menu}, name, parameters); });
}

// Nothing has to be prepared: memory is taken when the image is there.
std::int32_t ViewerComponent::configure(const _ZorImage* header)
{
    return code(checkHeader(header));
}

std::int32_t ViewerComponent::display(const _ZorImage* image)
{
    return onWidgetThread([&] { return code(m_viewer.display(image)); });
}

std::int32_t ViewerComponent::displayPair(const _ZorImage* first, const _ZorImage* second)
{
    return onWidgetThread([&] { return m_viewer.displayPair(first, second) == ViewerStatus::Ok ? 1 : 0; });
}
} // namespace zor::viewer
