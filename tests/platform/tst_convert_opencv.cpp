#include "host/frames/encode/EncodeFrame.h"
#include "tests/platform/EncodedImage.h"
#include "tests/platform/GuardedFrame.h"

#include <QtTest>

#include <opencv2/imgproc.hpp>

#include <random>

/// OpenCV as a second opinion, over whole images and on memory that the bit-by-bit reference took apart.
class TestConvertOpencv : public QObject
{
    Q_OBJECT

private slots:
    void bayerIsAsDemosaicedAtOnce_data();
    void bayerIsAsDemosaicedAtOnce();
    void yuvIsAsItsLumaPlane_data();
    void yuvIsAsItsLumaPlane();
    void theEncodersYuvIsFullRangeRec601();

private:
    zor::Frame noise(const reference::PixelFormat& format, std::uint32_t width, std::uint32_t height);
    void compare(const reference::PixelFormat& format, const zor::Frame& frame, const cv::Mat& luma,
                 int tolerance);
    std::mt19937 m_random{31};
};

namespace {

void addFormats(std::uint32_t family)
{
    QTest::addColumn<int>("format");
    for (int i = 0; i < int(reference::pixelFormats().size()); ++i) {
        const reference::PixelFormat& format = reference::pixelFormats()[std::size_t(i)];
        if (format.family == family)
            QTest::newRow(format.name.c_str()) << i;
    }
}

const reference::PixelFormat& fetchedFormat()
{
    QFETCH(int, format);
    return reference::pixelFormats()[std::size_t(format)];
}

const reference::PixelFormat& formatNamed(const QString& name)
{
    for (const reference::PixelFormat& format : reference::pixelFormats()) {
        if (format.name == name.toStdString())
            return format;
    }
    qFatal("no such format");
}

/// The frame's samples as a matrix of 16 bits with the channels of a pixel.
cv::Mat samplesOf(const reference::PixelFormat& format, const zor::Frame& frame)
{
    const int channels = int(format.samplesPerPixel);
    cv::Mat samples(int(frame.height), int(frame.width) * channels, CV_16UC1);
    for (int y = 0; y < samples.rows; ++y) {
        const std::uint8_t* row = frame.pixels.data() + std::size_t(y) * frame.pitch;
        for (int x = 0; x < samples.cols; ++x)
            samples.at<std::uint16_t>(y, x) =
                std::uint16_t(format.value(row, std::uint32_t(x / channels), std::uint32_t(x % channels)));
    }
    return samples.reshape(channels);
}

} // namespace

/// Random samples within the format's depth.
zor::Frame TestConvertOpencv::noise(const reference::PixelFormat& format, std::uint32_t width,
                                    std::uint32_t height)
{
    zor::SampleImage scene = {width, height, 3, {}};
    for (std::uint32_t i = 0; i < 3 * width * height; ++i)
        scene.samples.push_back(std::uint16_t(m_random() & ((1U << format.heldBits) - 1)));
    return zor::encodeFrame(scene, format.code);
}

/// Within `tolerance` codes of the source.
void TestConvertOpencv::compare(const reference::PixelFormat& format, const zor::Frame& frame,
                                const cv::Mat& luma, int tolerance)
{
    const GuardedFrame source(frame, format);
    for (const MonoTarget& target : MonoTargets) {
        const double code = std::ldexp(1.0, int(target.bits) - int(format.heldBits));
        const auto expected = [&](std::uint32_t x, std::uint32_t y) {
            return reference::depthChanged(luma.at<std::uint16_t>(int(y), int(x)), format.heldBits,
                                           target.bits);
        };
        const QString wrong =
            differences(format, source.record(), target, expected, tolerance * std::max(1.0, code));
        QVERIFY2(wrong.isEmpty(), qPrintable(wrong));
    }
}

void TestConvertOpencv::bayerIsAsDemosaicedAtOnce_data()
{
    addFormats(reference::Bayer);
}

/// Colours first and their grey then, both rounded. The larger sizes are converted in pieces, whose seams
/// must not show.
void TestConvertOpencv::bayerIsAsDemosaicedAtOnce()
{
    const reference::PixelFormat& format = fetchedFormat();
    const std::string cell = format.cell[0] + format.cell[1];
    const int conversion = cell == "RGGB"   ? cv::COLOR_BayerRGGB2RGB
                           : cell == "GRBG" ? cv::COLOR_BayerGRBG2RGB
                           : cell == "GBRG" ? cv::COLOR_BayerGBRG2RGB
                                            : cv::COLOR_BayerBGGR2RGB;
    constexpr std::pair<std::uint32_t, std::uint32_t> Sizes[] = {
        {3, 3}, {4, 3}, {5, 4}, {9, 7}, {33, 21}, {3, 131}, {1024, 64}, {1025, 65}, {2051, 5}};
    // Two roundings, and weights of 14 and of 15 bits.
    const int tolerance = 2 + (1 << format.heldBits >> 14);
    for (const auto& [width, height] : Sizes) {
        const zor::Frame frame = noise(format, width, height);
        cv::Mat colours;
        cv::demosaicing(samplesOf(format, frame), colours, conversion);
        cv::Mat luma;
        cv::cvtColor(colours, luma, cv::COLOR_RGB2GRAY);
        compare(format, frame, luma, tolerance);
        if (QTest::currentTestFailed())
            return;
    }
}

void TestConvertOpencv::yuvIsAsItsLumaPlane_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<int>("conversion");
    QTest::newRow("YUV422_8") << "YUV422_8" << int(cv::COLOR_YUV2GRAY_YUY2);
    QTest::newRow("YUV422_8_UYVY") << "YUV422_8_UYVY" << int(cv::COLOR_YUV2GRAY_UYVY);
    QTest::newRow("YCbCr422_8") << "YCbCr422_8" << int(cv::COLOR_YUV2GRAY_YUY2);
}

/// On the frame's own memory.
void TestConvertOpencv::yuvIsAsItsLumaPlane()
{
    QFETCH(QString, format);
    QFETCH(int, conversion);
    const reference::PixelFormat& source = formatNamed(format);
    zor::Frame frame = noise(source, 64, 9);
    const cv::Mat pairs(int(frame.height), int(frame.width), CV_8UC2, frame.pixels.data(), frame.pitch);
    cv::Mat luma;
    cv::cvtColor(pairs, luma, conversion);
    luma.convertTo(luma, CV_16U);
    compare(source, frame, luma, 0);
}

void TestConvertOpencv::theEncodersYuvIsFullRangeRec601()
{
    const reference::PixelFormat& format = formatNamed("YUV444_8");
    zor::SampleImage scene = {61, 43, 3, {}};
    cv::Mat colours(43, 61, CV_8UC3);
    for (auto* byte = colours.data; byte != colours.dataend; ++byte) {
        *byte = std::uint8_t(m_random() % 4 == 0 ? 0 : m_random() % 4 == 0 ? 255 : m_random());
        scene.samples.push_back(*byte);
    }
    cv::Mat expected;
    cv::cvtColor(colours, expected, cv::COLOR_RGB2YCrCb);
    const zor::Frame frame = zor::encodeFrame(scene, format.code);
    for (int y = 0; y < expected.rows; ++y) {
        for (int x = 0; x < expected.cols; ++x) {
            const auto* actual = frame.pixels.data() + std::size_t(y) * frame.pitch + 4 * x;
            const cv::Vec3b& pixel = expected.at<cv::Vec3b>(y, x);
            const bool near = std::abs(actual[0] - pixel[0]) <= 1 && std::abs(actual[1] - pixel[2]) <= 1 &&
                              std::abs(actual[2] - pixel[1]) <= 1;
            if (!near)
                QFAIL(qPrintable(QString("column %1 row %2: OpenCV says %3 %4 %5, got %6 %7 %8")
                                     .arg(x)
                                     .arg(y)
                                     .arg(pixel[0])
                                     .arg(pixel[2])
                                     .arg(pixel[1])
                                     .arg(actual[0])
                                     .arg(actual[1])
                                     .arg(actual[2])));
        }
    }
}

QTEST_APPLESS_MAIN(TestConvertOpencv)
#include "tst_convert_opencv.moc"
