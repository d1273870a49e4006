#include "engine/CellImage.h"
#include "engine/ColumnPass.h"
#include "engine/GainCode.h"
#include "engine/Gains.h"
#include "engine/Profiles.h"
#include "engine/RowPass.h"
#include "tests/engine/EngineTesting.h"
#include "tests/reference/EngineReference.h"

#include <QtTest>

#include <cstring>

using enginetest::Block;
using enginetest::difference;
using enginetest::Poisons;
using enginetest::Random;

namespace {

/// A frame with its inputs to both passes.
struct Case
{
    Block frame;
    int depth;
    zor::GainRule rule;
    std::vector<double> columnGains;
    std::vector<double> rowGains;
    QString name;

    zor::ConstImageView view() { return {frame.data(), frame.step, frame.width, frame.height, depth}; }

    reference::Image plain() const
    {
        return {{frame.storage.begin() + frame.lead, frame.storage.end()},
                frame.step,
                frame.width,
                frame.height,
                depth};
    }
};

std::vector<double> randomGains(Random& random, int count)
{
    std::vector<double> gains;
    for (int i = 0; i < count; ++i)
        gains.push_back(random.gain());
    return gains;
}

/// Pixels of the depth, white and black ones among them, and sometimes bits above the depth.
void fillPixels(Random& random, Block& frame, int depth)
{
    frame.randomize(random);
    const int limit = (1 << depth) - 1;
    const bool beyond = random.oneIn(8);
    for (int y = 0; depth != 8 && !beyond && y < frame.height; ++y) {
        for (int x = 0; x < frame.width; ++x) {
            const bool extreme = random.oneIn(6);
            frame.setWord(x, y, extreme ? (random.oneIn(2) ? limit : 0) : random.between(0, limit));
        }
    }
}

Case makeCase(int seed, int depth, int maxWidth, int maxHeight)
{
    Random random(static_cast<unsigned>(seed));
    const int width = random.oneIn(6) ? 1 : random.between(1, maxWidth);
    const int height = random.oneIn(6) ? 1 : random.between(1, maxHeight);
    Case result{
        enginetest::randomBlock(random, width, height, depth == 8 ? 1 : 2, 0), depth, {}, {}, {}, QString()};
    fillPixels(random, result.frame, depth);
    const double values[] = {1.0, 0.5, 0.0, -1.0, 20.0, 0.9};
    result.rule.normalize = !random.oneIn(3);
    result.rule.normalizeValue = values[random.between(0, 5)];
    result.rule.pairSmoothing = random.oneIn(3);
    result.columnGains = randomGains(random, width);
    result.rowGains = randomGains(random, height);
    result.name = QString("seed %1, depth %2, %3x%4, step %5")
                      .arg(seed)
                      .arg(depth)
                      .arg(width)
                      .arg(height)
                      .arg(result.frame.step);
    return result;
}

/// Doubles by their bits, any NaN equal to any other.
QString differentGain(const std::list<double>& actual, const std::vector<double>& expected,
                      const QString& name)
{
    if (actual.size() != expected.size())
        return QString("%1: %2 gains instead of %3").arg(name).arg(actual.size()).arg(expected.size());
    std::size_t place = 0;
    for (const double gain : actual) {
        const double wanted = expected[place];
        const bool bothNone = gain != gain && wanted != wanted;
        if (!bothNone && std::memcmp(&gain, &wanted, sizeof gain) != 0)
            return QString("%1: gain %2: expected %3, actual %4")
                .arg(name)
                .arg(place)
                .arg(wanted, 0, 'g', 17)
                .arg(gain, 0, 'g', 17);
        ++place;
    }
    return QString();
}

QString differentMean(const std::vector<std::uint16_t>& actual, const std::vector<std::uint16_t>& expected,
                      const QString& name)
{
    for (std::size_t i = 0; i < expected.size(); ++i) {
        if (actual[i] != expected[i])
            return QString("%1: mean %2: expected %3, actual %4")
                .arg(name)
                .arg(i)
                .arg(expected[i])
                .arg(actual[i]);
    }
    return QString();
}

std::vector<std::uint16_t> codesOf(const std::vector<double>& gains)
{
    std::vector<std::uint16_t> codes;
    for (const double gain : gains)
        codes.push_back(reference::gainCode(gain));
    return codes;
}

} // namespace

class TestEngineReference : public QObject
{
    Q_OBJECT

private slots:
    void gainsAndMeansAreEqual_data() { addCases(); }
    void gainsAndMeansAreEqual();
    void bothPassesAreEqual_data() { addCases(); }
    void bothPassesAreEqual();

private:
    static void addCases();
    static QString passesDiffer(Case& frame, std::uint8_t poison);
};

void TestEngineReference::addCases()
{
    QTest::addColumn<int>("depth");
    QTest::addColumn<int>("maxWidth");
    QTest::addColumn<int>("maxHeight");
    QTest::addColumn<int>("seeds");
    for (const int depth : {8, 10, 12, 16}) {
        QTest::addRow("depth %d, small frames", depth) << depth << 9 << 9 << 200;
        QTest::addRow("depth %d, middling frames", depth) << depth << 130 << 40 << 40;
        QTest::addRow("depth %d, wider than a strip", depth) << depth << 3 * zor::ColumnStrip << 5 << 8;
    }
    QTest::addRow("depth 9, small frames") << 9 << 9 << 9 << 50;
    QTest::addRow("depth 14, small frames") << 14 << 9 << 9 << 50;
}

void TestEngineReference::gainsAndMeansAreEqual()
{
    QFETCH(int, depth);
    QFETCH(int, maxWidth);
    QFETCH(int, maxHeight);
    QFETCH(int, seeds);
    for (int seed = 1; seed <= seeds; ++seed) {
        Case frame = makeCase(seed, depth, maxWidth, maxHeight);
        const reference::Rule rule{frame.rule.normalize, frame.rule.normalizeValue, frame.rule.pairSmoothing};
        const reference::Gains columns = reference::columnGains(frame.plain(), rule);
        const reference::Gains rows = reference::rowGains(frame.plain(), rule);
        for (const std::uint16_t poison : {0xA5A5, 0x5A5A}) {
            std::list<double> gains;
            std::vector<std::uint16_t> columnMeans(columns.means.size(), poison);
            std::vector<std::uint16_t> rowMeans(rows.means.size(), poison);
            zor::computeColumnGains(frame.view(), frame.rule, gains, columnMeans.data(), rowMeans.data());
            VERIFY_SAME(differentGain(gains, columns.gains, frame.name));
            VERIFY_SAME(differentMean(columnMeans, columns.means, frame.name));
            VERIFY_SAME(differentMean(rowMeans, rows.means, frame.name));
        }
        if (depth != 8) {
            std::list<double> gains;
            zor::computeRowGains(frame.view(), frame.rule, gains);
            VERIFY_SAME(differentGain(gains, rows.gains, frame.name));
        }
    }
}

QString TestEngineReference::passesDiffer(Case& frame, std::uint8_t poison)
{
    const int width = frame.frame.width;
    const int height = frame.frame.height;
    const int frameStep = frame.frame.step;
    const int step = reference::cellStep(width);
    const std::size_t blockBytes = static_cast<std::size_t>(step) * static_cast<std::size_t>(height + 1);

    reference::Image expectedX{std::vector<std::uint8_t>(blockBytes, poison), step, width, height,
                               frame.depth};
    reference::fillCells(frame.plain(), expectedX);
    std::vector<std::uint8_t> actualX(blockBytes, poison);
    const zor::ImageView cells{actualX.data(), zor::cellStep(width), width, height, frame.depth};
    const std::size_t frameBytes = frame.frame.storage.size() - static_cast<std::size_t>(frame.frame.lead);
    zor::fillCells(frame.view(), frameBytes, cells);
    QString found = difference(actualX, expectedX.bytes, 0, step, frame.name + ", filled");
    if (!found.isEmpty())
        return found;

    reference::columnPass(expectedX, frameStep, codesOf(frame.columnGains));
    const std::int32_t capacity = zor::columnCodeCapacity(width, frameStep);
    std::vector<std::uint16_t> codes(static_cast<std::size_t>(capacity), poison);
    zor::encodeGains({frame.columnGains.begin(), frame.columnGains.end()}, codes.data(), width, capacity);
    zor::applyColumnCodes(cells, frameStep, codes.data());
    found = difference(actualX, expectedX.bytes, 0, step, frame.name + ", column pass");
    if (!found.isEmpty())
        return found;

    reference::Image expectedY{std::vector<std::uint8_t>(blockBytes, poison), step, width, height,
                               frame.depth};
    reference::rowPass(expectedX, expectedY, codesOf(frame.rowGains));
    std::vector<std::uint8_t> actualY(blockBytes, poison);
    std::vector<std::uint16_t> rowCodes(static_cast<std::size_t>(height), poison);
    zor::encodeGains({frame.rowGains.begin(), frame.rowGains.end()}, rowCodes.data(), height, height);
    const zor::ImageView flat{actualY.data(), step, width, height, frame.depth};
    zor::applyRowCodes(zor::readOnly(cells), flat, rowCodes.data());
    found = difference(actualY, expectedY.bytes, 0, step, frame.name + ", row pass");
    if (!found.isEmpty())
        return found;

    // The means of the corrected image read cells, also at depth 8.
    expectedY.depth = 16;
    const zor::ConstImageView wide{flat.data, step, width, height, 16};
    std::vector<std::uint16_t> means(static_cast<std::size_t>(width), poison);
    zor::storeColumnMeans(wide, means.data());
    found =
        differentMean(means, reference::columnGains(expectedY, {}).means, frame.name + ", corrected columns");
    if (!found.isEmpty())
        return found;
    means.assign(static_cast<std::size_t>(height), poison);
    zor::storeRowMeans(wide, means.data());
    return differentMean(means, reference::rowGains(expectedY, {}).means, frame.name + ", corrected rows");
}

void TestEngineReference::bothPassesAreEqual()
{
    QFETCH(int, depth);
    QFETCH(int, maxWidth);
    QFETCH(int, maxHeight);
    QFETCH(int, seeds);
    for (int seed = 1; seed <= seeds; ++seed) {
        Case frame = makeCase(seed, depth, maxWidth, maxHeight);
        for (const std::uint8_t poison : Poisons)
            VERIFY_SAME(passesDiffer(frame, poison));
    }
}

QTEST_APPLESS_MAIN(TestEngineReference)
#include "tst_engine_reference.moc"
