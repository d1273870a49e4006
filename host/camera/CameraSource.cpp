#include "host/camera/CameraSource.h"

#include "host/camera/CameraStream.h"
#include "host/camera/GLibTools.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <exception>
#include <memory>
#include <new>
#include <utility>

namespace zor {

namespace {

using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::milliseconds;

/// How long a stop, a loss or a setting waits at most until the stream takes notice.
constexpr Milliseconds Turn{50};
/// Between two looks whether a lost camera is back.
constexpr Milliseconds LossTurn{20};
/// A camera that frames come from by themselves is lost when none came for so long, or for so many periods.
constexpr Milliseconds ShortestSilence{1000};
constexpr Milliseconds LongestSilence{60000};
constexpr double SilentPeriods = 4.0;
/// The first frame may come later by as much.
constexpr int PatienceAtBeginning = 2;

/// How long no frame may come; nothing when each frame waits for a trigger.
Milliseconds silenceOf(ArvCamera& camera)
{
    if (waitsForTrigger(camera))
        return Milliseconds::max();
    ErrorSlot noRate;
    const double rate = arv_camera_get_frame_rate(&camera, noRate);
    ErrorSlot noTime;
    const double exposure = arv_camera_get_exposure_time(&camera, noTime); // in µs
    double period = noRate.isSet() || !(rate > 0.0) ? 0.5 : 1.0 / rate;    // in s
    if (!noTime.isSet())
        period = std::max(period, exposure * 1e-6);
    const double longest = static_cast<double>(LongestSilence.count());
    const Milliseconds silence(
        static_cast<Milliseconds::rep>(std::min(longest, SilentPeriods * period * 1e3)));
    return std::max(ShortestSilence, silence);
}

bool isLocked(ArvCamera& camera, const std::string& feature)
{
    ArvGcNode* node =
        arv_gc_get_node(arv_device_get_genicam(arv_camera_get_device(&camera)), feature.c_str());
    ErrorSlot unknown;
    return node && ARV_IS_GC_FEATURE_NODE(node) &&
           arv_gc_feature_node_is_locked(ARV_GC_FEATURE_NODE(node), unknown) != FALSE;
}

std::size_t payloadOf(ArvCamera& camera)
{
    ErrorSlot unknown;
    return arv_camera_get_payload(&camera, unknown);
}

void stopAcquisition(ArvCamera& camera)
{
    ErrorSlot ignored;
    arv_camera_stop_acquisition(&camera, ignored);
}

} // namespace

CameraSource::CameraSource(const std::string& id, const CameraOptions& options)
    : m_connection(id, options)
{
    m_connection.withCamera([this](ArvCamera& camera) { note(camera); });
}

void CameraSource::start(Handlers handlers)
{
    m_thread.start([this, owned = std::move(handlers)] { run(owned); });
}

void CameraSource::stop()
{
    m_thread.stop();
}

CameraSource::Counts CameraSource::counts() const
{
    const std::lock_guard<std::mutex> lock(m_counting);
    return m_counts;
}

void CameraSource::run(const Handlers& handlers)
{
    {
        const std::lock_guard<std::mutex> lock(m_counting);
        m_counts = {};
        m_numbers = {};
    }
    m_patience = PatienceAtBeginning;
    try {
        while (m_thread.waitUntil(Clock::now)) {
            const auto turn = Clock::now() + LossTurn;
            if (isLost())
                m_thread.waitUntil([turn] { return turn; });
            else
                streamOnce(handlers);
        }
    } catch (const CameraError& error) {
        m_thread.stop();
        handlers.error({error.what(), true});
    } catch (const std::bad_alloc&) {
        m_thread.stop();
        handlers.error(
            {"there is no memory for a frame; choose a smaller region or close other programs", true});
    }
}

void CameraSource::streamOnce(const Handlers& handlers)
{
    std::unique_ptr<CameraStream> stream;
    std::uint64_t losses = 0;
    try {
        m_connection.withCamera([&](ArvCamera& camera) {
            m_isToRestart = false;
            note(camera);
            losses = m_connection.losses();
            stream = std::make_unique<CameraStream>(camera);
            m_isStreaming = true;
        });
    } catch (const CameraError&) {
        if (isLost())
            return;
        throw;
    }
    m_numbers.restart();
    std::exception_ptr problem;
    try {
        receive(*stream, losses, handlers);
    } catch (...) {
        // What was begun is ended first.
        problem = std::current_exception();
    }
    m_isStreaming = false;
    try {
        m_connection.withCamera([&](ArvCamera& camera) {
            if (m_connection.losses() != losses)
                return;
            stopAcquisition(camera);
            stream.reset();
        });
    } catch (const CameraError&) {
        // It is lost.
    }
    // Giving back what belongs to a camera that does not answer takes a while.
    if (stream)
        m_connection.disposeLater(std::move(stream));
    if (problem)
        std::rethrow_exception(problem);
}

void CameraSource::receive(CameraStream& from, std::uint64_t losses, const Handlers& handlers)
{
    auto last = Clock::now();
    while (m_thread.waitUntil(Clock::now) && !m_isToRestart && m_connection.losses() == losses) {
        const bool came =
            from.receive(Turn, [&](const CameraStream::Buffer& buffer) { take(buffer, handlers); });
        const auto now = Clock::now();
        const Milliseconds silence = m_silence;
        if (came) {
            last = now;
            m_patience = 1;
        } else if (silence < LongestSilence && now - last > silence * m_patience) {
            // In case the camera is only slower than it says, it is given more time after each try.
            m_patience = std::min(2 * m_patience, static_cast<int>(LongestSilence / silence));
            m_connection.reportLost(losses);
        }
    }
}

void CameraSource::take(const CameraStream::Buffer& buffer, const Handlers& handlers)
{
    std::uint64_t number = 0;
    {
        const std::lock_guard<std::mutex> lock(m_counting);
        if (buffer.isComplete) {
            number = m_numbers.number(buffer.blockId);
            ++m_counts.complete;
        } else {
            m_numbers.addIncomplete();
            ++m_counts.incomplete;
        }
        m_counts.missing = m_numbers.sent() - m_counts.complete - m_counts.incomplete;
    }
    if (!buffer.isComplete)
        return;
    const std::chrono::nanoseconds arrival = Clock::now().time_since_epoch();
    std::shared_ptr<const Frame> frame;
    try {
        frame = std::make_shared<const Frame>(frameOf(buffer.image));
    } catch (const CameraError& error) {
        {
            const std::lock_guard<std::mutex> lock(m_counting);
            ++m_counts.refused;
        }
        handlers.error({error.what(), false});
        return;
    }
    handlers.frame({std::move(frame), number, arrival.count()});
}

CameraControls CameraSource::controls()
{
    return m_connection.withCamera([this](ArvCamera& camera) {
        note(camera);
        return readControls(camera);
    });
}

CameraFeature CameraSource::features()
{
    return m_connection.withCamera(
        [this](ArvCamera& camera) { return readFeatures(camera, [this] { return isLost(); }); });
}

void CameraSource::set(const std::string& name, const CameraSettings::Setter& setter, bool interrupts)
{
    m_connection.withCamera([&](ArvCamera& camera) {
        const bool isInterrupted = m_isStreaming && (interrupts || isLocked(camera, name));
        if (isInterrupted) {
            stopAcquisition(camera);
            m_isToRestart = true; // also when the camera refuses the setting
        }
        const std::size_t before = payloadOf(camera);
        m_connection.setAndRemember(name, setter);
        if (m_isStreaming && payloadOf(camera) != before)
            m_isToRestart = true;
        note(camera);
    });
}

void CameraSource::note(ArvCamera& camera)
{
    m_silence = silenceOf(camera);
    const auto read = [&](auto isThere, auto value) {
        ErrorSlot first;
        ErrorSlot second;
        const double number = isThere(&camera, first) != FALSE ? value(&camera, second) : NAN;
        return first.isSet() || second.isSet() ? NAN : number;
    };
    m_exposureTime = read(arv_camera_is_exposure_time_available, arv_camera_get_exposure_time);
    m_gain = read(arv_camera_is_gain_available, arv_camera_get_gain);
}

std::optional<double> CameraSource::present(double value)
{
    return std::isnan(value) ? std::nullopt : std::optional<double>(value);
}

void CameraSource::setFeature(const std::string& name, const std::string& value)
{
    set(
        name, [name, value](ArvCamera& camera) { zor::setFeature(camera, name, value); }, false);
}

void CameraSource::execute(const std::string& command)
{
    m_connection.withCamera([&](ArvCamera& camera) {
        checked(command, arv_camera_execute_command, &camera, command.c_str());
        note(camera);
    });
}

void CameraSource::setExposureTime(double microseconds)
{
    set(
        "exposure time", [=](ArvCamera& camera) { zor::setExposureTime(camera, microseconds); }, false);
}

void CameraSource::setGain(double gain)
{
    set(
        "gain", [=](ArvCamera& camera) { zor::setGain(camera, gain); }, false);
}

void CameraSource::setFrameRate(double framesPerSecond)
{
    set(
        "frame rate", [=](ArvCamera& camera) { zor::setFrameRate(camera, framesPerSecond); }, false);
}

void CameraSource::setPixelFormat(const std::string& format)
{
    set(
        "PixelFormat", [format](ArvCamera& camera) { zor::setPixelFormat(camera, format); }, true);
}

void CameraSource::setRegion(int x, int y, int width, int height)
{
    set(
        "region", [=](ArvCamera& camera) { zor::setRegion(camera, x, y, width, height); }, true);
}

void CameraSource::setFullRegion()
{
    set("region", zor::setFullRegion, true);
}

void CameraSource::setTrigger(const std::string& source)
{
    set(
        "trigger", [source](ArvCamera& camera) { zor::setTrigger(camera, source); }, true);
}

void CameraSource::triggerBySoftware()
{
    m_connection.withCamera(
        [](ArvCamera& camera) { checked("software trigger", arv_camera_software_trigger, &camera); });
}

} // namespace zor
