#include "platform/viewer/picture/RowBands.h"

#include <system_error>
#include <thread>

namespace zor::viewer {
void forRowBands(int rows, int least, const std::function<void(int, int)>& work)
{
    if (rows < least || std::thread::hardware_concurrency() < 2) {
        work(0, rows);
        return;
    }
    const int half = rows / 2;
    std::thread helper;
    try {
        helper = std::thread(work, 0, half);
    } catch (const std::system_error&) {
        work(0, rows);
        return;
    }
    work(half, rows);
    helper.join();
}
} // namespace zor::viewer
