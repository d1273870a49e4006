// What a live stream of 2448 x 2048 pixels costs, on one thread.
//
//   simulate/...     a frame of 12 bits of the simulated sensor, after the fixed pattern was made
//   source/...       the same as the source delivers it as fast as it can, with the frame's memory
//   pattern          that fixed pattern, once at each start
//   judge/BITS       the figures of a mono frame and their judgement
//   region/FORMAT    mean, extremes and deviation of all pixels
//   histogram/FORMAT their histogram
//   average_add/FORMAT   a frame more in an average
//   average_slide/FORMAT a frame in place of another one
//   average_mean/FORMAT  the mean of 16 frames
//   dark/FORMAT          a dark frame subtracted
//   noise/12             the temporal noise of two mono frames

#include "host/average/DarkFrame.h"
#include "host/average/FrameSum.h"
#include "host/quality/FrameHistogram.h"
#include "host/quality/FrameNoise.h"
#include "host/quality/Judgement.h"
#include "host/quality/RegionFigures.h"
#include "host/simulate/SimulatedScene.h"
#include "host/source/SimulatorSource.h"
#include "image/ImageRecord.h"
#include "image/Pitch.h"
#include "image/ZorPixelTypeTable.h"

#include <benchmark/benchmark.h>

#include <condition_variable>
#include <mutex>
#include <string>
#include <vector>

namespace {

constexpr std::uint32_t Width = 2448;
constexpr std::uint32_t Height = 2048;

zor::SensorModel sensor(std::uint32_t depth = 12)
{
    zor::SensorModel model;
    model.width = Width;
    model.height = Height;
    model.depth = depth;
    return model;
}

std::vector<std::uint16_t> exposed(const zor::SimulatedScene& scene, std::uint64_t number,
                                   const zor::TemporalNoise& noise)
{
    std::vector<std::uint16_t> frame(std::size_t{Width} * Height);
    for (std::uint32_t y = 0; y < Height; ++y)
        scene.exposeRow(number, y, noise, &frame[std::size_t{y} * Width]);
    return frame;
}

void simulate(benchmark::State& state, const zor::SensorModel& model, const zor::TemporalNoise& noise)
{
    const zor::SimulatedScene scene(model);
    std::uint64_t number = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(exposed(scene, number++, noise).data());
    state.counters["frames_per_second"] = benchmark::Counter(double(number), benchmark::Counter::kIsRate);
}

void deliver(benchmark::State& state, const zor::TemporalNoise& noise)
{
    std::mutex mutex;
    std::condition_variable changed;
    std::uint64_t delivered = 0;
    zor::SimulatorSource source(sensor(), zor::SimulatorSource::LargestFrameRate);
    source.setNoise(noise);
    source.start({[&](const zor::SourceFrame& frame) {
                      const std::lock_guard<std::mutex> lock(mutex);
                      delivered = frame.number + 1;
                      changed.notify_all();
                  },
                  [](const zor::SourceError&) {}});
    const auto waitFor = [&](std::uint64_t count) {
        std::unique_lock<std::mutex> lock(mutex);
        changed.wait(lock, [&] { return delivered >= count; });
    };
    // The pattern is computed before the first frame.
    waitFor(1);
    std::uint64_t count = 1;
    for (auto _ : state)
        waitFor(++count);
    source.stop();
    state.counters["frames_per_second"] = benchmark::Counter(double(count - 1), benchmark::Counter::kIsRate);
}

void pattern(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(zor::SimulatedScene(sensor()).model().seed);
}

/// As a camera fills a frame.
std::vector<std::uint8_t> frameBytes(std::uint32_t depth)
{
    const std::vector<std::uint16_t> grey = exposed(zor::SimulatedScene(sensor(depth)), 0, {});
    if (depth == 8)
        return {grey.begin(), grey.end()};
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(grey.data());
    return {bytes, bytes + grey.size() * 2};
}

void judge(benchmark::State& state, std::int32_t depth)
{
    const std::vector<std::uint8_t> bytes = frameBytes(static_cast<std::uint32_t>(depth));
    const zor::ConstImageView frame{bytes.data(), static_cast<std::int32_t>(bytes.size() / Height), Width,
                                    Height, depth};
    for (auto _ : state)
        benchmark::DoNotOptimize(zor::judge(zor::frameFigures(frame)).verdict);
}

/// The bytes of a mono frame of 12 bits, read as any format.
template <typename Measure> void measure(benchmark::State& state, const ZorPixelTypeRow& row, Measure of)
{
    std::vector<std::uint8_t> bytes = frameBytes(12);
    _ZorImage image = zor::imageRecord(row.code);
    image.width = Width;
    image.height = Height;
    image.pitch = static_cast<std::uint32_t>(zor::tightPitch(row.code, Width));
    bytes.resize(std::max(bytes.size(), std::size_t{image.pitch} * Height), 0x77);
    image.imageSize = static_cast<std::uint32_t>(bytes.size());
    image.data = bytes.data();
    for (auto _ : state)
        benchmark::DoNotOptimize(of(image));
}

void region(benchmark::State& state, const ZorPixelTypeRow& row)
{
    measure(state, row, [](const _ZorImage& image) {
        return zor::regionFigures(image, {0, 0, Width, Height}).channels.front().mean;
    });
}

void histogram(benchmark::State& state, const ZorPixelTypeRow& row)
{
    measure(state, row,
            [](const _ZorImage& image) { return zor::frameHistogram(image).channels.front().counts[1]; });
}

/// The same bytes as a frame.
zor::Frame frameIn(const ZorPixelTypeRow& row)
{
    zor::Frame frame;
    frame.width = Width;
    frame.height = Height;
    frame.pitch = static_cast<std::uint32_t>(zor::tightPitch(row.code, Width));
    frame.pixelType = row.code;
    frame.pixels = frameBytes(12);
    frame.pixels.resize(std::size_t{frame.pitch} * Height, 0x77);
    return frame;
}

void averageAdd(benchmark::State& state, const ZorPixelTypeRow& row)
{
    const zor::Frame frame = frameIn(row);
    zor::FrameSum sum;
    sum.add(frame);
    for (auto _ : state) {
        if (sum.count() == zor::MostAveragedFrames) {
            state.PauseTiming();
            sum = {};
            sum.add(frame);
            state.ResumeTiming();
        }
        sum.add(frame);
    }
}

void averageSlide(benchmark::State& state, const ZorPixelTypeRow& row)
{
    const zor::Frame frame = frameIn(row);
    const zor::Frame other = frame;
    zor::FrameSum sum;
    sum.add(frame);
    for (auto _ : state)
        sum.replace(frame, other);
}

void averageMean(benchmark::State& state, const ZorPixelTypeRow& row)
{
    const zor::Frame frame = frameIn(row);
    zor::FrameSum sum;
    for (int i = 0; i < 16; ++i)
        sum.add(frame);
    for (auto _ : state)
        benchmark::DoNotOptimize(sum.mean().pixels.data());
}

void dark(benchmark::State& state, const ZorPixelTypeRow& row)
{
    const zor::Frame frame = frameIn(row);
    const zor::Frame other = frame;
    for (auto _ : state)
        benchmark::DoNotOptimize(zor::subtractDark(frame, other).pixels.data());
}

void noise(benchmark::State& state)
{
    const std::vector<std::uint8_t> bytes = frameBytes(12);
    const std::vector<std::uint8_t> other = bytes;
    const auto view = [](const std::vector<std::uint8_t>& of) {
        return zor::ConstImageView{of.data(), Width * 2, Width, Height, 12};
    };
    for (auto _ : state)
        benchmark::DoNotOptimize(zor::frameNoise(view(bytes), view(other)).variance);
}

template <typename Work, typename... Arguments>
void add(const std::string& name, Work work, Arguments... arguments)
{
    benchmark::RegisterBenchmark(name.c_str(), work, arguments...)->Unit(benchmark::kMillisecond);
}

} // namespace

int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    zor::SensorModel dim = sensor();
    dim.levelPercent = 0.2;
    add("simulate/without_noise", simulate, sensor(), zor::TemporalNoise{0.0, false});
    add("simulate/dark_noise", simulate, sensor(), zor::TemporalNoise{8.0, false});
    add("simulate/shot_and_dark_noise", simulate, sensor(), zor::TemporalNoise{8.0, true});
    add("simulate/40_electrons_counted", simulate, dim, zor::TemporalNoise{8.0, true});
    for (const auto& [name, noise] : {std::pair("source/without_noise", zor::TemporalNoise{0.0, false}),
                                      std::pair("source/shot_and_dark_noise", zor::TemporalNoise{8.0, true})})
        benchmark::RegisterBenchmark(name, deliver, noise)->Unit(benchmark::kMillisecond)->UseRealTime();
    add("pattern", pattern);
    add("judge/8", judge, 8);
    add("judge/12", judge, 12);
    add("noise/12", noise);
    for (const char* name :
         {"Mono8", "Mono12", "Mono12Packed", "BayerRG12p", "TrueSense_RGGB_WRRW_0_12", "RGB8", "YUV422_8"}) {
        for (const ZorPixelTypeRow& row : ZorPixelTypeTable) {
            if (row.name != std::string(name))
                continue;
            add("region/" + std::string(name), region, row);
            add("histogram/" + std::string(name), histogram, row);
            add("average_add/" + std::string(name), averageAdd, row);
            add("average_slide/" + std::string(name), averageSlide, row);
            add("average_mean/" + std::string(name), averageMean, row);
            add("dark/" + std::string(name), dark, row);
        }
    }
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
