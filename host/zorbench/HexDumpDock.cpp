#include "host/zorbench/HexDumpDock.h"

#include "display/DisplayAdapter.h"
#include "display/DisplayView.h"
#include "host/zorbench/CopyCells.h"
#include "host/zorbench/FrameView.h"
#include "host/zorbench/HexModel.h"

#include <QFontDatabase>
#include <QHeaderView>
#include <QTableView>

#include <algorithm>

namespace zor {

namespace {

/// The rectangle of the overlay as the viewer's stage has it: x, y, width and height, 16 bits each from the
/// lowest on. Null while it is not shown.
QRect overlayRect(DisplayAdapter& adapter)
{
    const auto packed = static_cast<std::uint64_t>(adapter.stageValue("@dump"));
    const auto word = [packed](int place) { return static_cast<int>(packed >> (16 * place) & 0xFFFF); };
    return {word(0), word(1), word(2), word(3)};
}

/// Where a span of `length` that should begin at `begin` lies on a side of `limit` pixels.
int keptOn(int begin, int length, int limit)
{
    return std::max(0, std::min(begin, limit - length));
}

} // namespace

HexDumpDock::HexDumpDock(FrameView& view, QWidget* parent)
    : QDockWidget(tr("Hex pixel dump"), parent)
    , m_view(view)
    , m_codes(new HexModel(this))
    , m_table(new QTableView(this))
{
    setObjectName(QStringLiteral("HexDumpDock"));
    setWidget(m_table);
    m_table->setModel(m_codes);
    m_table->setAccessibleName(tr("Hex pixel dump"));
    m_table->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    m_table->setTabKeyNavigation(false);
    m_table->horizontalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    m_table->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    offerCopy(*m_table);
    m_pause.setSingleShot(true);
    m_pause.setInterval(Pause);
    connect(&m_pause, &QTimer::timeout, this, [this] {
        if (m_isOutdated)
            refresh();
    });

    connect(&m_view.view(), &DisplayView::sigHexDump, this, &HexDumpDock::toggle);
    connect(&m_view.view(), &DisplayView::sigHexDumpHere, this, &HexDumpDock::moveTo);
    // A drag of the overlay is not reported, but the mouse is.
    connect(&m_view.view(), &DisplayView::sigMouseMoved, this, &HexDumpDock::followOverlay);
    connect(&m_view, &FrameView::shown, this, &HexDumpDock::refresh);
    // Hidden for itself, and not with the window around it.
    connect(this, &QDockWidget::visibilityChanged, this, [this] {
        m_pause.stop();
        if (isHidden())
            m_view.adapter().showDumpOverlay(false);
        else
            refresh();
    });
}

void HexDumpDock::toggle()
{
    setVisible(isHidden());
}

void HexDumpDock::moveTo(const QPoint& pixel)
{
    place(QRect(pixel, m_rect.size()));
}

void HexDumpDock::followOverlay()
{
    const QRect overlay = !isVisible() ? QRect() : overlayRect(m_view.adapter());
    if (overlay.isEmpty() || overlay == m_rect || !m_view.frame())
        return;
    m_rect = overlay;
    showCodes();
}

void HexDumpDock::refresh()
{
    if (!isVisible() || !m_view.frame())
        return;
    m_isOutdated = m_pause.isActive();
    if (m_isOutdated)
        return;
    followOverlay();
    place(m_rect.isEmpty() ? firstRect() : m_rect);
    m_pause.start();
}

void HexDumpDock::place(const QRect& rect)
{
    const QSize frame = frameSize();
    const QSize size = rect.size().boundedTo(frame);
    m_rect = QRect(QPoint(keptOn(rect.x(), size.width(), frame.width()),
                          keptOn(rect.y(), size.height(), frame.height())),
                   size);
    DisplayAdapter& adapter = m_view.adapter();
    // Also a new viewer has none yet.
    if (overlayRect(adapter) != m_rect) {
        adapter.setDumpRect(m_rect.x(), m_rect.y(), m_rect.width(), m_rect.height(), "img");
        adapter.showDumpOverlay(true);
    }
    showCodes();
}

void HexDumpDock::showCodes()
{
    m_codes->show(m_view.frame(),
                  QRect(m_rect.topLeft(), m_rect.size().boundedTo({LongestSide, LongestSide})));
    fitCells();
}

void HexDumpDock::fitCells()
{
    if (m_codes->columnCount() == 0)
        return;
    // All cells have as many digits, of one width, and the last number of a header is its longest.
    QHeaderView& columns = *m_table->horizontalHeader();
    QHeaderView& rows = *m_table->verticalHeader();
    const QSize cell = m_table->sizeHintForIndex(m_table->model()->index(0, 0));
    columns.setDefaultSectionSize(
        std::max(cell.width() + 1, columns.sectionSizeHint(m_codes->columnCount() - 1)));
    rows.setDefaultSectionSize(std::max(cell.height() + 1, rows.sectionSizeHint(m_codes->rowCount() - 1)));
}

QSize HexDumpDock::frameSize() const
{
    return {static_cast<int>(m_view.frame()->width), static_cast<int>(m_view.frame()->height)};
}

QRect HexDumpDock::firstRect() const
{
    QRect seen(QPoint(), frameSize());
    m_view.adapter().viewImageRect(&seen);
    QRect rect(0, 0, FirstWidth, FirstHeight);
    rect.moveCenter(seen.center());
    return rect;
}

} // namespace zor
