#pragma once

#include <QApplication>

namespace zor {

/// The QApplication under which a picture is drawn, without a screen. The picture depends on nothing but what
/// is drawn: the process loses its environment here, and texts are set in a font that the program carries.
/// Throws std::bad_alloc where there is not enough memory for drawing; from then on there is.
class DrawingApplication
{
public:
    DrawingApplication();

private:
    QApplication m_application;
};

} // namespace zor
