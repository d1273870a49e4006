#pragma once

#include <QString>

class QHBoxLayout;
class QLineEdit;

namespace zor {

/// Adds a field to a row of the status bar, with its name in front of it. Its text can be selected, and read
/// by an assistive client. `widest` is the longest text that the field has to show; empty: it takes the room
/// that is left.
QLineEdit* addStatusField(QHBoxLayout& row, const QString& name, const QString& widest);

/// Shows a text from its beginning on, and as a whole under the cursor.
void setStatusText(QLineEdit& field, const QString& text);

} // namespace zor
