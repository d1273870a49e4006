#pragma once

#include "tests/reference/EngineReference.h"

namespace reference {

struct Setting
{
    bool normalize;
    double value;
    bool showRows;
    bool pairs;
    int peak; ///< that the last run has left
};

/// One frame's whole run, once more from the definitions alone. The frame's rows are as long as those that
/// the correction gets.
struct Run
{
    Run(const Image& frame, const Setting& setting);

    Gains columns;
    Gains rowsOfFrame;
    Gains rows;
    Image flatX;
    Image flatY;
    std::vector<std::uint16_t> flatColumnMeans;
    std::vector<std::uint16_t> flatRowMeans;
    std::vector<int> bins;
    int peak;
    Extremes ofImage;
    Extremes ofFlat;
    Extremes range;
};

} // namespace reference
