#include "host/zorbench/InspectDock.h"

#include "display/DisplayAdapter.h"
#include "display/DisplayView.h"
#include "host/quality/NumberText.h"
#include "host/quality/RegionFigures.h"
#include "host/zorbench/CopyCells.h"
#include "host/zorbench/FrameView.h"

#include <QAction>
#include <QHeaderView>
#include <QLabel>
#include <QTableWidget>
#include <QVBoxLayout>

namespace zor {

namespace {

PixelRegion regionOf(const QRect& rect)
{
    return {rect.x(), rect.y(), rect.width(), rect.height()};
}

} // namespace

InspectDock::InspectDock(FrameView& view, QWidget* parent)
    : QDockWidget(tr("Inspect"), parent)
    , m_view(view)
    , m_drag(view)
    , m_region(new QLabel(this))
    , m_figures(new QTableWidget(this))
    , m_clear(new QAction(tr("Clear"), this))
{
    setObjectName(QStringLiteral("InspectDock"));
    auto* content = new QWidget(this);
    auto* rows = new QVBoxLayout(content);
    rows->addWidget(m_region);
    rows->addWidget(m_figures);
    setWidget(content);
    m_region->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    m_region->setWordWrap(true);

    m_figures->setAccessibleName(tr("Figures of the inspected region"));
    m_figures->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_figures->setRowCount(5);
    m_figures->setVerticalHeaderLabels(
        {tr("Mean"), tr("Minimum"), tr("Maximum"), tr("Deviation"), tr("Count")});
    m_figures->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_figures->verticalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_figures->setTabKeyNavigation(false);
    offerCopy(*m_figures);
    m_figures->addAction(m_clear);

    m_clear->setShortcut(Qt::Key_Escape);
    m_clear->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    m_clear->setEnabled(false);
    m_view.view().addAction(m_clear);
    connect(m_clear, &QAction::triggered, this, &InspectDock::clear);
    // On the full screen the escape key is another's.
    connect(&m_view, &FrameView::fullScreenChanged, this,
            [this](bool on) { m_clear->setEnabled(!on && !m_rect.isNull()); });
    connect(&m_drag, &RegionDrag::drawn, this, &InspectDock::inspect);
    // Who draws a rectangle wants its figures. Before the end the view would change its size under the mouse.
    connect(&m_drag, &RegionDrag::ended, this, &QWidget::show);
    connect(&m_drag, &RegionDrag::clicked, this, &InspectDock::clear);
    connect(&m_view, &FrameView::shown, this, &InspectDock::refresh);
    connect(this, &QDockWidget::visibilityChanged, this, [this] {
        // Closed, and not hidden with the window around it.
        if (isHidden())
            clear();
    });
    clear();
}

void InspectDock::inspect(const QRect& rect)
{
    m_rect = rect;
    m_clear->setEnabled(!m_view.isOnFullScreen());
    refresh();
}

void InspectDock::clear()
{
    if (!m_rect.isNull())
        m_view.adapter().showInspectOverlay(false);
    m_rect = QRect();
    m_clear->setEnabled(false);
    m_figures->setColumnCount(0);
    m_region->setText(tr("Hold Shift and drag over the frame."));
}

void InspectDock::refresh()
{
    if (m_rect.isNull() || !m_view.frame())
        return;
    showFigures();
}

void InspectDock::showFigures()
{
    const RegionFigures figures = regionFigures(m_view.frame()->record(), regionOf(m_rect));
    const PixelRegion& region = figures.region;
    DisplayAdapter& adapter = m_view.adapter();
    if (region.width == 0) {
        // The rectangle waits for a frame that it lies on.
        adapter.showInspectOverlay(false);
        m_region->setText(tr("The rectangle is not on this frame."));
        m_figures->setColumnCount(0);
        return;
    }
    adapter.setInspectRect(region.x, region.y, region.width, region.height, "img");
    adapter.showInspectOverlay(true);
    m_region->setText(
        tr("%1 x %2 pixels at %3, %4").arg(region.width).arg(region.height).arg(region.x).arg(region.y));
    m_figures->setColumnCount(static_cast<int>(figures.channels.size()));
    for (int column = 0; column < m_figures->columnCount(); ++column) {
        const ChannelFigures& channel = figures.channels[static_cast<std::size_t>(column)];
        m_figures->setHorizontalHeaderItem(column,
                                           new QTableWidgetItem(QString(QLatin1Char(channel.channel))));
        const bool isEmpty = channel.count == 0;
        const QStringList texts = {
            isEmpty ? QString() : QString::fromStdString(fixedText(channel.mean, 2)),
            isEmpty ? QString() : QString::number(channel.minimum),
            isEmpty ? QString() : QString::number(channel.maximum),
            isEmpty ? QString() : QString::fromStdString(fixedText(channel.deviation, 2)),
            QString::number(channel.count),
        };
        for (int row = 0; row < texts.size(); ++row) {
            auto* item = new QTableWidgetItem(texts[row]);
            item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
            m_figures->setItem(row, column, item);
        }
    }
}

} // namespace zor
