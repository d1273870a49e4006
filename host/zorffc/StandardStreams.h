#pragma once

namespace zor {

/// Puts something in the place of standard input, output and error where the process was started without
/// them, so that no file which is opened later gets one of their numbers. Nothing can be written to what
/// stands in: an output that leads nowhere stays a failed write. To be called before any file is opened.
void holdStandardStreams();

} // namespace zor
