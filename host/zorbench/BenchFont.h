#pragma once

#include <QFont>

namespace zor {

/// The application's own font, made smaller where it is too wide for the windows of plug-ins, which have a
/// fixed first size. Needs the application.
QFont benchFont();

} // namespace zor
