#pragma once

#include "image/ZorImgProcessor.h"

#include <memory>
#include <vector>

namespace zor::viewer {
/// The processors between what `display` is given and what is shown, run in the order of their adding.
class ProcessorChain
{
public:
    /// Takes the processor over. One that is in the chain already is not added again.
    void add(ZorImgProcessor* processor);
    void clear() { m_processors.clear(); }
    bool isEmpty() const { return m_processors.empty(); }

    struct Outcome
    {
        const _ZorImage* image; ///< belongs to the last processor, or is the source
        int result;             ///< the first answer of a processor that was not 0, else 0
    };

    /// Each processor gets what the one before it put out. One without an output that can be read counts as
    /// absent.
    Outcome run(const _ZorImage* source);

private:
    std::vector<std::unique_ptr<ZorImgProcessor>> m_processors;
};
} // namespace zor::viewer
