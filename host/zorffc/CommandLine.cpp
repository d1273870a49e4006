#include "host/zorffc/CommandLine.h"

#include "host/zorffc/Commands.h"
#include "host/zorffc/OneLine.h"
#include "host/zorffc/StandardStreams.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <exception>
#include <iostream>
#include <new>
#include <sstream>
#include <string>
#include <vector>

namespace zor {

namespace {

int reportError(const std::string& message)
{
    std::cerr << "zorffc: " << oneLine(message) << std::endl;
    return ExitBadUse;
}

/// The command that the arguments reached, for the hint at its help.
std::string commandName(const CLI::App& app)
{
    for (const CLI::App* command : app.get_subcommands())
        return "zorffc " + command->get_name();
    return "zorffc";
}

std::vector<std::string> commandNames(const CLI::App& app)
{
    std::vector<std::string> names;
    for (const CLI::App* command : app.get_subcommands([](const CLI::App*) { return true; }))
        names.push_back(command->get_name());
    return names;
}

int reportNoCommand(const std::string& problem, const std::vector<std::string>& commands)
{
    std::string list;
    for (const std::string& name : commands)
        list += (list.empty() ? "" : &name == &commands.back() ? " or " : ", ") + name;
    return reportError(problem + "; name one: " + list + "; see zorffc --help");
}

int parse(CLI::App& app, int argc, char** argv)
{
    const std::vector<std::string> commands = commandNames(app);
    const std::string word = argc > 1 ? argv[1] : "";
    const bool isOption = word.size() > 1 && word[0] == '-';
    if (argc > 1 && !isOption && std::find(commands.begin(), commands.end(), word) == commands.end())
        return reportNoCommand("unknown command '" + word + "'", commands);
    try {
        app.parse(argc, argv);
        if (app.get_subcommands().empty())
            return reportNoCommand("no command", commands);
    } catch (const CLI::Success& success) {
        // Help and version: the parser has what was asked for.
        std::ostringstream text;
        app.exit(success, text);
        if (writeOutput(text.str()) == Delivery::Failed)
            return reportError("standard output cannot be written");
    } catch (const CLI::ParseError& error) {
        return reportError(std::string(error.what()) + "; see " + commandName(app) + " --help");
    }
    return ExitDone;
}

} // namespace

int runCommandLine(int argc, char** argv)
{
    try {
        CLI::App app("Computes, tries and shows the flat field correction of industrial cameras.", "zorffc");
        app.set_version_flag("--version", std::string("zorffc ") + ZOR_VERSION);
        app.require_subcommand(0, 1);
        addComputeCommand(app);
        addReportCommand(app);
        addConvertCommand(app);
        addFormatsCommand(app);
        addSimulateCommand(app);
        return parse(app, argc, argv);
    } catch (const std::bad_alloc&) {
        // A text of its own might not find room either.
        std::cerr << "zorffc: not enough memory; use a smaller frame or close other programs" << std::endl;
        return ExitBadUse;
    } catch (const std::exception& error) {
        return reportError(error.what());
    }
}

} // namespace zor
