#include "host/frames/StoredSamples.h"

#include <algorithm>
#include <cstring>

namespace zor {

void appendSamples(std::vector<std::uint16_t>& values, const std::uint8_t* source, std::size_t count,
                   std::size_t sampleBytes)
{
    const std::size_t start = values.size();
    values.resize(start + count);
    if (sampleBytes == 1)
        std::copy(source, source + count, values.begin() + static_cast<std::ptrdiff_t>(start));
    else
        std::memcpy(values.data() + start, source, count * sampleBytes);
}

} // namespace zor
