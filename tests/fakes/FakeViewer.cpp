#include "tests/fakes/FakeViewer.h"

#include "tests/fakes/FakeViewerParts.h"

#include <cstdio>

namespace {

int livingViewers = 0;

ZorDisplayProcessor* create(const char* name, QWidget* widget)
{
    FakeViewer::calls().push_back({name, false, {}, {}, widget, nullptr, {}});
    return FakeViewer::script().canCreate ? new FakeViewer(widget) : nullptr;
}

void destroy(const char* name, ZorDisplayProcessor* component)
{
    FakeViewer::calls().push_back({name, false, {}, {}, component, nullptr, {}});
    delete static_cast<FakeViewer*>(component);
}

} // namespace

ZorDisplayProcessor* ZorDisplayCPU::CreateComponent(QWidget* widget)
{
    return create("create CPU", widget);
}

void ZorDisplayCPU::DeleteComponent(ZorDisplayProcessor* component)
{
    destroy("delete CPU", component);
}

ZorDisplayProcessor* ZorDisplayQGL::CreateComponent(QWidget* widget)
{
    return create("create QGL", widget);
}

void ZorDisplayQGL::DeleteComponent(ZorDisplayProcessor* component)
{
    destroy("delete QGL", component);
}

std::vector<ViewerCall>& FakeViewer::calls()
{
    static std::vector<ViewerCall> all;
    return all;
}

ViewerScript& FakeViewer::script()
{
    static ViewerScript answers;
    return answers;
}

void FakeViewer::reset()
{
    calls().clear();
    script() = ViewerScript();
}

std::vector<std::string> FakeViewer::callNames()
{
    std::vector<std::string> names;
    for (const ViewerCall& call : calls())
        names.push_back(call.name);
    return names;
}

std::vector<ViewerCall> FakeViewer::callsOf(const std::string& name)
{
    std::vector<ViewerCall> found;
    for (const ViewerCall& call : calls()) {
        if (call.name == name)
            found.push_back(call);
    }
    return found;
}

ZorDisplayCommand* FakeViewer::listener()
{
    const std::vector<ViewerCall> registrations = callsOf("cmd.system.notification.add");
    void* address = nullptr;
    if (!registrations.empty())
        std::sscanf(registrations.back().before.at("proc").c_str(), "%p", &address);
    return static_cast<ZorDisplayCommand*>(address);
}

std::int64_t FakeViewer::notify(const char* name, ParameterMap* parameters)
{
    ZorDisplayCommand* registered = listener();
    return registered ? registered->notify(name, parameters) : -1;
}

int FakeViewer::living()
{
    return livingViewers;
}

FakeViewer::FakeViewer(QWidget* drawnInto)
    : widget(drawnInto)
{
    ++livingViewers;
}

FakeViewer::~FakeViewer()
{
    --livingViewers;
}

std::int32_t FakeViewer::command(const char* name, ParameterMap* parameters)
{
    ViewerCall call;
    call.name = name;
    call.hasMap = parameters != nullptr;
    call.argument = parameters;
    call.target = widget;
    if (parameters)
        call.before = *parameters;
    // The call keeps its place also when its answer makes further calls.
    const std::size_t place = calls().size();
    calls().push_back(call);
    const auto answer = script().answers.find(name);
    const std::int32_t result = answer == script().answers.end() ? 1 : answer->second(parameters);
    if (parameters)
        calls().at(place).after = *parameters;
    return result;
}

DisplaySettings* FakeViewer::settings()
{
    if (script().onSettings)
        script().onSettings(widget);
    return script().hasSettings ? &fakeSettings() : nullptr;
}

std::int32_t FakeViewer::configure(const _ZorImage* header)
{
    calls().push_back({"configure", false, {}, {}, header, nullptr, {}});
    if (script().onConfigure)
        script().onConfigure(widget);
    return script().configureStatus;
}

std::int32_t FakeViewer::display(const _ZorImage* image)
{
    ViewerCall call{"display", false, {}, {}, image, nullptr, {}};
    call.target = widget;
    if (image) {
        call.record = *image;
        if (image->data)
            call.pixels.assign(image->data, image->data + image->imageSize);
    }
    calls().push_back(call);
    return script().displayStatus;
}

DisplayStage* FakeViewer::stage()
{
    return script().hasStage ? &fakeStage() : nullptr;
}

std::int32_t FakeViewer::displayPair(const _ZorImage* first, const _ZorImage* second)
{
    calls().push_back({"displayPair", false, {}, {}, first, second, {}});
    return script().pairResult;
}
