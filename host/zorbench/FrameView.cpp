#include "host/zorbench/FrameView.h"

#include "display/DisplayAdapterQT.h"
#include "display/DisplayView.h"
#include "host/colour/ColourFrame.h"

#include <QEvent>
#include <QScreen>
#include <QShortcut>
#include <QToolButton>
#include <QVBoxLayout>
#include <QWindow>

#include <new>
#include <utility>

namespace zor {

FrameView::FrameView(QWidget* parent)
    : QWidget(parent)
    , m_view(new DisplayView(this))
{
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->addWidget(m_view);
    setFocusProxy(m_view);

    m_view->setFrameShape(QFrame::NoFrame);
    m_view->setAccessibleName(tr("Frame view"));
    // As dark as around a frame.
    QPalette palette = m_view->palette();
    palette.setColor(QPalette::Base, QColor(48, 48, 48));
    m_view->setPalette(palette);
    // The display layer's own button has a picture alone.
    const auto buttons = m_view->findChildren<QToolButton*>();
    for (QToolButton* button : buttons)
        button->setAccessibleName(tr("Leave full screen"));
    m_view->installEventFilter(this);
    makeAdapter();

    connect(m_view, &DisplayView::sigMouseMoved, this, &FrameView::pointed);
    connect(m_view, &DisplayView::sigViewChanged, this, &FrameView::moved);
    // Afterwards: the button is a part of the window that ends here.
    connect(
        m_view, &DisplayView::sigKeyEscape, this, [this] { setFullScreen(false); }, Qt::QueuedConnection);
    auto* escape = new QShortcut(Qt::Key_Escape, m_view);
    escape->setEnabled(false);
    connect(this, &FrameView::fullScreenChanged, escape, &QShortcut::setEnabled);
    connect(
        escape, &QShortcut::activated, this, [this] { setFullScreen(false); }, Qt::QueuedConnection);
}

FrameView::~FrameView() = default;

void FrameView::makeAdapter()
{
    constexpr std::uint32_t features =
        DisplayFeatureInspect | DisplayFeatureDump | DisplayFeatureViewEvents | DisplayFeatureImageEvents;
    m_adapter.reset();
    m_adapter = std::make_unique<DisplayAdapterQT>(m_view, m_gpu, features);
}

void FrameView::setFrame(std::shared_ptr<const Frame> frame)
{
    m_frame = std::move(frame);
    refresh();
}

void FrameView::setGpu(bool on)
{
    if (m_gpu == on)
        return;
    m_gpu = on;
    emit gpuChanged(on);
    refresh();
}

void FrameView::setColour(bool on)
{
    if (m_inColour == on)
        return;
    m_inColour = on;
    emit colourChanged(on);
    refresh();
}

std::shared_ptr<const Frame> FrameView::shownFrame() const
{
    if (!m_frame || !m_inColour)
        return m_frame;
    // Made anew each time: a frame of a stream is shown once.
    try {
        if (std::optional<Frame> colours = colourFrame(m_frame->record()))
            return std::make_shared<const Frame>(std::move(*colours));
    } catch (const std::bad_alloc&) {
        // The grey of a large frame needs less.
    }
    return m_frame;
}

void FrameView::refresh()
{
    m_isOutdated = true;
    if (m_isShowing)
        return;
    m_isShowing = true;
    while (std::exchange(m_isOutdated, false))
        showOnce();
    m_isShowing = false;
    if (m_frame)
        emit shown();
}

void FrameView::showOnce()
{
    if (m_adapter->isGpuViewer() != m_gpu)
        makeAdapter();
    const std::shared_ptr<const Frame> frame = shownFrame();
    if (!frame)
        return;
    const _ZorImage record = frame->record();
    m_adapter->prepareImage(&record, false);
    if (!m_isOutdated && !m_adapter->displayImage(&record))
        tellRefusal();
}

void FrameView::tellRefusal()
{
    if (m_adapter->hasViewer()) {
        emit refused(
            tr("cannot be shown (status %1 of the viewer); close other programs or use a smaller frame")
                .arg(m_adapter->lastError()));
    } else if (m_gpu) {
        setGpu(false);
        emit refused(tr("is drawn by software, because the GPU viewer cannot be started"));
    } else {
        emit refused(tr("cannot be shown, because the viewer cannot be started"));
    }
}

void FrameView::fit()
{
    m_adapter->fitView(1);
}

void FrameView::oneToOne()
{
    m_adapter->viewScale(1.0);
}

void FrameView::zoomIn()
{
    m_adapter->zoomView(true);
}

void FrameView::zoomOut()
{
    m_adapter->zoomView(false);
}

std::optional<double> FrameView::scale() const
{
    DisplaySettings* settings = m_adapter->viewerSettings();
    double scale = 0.0;
    if (!settings || !settings->getDouble("display.view.scale", &scale))
        return std::nullopt;
    return scale;
}

bool FrameView::isOnFullScreen() const
{
    return m_view->isWindow();
}

void FrameView::setFullScreen(bool on)
{
    if (on == isOnFullScreen())
        return;
    if (on) {
        m_view->setWindowFlags(Qt::Window);
        m_view->setWindowTitle(window()->windowTitle());
        // Without a window manager nobody else gives it this size.
        m_view->setGeometry(window()->windowHandle()->screen()->geometry());
        m_view->showFullScreen();
        m_view->activateWindow();
    } else {
        // The state would come again with the next full screen, the button look at it when shown.
        m_view->setWindowState(Qt::WindowNoState);
        m_view->setWindowFlags(Qt::Widget);
        m_view->show();
        window()->activateWindow();
    }
    m_view->setFocus();
    emit fullScreenChanged(on);
}

bool FrameView::eventFilter(QObject* object, QEvent* event)
{
    if (event->type() == QEvent::Leave)
        emit left();
    // Who closes the full screen gets the window back and not an empty one.
    if (event->type() == QEvent::Close && isOnFullScreen()) {
        event->ignore();
        QMetaObject::invokeMethod(m_view, "sigKeyEscape", Qt::QueuedConnection);
        return true;
    }
    return QWidget::eventFilter(object, event);
}

} // namespace zor
