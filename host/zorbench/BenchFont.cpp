#include "host/zorbench/BenchFont.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QFontInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace zor {

namespace {

/// Width at which the window of the FFC utility opens, in pixels.
constexpr int FirstWidth = 1174;

/// No smaller letters, in pixels: nobody could read them.
constexpr int SmallestSize = 8;

/// Whether a row of controls like that of the FFC utility gets all that it asks for, in the style of this
/// machine.
bool fits(const QFont& font)
{
    QWidget row;
    row.setFont(font);
    auto* layout = new QHBoxLayout(&row);
    layout->setSpacing(6);
    layout->setContentsMargins(2, 0, 2, 0);
    const auto add = [layout](QWidget* control) { layout->addWidget(control); };
    for (const char* label : {"Title:", "Camera:", "Precision:"})
        add(new QLabel(QLatin1String(label)));
    for (const char* button : {"Save", "Update"})
        add(new QPushButton(QLatin1String(button)));
    for (const char* box : {"Normalize FFC to", "Show Flat Y", "Highlights"}) {
        add(new QCheckBox(QLatin1String(box)));
        add(new QLineEdit);
        layout->addSpacing(40);
    }
    auto* choice = new QComboBox;
    choice->addItem(QStringLiteral("12 bit"));
    add(choice);
    return layout->sizeHint().width() <= FirstWidth;
}

} // namespace

QFont benchFont()
{
    QFont font = QApplication::font();
    if (fits(font))
        return font;
    for (int size = QFontInfo(font).pixelSize(); size >= SmallestSize; --size) {
        font.setPixelSize(size);
        for (const int stretch : {QFont::Unstretched, QFont::SemiCondensed}) {
            font.setStretch(stretch);
            if (fits(font))
                return font;
        }
    }
    return font;
}

} // namespace zor
