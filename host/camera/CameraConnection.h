#pragma once

#include "host/camera/CameraError.h"
#include "host/camera/CameraSettings.h"

#include <condition_variable>
#include <cstdint>
#include <future>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <utility>
#include <vector>

struct _ArvCamera;

namespace zor {

/// How a camera is used.
struct CameraOptions
{
    /// Bytes of a GigE Vision packet; 0: as the camera has it, made to fit when frames do not come through.
    std::uint32_t packetSize = 0;
};

/// A camera that stays connected: when it is lost, a thread of its own looks for it until it is back and sets
/// what it had been set to. All functions may be called on any thread.
class CameraConnection
{
public:
    /// Throws CameraError when there is no such camera or somebody else has it.
    CameraConnection(std::string id, const CameraOptions& options);
    /// Waits until the camera is given back, also one that no longer answers: up to some seconds.
    ~CameraConnection();
    CameraConnection(const CameraConnection&) = delete;
    CameraConnection& operator=(const CameraConnection&) = delete;

    const std::string& name() const { return m_name; }

    bool isLost() const;
    /// How often it was lost.
    std::uint64_t losses() const;
    /// Why it is not back yet: what the last try said. Empty before the first and when it is not lost.
    std::string problem() const;
    /// The camera does not send or answer any more, whatever the library thinks. Nothing new when it was lost
    /// more than `losses` times by now.
    void reportLost(std::uint64_t losses);

    /// What `work` answers, which has the camera for itself meanwhile. Throws CameraError when it is lost.
    template <typename Work> auto withCamera(Work work)
    {
        const std::lock_guard<std::mutex> lock(m_use);
        checkNotLost();
        return work(*m_camera);
    }

    /// Sets it now and each time that the camera comes back. Not remembered when the camera refuses. Called
    /// by `work` of withCamera().
    void setAndRemember(const std::string& name, const CameraSettings::Setter& set);

    /// Destroys it on a thread of its own: what belongs to a camera that was lost.
    template <typename Owner> void disposeLater(Owner object)
    {
        dispose(std::async(std::launch::async, [owned = std::move(object)]() mutable { owned.reset(); }));
    }

private:
    struct Loss;

    void checkNotLost() const;
    void reportLoss(std::uint64_t generation);
    _ArvCamera* open();
    void listenTo(_ArvCamera& camera, std::uint64_t generation);
    void stopListening();
    void dispose(std::future<void> disposal);
    void watch();
    bool reconnect(bool lookAround);

    const std::string m_id;
    const CameraOptions m_options;
    std::string m_name;

    /// Guards the camera and what it was set to.
    std::mutex m_use;
    _ArvCamera* m_camera = nullptr;
    unsigned long m_signal = 0;
    CameraSettings m_settings;

    /// Guards the rest. Taken after m_use, never before.
    mutable std::mutex m_state;
    std::condition_variable m_changed;
    bool m_isLost = false;
    bool m_isEnding = false;
    std::uint64_t m_generation = 0; ///< of the camera's object; that of an older one tells nothing new
    std::uint64_t m_losses = 0;
    std::string m_problem;

    std::vector<std::future<void>> m_disposals;
    std::thread m_watcher;
};

} // namespace zor
