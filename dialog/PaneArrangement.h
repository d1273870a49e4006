#pragma once

struct Ui_CFFCUtility;

/// Lays the four panes out as two equal rows, each a view with its plot to the right, in the dialog's top
/// left area of the given size in pixels.
void arrangePanes(const Ui_CFFCUtility& ui, int width, int height);
