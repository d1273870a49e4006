#pragma once

#include <stdexcept>

namespace zor {

/// Ends a command. The text is one line that names the file or setting, what is wrong and what to do.
class CommandError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

} // namespace zor
