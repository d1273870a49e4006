#pragma once

#include "host/camera/ReceivedImage.h"

#include <chrono>
#include <cstdint>
#include <functional>

struct _ArvCamera;
struct _ArvStream;

namespace zor {

/// A camera that sends frames: it begins with this object and ends with it.
class CameraStream
{
public:
    /// Throws CameraError. Nobody else uses the camera meanwhile.
    explicit CameraStream(_ArvCamera& camera);
    ~CameraStream();
    CameraStream(const CameraStream&) = delete;
    CameraStream& operator=(const CameraStream&) = delete;

    struct Buffer
    {
        std::uint64_t blockId = 0;
        bool isComplete = false;
        ReceivedImage image; ///< set when complete; borrowed
    };

    /// Waits up to so long for a buffer and hands it over; it is the camera's again when `use` has returned.
    /// False when none came.
    bool receive(std::chrono::milliseconds longest, const std::function<void(const Buffer&)>& use);

private:
    _ArvStream* m_stream;
};

} // namespace zor
