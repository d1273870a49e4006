#pragma once

#include "image/ZorPixelTypeTable.h"

#include <string>

namespace zor {

/// The pixel format of this name. Throws FrameError "SUBJECT: there is no pixel format ..." when there is
/// none; `subject` is the file or option that is at fault.
const ZorPixelTypeRow& formatByName(const std::string& subject, const std::string& name);

} // namespace zor
