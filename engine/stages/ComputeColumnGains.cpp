#include "dialog/CFFCUtility.h"
#include "dialog/Message.h"
#include "engine/Gains.h"
#include "engine/stages/StageBlocks.h"

#include <new>

bool CFFCUtility::ComputeColumnGains()
{
    m_columnGains.clear();
    if (!m_image)
        return false;
    if (!zor::renewLine(m_columnMean, m_width) || !zor::renewLine(m_rowMean, m_height))
        return false;
    const zor::ConstImageView frame{m_image, m_step, m_width, m_height, m_depth};
    const zor::GainRule rule{m_normalize != 0, m_normalizeValue, m_pairSmoothing != 0};
    try {
        zor::computeColumnGains(frame, rule, m_columnGains, m_columnMean, m_rowMean);
    } catch (const std::bad_alloc&) {
        m_columnGains.clear();
        zor::showNotEnoughMemory();
        return false;
    }
    return true;
}
