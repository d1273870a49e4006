#include "platform/viewer/ViewerStage.h"

#include "platform/viewer/Viewer.h"

namespace zor::viewer {
/// 1 while mono images are shown in false colours. A change shows with "cmd.image.rebuild".
class ViewerStage::Coloration final : public DisplayStageItem
{
public:
    explicit Coloration(Viewer& viewer)
        : m_viewer(viewer)
    {
    }

    void reserved0() override {}
    void reserved1() override {}
    void reserved2() override {}
    void reserved3() override {}
    void reserved4() override {}
    std::int64_t value() override { return m_viewer.scene().coloration ? 1 : 0; }
    void reserved6() override {}
    void setValue(std::uint8_t value) override { m_viewer.setColoration(value != 0); }

private:
    Viewer& m_viewer;
};

/// The packed rectangle of an overlay in image pixels, 0 when it is gone. It can't be set here.
class ViewerStage::Rectangle final : public DisplayStageItem
{
public:
    Rectangle(Viewer& viewer, std::string id)
        : m_viewer(viewer)
        , m_id(std::move(id))
    {
    }

    void reserved0() override {}
    void reserved1() override {}
    void reserved2() override {}
    void reserved3() override {}
    void reserved4() override {}
    std::int64_t value() override
    {
        const Overlay* overlay = m_viewer.overlays().find(m_id);
        return overlay ? packedRect(overlay->rect) : 0;
    }
    void reserved6() override {}
    void setValue(std::uint8_t) override {}

private:
    Viewer& m_viewer;
    std::string m_id;
};

ViewerStage::ViewerStage(Viewer& viewer)
    : m_viewer(viewer)
    , m_coloration(std::make_unique<Coloration>(viewer))
{
}

ViewerStage::~ViewerStage() = default;

DisplayStageItem* ViewerStage::find(const char* name)
{
    const std::string id = name ? name : "";
    if (id == "image.coloration")
        return m_coloration.get();
    if (!m_viewer.overlays().find(id))
        return nullptr;
    std::unique_ptr<Rectangle>& item = m_rectangles[id];
    if (!item)
        item = std::make_unique<Rectangle>(m_viewer, id);
    return item.get();
}

std::int64_t ViewerStage::value()
{
    const QSize size = m_viewer.scene().first.size();
    return size.isEmpty() ? 0 : std::int64_t{size.height()} << 32 | size.width();
}

_ZorImage* ViewerStage::image(std::uint8_t which)
{
    return which == 0   ? m_viewer.scene().first.source()
           : which == 1 ? m_viewer.scene().second.source()
                        : nullptr;
}
} // namespace zor::viewer
