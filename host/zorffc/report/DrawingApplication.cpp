#include "host/zorffc/report/DrawingApplication.h"

#include "host/zorffc/CommandError.h"
#include "host/zorffc/CommandLine.h"
#include "host/zorffc/OneLine.h"

#include <QFont>
#include <QFontDatabase>

#include <fontconfig/fontconfig.h>

#include <cstdlib>
#include <iostream>
#include <new>
#include <string>

namespace zor {

namespace {

/// More than three times the address space that application, fonts, drawing and PNG file take together: 19
/// MiB for profiles of 65535 entries.
constexpr std::size_t DrawingMemory = std::size_t{64} << 20;

char program[] = "zorffc";
char option[] = "-platform";
char platform[] = "offscreen";
char* arguments[] = {program, option, platform, nullptr};
int argumentCount = 3;

/// Qt's remarks on the desktop around it say nothing about the picture. What it cannot go on without ends the
/// run as other errors do, and not by a core dump.
void takeRemark(QtMsgType type, const QMessageLogContext&, const QString& text)
{
    if (type != QtFatalMsg)
        return;
    std::cerr << "zorffc: " << oneLine(text.toStdString()) << std::endl;
    std::_Exit(ExitBadUse);
}

/// Short of memory Qt leaves parts of a picture out, or crashes, without a word. So all that it may need is
/// asked for once, before it starts.
void requireMemory()
{
    ::operator delete(::operator new(DrawingMemory));
}

/// Variables of Qt, fontconfig, FreeType, the desktop and the locale scale, restyle or stop a drawing, and
/// each version knows others. None of them is about this picture. The folder for run-time files stays:
/// without it Qt makes one of its own in /tmp.
void clearEnvironment()
{
    const char* folder = std::getenv("XDG_RUNTIME_DIR");
    const std::string kept = folder ? folder : "";
    ::clearenv();
    if (!kept.empty())
        ::setenv("XDG_RUNTIME_DIR", kept.c_str(), 1);
}

/// Without this the fonts of the machine, and its settings on how to draw any font, would come in.
void forgetInstalledFonts()
{
    FcConfig* empty = FcConfigCreate();
    if (!empty || !FcConfigSetCurrent(empty))
        throw std::bad_alloc();
}

int& prepared()
{
    requireMemory();
    clearEnvironment();
    forgetInstalledFonts();
    qInstallMessageHandler(takeRemark);
    return argumentCount;
}

void addFont(const QString& file)
{
    if (QFontDatabase::addApplicationFont(file) == -1)
        throw CommandError("the font of the picture cannot be loaded; build zorffc with another " +
                           file.toStdString());
}

} // namespace

DrawingApplication::DrawingApplication()
    : m_application(prepared(), arguments)
{
    addFont(QStringLiteral(":/fonts/DejaVuSans.ttf"));
    addFont(QStringLiteral(":/fonts/DejaVuSans-Bold.ttf"));
    QFont font(QStringLiteral("DejaVu Sans"));
    // Outlines as they are, in shades of grey: hinting differs from one font library to the next.
    font.setHintingPreference(QFont::PreferNoHinting);
    font.setStyleStrategy(
        static_cast<QFont::StyleStrategy>(QFont::PreferAntialias | QFont::NoSubpixelAntialias));
    QApplication::setFont(font);
}

} // namespace zor
