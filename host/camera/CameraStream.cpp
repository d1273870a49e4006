#include "host/camera/CameraStream.h"

#include "host/camera/GLibTools.h"

#include <algorithm>
#include <cstddef>
#include <memory>

namespace zor {

namespace {

/// Frames that the camera may be ahead, as far as they fit into this memory, but at least the first.
constexpr std::size_t FewestBuffers = 4;
constexpr std::size_t MostBuffers = 16;
constexpr std::size_t BufferMemory = std::size_t{256} << 20;

std::size_t buffersFor(std::size_t payload)
{
    return std::clamp(BufferMemory / std::max<std::size_t>(1, payload), FewestBuffers, MostBuffers);
}

CameraStream::Buffer describe(ArvBuffer* from)
{
    CameraStream::Buffer buffer;
    buffer.blockId = arv_buffer_get_frame_id(from);
    buffer.isComplete = arv_buffer_get_status(from) == ARV_BUFFER_STATUS_SUCCESS;
    if (!buffer.isComplete)
        return buffer;
    gint padding = 0;
    gint lastPadding = 0;
    arv_buffer_get_image_padding(from, &padding, &lastPadding);
    ReceivedImage& image = buffer.image;
    image.data = static_cast<const std::uint8_t*>(arv_buffer_get_image_data(from, &image.size));
    image.width = static_cast<std::uint32_t>(std::max(0, arv_buffer_get_image_width(from)));
    image.height = static_cast<std::uint32_t>(std::max(0, arv_buffer_get_image_height(from)));
    image.rowPadding = static_cast<std::uint32_t>(std::max(0, padding));
    image.pfncCode = arv_buffer_get_image_pixel_format(from);
    return buffer;
}

} // namespace

CameraStream::CameraStream(ArvCamera& camera)
{
    const auto payload = static_cast<std::size_t>(checked("payload size", arv_camera_get_payload, &camera));
    ErrorSlot error;
    ObjectPtr<ArvStream> stream(arv_camera_create_stream(&camera, nullptr, nullptr, error));
    error.check("the camera cannot send frames");
    if (ARV_IS_GV_STREAM(stream.get()))
        g_object_set(stream.get(), "socket-buffer", ARV_GV_STREAM_SOCKET_BUFFER_AUTO, "socket-buffer-size", 0,
                     nullptr);
    for (std::size_t i = 0; i < buffersFor(payload); ++i)
        arv_stream_push_buffer(stream.get(), arv_buffer_new_allocate(payload));
    if (ErrorSlot oneModeOnly;
        arv_camera_is_feature_available(&camera, "AcquisitionMode", oneModeOnly) != FALSE)
        checked("acquisition mode", arv_camera_set_acquisition_mode, &camera,
                ARV_ACQUISITION_MODE_CONTINUOUS);
    checked("start of the acquisition", arv_camera_start_acquisition, &camera);
    m_stream = stream.release();
}

CameraStream::~CameraStream()
{
    g_object_unref(m_stream);
}

bool CameraStream::receive(std::chrono::milliseconds longest, const std::function<void(const Buffer&)>& use)
{
    const auto microseconds = std::chrono::duration_cast<std::chrono::microseconds>(longest).count();
    ArvBuffer* buffer = arv_stream_timeout_pop_buffer(m_stream, static_cast<guint64>(microseconds));
    if (!buffer)
        return false;
    const auto giveBack = [this](ArvBuffer* used) { arv_stream_push_buffer(m_stream, used); };
    const std::unique_ptr<ArvBuffer, decltype(giveBack)> owned(buffer, giveBack);
    use(describe(buffer));
    return true;
}

} // namespace zor
