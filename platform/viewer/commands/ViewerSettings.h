#pragma once

#include "display/DisplaySettings.h"

#include <map>
#include <string>

namespace zor::viewer {
class Viewer;

/// The settings of one viewer: texts that are kept, the scale of the view, and the processors' switch.
class ViewerSettings final : public DisplaySettings
{
public:
    explicit ViewerSettings(Viewer& viewer)
        : m_viewer(viewer)
    {
    }

    void reserved0() override {}
    void reserved1() override {}
    void reserved2() override {}
    void reserved3() override {}
    void reserved4() override {}
    void reserved5() override {}
    void reserved6() override {}
    void reserved7() override {}
    void reserved8() override {}
    /// 1, or 0 for a null key; a null value is the empty text.
    int setText(const char* key, const char* value) override;
    void reserved10() override {}
    void reserved11() override {}
    void reserved12() override {}
    /// "display.view.scale" while an image is shown, or a text that is a number.
    bool getDouble(const char* key, double* value) override;
    void reserved14() override {}
    void reserved15() override {}
    /// "processing.proc.add" takes over the ZorImgProcessor that the text "processor" names;
    /// "processing.proc.del" deletes all. 1 for success, 0 for anything else.
    int run(const char* action) override;

private:
    bool addProcessor();

    Viewer& m_viewer;
    std::map<std::string, std::string> m_texts;
};
} // namespace zor::viewer
