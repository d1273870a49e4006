#pragma once

#include "display/DisplayStage.h"

#include <map>
#include <memory>
#include <string>

namespace zor::viewer {
class Viewer;

/// What a viewer shows, with the items "image.coloration" and one for each overlay under its own name.
class ViewerStage final : public DisplayStage
{
public:
    explicit ViewerStage(Viewer& viewer);
    ~ViewerStage();

    void reserved0() override {}
    void reserved1() override {}
    /// An item stays valid for the viewer's life; one of an overlay is found while the overlay is shown.
    DisplayStageItem* find(const char* name) override;
    void reserved3() override {}
    void reserved4() override {}
    void reserved5() override {}
    void reserved6() override {}
    void reserved7() override {}
    void reserved8() override {}
    void reserved9() override {}
    /// Width in the low, height in the high 32 bits of the shown image; 0 without one.
    std::int64_t value() override;
    /// 0: the viewer's copy of the last image; 1: that of the image beside it; else null.
    _ZorImage* image(std::uint8_t which) override;

private:
    class Coloration;
    class Rectangle;

    Viewer& m_viewer;
    std::unique_ptr<Coloration> m_coloration;
    std::map<std::string, std::unique_ptr<Rectangle>> m_rectangles;
};
} // namespace zor::viewer
