#include "host/zorbench/Arguments.h"

#include "host/frames/FileBytes.h"
#include "host/frames/Frame.h"

#ifdef ZOR_CAMERAS
#include "host/camera/CameraInterfaces.h"
#endif

#include <CLI/CLI.hpp>

#include <QFile>

#include <algorithm>
#include <clocale>
#include <filesystem>
#include <iostream>
#include <stdexcept>

namespace zor {

namespace {

enum ExitCode
{
    ExitDone = 0,
    ExitBadUse = 2
};

/// Names may hold line breaks and other control characters.
int reportError(std::string message)
{
    std::replace_if(
        message.begin(), message.end(), [](unsigned char c) { return c < ' ' || c == 0x7F; }, ' ');
    std::cerr << "zorbench: " << message << std::endl;
    return ExitBadUse;
}

/// The file exists and is none that can't be a frame. Throws FrameError.
std::string existingFile(const std::string& name)
{
    if (name.empty())
        throw FrameError("a FRAME has no name");
    fileSize(name);
    if (QFile::encodeName(QFile::decodeName(name.c_str())).toStdString() != name)
        throw FrameError(name + ": the name is no text in the character set of this locale; rename the file");
    return std::filesystem::absolute(name).string();
}

std::string existingFolder(const std::string& name)
{
    std::error_code error;
    if (!std::filesystem::is_directory(name, error))
        throw FrameError(name + ": there is no such folder; check --plugins");
    return std::filesystem::absolute(name).string();
}

} // namespace

Arguments parseArguments(int argc, char** argv)
{
    // The character set of names, as the application takes it later.
    std::setlocale(LC_CTYPE, "");
    Arguments arguments;
    CLI::App app("The workbench of a camera engineer: shows frames and opens its plug-ins on them.",
                 "zorbench");
    app.set_version_flag("--version", std::string("zorbench ") + ZOR_VERSION);
    std::vector<std::string> names;
    app.add_option(
           "FRAME", names,
           "PGM, PPM, PNG or TIFF files, or raw dumps, whose format is asked for. The first is shown, the "
           "others are among the recent files")
        ->type_name("FILE");
    std::string folder;
    const CLI::Option* plugIns =
        app.add_option("--plugins", folder, "Folder of the plug-ins, in place of the program's own")
            ->type_name("DIR");
#ifdef ZOR_CAMERAS
    app.add_option(
           "--camera-interfaces", arguments.cameraInterfaces,
           "Where cameras are looked for: gige, usb, or fake, which is a camera inside the program; several "
           "with commas")
        ->type_name("NAMES")
        ->capture_default_str();
#endif
    try {
        app.parse(argc, argv);
#ifdef ZOR_CAMERAS
        cameraInterfacesOf(arguments.cameraInterfaces);
#endif
        std::transform(names.begin(), names.end(), std::back_inserter(arguments.frames), existingFile);
        if (plugIns->count() > 0)
            arguments.plugInFolder = existingFolder(folder);
    } catch (const CLI::Success& success) {
        app.exit(success, std::cout);
        arguments.exitCode =
            std::cout.flush() ? ExitDone : reportError("standard output cannot be written; free some space");
    } catch (const CLI::ParseError& error) {
        arguments.exitCode = reportError(std::string(error.what()) + "; see zorbench --help");
    } catch (const std::runtime_error& error) {
        arguments.exitCode = reportError(error.what());
    }
    return arguments;
}

} // namespace zor
