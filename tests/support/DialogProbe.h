#pragma once

#include "dialog/CFFCUtility.h"
#include "tests/support/TestFrame.h"

/// The dialog with its members and stages open to look at.
class DialogProbe : public CFFCUtility
{
public:
    DialogProbe()
        : CFFCUtility(nullptr)
    {
    }

    /// Hands a frame over as a host does. The dialog has its own copy afterwards.
    void take(TestFrame frame)
    {
        _ZorImage record = frame.record();
        SetFrame(&record);
    }

    using CFFCUtility::ApplyColumnGains;
    using CFFCUtility::ApplyRowGains;
    using CFFCUtility::closeEvent;
    using CFFCUtility::ComputeColumnGains;
    using CFFCUtility::ComputeHistogram;
    using CFFCUtility::ComputeRanges;
    using CFFCUtility::ComputeRowGains;
    using CFFCUtility::resizeEvent;
    using CFFCUtility::showEvent;
    using CFFCUtility::TakeProfileLines;

    using CFFCUtility::m_adapterDown;
    using CFFCUtility::m_adapterUp;
    using CFFCUtility::m_dataLock;
    using CFFCUtility::m_grid;
    using CFFCUtility::m_highLight;
    using CFFCUtility::m_hostCallback;
    using CFFCUtility::m_hostContext;
    using CFFCUtility::m_hostInfo;
    using CFFCUtility::m_plugIn;
    using CFFCUtility::m_reservedFlag;
    using CFFCUtility::m_reservedPointers;
    using CFFCUtility::m_reservedValue;
    using CFFCUtility::m_shown;
    using CFFCUtility::m_viewClock;
    using CFFCUtility::m_viewLock;
    using CFFCUtility::ui;

    using CFFCUtility::m_depth;
    using CFFCUtility::m_height;
    using CFFCUtility::m_image;
    using CFFCUtility::m_imageBytes;
    using CFFCUtility::m_pairSmoothing;
    using CFFCUtility::m_pixelFormat;
    using CFFCUtility::m_step;
    using CFFCUtility::m_width;

    using CFFCUtility::m_columnGains;
    using CFFCUtility::m_flatX;
    using CFFCUtility::m_flatXStep;
    using CFFCUtility::m_flatY;
    using CFFCUtility::m_flatYStep;
    using CFFCUtility::m_rowGains;

    using CFFCUtility::m_columnLine;
    using CFFCUtility::m_columnMean;
    using CFFCUtility::m_flatColumnLine;
    using CFFCUtility::m_flatColumnMean;
    using CFFCUtility::m_flatRowLine;
    using CFFCUtility::m_flatRowMean;
    using CFFCUtility::m_rowLine;
    using CFFCUtility::m_rowMean;

    using CFFCUtility::m_histogram;
    using CFFCUtility::m_histogramFloor;
    using CFFCUtility::m_histogramLevels;
    using CFFCUtility::m_histogramPeak;
    using CFFCUtility::m_histogramReserved;

    using CFFCUtility::m_flatMax;
    using CFFCUtility::m_flatMin;
    using CFFCUtility::m_imageMax;
    using CFFCUtility::m_imageMin;
    using CFFCUtility::m_rangeXMax;
    using CFFCUtility::m_rangeXMin;
    using CFFCUtility::m_rangeYMax;
    using CFFCUtility::m_rangeYMin;

    using CFFCUtility::m_camera;
    using CFFCUtility::m_date;
    using CFFCUtility::m_normalize;
    using CFFCUtility::m_normalizeValue;
    using CFFCUtility::m_title;
};
