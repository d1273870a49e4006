#pragma once

#include "display/ZorDisplayCommand.h"
#include "display/ZorDisplayProcessor.h"
#include "image/ZorImage.h"
#include "image/ZorImgProcessor.h"
#include "tests/support/FormatCodes.h"

#include <QEvent>
#include <QGraphicsView>
#include <QImage>
#include <QStringList>

#include <cstdint>
#include <functional>
#include <vector>

/// Pixel type codes that the viewer's tests use beside those of PixelTypeCode.h and FormatCodes.h.
constexpr std::uint32_t Mono14Code = codeOf("Mono14");
constexpr std::uint32_t Rgb8Code = codeOf("RGB8");
constexpr std::uint32_t Bgr8Code = codeOf("BGR8");
constexpr std::uint32_t Rgb12Code = codeOf("RGB12");
constexpr std::uint32_t Bgr16Code = codeOf("BGR16");

/// A record with pixels of its own in a plain format.
class TestImage
{
public:
    using Value = std::function<int(int x, int y, int channel)>;

    /// `padding`: bytes after each row.
    TestImage(std::uint32_t pixelType, int width, int height, const Value& value, int padding = 0);

    const _ZorImage* record() const { return &m_record; }
    _ZorImage& change() { return m_record; }
    /// Overwrites the pixels and gives them back: whoever still reads them is found out.
    void poison();

private:
    _ZorImage m_record{};
    std::vector<std::uint8_t> m_pixels;
};

/// Grey everywhere.
TestImage flat(int value, int width = 40, int height = 30);
/// Greys that differ from pixel to pixel.
TestImage ramp(int width = 100, int height = 80);

/// Puts out the same image, whatever it is given.
class Replacer : public ZorImgProcessor
{
public:
    explicit Replacer(TestImage& image)
        : m_image(image)
    {
    }
    int processImage(const _ZorImage*) override { return 0; }
    void noOperation() override {}
    int constantZero() override { return 0; }
    _ZorImage* outputImage() override { return &m_image.change(); }

private:
    TestImage& m_image;
};

/// Hands a processor over, which the viewer owns from then on. The viewer's answer.
int addProcessor(ZorDisplayProcessor* viewer, ZorImgProcessor* processor);

/// The viewer's answer.
int addListener(ZorDisplayProcessor* viewer, ZorDisplayCommand* listener);

/// Writes down what a viewer notifies, and may act on it.
class Listener : public ZorDisplayCommand
{
public:
    struct Heard
    {
        QString name;
        ParameterMap parameters;
    };

    std::int64_t notify(const char* name, ParameterMap* parameters) override;

    std::vector<Heard> heard;
    std::function<void(const Heard&)> act;

    int count(const char* code) const;
    /// The last one of that code; an empty one when there is none.
    ParameterMap last(const char* code) const;
};

/// Whether the tests run on the OpenGL canvas.
inline bool wantsGpu()
{
    return qgetenv("ZOR_TEST_CANVAS") == "opengl";
}

/// A filter of the host's own, older than the viewer's, which therefore hears what the viewer lets through.
class HostFilter : public QObject
{
public:
    QList<QEvent::Type> types;

    bool eventFilter(QObject* object, QEvent* event) override;
    bool heard(QEvent::Type type) const { return types.contains(type); }
};

/// A viewer over a shown view of some size: the software one, or the OpenGL one when the environment variable
/// ZOR_TEST_CANVAS is "opengl".
class ShownViewer
{
public:
    explicit ShownViewer(const QSize& size)
        : ShownViewer(size, wantsGpu(), nullptr)
    {
    }
    ShownViewer(const QSize& size, bool isGpu)
        : ShownViewer(size, isGpu, nullptr)
    {
    }
    /// `host` filters the events of the view and the viewport, and did so before the viewer was made.
    ShownViewer(const QSize& size, QObject* host)
        : ShownViewer(size, wantsGpu(), host)
    {
    }
    ~ShownViewer();

    QGraphicsView view;
    ZorDisplayProcessor* viewer = nullptr;
    Listener listener;

    int run(const char* command, ParameterMap* parameters) { return viewer->command(command, parameters); }
    int run(const char* command, ParameterMap parameters = {}) { return run(command, &parameters); }
    /// Status of `display`.
    int show(const TestImage& image) { return viewer->display(image.record()); }
    void setScale(double scale);
    /// Fractions of the image.
    void lookAt(double x, double y);
    double scale() const;
    QRect visible();
    QPointF centre();
    /// An overlay that may be dragged, from 20, 30 to 60, 54 in image pixels.
    void addDumpOverlay();
    /// The same over an even image at scale 2: on the surface from 40, 60 to 120, 108.
    void showDumpOverlay();
    /// What the viewport shows, painted now, in device pixels.
    QImage grab();
    QRgb pixel(int x, int y) { return grab().pixel(x, y); }
    QWidget* surface() { return view.viewport(); }
    void wheel(const QPointF& where, int units);
    void drag(const QPoint& from, const QPoint& to, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    void move(const QPointF& where, Qt::MouseButtons buttons,
              Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    /// The left button goes down or up at a place that may be a fraction.
    void press(const QPointF& where, QEvent::Type type = QEvent::MouseButtonPress);
    void release(const QPointF& where);

private:
    ShownViewer(const QSize& size, bool isGpu, QObject* host);
};

/// Six decimals after a point, whatever the program's locale is.
std::string decimals(double value);

/// The number that a command returned under a key; -99999 without one.
int numberIn(const ParameterMap& map, const char* key);
