#pragma once

#include "display/ZorDisplayCommand.h"
#include "display/ZorDisplayProcessor.h"
#include "display/ZorDisplayQt.h"

#include <functional>
#include <map>
#include <string>
#include <vector>

class QWidget;

/// One thing that was asked of the fake viewers or their factories.
struct ViewerCall
{
    /// A command's name, or "create CPU", "create QGL", "delete CPU", "delete QGL", "configure", "display",
    /// "displayPair", "setText", "run", "setValue".
    std::string name;
    bool hasMap = false;
    ParameterMap before{};              ///< the command's map when it came
    ParameterMap after{};               ///< the command's map when it was answered
    const void* argument = nullptr;     ///< the map, the widget, the deleted viewer, the image
    const void* second = nullptr;       ///< the second image of a pair
    std::string text{};                 ///< "key=value" of setText, the action of run, the value of setValue
    QWidget* target = nullptr;          ///< of commands and shown images: what the viewer draws into
    _ZorImage record{};                 ///< of "display": the record as it came
    std::vector<std::uint8_t> pixels{}; ///< of "display": a copy of what it held
};

/// What the fake viewers answer.
struct ViewerScript
{
    bool canCreate = true;
    /// By command; all others answer 1 and leave the map alone.
    std::map<std::string, std::function<std::int32_t(ParameterMap*)>> answers{};
    std::int32_t configureStatus = 0;
    std::int32_t displayStatus = 0;
    std::function<void(QWidget*)> onConfigure{}; ///< called with what the viewer draws into
    std::int32_t pairResult = 1;
    bool hasSettings = true;
    std::function<void(QWidget*)> onSettings{}; ///< called when the settings are asked for
    bool hasStage = true;
    std::int64_t stageValue = 0;
    _ZorImage* stageImage = nullptr;
    std::map<std::string, std::int64_t> stageItems{};
    std::map<std::string, double> settings{};
};

/// A viewer that draws nothing, answers by script and records what is asked of it. It takes the place of the
/// closed viewers at link time. Calls and script are one for all fakes of a program and are not locked.
class FakeViewer final : public ZorDisplayProcessor
{
public:
    static std::vector<ViewerCall>& calls();
    static ViewerScript& script();
    /// Forgets calls and script.
    static void reset();
    /// The names of all calls, in order.
    static std::vector<std::string> callNames();
    /// The calls of one name, in order.
    static std::vector<ViewerCall> callsOf(const std::string& name);
    /// The listener that was registered last; null when there is none.
    static ZorDisplayCommand* listener();
    /// Notifies that listener; -1 when there is none.
    static std::int64_t notify(const char* name, ParameterMap* parameters);
    /// Viewers that were made and not deleted.
    static int living();

    explicit FakeViewer(QWidget* widget);
    ~FakeViewer();

    void reserved0() override {}
    void reserved1() override {}
    std::int32_t command(const char* name, ParameterMap* parameters) override;
    DisplaySettings* settings() override;
    std::int32_t configure(const _ZorImage* header) override;
    std::int32_t display(const _ZorImage* image) override;
    void reserved6() override {}
    DisplayStage* stage() override;
    void reserved8() override {}
    void reserved9() override {}
    std::int32_t displayPair(const _ZorImage* first, const _ZorImage* second) override;

    /// What the viewer draws into.
    QWidget* target() const { return widget; }

private:
    QWidget* widget;
};
