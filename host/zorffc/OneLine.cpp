#include "host/zorffc/OneLine.h"

#include <QString>

namespace zor {

std::string oneLine(const std::string& text)
{
    QString line = QString::fromStdString(text);
    for (QChar& character : line) {
        if (character.category() == QChar::Other_Control)
            character = QLatin1Char(' ');
    }
    return line.toStdString();
}

} // namespace zor
