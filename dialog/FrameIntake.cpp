#include "dialog/CFFCUtility.h"
#include "dialog/Message.h"
#include "engine/Allocation.h"
#include "image/MonoTarget.h"
#include "image/ZorImageApi.h"
#include "image/ZorImageConverter.h"

#include <algorithm>
#include <cstring>

namespace {

/// Bytes of the block that holds the converted pixels. It covers the host's width and height also when the
/// converted record is smaller, so that no stage reads past it.
std::size_t blockBytes(const _ZorImage& converted, const _ZorImage& host)
{
    const std::uint64_t pixelBytes = converted.depth == 8 ? 1 : 2;
    const std::uint64_t lines = host.height == 0 ? 0 : (host.height - std::uint64_t{1}) * converted.pitch;
    return std::max<std::uint64_t>(converted.imageSize, lines + host.width * pixelBytes);
}

} // namespace

void CFFCUtility::SetFrame(_ZorImage* image)
{
    // A host's timer can come in while a refresh runs a nested event loop on this thread.
    if (m_viewLock.heldByThisThread())
        return;
    if (!image || !image->data || image->imageSize == 0)
        return;
    ResetData(false);
    // The size is the host's, everything else the converted record's.
    m_width = static_cast<std::int32_t>(image->width);
    m_height = static_cast<std::int32_t>(image->height);

    _ZorImage* converted = nullptr;
    if (ZimConvert(image, monoTargetForDepth(image->depth), &converted) != 0) {
        showMessage(QStringLiteral("Converter error!"));
        return;
    }
    const std::size_t bytes = blockBytes(*converted, *image);
    m_image = static_cast<std::uint8_t*>(zorAllocate(bytes));
    if (!m_image) {
        // The converted record is lost here: deliberate, see docs/decisions.md.
        showNotEnoughMemory();
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
