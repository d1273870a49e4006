#include "dialog/CFFCUtility.h"

#include <QGuiApplication>

bool CFFCUtility::RunCorrection()
{
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    const bool done = ComputeColumnGains() && ApplyColumnGains(true) && ComputeRowGains() &&
                      ApplyRowGains() && ComputeHistogram() && TakeProfileLines(0, -1, -1) &&
                      TakeProfileLines(1, -1, -1);
    if (done)
        ComputeRanges();
    QGuiApplication::restoreOverrideCursor();
    return done;
}
