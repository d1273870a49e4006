#include "dialog/CFFCUtility.h"

#include "dialog/DialogUse.h"
#include "display/DisplayAdapterQT.h"
#include "display/DisplayView.h"
#include "engine/Allocation.h"
#include "splitter/CGridSplitter.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QResizeEvent>
#include <QShowEvent>
#include <QThread>

#include <qwt_plot.h>

namespace {

/// Below this height of the dialog, in pixels, and no wider than the strip, its areas stay where they are.
constexpr int SmallestArrangedHeight = 30;

template <typename Block> void releaseBlock(Block*& block)
{
    zorRelease(block);
    block = nullptr;
}

} // namespace

CFFCUtility::CFFCUtility(QWidget* parent)
    : QDialog(parent)
{
    ui.setupUi(this);
    QT_WARNING_PUSH
    QT_WARNING_DISABLE_DEPRECATED
    m_viewClock.start();
    QT_WARNING_POP
    m_grid = new CGridSplitter(this);
    const QList<QWidget*> panes{ui.gVUp, ui.PlotUp, ui.gVDown, ui.PlotDown};
    ui.wSettings->setFixedHeight(ui.wSettings->sizeHint().height());
    m_grid->setWidgets(panes, 2, 2);

    connect(ui.chBHighlights, SIGNAL(clicked()), this, SLOT(highLightSlot()));
    connect(ui.pBUpdate, SIGNAL(clicked()), this, SLOT(Update()));
    connect(ui.pBSave, SIGNAL(clicked()), this, SLOT(DoSaveFFC()));
    connect(ui.gVUp, SIGNAL(sigViewChanged(DisplayView*)), this, SLOT(onViewChanged(DisplayView*)));
    connect(ui.gVDown, SIGNAL(sigViewChanged(DisplayView*)), this, SLOT(onViewChanged(DisplayView*)));

    ui.lECurPos->hide();
    ui.lECurColor->hide();
}

CFFCUtility::~CFFCUtility()
{
    // No use that ends in here deletes the dialog once more.
    ++m_uses;
    ResetData(true);
}

void CFFCUtility::SetHost(ZBKHostCallback callback, void* context, ZBKInterfacePlugIn* plugIn)
{
    m_hostCallback = callback;
    m_hostContext = context;
    m_plugIn = plugIn;
}

void CFFCUtility::SetHostInfo(ZBKHostInfo info)
{
    m_hostInfo = std::move(info);
}

bool CFFCUtility::HasResult()
{
    return false;
}

void CFFCUtility::GetResult(void** result)
{
    *result = nullptr;
}

void CFFCUtility::Discard()
{
    SetHost(nullptr, nullptr, nullptr);
    if (--m_uses == 0)
        delete this;
}

bool CFFCUtility::Deferred(DeferredRequests::Request request)
{
    if (!m_viewLock.heldByThisThread())
        return false;
    m_requests.add(request);
    return true;
}

void CFFCUtility::ViewLockReleased()
{
    if (m_uses == 1)
        CarryOutRequests();
}

void CFFCUtility::CarryOutRequests()
{
    // Another thread that gives the lock back leaves the requests to the thread that they came in on.
    if (QThread::currentThread() != thread() || m_viewLock.heldByThisThread())
        return;
    using Request = DeferredRequests::Request;
    m_requests.carryOut([this](Request request) {
        if (request == Request::Reset)
            ResetData(false);
        else if (request == Request::Update)
            Update();
        else
            SetHighlights(request == Request::HighlightsOn);
    });
}

void CFFCUtility::ResetData(bool destroyAdapters)
{
    if (!destroyAdapters && Deferred(DeferredRequests::Request::Reset))
        return;
    const DialogUse use(*this);
    const std::lock_guard<OwnedMutex> viewLock(m_viewLock);
    const std::lock_guard<OwnedMutex> dataLock(m_dataLock);
    if (destroyAdapters) {
        delete m_adapterUp;
        m_adapterUp = nullptr;
        delete m_adapterDown;
        m_adapterDown = nullptr;
    }
    ResetFrame();
}

void CFFCUtility::ResetFrame()
{
    m_width = 0;
    m_height = 0;
    releaseBlock(m_image);
    m_step = 0;
    m_depth = 0;
    releaseBlock(m_flatX);
    m_flatXStep = 0;
    releaseBlock(m_flatY);
    m_flatYStep = 0;

    releaseBlock(m_histogram);
    m_histogramLevels = 0;
    m_histogramPeak = 0;
    m_histogramReserved = 0;
    m_histogramFloor = 0;

    releaseBlock(m_columnMean);
    releaseBlock(m_flatColumnMean);
    releaseBlock(m_rowMean);
    releaseBlock(m_flatRowMean);
    releaseBlock(m_columnLine);
    releaseBlock(m_flatColumnLine);
    releaseBlock(m_rowLine);
    releaseBlock(m_flatRowLine);

    m_rangeXMax = 0;
    m_rangeXMin = 0;
    m_rangeYMax = 0;
    m_rangeYMin = 0;
    m_imageMax = 0;
    m_imageMin = 0;
    m_flatMax = 0;
    m_flatMin = 0;
}

void CFFCUtility::Update()
{
    if (Deferred(DeferredRequests::Request::Update))
        return;
    const DialogUse use(*this);
    if (!m_image)
        return;
    m_normalize = ui.chBNormFFC->isChecked() ? 1 : 0;
    m_normalizeValue = ui.lENormFFC->text().toDouble();
    if (RunCorrection())
        ShowAll();
}

void CFFCUtility::resizeEvent(QResizeEvent* event)
{
    if (event) {
        const int width = event->size().width();
        const int height = event->size().height();
        const int stripHeight = ui.wSettings->height();
        if (width > ui.wSettings->width() || height > SmallestArrangedHeight) {
            m_grid->resize(width, height - stripHeight);
            ui.wSettings->move(0, height - stripHeight);
            ui.wSettings->resize(width, stripHeight);
        }
    }
    QDialog::resizeEvent(event);
}

void CFFCUtility::closeEvent(QCloseEvent* event)
{
    const DialogUse use(*this);
    if (m_hostCallback)
        m_hostCallback(m_hostContext, ZBKEventDialogClosed, m_plugIn);
    m_shown = false;
    event->accept();
}

void CFFCUtility::showEvent(QShowEvent* event)
{
    const DialogUse use(*this);
    // A show from within a refresh finds the adapters made.
    if (!m_viewLock.heldByThisThread()) {
        const std::lock_guard<OwnedMutex> viewLock(m_viewLock);
        constexpr std::uint32_t Features =
            DisplayFeatureImageEvents | DisplayFeatureViewEvents | DisplayFeatureInspect;
        if (!m_adapterUp)
            m_adapterUp = new DisplayAdapterQT(ui.gVUp, false, Features);
        if (!m_adapterDown)
            m_adapterDown = new DisplayAdapterQT(ui.gVDown, false, Features);
    }
    if (!m_shown) {
        // The host may hand a frame over inside the notification; Update then computes and shows it.
        if (m_hostCallback)
            m_hostCallback(m_hostContext, ZBKEventDialogOpened, m_plugIn);
        Update();
        m_shown = true;
    }
    event->accept();
}
