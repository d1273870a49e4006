#pragma once

#include <vector>

namespace zor {

/// Requests to the dialog that have to wait, in their order of arrival. Belongs to the GUI thread.
class DeferredRequests
{
public:
    enum class Request
    {
        Reset,
        Update,
        HighlightsOn,
        HighlightsOff
    };

    /// A reset drops the updates before it, because no frame is left for them. A reset or an update that
    /// waits already does what a second one would do, so that one is not added. Each click on the highlights
    /// counts.
    void add(Request request);

    /// Carries out what waits, and what is added meanwhile, one after the other. A call from within does
    /// nothing: the outer one goes on.
    template <typename CarryOut> void carryOut(const CarryOut& one)
    {
        if (m_isBusy)
            return;
        m_isBusy = true;
        while (!m_waiting.empty()) {
            const Request request = m_waiting.front();
            m_waiting.erase(m_waiting.begin());
            one(request);
        }
        m_isBusy = false;
    }

private:
    std::vector<Request> m_waiting;
    bool m_isBusy = false;
};

} // namespace zor
