#pragma once

#include <map>
#include <string>

/// The argument of every display command and notification: text keys to text values, ordered byte by byte.
/// The caller owns it and passes its address; the callee may read it, add keys and overwrite values in place
/// for the length of the call.
using ParameterMap = std::map<std::string, std::string>;
