#pragma once

#include "display/DisplayEvents.h"
#include "display/DisplayView.h"
#include "image/PixelTypeCode.h"
#include "tests/fakes/FakeImageHeaders.h"
#include "tests/fakes/FakeViewer.h"
#include "tests/support/RecordOf.h"
#include "tests/support/TsanApplication.h"

#include <QStringList>

#include <thread>
#include <vector>

/// An image record of that shape. It claims one byte of pixels and has none.
inline _ZorImage imageOf(std::uint32_t width, std::uint32_t height, std::uint32_t pixelType = zor::Mono8)
{
    return recordOf(pixelType, width, height, 0, nullptr, 1);
}

/// "key=value" for each entry, in key order.
inline QStringList textOf(const ParameterMap& map)
{
    QStringList text;
    for (const auto& [key, value] : map)
        text << QString::fromStdString(key + "=" + value);
    return text;
}

/// The names of all calls to the fake viewer, in order.
inline QStringList calledNames()
{
    QStringList names;
    for (const std::string& name : FakeViewer::callNames())
        names << QString::fromStdString(name);
    return names;
}

/// What came to a view.
struct SeenEvent
{
    int type = 0;
    QPoint imagePos{};
    QPoint windowPos{};
    int result = 0;
    std::thread::id thread{};
};

/// A view that keeps what the adapter delivers to it. Messages are also among the calls of the fake viewer,
/// as "message TEXT" with the event as the argument, so that their place in the order shows.
class RecordingView : public DisplayView
{
public:
    std::vector<SeenEvent> seen;
    /// What a left press answers the viewer.
    int pressResult = 0;

    std::vector<int> seenTypes() const
    {
        std::vector<int> types;
        for (const SeenEvent& event : seen)
            types.push_back(event.type);
        return types;
    }

protected:
    bool event(QEvent* e) override
    {
        const int type = e->type();
        SeenEvent entry;
        entry.type = type;
        entry.thread = std::this_thread::get_id();
        if (type == DisplayEvMouseDown || type == DisplayEvMouseMove || type == DisplayEvMouseUp) {
            auto* mouse = static_cast<DisplayAdapterQT::DisplayMouseEv*>(e);
            entry.imagePos = mouse->imagePos;
            entry.windowPos = mouse->windowPos;
            entry.result = mouse->result;
            seen.push_back(entry);
            mouse->result = pressResult;
        } else if (type == DisplayEvHexDumpHere) {
            auto* place = static_cast<DisplayAdapterQT::DisplayEvent*>(e);
            entry.imagePos = place->imagePos;
            entry.windowPos = place->windowPos;
            seen.push_back(entry);
        } else if (type == DisplayEvImageProcessed) {
            entry.result = static_cast<DisplayAdapterQT::DisplayImageProcessedEv*>(e)->result;
            seen.push_back(entry);
        } else if (type == DisplayEvMessage) {
            const QString message = static_cast<DisplayAdapterQT::DisplayMessageEv*>(e)->message;
            FakeViewer::calls().push_back({"message " + message.toStdString(), false, {}, {}, e});
        } else if (type == DisplayEvStart || type == DisplayEvReserved || type == DisplayEvContextMenu ||
                   type == DisplayEvViewChanged || type == DisplayEvHexDump) {
            seen.push_back(entry);
        }
        return DisplayView::event(e);
    }
};

/// Starts the viewer of the adapter and forgets the calls that this took.
inline void startQuietly(DisplayAdapterQT& adapter)
{
    const _ZorImage image = imageOf(64, 48);
    adapter.prepareImage(&image, false);
    FakeViewer::calls().clear();
}

/// Leaves an error code that no operation sets by itself.
constexpr std::uint32_t OldError = 0x2345;
inline void leaveOldError(DisplayAdapterQT& adapter)
{
    const _ZorImage image = imageOf(64, 48);
    FakeViewer::script().displayStatus = 0x12345;
    adapter.displayImage(&image);
    FakeViewer::calls().clear();
    FakeViewer::script().displayStatus = 0;
}

/// A test program's main: QTEST_MAIN with the application that ThreadSanitizer needs.
#define ZOR_DISPLAY_TEST_MAIN(Test)                                                                          \
    int main(int argc, char* argv[])                                                                         \
    {                                                                                                        \
        TsanApplication application(argc, argv);                                                             \
        Test test;                                                                                           \
        return QTest::qExec(&test, argc, argv);                                                              \
    }
