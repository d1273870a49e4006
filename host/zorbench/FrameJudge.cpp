#include "host/zorbench/FrameJudge.h"

#include <QElapsedTimer>

#include <algorithm>
#include <exception>
#include <utility>

namespace zor {

FrameJudge::FrameJudge(QObject* parent)
    : QObject(parent)
{
    m_pause.setSingleShot(true);
    connect(&m_pause, &QTimer::timeout, this, &FrameJudge::work);
}

void FrameJudge::judge(std::shared_ptr<const Frame> frame)
{
    m_waiting = std::move(frame);
    m_isOfStream = false;
    work();
}

void FrameJudge::follow(std::shared_ptr<const Frame> frame)
{
    m_waiting = std::move(frame);
    m_isOfStream = true;
    if (!m_pause.isActive())
        work();
}

void FrameJudge::setMeasuresNoise(bool on)
{
    if (on == m_measuresNoise)
        return;
    m_measuresNoise = on;
    m_previous.reset();
    if (!on)
        emit noiseUnknown();
}

void FrameJudge::measureNoise(std::unique_ptr<MonoFrame> mono)
{
    const std::unique_ptr<MonoFrame> previous = std::exchange(m_previous, nullptr);
    if (!m_isOfStream || !m_measuresNoise) {
        emit noiseUnknown();
        return;
    }
    const ConstImageView now = mono->view();
    if (previous && previous->view().width == now.width && previous->view().height == now.height &&
        previous->view().depth == now.depth)
        emit noiseMeasured(frameNoise(previous->view(), now), now.width, now.height);
    else
        emit noiseUnknown();
    m_previous = std::move(mono);
}

void FrameJudge::work()
{
    const std::shared_ptr<const Frame> frame = std::exchange(m_waiting, nullptr);
    if (!frame)
        return;
    QElapsedTimer time;
    time.start();
    try {
        auto mono = std::make_unique<MonoFrame>(frame->record());
        const FrameFigures figures = frameFigures(mono->view());
        emit judged(figures, zor::judge(figures));
        measureNoise(std::move(mono));
    } catch (const std::exception& error) {
        emit refused(QString::fromUtf8(error.what()));
        m_previous.reset();
        emit noiseUnknown();
    }
    constexpr qint64 shortest = 200;
    constexpr qint64 longest = 10000;
    constexpr qint64 share = 10;
    m_pause.start(static_cast<int>(std::min(longest, std::max(shortest, share * time.elapsed()))));
}

} // namespace zor
