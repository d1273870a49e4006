#pragma once

#include <functional>

namespace zor::viewer {
/// Shares rows 0 to `rows` out to at most two threads in whole bands, the caller's thread among them, and
/// returns when all are done. `work` takes a half-open range and must not throw. Fewer rows than `least` stay
/// on the caller's thread.
void forRowBands(int rows, int least, const std::function<void(int, int)>& work);
} // namespace zor::viewer
