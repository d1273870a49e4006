#include "platform/viewer/paint/Resampler.h"
#include "platform/viewer/paint/gl/TileRuns.h"

#include <QImage>
#include <QTest>

#include <cmath>
#include <random>

using namespace zor::viewer;

/// The resampling rule against what it says, computed pixel by pixel with real numbers.
class TestResampling : public QObject
{
    Q_OBJECT

private slots:
    void levelsAreMeans_data();
    void levelsAreMeans();
    void weightsAddUp();
    void hardPixelsFromOneToOne_data();
    void hardPixelsFromOneToOne();
    void zoomedOutIsTheMeanOverThePixel_data();
    void zoomedOutIsTheMeanOverThePixel();
    void theNextLevelFadesIn_data();
    void theNextLevelFadesIn();
    void aViewOfOnePixelIsTheMeanOfTheImage();
    void nothingJumpsWhereLevelsChange();
    void finePatternsGoGrey();
    void tileRunsCoverTheTable();
};

namespace {
struct Raster
{
    int width;
    int height;
    PixelShape shape;
    std::vector<std::uint16_t> cells;

    Raster(int w, int h, int bytes, int channels, unsigned seed, int mean = 0)
        : width(w)
        , height(h)
    {
        shape.bytes = bytes;
        shape.channels = channels;
        shape.depth = 8 * bytes;
        std::mt19937 random(seed);
        const int most = bytes == 1 ? 255 : 65535;
        std::uniform_int_distribution<int> value(mean, most);
        cells.resize((static_cast<std::size_t>(w) * static_cast<std::size_t>(h * channels * bytes) + 1) / 2);
        for (int y = 0; y < h; ++y)
            for (int x = 0; x < w * channels; ++x)
                set(x, y, value(random));
    }

    std::uint8_t* bytes() { return reinterpret_cast<std::uint8_t*>(cells.data()); }
    std::size_t index(int column, int y) const
    {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(width * shape.channels) +
               static_cast<std::size_t>(column);
    }
    void set(int column, int y, int value)
    {
        if (shape.bytes == 1)
            bytes()[index(column, y)] = static_cast<std::uint8_t>(value);
        else
            cells[index(column, y)] = static_cast<std::uint16_t>(value);
    }
    Samples samples()
    {
        return {bytes(), static_cast<std::size_t>(width * shape.channels * shape.bytes), width, height};
    }
    MipLevels mipLevels()
    {
        MipLevels made;
        made.reserve(samples(), shape);
        made.build(samples(), shape);
        return made;
    }
};

int cell(const Samples& level, const PixelShape& shape, int x, int y, int c)
{
    const std::uint8_t* at = level.row(y) + (x * shape.channels + c) * shape.bytes;
    return shape.bytes == 1 ? at[0] : at[0] | at[1] << 8;
}

/// Mean of a level over a rectangle of its own coordinates, cut to what exists.
double meanOver(const Samples& level, const PixelShape& shape, QRectF area, const QSizeF& extent, int c)
{
    area = area.intersected(QRectF(QPointF(0.0, 0.0), extent));
    double sum = 0.0;
    double all = 0.0;
    for (int y = static_cast<int>(area.top());
         y < std::min(level.height, static_cast<int>(std::ceil(area.bottom()))); ++y)
        for (int x = static_cast<int>(area.left());
             x < std::min(level.width, static_cast<int>(std::ceil(area.right()))); ++x) {
            const double across =
                std::min(area.right(), x + 1.0) - std::max(area.left(), static_cast<double>(x));
            const double down =
                std::min(area.bottom(), y + 1.0) - std::max(area.top(), static_cast<double>(y));
            sum += across * down * cell(level, shape, x, y, c);
            all += across * down;
        }
    return sum / all;
}

QImage paint(const MipLevels& mips, const ViewGeometry& geometry, int shift = -1000)
{
    Tone tone = makeTone(mips.shape(), false);
    if (shift != -1000)
        tone.shift = shift;
    QImage target(geometry.viewSize(), QImage::Format_RGB32);
    target.fill(qRgb(1, 2, 3));
    resample(mips, makeResampleRule(geometry, mips), tone, QPoint(0, 0), target);
    return target;
}

ViewGeometry looking(const MipLevels& mips, const QSize& view, double scale, double x, double y)
{
    ViewGeometry geometry;
    geometry.setViewSize(view);
    geometry.setImageSize(QSize(mips.level(0).width, mips.level(0).height));
    geometry.setScale(scale, geometry.middle());
    geometry.setCentre({x * mips.level(0).width, y * mips.level(0).height});
    return geometry;
}

int channelOf(QRgb colour, int c)
{
    return c == 0 ? qRed(colour) : c == 1 ? qGreen(colour) : qBlue(colour);
}
} // namespace

void TestResampling::levelsAreMeans_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::addColumn<int>("bytes");
    QTest::addColumn<int>("channels");
    for (const int bytes : {1, 2})
        for (const int channels : {1, 3})
            for (const QSize& size : {QSize(1, 1), QSize(1, 9), QSize(64, 32), QSize(37, 301), QSize(130, 7)})
                QTest::addRow("%d x %d, %d bytes, %d channels", size.width(), size.height(), bytes, channels)
                    << size.width() << size.height() << bytes << channels;
}

void TestResampling::levelsAreMeans()
{
    QFETCH(int, width);
    QFETCH(int, height);
    QFETCH(int, bytes);
    QFETCH(int, channels);
    Raster raster(width, height, bytes, channels, 5);
    const MipLevels mips = raster.mipLevels();
    const Samples& last = mips.level(mips.levelCount() - 1);
    QCOMPARE(QSize(last.width, last.height), QSize(1, 1));
    for (int index = 1; index < mips.levelCount(); ++index) {
        const Samples& finer = mips.level(index - 1);
        const Samples& level = mips.level(index);
        QCOMPARE(QSize(level.width, level.height), QSize((finer.width + 1) / 2, (finer.height + 1) / 2));
        for (int y = 0; y < level.height; ++y)
            for (int x = 0; x < level.width; ++x)
                for (int c = 0; c < channels; ++c) {
                    const int right = std::min(2 * x + 1, finer.width - 1);
                    const int below = std::min(2 * y + 1, finer.height - 1);
                    const int sum = cell(finer, raster.shape, 2 * x, 2 * y, c) +
                                    cell(finer, raster.shape, right, 2 * y, c) +
                                    cell(finer, raster.shape, 2 * x, below, c) +
                                    cell(finer, raster.shape, right, below, c);
                    QVERIFY2(cell(level, raster.shape, x, y, c) == (sum + 2) / 4,
                             qPrintable(QString("level %1 at %2, %3, channel %4: expected %5, is %6")
                                            .arg(index)
                                            .arg(x)
                                            .arg(y)
                                            .arg(c)
                                            .arg((sum + 2) / 4)
                                            .arg(cell(level, raster.shape, x, y, c))));
                }
    }
}

void TestResampling::weightsAddUp()
{
    std::mt19937 random(3);
    std::uniform_real_distribution<double> fraction(0.0, 1.0);
    for (int i = 0; i < 400; ++i) {
        const int length = 1 + static_cast<int>(fraction(random) * 300);
        const double scale = std::exp2(fraction(random) * 6.0 - 5.0);
        int level = 0;
        int levelLength = length;
        for (double own = scale; own <= 0.5 && levelLength > 1; own *= 2.0, ++level)
            levelLength = (levelLength + 1) / 2;
        const Axis axis{scale, fraction(random) * length, 1 + static_cast<int>(fraction(random) * 400),
                        length};
        const AxisMap map = makeAxisMap(axis, level, levelLength);
        for (std::size_t p = 0; p < map.first.size(); ++p) {
            const AxisMap::Weights& w = map.weights[p];
            QCOMPARE(w[0] + w[1] + w[2], AxisMap::Unit);
            QVERIFY(map.first[p] >= 0 && map.first[p] + map.taps <= levelLength);
            for (int tap = map.taps; tap < AxisMap::MostTaps; ++tap)
                QCOMPARE(int(w[static_cast<std::size_t>(tap)]), 0);
        }
    }
}

void TestResampling::hardPixelsFromOneToOne_data()
{
    QTest::addColumn<double>("scale");
    QTest::addColumn<int>("bytes");
    QTest::addColumn<int>("channels");
    for (const double scale : {1.0, 1.7, 3.37, 8.0, 45.0})
        for (const int bytes : {1, 2})
            for (const int channels : {1, 3})
                QTest::addRow("scale %.2f, %d bytes, %d channels", scale, bytes, channels)
                    << scale << bytes << channels;
}

void TestResampling::hardPixelsFromOneToOne()
{
    QFETCH(double, scale);
    QFETCH(int, bytes);
    QFETCH(int, channels);
    Raster raster(61, 47, bytes, channels, 9);
    const MipLevels mips = raster.mipLevels();
    const ViewGeometry geometry = looking(mips, QSize(150, 97), scale, 0.11, 0.83);
    const QImage picture = paint(mips, geometry);
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x) {
            const QPointF place = geometry.toImage(QPointF(x + 0.5, y + 0.5));
            const QPoint pixel(static_cast<int>(std::floor(place.x())),
                               static_cast<int>(std::floor(place.y())));
            for (int c = 0; c < 3; ++c) {
                const int from = channels == 3 ? c : 0;
                const int expected = geometry.isOnImage(pixel)
                                         ? mips.sample(pixel.x(), pixel.y(), from) >> (8 * bytes - 8)
                                         : c + 1;
                QVERIFY2(channelOf(picture.pixel(x, y), c) == expected,
                         qPrintable(QString("at %1, %2, channel %3: expected %4, is %5")
                                        .arg(x)
                                        .arg(y)
                                        .arg(c)
                                        .arg(expected)
                                        .arg(channelOf(picture.pixel(x, y), c))));
            }
        }
}

void TestResampling::zoomedOutIsTheMeanOverThePixel_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<double>("scale");
    QTest::addColumn<int>("level");
    QTest::addColumn<int>("bytes");
    QTest::addColumn<int>("channels");
    const QSize usual(173, 131);
    for (const int bytes : {1, 2})
        for (const int channels : {1, 3}) {
            for (const QSize& narrow : {QSize(1, 131), QSize(2, 131), QSize(131, 1), QSize(131, 2)})
                QTest::addRow("%d x %d pixels, %d bytes, %d channels", narrow.width(), narrow.height(), bytes,
                              channels)
                    << narrow << 0.73 << 0 << bytes << channels;
            QTest::addRow("0.99 of the image, %d bytes, %d channels", bytes, channels)
                << usual << 0.99 << 0 << bytes << channels;
            QTest::addRow("0.73 of the image, %d bytes, %d channels", bytes, channels)
                << usual << 0.73 << 0 << bytes << channels;
            QTest::addRow("0.5 is the first level, %d bytes, %d channels", bytes, channels)
                << usual << 0.5 << 1 << bytes << channels;
            QTest::addRow("0.17 uses the second level, %d bytes, %d channels", bytes, channels)
                << usual << 0.17 << 2 << bytes << channels;
        }
}

void TestResampling::zoomedOutIsTheMeanOverThePixel()
{
    QFETCH(QSize, size);
    QFETCH(double, scale);
    QFETCH(int, level);
    QFETCH(int, bytes);
    QFETCH(int, channels);
    Raster raster(size.width(), size.height(), bytes, channels, 21);
    const MipLevels mips = raster.mipLevels();
    const ViewGeometry geometry = looking(mips, QSize(121, 91), scale, 0.4, 0.6);
    const ResampleRule rule = makeResampleRule(geometry, mips);
    QCOMPARE(rule.fine.level, level);
    QCOMPARE(rule.blend, 0);
    QVERIFY(!rule.covered().isEmpty());
    const QImage picture = paint(mips, geometry);
    const double step = 1 << level;
    const QSizeF extent = QSizeF(size) / step;
    const double side = 1.0 / scale / step;
    for (int y = rule.covered().top(); y <= rule.covered().bottom(); ++y)
        for (int x = rule.covered().left(); x <= rule.covered().right(); ++x) {
            const QPointF centre = geometry.toImage(QPointF(x + 0.5, y + 0.5)) / step;
            const QRectF area(centre.x() - side * 0.5, centre.y() - side * 0.5, side, side);
            for (int c = 0; c < 3; ++c) {
                const int from = channels == 3 ? c : 0;
                const double expected = meanOver(mips.level(level), raster.shape, area, extent, from) /
                                        (bytes == 1 ? 1.0 : 256.0);
                const int is = channelOf(picture.pixel(x, y), c);
                // Weights in steps of 1/256 on both axes, two roundings, the shift cuts.
                QVERIFY2(std::abs(is + (bytes == 1 ? 0.0 : 0.5) - expected) <= 2.5,
                         qPrintable(QString("at %1, %2, channel %3: expected %4, is %5")
                                        .arg(x)
                                        .arg(y)
                                        .arg(c)
                                        .arg(expected)
                                        .arg(is)));
            }
        }
}

void TestResampling::theNextLevelFadesIn_data()
{
    QTest::addColumn<double>("scale");
    QTest::addColumn<int>("level");
    QTest::addColumn<int>("blend");
    QTest::newRow("where it begins") << 0.625 << 0 << 0;
    QTest::newRow("half of it") << 0.5625 << 0 << 128;
    QTest::newRow("half of the second level") << 0.28125 << 1 << 128;
    QTest::newRow("three quarters of the third level") << 0.1328125 << 2 << 192;
}

void TestResampling::theNextLevelFadesIn()
{
    QFETCH(double, scale);
    QFETCH(int, level);
    QFETCH(int, blend);
    Raster raster(173, 131, 1, 1, 21);
    const MipLevels mips = raster.mipLevels();
    const ResampleRule rule = makeResampleRule(looking(mips, QSize(90, 70), scale, 0.5, 0.5), mips);
    QCOMPARE(rule.fine.level, level);
    QCOMPARE(rule.blend, blend);
    if (blend > 0)
        QCOMPARE(rule.coarse.level, level + 1);
}

// Two samples of the first level side by side, the second of them half beyond the image.
void TestResampling::aViewOfOnePixelIsTheMeanOfTheImage()
{
    Raster raster(3, 2, 1, 1, 1);
    const int columns[] = {10, 30, 200};
    for (int y = 0; y < 2; ++y)
        for (int x = 0; x < 3; ++x)
            raster.set(x, y, columns[x]);
    const MipLevels mips = raster.mipLevels();
    ViewGeometry geometry;
    geometry.setViewSize(QSize(1, 1));
    geometry.setImageSize(QSize(3, 2));
    const int shown = qRed(paint(mips, geometry).pixel(0, 0));
    QVERIFY2(std::abs(shown - 80) <= 1, qPrintable(QString::number(shown)));
}

void TestResampling::nothingJumpsWhereLevelsChange()
{
    Raster raster(400, 300, 1, 1, 33);
    const MipLevels mips = raster.mipLevels();
    for (const double change : {0.5, 0.625, 0.25, 0.3125}) {
        const QImage above = paint(mips, looking(mips, QSize(90, 70), change + 1e-9, 0.5, 0.5));
        const QImage below = paint(mips, looking(mips, QSize(90, 70), change - 1e-9, 0.5, 0.5));
        for (int y = 0; y < above.height(); ++y)
            for (int x = 0; x < above.width(); ++x)
                QVERIFY2(std::abs(qRed(above.pixel(x, y)) - qRed(below.pixel(x, y))) <= 1,
                         qPrintable(QString("scale %1 at %2, %3: above %4, below %5")
                                        .arg(change)
                                        .arg(x)
                                        .arg(y)
                                        .arg(qRed(above.pixel(x, y)))
                                        .arg(qRed(below.pixel(x, y)))));
    }
}

void TestResampling::finePatternsGoGrey()
{
    Raster raster(640, 480, 1, 1, 1);
    for (int y = 0; y < 480; ++y)
        for (int x = 0; x < 640; ++x)
            raster.set(x, y, (x + y) % 2 * 255);
    const MipLevels mips = raster.mipLevels();
    for (const double scale : {0.5, 0.4, 0.3, 0.17, 0.05}) {
        const ViewGeometry geometry = looking(mips, QSize(80, 60), scale, 0.5, 0.5);
        const QRect covered = makeResampleRule(geometry, mips).covered();
        const QImage picture = paint(mips, geometry);
        for (int y = covered.top(); y <= covered.bottom(); ++y)
            for (int x = covered.left(); x <= covered.right(); ++x)
                QVERIFY2(std::abs(qRed(picture.pixel(x, y)) - 128) <= 2,
                         qPrintable(QString("scale %1 at %2, %3: %4")
                                        .arg(scale)
                                        .arg(x)
                                        .arg(y)
                                        .arg(qRed(picture.pixel(x, y)))));
    }
}

void TestResampling::tileRunsCoverTheTable()
{
    Raster raster(500, 40, 1, 1, 2);
    const MipLevels mips = raster.mipLevels();
    const ResampleRule rule = makeResampleRule(looking(mips, QSize(300, 30), 0.55, 0.5, 0.5), mips);
    QVERIFY(rule.blend > 0);
    const std::vector<TileRun> runs = tileRuns(rule.fine.x, &rule.coarse.x, 64);
    int next = 0;
    for (const TileRun& run : runs) {
        QCOMPARE(run.begin, next);
        next += run.count;
        for (int i = run.begin; i < next; ++i) {
            const auto index = static_cast<std::size_t>(i);
            QVERIFY(rule.fine.x.first[index] >= run.fine && rule.fine.x.first[index] < run.fine + 64);
            QVERIFY(rule.coarse.x.first[index] >= run.coarse && rule.coarse.x.first[index] < run.coarse + 64);
        }
    }
    QCOMPARE(next, rule.fine.x.count());
    QVERIFY(runs.size() >= 8);
    for (std::size_t i = 1; i < runs.size(); ++i)
        QVERIFY(runs[i].fine != runs[i - 1].fine || runs[i].coarse != runs[i - 1].coarse);
}

QTEST_GUILESS_MAIN(TestResampling)
#include "tst_resampling.moc"
