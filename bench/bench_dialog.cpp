// How many frames a second the whole dialog takes, computes and shows: SetImage, Update and the repaint of a
// 12-bit frame of 2448 x 2048, with the software viewer and without a screen. Then where the time goes, step
// by step. "bench_dialog 50" measures 50 frames instead of 100.

#include "dialog/CFFCUtility.h"
#include "display/DisplayView.h"
#include "image/ImageRecord.h"
#include "image/PixelTypeCode.h"
#include "image/ZorImage.h"

#include <QApplication>
#include <QSet>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <functional>
#include <vector>

namespace {

constexpr int Width = 2448;
constexpr int Height = 2048;
constexpr int WarmUp = 5;

double milliseconds(const std::function<void()>& work)
{
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

/// Some frames of a camera over an uneven field, so that no two in a row are alike.
class Camera
{
public:
    Camera()
    {
        for (int i = 0; i < FrameCount; ++i)
            m_frames.push_back(frameOf(i));
    }

    /// Borrows the camera's pixels.
    _ZorImage next()
    {
        std::vector<std::uint16_t>& pixels = m_frames[static_cast<std::size_t>(m_next++ % FrameCount)];
        _ZorImage record = zor::imageRecord(zor::Mono12);
        record.width = Width;
        record.height = Height;
        record.pitch = Width * 2;
        record.imageSize = Width * Height * 2;
        record.data = reinterpret_cast<std::uint8_t*>(pixels.data());
        return record;
    }

private:
    static constexpr int FrameCount = 4;

    static std::vector<std::uint16_t> frameOf(int number)
    {
        std::vector<std::uint16_t> pixels(std::size_t{Width} * Height);
        for (int y = 0; y < Height; ++y)
            for (int x = 0; x < Width; ++x)
                pixels[std::size_t{Width} * static_cast<std::size_t>(y) + static_cast<std::size_t>(x)] =
                    static_cast<std::uint16_t>(900 + x / 2 + y / 3 + ((x * 7 + y * 13 + number * 31) & 127));
        return pixels;
    }

    std::vector<std::vector<std::uint16_t>> m_frames;
    int m_next = 0;
};

/// Notes which views are painted, so that a measurement that paints nothing is found out. The picture may lie
/// on the view's viewport or on a widget over it.
class PaintWatch : public QObject
{
public:
    QSet<const QWidget*> painted;

protected:
    bool eventFilter(QObject* object, QEvent* event) override
    {
        if (event->type() == QEvent::Paint) {
            for (QObject* widget = object; widget; widget = widget->parent()) {
                if (auto* view = qobject_cast<DisplayView*>(widget))
                    painted.insert(view);
            }
        }
        return false;
    }
};

class BenchDialog : public CFFCUtility
{
public:
    BenchDialog()
        : CFFCUtility(nullptr)
    {
        qApp->installEventFilter(&m_watch);
        show();
    }

    /// One frame through the host's way. Milliseconds.
    double frame()
    {
        _ZorImage record = m_camera.next();
        return milliseconds([&] {
            SetFrame(&record);
            Update();
            paint();
        });
    }

    /// The same, with the steps of Update one by one: milliseconds of each, appended to `times`.
    void steps(std::vector<std::vector<double>>& times)
    {
        _ZorImage record = m_camera.next();
        const std::function<void()> parts[] = {[&] { SetFrame(&record); },
                                               [&] { expect(ComputeColumnGains()); },
                                               [&] { expect(ApplyColumnGains(true)); },
                                               [&] { expect(ComputeRowGains()); },
                                               [&] { expect(ApplyRowGains()); },
                                               [&] { expect(ComputeHistogram()); },
                                               [&] {
                                                   expect(TakeProfileLines(0, -1, -1));
                                                   expect(TakeProfileLines(1, -1, -1));
                                               },
                                               [&] { ComputeRanges(); },
                                               [&] { ShowAll(); },
                                               [&] { paint(); }};
        times.resize(std::size(parts));
        for (std::size_t i = 0; i < std::size(parts); ++i)
            times[i].push_back(milliseconds(parts[i]));
    }

private:
    static void expect(bool answer)
    {
        if (!answer)
            qFatal("bench_dialog: a stage failed");
    }

    void paint()
    {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
        if (m_watch.painted.size() != 2)
            qFatal("bench_dialog: a view was not painted");
        m_watch.painted.clear();
    }

    Camera m_camera;
    PaintWatch m_watch;
};

const char* const StepNames[] = {"SetImage",  "column gains",  "column pass", "row gains", "row pass, both",
                                 "histogram", "profile lines", "ranges",      "ShowAll",   "repaint"};

} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    const int frames = argc > 1 ? std::max(1, std::atoi(argv[1])) : 100;

    BenchDialog dialog;
    std::vector<double> whole;
    std::clock_t start = 0;
    for (int i = -WarmUp; i < frames; ++i) {
        if (i == 0)
            start = std::clock();
        const double time = dialog.frame();
        if (i >= 0)
            whole.push_back(time);
    }
    const double busy = 1000.0 * static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC / frames;
    const auto [fastest, slowest] = std::minmax_element(whole.begin(), whole.end());
    std::printf(
        "%d x %d, 12 bits, %d frames: %.1f frames a second (median), %.1f (slowest), %.1f (fastest)\n", Width,
        Height, frames, 1000.0 / median(whole), 1000.0 / *slowest, 1000.0 / *fastest);
    // Says more than the time on the wall clock where others load the machine.
    std::printf("processor time of a frame, all threads: %.1f ms\n", busy);

    std::vector<std::vector<double>> times;
    for (int i = 0; i < frames; ++i)
        dialog.steps(times);
    double all = 0.0;
    for (const std::vector<double>& step : times)
        all += median(step);
    for (std::size_t i = 0; i < times.size(); ++i)
        std::printf("  %-16s %7.2f ms  %5.1f %%   fastest %7.2f ms\n", StepNames[i], median(times[i]),
                    100.0 * median(times[i]) / all, *std::min_element(times[i].begin(), times[i].end()));
    return 0;
}
