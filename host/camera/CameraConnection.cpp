#include "host/camera/CameraConnection.h"

#include "host/camera/CameraControls.h"
#include "host/camera/CameraInterfaces.h"
#include "host/camera/GLibTools.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <utility>

namespace zor {

namespace {

using namespace std::chrono_literals;

/// Between two looks for a camera that is lost.
constexpr auto Pause = 200ms;

std::string nameOf(ArvCamera& camera, const std::string& id)
{
    const auto read = [&](auto function) {
        ErrorSlot ignored;
        return textOf(function(&camera, ignored));
    };
    return CameraInfo{id,
                      read(arv_camera_get_vendor_name),
                      read(arv_camera_get_model_name),
                      read(arv_camera_get_device_serial_number),
                      {},
                      {}}
        .name();
}

/// What every camera is set to before it is used, so that it comes back with it.
void rememberFirst(ArvCamera& camera, CameraSettings& settings)
{
    const CameraControls first = readControls(camera);
    if (!first.pixelFormat.empty())
        settings.remember("PixelFormat",
                          [format = first.pixelFormat](ArvCamera& to) { setPixelFormat(to, format); });
    if (first.region)
        settings.remember("region", [region = *first.region](ArvCamera& to) {
            setRegion(to, region.x.value, region.y.value, region.width.value, region.height.value);
        });
    if (first.exposureTime)
        settings.remember("exposure time",
                          [time = first.exposureTime->value](ArvCamera& to) { setExposureTime(to, time); });
    if (first.gain)
        settings.remember("gain", [gain = first.gain->value](ArvCamera& to) { setGain(to, gain); });
    if (first.frameRate && first.frameRate->value > 0.0)
        settings.remember("frame rate",
                          [rate = first.frameRate->value](ArvCamera& to) { setFrameRate(to, rate); });
    // After the frame rate, which lets frames come by themselves.
    if (!first.trigger.empty())
        settings.remember("trigger", [source = first.trigger](ArvCamera& to) { setTrigger(to, source); });
}

/// Takes the last reference to a camera's device. The library reports a loss on the device's own thread,
/// which holds a reference meanwhile and cannot destroy it: a thread does not wait for itself.
class LastReference
{
public:
    explicit LastReference(ArvCamera* camera)
        : m_device(G_OBJECT(arv_camera_get_device(camera)))
    {
        g_object_add_toggle_ref(m_device, toggle, this);
        g_object_unref(camera);
    }
    ~LastReference()
    {
        m_others.get_future().wait();
        g_object_remove_toggle_ref(m_device, toggle, this);
    }
    LastReference(const LastReference&) = delete;
    LastReference& operator=(const LastReference&) = delete;

private:
    static void toggle(void* self, GObject*, gboolean isLast)
    {
        auto* reference = static_cast<LastReference*>(self);
        if (isLast != FALSE && !reference->m_isLast.exchange(true))
            reference->m_others.set_value();
    }

    GObject* m_device;
    std::atomic<bool> m_isLast{false};
    std::promise<void> m_others; ///< kept when the other references are gone
};

} // namespace

/// Says which object of the camera a "control-lost" is about.
struct CameraConnection::Loss
{
    CameraConnection* connection;
    std::uint64_t generation;

    static void report(ArvDevice*, void* self)
    {
        const auto* loss = static_cast<const Loss*>(self);
        loss->connection->reportLoss(loss->generation);
    }
    static void destroy(void* self, GClosure*) { delete static_cast<Loss*>(self); }
};

CameraConnection::CameraConnection(std::string id, const CameraOptions& options)
    : m_id(std::move(id))
    , m_options(options)
{
    m_camera = open();
    m_name = nameOf(*m_camera, m_id);
    rememberFirst(*m_camera, m_settings);
    listenTo(*m_camera, m_generation);
    m_watcher = std::thread([this] { watch(); });
}

CameraConnection::~CameraConnection()
{
    {
        const std::lock_guard<std::mutex> lock(m_state);
        m_isEnding = true;
    }
    m_changed.notify_all();
    m_watcher.join();
    if (m_camera) {
        stopListening();
        const LastReference reference(m_camera);
    }
}

bool CameraConnection::isLost() const
{
    const std::lock_guard<std::mutex> lock(m_state);
    return m_isLost;
}

std::uint64_t CameraConnection::losses() const
{
    const std::lock_guard<std::mutex> lock(m_state);
    return m_losses;
}

std::string CameraConnection::problem() const
{
    const std::lock_guard<std::mutex> lock(m_state);
    return m_problem;
}

void CameraConnection::reportLost(std::uint64_t losses)
{
    std::uint64_t generation = 0;
    {
        const std::lock_guard<std::mutex> lock(m_state);
        if (m_losses != losses)
            return;
        generation = m_generation;
    }
    reportLoss(generation);
}

void CameraConnection::setAndRemember(const std::string& name, const CameraSettings::Setter& set)
{
    set(*m_camera);
    m_settings.remember(name, set);
}

void CameraConnection::checkNotLost() const
{
    if (isLost())
        throw CameraError("the camera " + m_name + " is lost; wait until it is back, or check its cables");
}

void CameraConnection::reportLoss(std::uint64_t generation)
{
    {
        const std::lock_guard<std::mutex> lock(m_state);
        if (m_isLost || generation != m_generation)
            return;
        m_isLost = true;
        ++m_losses;
    }
    m_changed.notify_all();
}

ArvCamera* CameraConnection::open()
{
    ErrorSlot error;
    ObjectPtr<ArvCamera> camera(arv_camera_new(m_id.c_str(), error));
    error.check("the camera " + m_id + " cannot be opened");
    if (arv_camera_is_gv_device(camera.get())) {
        if (!arv_gv_device_is_controller(ARV_GV_DEVICE(arv_camera_get_device(camera.get()))))
            throw CameraError("the camera " + m_id +
                              " is used by another program; close that one, or wait until it has let go");
        // The other way needs rights that few people have.
        arv_camera_gv_set_stream_options(camera.get(), ARV_GV_STREAM_OPTION_PACKET_SOCKET_DISABLED);
        if (m_options.packetSize != 0)
            checked("packet size", arv_camera_gv_set_packet_size, camera.get(),
                    static_cast<int>(m_options.packetSize));
    }
    arv_camera_set_range_check_policy(camera.get(), ARV_RANGE_CHECK_POLICY_ENABLE);
    arv_camera_set_access_check_policy(camera.get(), ARV_ACCESS_CHECK_POLICY_ENABLE);
    return camera.release();
}

void CameraConnection::listenTo(ArvCamera& camera, std::uint64_t generation)
{
    m_signal = g_signal_connect_data(arv_camera_get_device(&camera), "control-lost", G_CALLBACK(Loss::report),
                                     new Loss{this, generation}, Loss::destroy, GConnectFlags(0));
}

void CameraConnection::stopListening()
{
    g_signal_handler_disconnect(arv_camera_get_device(m_camera), m_signal);
}

void CameraConnection::dispose(std::future<void> disposal)
{
    const auto isOver = [](const std::future<void>& one) {
        return one.wait_for(0s) == std::future_status::ready;
    };
    const std::lock_guard<std::mutex> lock(m_state);
    m_disposals.erase(std::remove_if(m_disposals.begin(), m_disposals.end(), isOver), m_disposals.end());
    m_disposals.push_back(std::move(disposal));
}

void CameraConnection::watch()
{
    std::unique_lock<std::mutex> state(m_state);
    for (bool lookAround = false;; lookAround = !lookAround) {
        m_changed.wait(state, [this] { return m_isLost || m_isEnding; });
        if (m_isEnding)
            return;
        state.unlock();
        const bool isBack = reconnect(lookAround);
        state.lock();
        if (!isBack)
            m_changed.wait_for(state, Pause, [this] { return m_isEnding; });
    }
}

bool CameraConnection::reconnect(bool lookAround)
{
    {
        const std::lock_guard<std::mutex> use(m_use);
        // A camera that no longer answers is given back slowly, beside the search for its successor.
        if (m_camera) {
            stopListening();
            dispose(std::async(std::launch::async, [old = std::exchange(m_camera, nullptr)] {
                const LastReference reference(old);
            }));
        }
    }
    // It may have another address now.
    if (lookAround)
        arv_update_device_list();
    try {
        ObjectPtr<ArvCamera> camera(open());
        m_settings.apply(*camera);
        const std::lock_guard<std::mutex> use(m_use);
        const std::lock_guard<std::mutex> state(m_state);
        listenTo(*camera, ++m_generation);
        m_camera = camera.release();
        m_isLost = false;
        m_problem.clear();
        return true;
    } catch (const CameraError& error) {
        const std::lock_guard<std::mutex> state(m_state);
        m_problem = error.what();
        return false;
    }
}

} // namespace zor
