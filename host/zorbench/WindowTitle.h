#pragma once

class QString;

namespace zor {

/// A text for QWidget::setWindowTitle that is shown as it is: by itself "[*]" is Qt's mark for changes.
QString plainTitle(QString text);

} // namespace zor
