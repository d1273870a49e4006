#include "display/DisplayView.h"

DisplayView::DisplayView(QWidget* parent)
    : QGraphicsView(parent)
{
}
