#include "dialog/CFFCUtility.h"
#include "dialog/DialogUse.h"
#include "dialog/LocalRecord.h"
#include "dialog/Message.h"
#include "engine/Allocation.h"
#include "image/MonoTarget.h"
#include "image/ZorImageApi.h"
#include "image/ZorImageConverter.h"

#include <cstring>

void CFFCUtility::SetFrame(_ZorImage* image)
{
    // A host's timer can come in while a refresh runs a nested event loop on this thread.
    if (m_viewLock.heldByThisThread())
        return;
    if (!image || !image->data || image->imageSize == 0)
        return;
    const zor::DialogUse use(*this);
    ResetData(false);
    // The size is the host's, everything else the converted record's.
    m_width = static_cast<std::int32_t>(image->width);
    m_height = static_cast<std::int32_t>(image->height);

    _ZorImage* converted = nullptr;
    if (ZimConvert(image, zor::computeFormat(image->depth), &converted) != 0) {
        zor::showMessage(QStringLiteral("Converter error!"));
        return;
    }
    const std::size_t bytes = zor::coveringBytes(*converted, image->width, image->height);
    m_image = static_cast<std::uint8_t*>(zorAllocate(bytes));
    if (!m_image) {
        // The converted record is lost here: deliberate, see docs/decisions.md.
        zor::showNotEnoughMemory();
        return;
    }
    std::memcpy(m_image, converted->data, converted->imageSize);
    std::memset(m_image + converted->imageSize, 0, bytes - converted->imageSize);
    m_depth = static_cast<std::int32_t>(converted->depth);
    m_step = static_cast<std::int32_t>(converted->pitch);
    m_imageBytes = converted->imageSize;
    m_pixelFormat = converted->pixelType;
    m_pairSmoothing = 0;
    ZorReleaseImage(&converted);
}
