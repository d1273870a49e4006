#pragma once

#include "display/ZorDisplayProcessor.h"
#include "platform/viewer/Viewer.h"
#include "platform/viewer/ViewerStage.h"
#include "platform/viewer/commands/ViewerSettings.h"
#include "platform/viewer/view/ViewerInput.h"
#include "platform/viewer/view/ViewerMenu.h"

namespace zor::viewer {
/// The viewer that both factories make. It works on the thread of its widget: what is called elsewhere runs
/// there while the caller waits, so that thread must be free to do it.
class ViewerComponent final : public ZorDisplayProcessor
{
public:
    ViewerComponent(QWidget* view, Viewer::Painting painting);
    ~ViewerComponent() = default;

    void reserved0() override {}
    void reserved1() override {}
    /// See runCommand of CommandTable.h.
    std::int32_t command(const char* name, ParameterMap* parameters) override;
    DisplaySettings* settings() override { return &m_settings; }
    std::int32_t configure(const _ZorImage* header) override;
    /// A ViewerStatus.
    std::int32_t display(const _ZorImage* image) override;
    void reserved6() override {}
    DisplayStage* stage() override { return &m_stage; }
    void reserved8() override {}
    void reserved9() override {}
    std::int32_t displayPair(const _ZorImage* first, const _ZorImage* second) override;

private:
    template <class Work> std::int32_t onWidgetThread(const Work& work);

    Viewer m_viewer;
    ViewerInput m_input;
    ViewerSettings m_settings;
    ViewerMenu m_menu;
    ViewerStage m_stage;
};
} // namespace zor::viewer
