#include "dialog/CFFCUtility.h"
#include "dialog/DialogUse.h"
#include "dialog/WaitCursor.h"

bool CFFCUtility::RunCorrection()
{
    const zor::DialogUse use(*this);
    const zor::WaitCursor cursor;
    const bool done = ComputeColumnGains() && ApplyColumnGains(true) && ComputeRowGains() &&
                      ApplyRowGains() && ComputeHistogram() && TakeProfileLines(0, -1, -1) &&
                      TakeProfileLines(1, -1, -1);
    if (done)
        ComputeRanges();
    return done;
}
