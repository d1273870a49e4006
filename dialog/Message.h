#pragma once

#include <QString>

namespace zor {

/// Shows a text in a modal box without a parent and returns when the operator has closed it.
void showMessage(const QString& text);

/// The box of every operation that could not have its memory. The converter's text is in FrameIntake.cpp,
/// those of a save are in DoSaveFFC.cpp.
void showNotEnoughMemory();

} // namespace zor
