#include "tests/fakes/FakeImageHeaders.h"

#include "image/ZorImageApi.h"

#include <memory>
#include <vector>

namespace {

struct State
{
    bool fails = false;
    int released = 0;
    std::vector<std::unique_ptr<_ZorImage>> headers{};
};

State& state()
{
    static State all;
    return all;
}

} // namespace

void FakeImageHeaders::failFromNowOn()
{
    state().fails = true;
}

int FakeImageHeaders::created()
{
    return static_cast<int>(state().headers.size());
}

int FakeImageHeaders::released()
{
    return state().released;
}

const _ZorImage* FakeImageHeaders::last()
{
    return state().headers.empty() ? nullptr : state().headers.back().get();
}

void FakeImageHeaders::reset()
{
    state() = State();
}

int ZorCreateImageHeader(_ZorImage** slot, std::uint64_t size, std::uint32_t pixelType, std::uint32_t first,
                         std::uint32_t second, std::uint32_t third)
{
    if (state().fails || first != 0 || second != 0 || third != 0)
        return 1;
    auto header = std::make_unique<_ZorImage>();
    header->pixelType = pixelType;
    header->width = static_cast<std::uint32_t>(size);
    header->height = static_cast<std::uint32_t>(size >> 32);
    *slot = header.get();
    state().headers.push_back(std::move(header));
    return 0;
}

/// Leaves the slot as it is, so that a caller who forgets to null it is found out.
int ZorReleaseImageHeader(_ZorImage**)
{
    ++state().released;
    return 0;
}
