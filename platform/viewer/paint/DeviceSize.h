#pragma once

#include <QWidget>

namespace zor::viewer {
/// The pixels of the screen that a widget takes.
inline QSize deviceSize(const QWidget& widget)
{
    return widget.size() * widget.devicePixelRatioF();
}
} // namespace zor::viewer
