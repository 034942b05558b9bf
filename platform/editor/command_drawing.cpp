// PLOT, SETVAR, and every system variable by its name

#include "editor/SystemVariables.h"
#include "editor/command_support.h"
#include "editor/command_tables.h"
#include "graphics/plot.h"
#include "runtime/Host.h"

#include <charconv>
#include <fmt/format.h>

namespace veldrin {

namespace {

std::string shown(const VariableValue& value) {
    if (const auto* integer = std::get_if<std::int32_t>(&value)) return fmt::format("{}", *integer);
    if (const auto* real = std::get_if<double>(&value)) return fmt::format("{:g}", *real);
    if (const auto* text = std::get_if<std::string>(&value)) return *text;
    if (const auto* flat = std::get_if<AcGePoint2d>(&value))
        return fmt::format("{:g},{:g}", flat->x, flat->y);
    const auto& point = std::get<AcGePoint3d>(value);
    return fmt::format("{:g},{:g},{:g}", point.x, point.y, point.z);
}

// A typed value for a variable of the same kind as `like`; none when it cannot be one.
std::optional<VariableValue> valueLike(const VariableValue& like, const Answer& answer) {
    if (std::holds_alternative<std::string>(like)) return answer.text;
    if (std::holds_alternative<double>(like)) {
        const auto real = parseDistance(answer.text);
        return real ? std::optional<VariableValue>(*real) : std::nullopt;
    }
    if (std::holds_alternative<std::int32_t>(like)) {
        std::int32_t integer = 0;
        const char* end = answer.text.data() + answer.text.size();
        const auto [stop, error] = std::from_chars(answer.text.data(), end, integer);
        return error == std::errc() && stop == end ? std::optional<VariableValue>(integer) : std::nullopt;
    }
    const auto point = parsePoint("*" + answer.text);
    return point ? std::optional<VariableValue>(*point) : std::nullopt;
}

Task<void> askValue(CommandContext& context, const std::string& name) {
    SystemVariables& variables = context.host.variables();
    const std::optional<VariableValue> before = variables.get(name);
    if (!before) failCommand(fmt::format("Unknown variable name \"{}\".", name));
    const std::string prompt = fmt::format("Enter new value for {} <{}>:", name, shown(*before));
    const Answer answer = co_await context.input.string(prompt);
    if (answer.isNone()) co_return;
    const std::optional<VariableValue> value = valueLike(*before, answer);
    if (!value) failCommand(fmt::format("Variable {} cannot take \"{}\".", name, answer.text));
    const SystemVariables::Result result = variables.set(name, *value);
    if (result != SystemVariables::Result::Ok) failCommand(describeRefusal(name, *value, result));
}

Task<void> setvarCommand(CommandContext& context) {
    const Answer name = co_await context.input.string("Enter variable name:");
    if (!name.isNone()) co_await askValue(context, name.text);
}

// PLOT file [paper] [scale]: a script may end early, what it leaves out keeps its proposal.
Task<std::string> plotOption(CommandContext& context, const char* prompt, const std::string& proposal) {
    if (!moreIsSaid(context)) co_return proposal;
    const Answer answer = co_await context.input.string(prompt);
    co_return answer.isNone() ? proposal : answer.text;
}

Task<void> plotCommand(CommandContext& context) {
    const Answer file = co_await context.input.string("Enter name of the SVG, PDF or PNG file:");
    if (file.isNone()) throw InputCancelled();
    PlotSettings settings;
    settings.paper = co_await plotOption(context, "Enter paper size <A4>:", settings.paper);
    settings.scale = co_await plotOption(context, "Enter plot scale <fit>:", settings.scale);
    const auto problem = plotDrawing(context.database, settings, file.text);
    if (problem) failCommand(*problem);
    say(context, fmt::format("Plotted to {}.", file.text));
}

constexpr CommandRow rows[] = {
    {"PLOT", "", plotCommand, kCommandWithoutStep},
    {"SETVAR", "SET", setvarCommand, kCommandTransparent},
};

} // namespace

Task<void> setVariableCommand(CommandContext& context) {
    return askValue(context, context.name);
}

std::span<const CommandRow> drawingCommands() {
    return rows;
}

} // namespace veldrin
