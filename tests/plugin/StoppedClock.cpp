#include "tests/plugin/StoppedClock.h"

#include <chrono>
#include <cstdint>
#include <sys/time.h>

namespace {

std::int64_t& microseconds()
{
    using namespace std::chrono;
    static std::int64_t since1970 =
        duration_cast<std::chrono::microseconds>(system_clock::now().time_since_epoch()).count();
    return since1970;
}

} // namespace

void StoppedClock::advance(int milliseconds)
{
    microseconds() += std::int64_t{milliseconds} * 1000;
}

/// Qt asks this one: a program's own function comes before that of the system's library.
extern "C" __attribute__((visibility("default"))) int gettimeofday(timeval* __restrict now,
                                                                   void* __restrict) noexcept
{
    now->tv_sec = static_cast<time_t>(microseconds() / 1'000'000);
    now->tv_usec = static_cast<suseconds_t>(microseconds() % 1'000'000);
    return 0;
}
