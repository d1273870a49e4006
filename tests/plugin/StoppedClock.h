#pragma once

/// The time of day of a program that links StoppedClock.cpp: it stays as it was at the first look at it and
/// moves on request only. Qt's QTime and QDateTime go by it; timers, which do not, run on.
class StoppedClock
{
public:
    static void advance(int milliseconds);
};
