// How fast a viewer follows the hand and shows a new image: pan and zoom of a 9344 x 7000 16-bit mono image
// in a window of 1920 x 1080, and the first picture of a new one. "bench_viewer opengl" measures the OpenGL
// viewer, which needs a screen; without an argument the software viewer is measured, without one.

#include "display/ZorDisplayProcessor.h"
#include "display/ZorDisplayQt.h"
#include "image/ImageRecord.h"
#include "image/PixelTypeCode.h"

#include <QApplication>
#include <QGraphicsView>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <functional>
#include <vector>

namespace {
constexpr std::uint32_t Width = 9344;
constexpr std::uint32_t Height = 7000;
constexpr int Steps = 200;
constexpr int WarmUp = 20;
constexpr int NewImages = 20;

double milliseconds(const std::function<void()>& work)
{
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

double percentile(std::vector<double> values, double part)
{
    std::sort(values.begin(), values.end());
    const double rank = std::ceil(part * static_cast<double>(values.size()));
    return values[static_cast<std::size_t>(rank) - 1];
}

// With a point, whatever the program's locale is.
std::string decimals(double value)
{
    return QByteArray::number(value, 'f', 6).toStdString();
}

QByteArray padded(double value)
{
    return QByteArray::number(value, 'f', 2).rightJustified(7);
}

void print(const char* what, const std::vector<double>& values)
{
    std::printf("%-38s median %s ms   99th percentile %s ms   longest %s ms\n", what,
                padded(percentile(values, 0.5)).constData(), padded(percentile(values, 0.99)).constData(),
                padded(percentile(values, 1.0)).constData());
}

class Bench
{
public:
    Bench(QGraphicsView& view, ZorDisplayProcessor& viewer)
        : m_view(view)
        , m_viewer(viewer)
        , m_pixels(std::size_t{Width} * Height)
    {
        m_record = zor::imageRecord(zor::Mono16);
        m_record.width = Width;
        m_record.height = Height;
        m_record.pitch = Width * 2;
        m_record.imageSize = Width * Height * 2;
        m_record.data = reinterpret_cast<std::uint8_t*>(m_pixels.data());
    }

    void firstPictures()
    {
        std::vector<double> times;
        for (std::uint32_t image = 0; image <= NewImages; ++image) {
            fill(image);
            const double time = milliseconds([this] {
                if (m_viewer.display(&m_record) != 0)
                    qFatal("bench_viewer: the image was refused");
                paint();
            });
            if (image > 0)
                times.push_back(time);
        }
        print("first picture of a new image", times);
    }

    void steps(const char* what, const std::function<void(int)>& step)
    {
        std::vector<double> times;
        for (int i = -WarmUp; i < Steps; ++i) {
            const double time = milliseconds([&] {
                step(i);
                paint();
            });
            if (i >= 0)
                times.push_back(time);
        }
        print(what, times);
    }

    void panAt(const char* what, double scale)
    {
        setScale(scale);
        steps(what,
              [this](int i) { moveTo(0.5 + 0.3 * std::sin(i * 0.11), 0.5 + 0.3 * std::cos(i * 0.07)); });
    }

    /// From `least` to `most` and back.
    void zoom(const char* what, double least, double most)
    {
        moveTo(0.41, 0.57);
        steps(what, [=](int i) {
            const double part = 0.5 - 0.5 * std::cos(i * 0.0628);
            setScale(least * std::pow(most / least, part));
        });
    }

private:
    void fill(std::uint32_t image)
    {
        for (std::uint32_t y = 0; y < Height; ++y)
            for (std::uint32_t x = 0; x < Width; ++x)
                m_pixels[std::size_t{y} * Width + x] =
                    static_cast<std::uint16_t>(x * 7 + y * 5 + image * 4099 + ((x ^ y) & 63) * 97);
    }

    // A refused command would leave the time of a view that stands still.
    void run(const char* name, ParameterMap parameters)
    {
        if (m_viewer.command(name, &parameters) != 1)
            qFatal("bench_viewer: %s was refused", name);
    }

    void setScale(double scale)
    {
        run("cmd.display.view.scale", {{"scale", decimals(scale)}, {"cs", "base"}});
    }

    void moveTo(double x, double y)
    {
        run("cmd.display.view.at", {{"pos.x", decimals(x)}, {"pos.y", decimals(y)}, {"cs", "base"}});
    }

    void paint()
    {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
    }

    QGraphicsView& m_view;
    ZorDisplayProcessor& m_viewer;
    std::vector<std::uint16_t> m_pixels;
    _ZorImage m_record{};
};
} // namespace

int main(int argc, char** argv)
{
    const bool isGpu = argc > 1 && std::strcmp(argv[1], "opengl") == 0;
    if (!isGpu && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    QGraphicsView view;
    view.setFrameShape(QFrame::NoFrame);
    view.resize(1920, 1080);
    view.show();
    ZorDisplayProcessor* viewer =
        isGpu ? ZorDisplayQGL::CreateComponent(&view) : ZorDisplayCPU::CreateComponent(&view);
    if (!viewer) {
        std::fprintf(stderr, "bench_viewer: no OpenGL 3.3 context; run it on a screen or under xvfb-run\n");
        return 1;
    }
    std::printf("%s viewer, %u x %u Mono16 in 1920 x 1080, %d steps each\n", isGpu ? "OpenGL" : "Software",
                Width, Height, Steps);
    {
        Bench bench(view, *viewer);
        bench.firstPictures();
        bench.panAt("pan at 0.154", 0.154);
        bench.panAt("pan at 0.51", 0.51);
        bench.panAt("pan at 0.73", 0.73);
        bench.panAt("pan at 1", 1.0);
        bench.panAt("pan at 3.37", 3.37);
        bench.panAt("pan at 48, with sample values", 48.0);
        bench.zoom("zoom between 0.154 and 32", 0.154, 32.0);
        bench.zoom("zoom between 40 and 256", 40.0, 256.0);
    }
    ZorDisplayCPU::DeleteComponent(viewer);
    return 0;
}
