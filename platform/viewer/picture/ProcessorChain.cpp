#include "platform/viewer/picture/ProcessorChain.h"

#include "platform/viewer/picture/RecordShape.h"

#include <algorithm>

namespace zor::viewer {
void ProcessorChain::add(ZorImgProcessor* processor)
{
    const auto isSame = [processor](const auto& held) { return held.get() == processor; };
    if (std::none_of(m_processors.begin(), m_processors.end(), isSame))
        m_processors.emplace_back(processor);
}

ProcessorChain::Outcome ProcessorChain::run(const _ZorImage* source)
{
    Outcome outcome{source, 0};
    for (const auto& processor : m_processors) {
        const int result = processor->processImage(outcome.image);
        if (outcome.result == 0)
            outcome.result = result;
        const _ZorImage* output = processor->outputImage();
        if (checkRecord(output) == ViewerStatus::Ok)
            outcome.image = output;
    }
    return outcome;
}
} // namespace zor::viewer
