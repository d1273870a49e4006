#include "dialog/PaneArrangement.h"

#include "dialog/Ui_CFFCUtility.h"
#include "display/DisplayView.h"

#include <qwt_plot.h>

namespace {

constexpr int Gap = 5; ///< pixels between panes

} // namespace

void arrangePanes(const Ui_CFFCUtility& ui, int width, int height)
{
    const int paneWidth = (width - Gap) / 2;
    const int paneHeight = (height - Gap) / 2;
    const int right = paneWidth + Gap;
    const int lower = paneHeight + Gap;
    ui.gVUp->setGeometry(0, 0, paneWidth, paneHeight);
    ui.PlotUp->setGeometry(right, 0, paneWidth, paneHeight);
    ui.gVDown->setGeometry(0, lower, paneWidth, paneHeight);
    ui.PlotDown->setGeometry(right, lower, paneWidth, paneHeight);
}
