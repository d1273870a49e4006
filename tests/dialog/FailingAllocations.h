#pragma once

#include <QVector>

/// Comes between the dialog and its allocation functions in a program that wraps zorAllocate and zorRelease.

/// The bytes of a fresh block.
constexpr char UnwrittenByte = '\xA5';

/// Starts to count anew. The allocation of this number, from 1, fails, and with `onwards` all after it; 0:
/// none.
void failAllocation(int number, bool onwards = false);

/// Since the last failAllocation: how many allocations were asked for, and the bytes of each.
int allocationCount();
const QVector<int>& allocationSizes();

/// Blocks of the whole program that are not given back. They stay known to this wrapper, so a loss is counted
/// here and is no leak of the program.
int liveBlocks();
