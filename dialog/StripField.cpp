#include "dialog/StripField.h"

QSize StripField::sizeHint() const
{
    return {minimumSizeHint().width(), QLineEdit::sizeHint().height()};
}
