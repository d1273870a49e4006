#include "host/zorffc/Options.h"

#include "host/frames/FrameLimits.h"

#include <algorithm>
#include <functional>

namespace zor {

namespace {

/// An option with a number that `fits`; `kind` says which do.
CLI::Option* addNumber(CLI::App& app, const std::string& name, double& target,
                       const std::function<bool(double)>& fits, const std::string& kind,
                       const std::string& help, const std::string& typeName)
{
    const auto store = [&target, name, fits, kind](const std::string& text) {
        const std::optional<double> value = parseReal(text);
        if (!value || !fits(*value))
            throw CLI::ValidationError(name, "\"" + text + "\" does not fit; give a number " + kind);
        target = *value;
    };
    return app.add_option_function<std::string>(name, store, help)->type_name(typeName);
}

} // namespace

CLI::Option* addReal(CLI::App& app, const std::string& name, double& target, std::int64_t least,
                     std::int64_t most, const std::string& help)
{
    return addNumber(
        app, name, target,
        [least, most](double value) {
            return value >= static_cast<double>(least) && value <= static_cast<double>(most);
        },
        "from " + std::to_string(least) + " to " + std::to_string(most), help, "NUMBER");
}

CLI::Option* addFactor(CLI::App& app, const std::string& name, double& target, const std::string& help)
{
    return addNumber(
        app, name, target, [](double value) { return value > 0.0; }, "above 0, with a decimal point", help,
        "V");
}

CLI::Option* addWhole(CLI::App& app, const std::string& name, std::optional<std::uint64_t>& target,
                      const std::string& help)
{
    const auto store = [&target, name](const std::string& text) {
        const std::optional<std::uint64_t> value = parseWhole(text);
        if (!value)
            throw CLI::ValidationError(name, "\"" + text + "\" does not fit; give a whole number from 0 up");
        target = *value;
    };
    return app.add_option_function<std::string>(name, store, help)->type_name("COUNT");
}

CLI::Option* addFlag(CLI::App& app, const std::string& name, bool& target, const std::string& help)
{
    // The parser counts a flag, takes a number after it for the count and "false" for -1.
    const auto store = [&target, name](std::int64_t count) {
        if (count != 1)
            throw CLI::ValidationError(name, "takes no value; give it alone and once");
        target = true;
    };
    return app.add_flag_function(name, store, help);
}

CLI::Option* addChoice(CLI::App& app, const std::string& name, std::uint32_t& target,
                       const std::vector<std::uint32_t>& choices, const std::string& help)
{
    std::string list;
    for (const std::uint32_t choice : choices)
        list += (list.empty() ? "" : "|") + std::to_string(choice);

    const auto store = [&target, name, choices, list](const std::string& text) {
        const std::optional<std::uint64_t> value = parseWhole(text);
        if (!value || std::find(choices.begin(), choices.end(), *value) == choices.end())
            throw CLI::ValidationError(name, "\"" + text + "\" does not fit; give one of " + list);
        target = static_cast<std::uint32_t>(*value);
    };
    return app.add_option_function<std::string>(name, store, help)->type_name(list);
}

CLI::Option* addSize(CLI::App& app, const std::string& name, FrameSize& target, const std::string& help)
{
    const auto store = [&target, name](const std::string& text) {
        const std::optional<FrameSize> size = parseSize(text);
        if (!size)
            throw CLI::ValidationError(
                name, "\"" + text + "\" does not fit; give width and height in pixels, each from 1 to " +
                          std::to_string(MaxFrameSide) + ", like 1392x1040");
        target = *size;
    };
    return app.add_option_function<std::string>(name, store, help)->type_name("WxH");
}

CLI::Option* addPackedOrder(CLI::App& app, std::string& target, const std::string& help)
{
    return app
        .add_option("--packed-order", target,
                    help +
                        " the even pixel's low bits: low nibble (wire, the default) or high nibble (record)")
        ->check(CLI::IsMember({"wire", "record"}))
        ->type_name("ORDER");
}

CLI::Option* addPrecision(CLI::App& app, std::uint32_t& target)
{
    return addChoice(app, "--precision", target, {8, 12}, "Fraction bits of the file's values (default 8)");
}

} // namespace zor
