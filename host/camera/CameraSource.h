#pragma once

#include "host/camera/CameraConnection.h"
#include "host/camera/CameraControls.h"
#include "host/camera/CameraFeature.h"
#include "host/camera/CameraStream.h"
#include "host/camera/FrameNumbers.h"
#include "host/source/FrameSource.h"
#include "host/source/SourceThread.h"

#include <atomic>
#include <chrono>
#include <cstdint>
#include <mutex>
#include <optional>
#include <string>

namespace zor {

/// Frames of a GenICam camera, connected as long as this object lives. Incomplete frames are counted and
/// never delivered. The time stamp of a frame is when it had arrived.
///
/// A camera that is lost is looked for until it is back; it then goes on with the settings that it had, and
/// frames go on coming when they came before. Neither is an error: see isLost() and counts().
class CameraSource : public FrameSource
{
public:
    /// Connects. Throws CameraError.
    explicit CameraSource(const std::string& id, const CameraOptions& options = {});

    std::string name() const override { return m_connection.name(); }
    void start(Handlers handlers) override;
    void stop() override;

    /// Since the last start. complete + incomplete + missing is what the camera sent, from the first frame on
    /// that came after each beginning.
    struct Counts
    {
        std::uint64_t complete = 0;
        std::uint64_t incomplete = 0; ///< parts of the frame did not come
        std::uint64_t missing = 0;    ///< nothing of the frame came
        std::uint64_t refused = 0;    ///< of the complete ones: could not be made a frame
    };
    Counts counts() const;

    bool isLost() const { return m_connection.isLost(); }
    std::uint64_t losses() const { return m_connection.losses(); }
    std::string problem() const { return m_connection.problem(); }

    /// What it was set to when it was last asked or set; nothing where the camera has no such setting.
    std::optional<double> exposureTime() const { return present(m_exposureTime); } ///< in µs
    std::optional<double> gain() const { return present(m_gain); } ///< in the camera's own unit

    /// These read and set the camera. They throw CameraError when it refuses and while it is lost. A setting
    /// that needs it interrupts the stream for a moment.
    CameraControls controls();
    CameraFeature features();
    void setFeature(const std::string& name, const std::string& value);
    void execute(const std::string& command);
    void setExposureTime(double microseconds);
    void setGain(double gain);
    void setFrameRate(double framesPerSecond);
    void setPixelFormat(const std::string& format);
    void setRegion(int x, int y, int width, int height);
    void setFullRegion();
    void setTrigger(const std::string& source);
    void triggerBySoftware();

private:
    /// `interrupts`: frames on their way would not be after the setting.
    void set(const std::string& name, const CameraSettings::Setter& setter, bool interrupts);
    /// Reads what goes with each frame.
    void note(_ArvCamera& camera);
    void run(const Handlers& handlers);
    /// From a beginning of the camera to its end or loss.
    void streamOnce(const Handlers& handlers);
    /// Until the camera was lost more than `losses` times, or the stream is to stop or to begin anew.
    void receive(CameraStream& from, std::uint64_t losses, const Handlers& handlers);
    void take(const CameraStream::Buffer& buffer, const Handlers& handlers);

    CameraConnection m_connection;
    std::atomic<bool> m_isStreaming{false};
    std::atomic<bool> m_isToRestart{false};
    static std::optional<double> present(double value);
    std::atomic<double> m_exposureTime;                 ///< not a number when there is none
    std::atomic<double> m_gain;                         ///< likewise
    std::atomic<std::chrono::milliseconds> m_silence{}; ///< see silenceOf()
    int m_patience = 1;                                 ///< times m_silence; of the source's thread

    mutable std::mutex m_counting;
    Counts m_counts;
    FrameNumbers m_numbers;

    SourceThread m_thread; ///< the first to be destroyed: it uses the others
};

} // namespace zor
