#include "dialog/CFFCUtility.h"

#include "display/DisplayView.h"
#include "engine/Allocation.h"
#include "splitter/CGridSplitter.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>

#include <qwt_plot.h>

namespace {

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
