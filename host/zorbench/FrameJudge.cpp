#include "host/zorbench/FrameJudge.h"

#include "host/quality/MonoFrame.h"

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
    work();
}

void FrameJudge::follow(std::shared_ptr<const Frame> frame)
{
    m_waiting = std::move(frame);
    if (!m_pause.isActive())
        work();
}

void FrameJudge::work()
{
    const std::shared_ptr<const Frame> frame = std::exchange(m_waiting, nullptr);
    if (!frame)
        return;
    QElapsedTimer time;
    time.start();
    try {
        const MonoFrame mono(frame->record());
        const FrameFigures figures = frameFigures(mono.view());
        emit judged(figures, zor::judge(figures));
    } catch (const std::exception& error) {
        emit refused(QString::fromUtf8(error.what()));
    }
    constexpr qint64 shortest = 200;
    constexpr qint64 longest = 10000;
    constexpr qint64 share = 10;
    m_pause.start(static_cast<int>(std::min(longest, std::max(shortest, share * time.elapsed()))));
}

} // namespace zor
