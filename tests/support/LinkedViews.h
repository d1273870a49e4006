#pragma once

#include "tests/fakes/FakeViewer.h"
#include "tests/support/DialogProbe.h"

#include <QRect>
#include <QTime>

/// Lets the fake viewers show an image of that size at that scale. They borrow `stage`.
inline void setStage(_ZorImage& stage, std::uint32_t width, std::uint32_t height, double scale)
{
    stage.width = width;
    stage.height = height;
    FakeViewer::script().stageImage = &stage;
    FakeViewer::script().settings["display.view.scale"] = scale;
}

/// A shown dialog with a frame of 40 x 20 pixels in two fake viewers, whose views can follow each other:
/// either viewer shows `part` of the image at a scale of 2.5. Nothing is recorded yet.
struct LinkedViews
{
    explicit LinkedViews(const QRect& part)
    {
        dialog.show();
        dialog.take(TestFrame::rising(40));
        dialog.Update();
        listener = FakeViewer::listener();
        FakeViewer::calls().clear();

        setStage(stage, 40, 20, 2.5);
        FakeViewer::script().answers["cmd.display.view.image"] = [part](ParameterMap* map) {
            *map = {{"pos.x", std::to_string(part.x())},
                    {"pos.y", std::to_string(part.y())},
                    {"dim.w", std::to_string(part.width())},
                    {"dim.h", std::to_string(part.height())}};
            return 1;
        };
        rest();
    }

    /// Longer than the throttle.
    void rest()
    {
        rested = QTime::currentTime().addSecs(-10);
        dialog.m_viewClock = rested;
    }
    /// Whether the throttle has begun anew since then.
    bool isRestarted() const { return dialog.m_viewClock != rested; }

    /// The lower viewer was zoomed or panned: the view's event is posted.
    void reportAChange()
    {
        ParameterMap parameters{{"code", "view.changed"}};
        listener->notify("notification.view", &parameters);
    }

    _ZorImage stage{};
    DialogProbe dialog;
    ZorDisplayCommand* listener = nullptr;
    QTime rested;
};
