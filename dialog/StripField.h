#pragma once

#include <QLineEdit>

/// A line edit of the strip. It asks for no more width than it needs at least and takes spare room all the
/// same. In a window of the first size no neighbour then has to give way to it: the strip's check boxes may
/// become narrower than their texts. Nothing else differs from a QLineEdit, which it also tells to be.
class StripField : public QLineEdit
{
public:
    using QLineEdit::QLineEdit;

    QSize sizeHint() const override;
};
