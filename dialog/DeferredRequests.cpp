#include "dialog/DeferredRequests.h"

#include <algorithm>

namespace zor {

void DeferredRequests::add(Request request)
{
    if (request == Request::Reset)
        m_waiting.erase(std::remove(m_waiting.begin(), m_waiting.end(), Request::Update), m_waiting.end());
    const bool counts = request == Request::HighlightsOn || request == Request::HighlightsOff;
    if (counts || std::find(m_waiting.begin(), m_waiting.end(), request) == m_waiting.end())
        m_waiting.push_back(request);
}

} // namespace zor
