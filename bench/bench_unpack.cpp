// Unpacking of a frame of 65 megapixels on one thread, beside a plain copy of the same output in the same
// run.
//
//   unpack/FORMAT    a mono format's row function alone, into memory that was touched before, as is the
//                    copy's
//   convert/FORMAT   the whole converter to mono of the format's own depth; its result is a new record each
//                    time, and so the copy is a clone of it: both pay for the first touch of their pages
//
//   ns_per_pixel     the fastest of all iterations
//   copy             nanoseconds per pixel of the fastest copy
//   of_copy          the ratio of the two

#include "image/ImageRecord.h"
#include "image/Pitch.h"
#include "image/ZorImageApi.h"
#include "image/ZorImageConverter.h"
#include "image/ZorPixelTypeTable.h"
#include "image/unpack/UnpackRow.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstring>
#include <limits>
#include <random>
#include <string>
#include <vector>

namespace {

constexpr std::uint32_t Width = 9344;
constexpr std::uint32_t Height = 7000;
constexpr double Pixels = double{Width} * Height;
constexpr int Iterations = 7;

/// 14 bits have no target of their own.
std::uint32_t targetFor(std::uint32_t code)
{
    switch (zor::pixelTypeSampleBits(code)) {
    case 8:
        return zor::Mono8;
    case 10:
        return zor::Mono10;
    case 12:
        return zor::Mono12;
    default:
        return zor::Mono16;
    }
}

/// Random bytes for a frame with the most bits a pixel, made once; the others use the beginning.
std::vector<std::uint8_t>& sourceBytes()
{
    static std::vector<std::uint8_t> bytes = [] {
        constexpr std::size_t MostBytesPerPixel = 6;
        std::vector<std::uint8_t> made(MostBytesPerPixel * Width * Height);
        std::mt19937_64 random(65);
        for (std::size_t i = 0; i + sizeof(std::uint64_t) <= made.size(); i += sizeof(std::uint64_t)) {
            const std::uint64_t word = random();
            std::memcpy(made.data() + i, &word, sizeof(word));
        }
        return made;
    }();
    return bytes;
}

_ZorImage frameOf(std::uint32_t code)
{
    _ZorImage frame = zor::imageRecord(code);
    frame.width = Width;
    frame.height = Height;
    frame.pitch = static_cast<std::uint32_t>(zor::tightPitch(code, Width));
    frame.imageSize = frame.pitch * Height;
    frame.data = sourceBytes().data();
    return frame;
}

template <typename Work> double seconds(Work work)
{
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

/// What both groups report.
class Figures
{
public:
    void add(double work, double copy)
    {
        m_work = std::min(m_work, work);
        m_copy = std::min(m_copy, copy);
    }
    void report(benchmark::State& state) const
    {
        constexpr double Nano = 1e9;
        state.counters["ns_per_pixel"] = m_work * Nano / Pixels;
        state.counters["copy"] = m_copy * Nano / Pixels;
        state.counters["of_copy"] = m_work / m_copy;
    }

private:
    double m_work = std::numeric_limits<double>::max();
    double m_copy = std::numeric_limits<double>::max();
};

void unpack(benchmark::State& state, const ZorPixelTypeRow& row)
{
    static std::vector<std::uint16_t> samples(std::size_t{Width} * Height, std::uint16_t{1});
    const _ZorImage frame = frameOf(row.code);
    const zor::UnpackRow unpackRow = zor::unpackRowFor(row.code);
    Figures figures;
    for (auto _ : state) {
        const double took = seconds([&] {
            for (std::size_t y = 0; y < Height; ++y)
                unpackRow(frame.data + y * frame.pitch, samples.data() + y * Width, Width);
            benchmark::ClobberMemory();
        });
        const double copy = seconds([&] {
            std::memcpy(samples.data(), frame.data, samples.size() * sizeof(std::uint16_t));
            benchmark::ClobberMemory();
        });
        state.SetIterationTime(took);
        figures.add(took, copy);
    }
    figures.report(state);
}

void convert(benchmark::State& state, const ZorPixelTypeRow& row)
{
    const _ZorImage frame = frameOf(row.code);
    const std::uint32_t target = targetFor(row.code);
    Figures figures;
    for (auto _ : state) {
        _ZorImage* result = nullptr;
        _ZorImage* clone = nullptr;
        int status = 0;
        const double took = seconds([&] { status = ZimConvert(&frame, target, &result); });
        const double copy = seconds([&] { status |= ZorCloneImage(&clone, result); });
        ZorReleaseImage(&result);
        ZorReleaseImage(&clone);
        if (status != 0) {
            state.SkipWithError("no memory");
            return;
        }
        state.SetIterationTime(took);
        figures.add(took, copy);
    }
    figures.report(state);
}

using Work = void (*)(benchmark::State&, const ZorPixelTypeRow&);

void add(const char* group, Work work, const ZorPixelTypeRow& row)
{
    benchmark::RegisterBenchmark((group + std::string(row.name)).c_str(), work, row)
        ->UseManualTime()
        ->Iterations(Iterations)
        ->Unit(benchmark::kMillisecond);
}

/// One colour order and one phase are measured; the others do the same work.
bool standsForItself(const ZorPixelTypeRow& row)
{
    const std::string name = row.name;
    switch (zor::pixelTypeFamily(row.code)) {
    case zor::PixelFamily::Bayer:
        return name.find("BayerRG") == 0;
    case zor::PixelFamily::TrueSense:
        return name.find("RGGB_WRRW_0") != std::string::npos;
    default:
        return true;
    }
}

} // namespace

int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    for (const ZorPixelTypeRow& row : ZorPixelTypeTable) {
        if (zor::pixelTypeFamily(row.code) == zor::PixelFamily::Mono)
            add("unpack/", unpack, row);
    }
    for (const ZorPixelTypeRow& row : ZorPixelTypeTable) {
        if (standsForItself(row))
            add("convert/", convert, row);
    }
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
