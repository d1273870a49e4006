#pragma once

#include <QString>

class QWidget;

namespace zor {

class FrameError;

/// Shows a box with one sentence over a window and returns at once: what else goes on in the program goes on.
void tell(QWidget* window, const QString& sentence);

/// What an error says in a window: advice to give an option of a command line is left out.
QString textFor(const FrameError& error);

} // namespace zor
