#pragma once

#include "tests/support/TestFrame.h"

#include <QVector>

#include <cstdint>
#include <list>

/// A frame of 6 x 4 pixels and 12 bits that no gain leaves as it is.
inline TestFrame unevenFrame()
{
    return TestFrame(6, 4, 12, [](int x, int y) { return static_cast<unsigned>(1000 + 37 * x + 11 * y); });
}

inline QVector<double> listed(const std::list<double>& gains)
{
    return QVector<double>(gains.begin(), gains.end());
}

/// Empty where there is no line.
inline QVector<int> items(const std::uint16_t* line, int count)
{
    return line ? QVector<int>(line, line + count) : QVector<int>();
}
