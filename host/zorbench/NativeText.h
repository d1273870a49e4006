#pragma once

#include <QPoint>
#include <QString>

struct _ZorImage;

namespace zor {

/// The native codes of a pixel as a person reads them: the number alone in mono, after the letter of its
/// filter under a colour filter, "R 10  G 20  B 30" where a pixel has several, in the order of its format,
/// and luma before the colour differences. Empty for a place outside the image.
QString nativeText(const _ZorImage& image, const QPoint& pixel);

} // namespace zor
