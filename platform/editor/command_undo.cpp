// UNDO, U, REDO

#include "drawing/UndoLog.h"
#include "editor/command_support.h"
#include "editor/command_tables.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

namespace veldrin {

namespace {

void tell(const CommandContext& context, const UndoLog::Report& report, const char* whenNone) {
    if (report.steps.empty() && report.status == Acad::eOk) say(context, whenNone);
    std::vector<std::string> names;
    bool meetsMark = false;
    for (const UndoLog::Step& step : report.steps) {
        if (step.isMark)
            meetsMark = true;
        else if (!step.label.empty())
            names.push_back(step.label);
    }
    if (!names.empty()) inform(context, fmt::format("{}", fmt::join(names, " ")));
    if (meetsMark) inform(context, "Mark encountered");
    if (report.status != Acad::eOk)
        failCommand(fmt::format("The object {:X} cannot be put back while it is in use.",
                                report.culprit.handle().value()));
}

constexpr const char* kAllUndone = "Everything has been undone";

void takeBack(const CommandContext& context, std::size_t count) {
    UndoLog& log = context.database.undoLog();
    if (!log.isRecording()) failCommand("Undo is switched off.");
    tell(context, log.undo(count), kAllUndone);
}

Task<void> backToMark(CommandContext& context) {
    UndoLog& log = context.database.undoLog();
    if (!log.hasMark()) {
        const Answer sure = co_await context.input.keyword("This will undo everything. OK? <Y>:", "Yes No");
        if (sure.isKeyword("No")) co_return;
    }
    tell(context, log.undoToMark(), kAllUndone);
}

Task<void> control(CommandContext& context) {
    UndoLog& log = context.database.undoLog();
    const Answer answer =
        co_await context.input.keyword("Enter an UNDO control option [All/None] <All>:", "All None");
    const bool isOff = answer.isKeyword("None");
    if (isOff) log.clear();
    log.setRecording(!isOff);
}

Task<void> undoCommand(CommandContext& context) {
    UndoLog& log = context.database.undoLog();
    const Question how{Want::Integer,
                       "Enter the number of operations to undo or [Control/BEgin/End/Mark/Back] <1>:",
                       "Control BEgin End Mark Back", kRefuseZero | kRefuseNegative, nullptr};
    const Answer answer = co_await context.input.ask(how);
    if (answer.isNone())
        takeBack(context, 1);
    else if (answer.kind == Answer::Kind::Integer)
        takeBack(context, static_cast<std::size_t>(answer.integer));
    else if (answer.text == "Control")
        co_await control(context);
    else if (answer.text == "BEgin")
        log.beginGroup("GROUP");
    else if (answer.text == "End")
        log.endGroup();
    else if (answer.text == "Mark")
        log.mark();
    else
        co_await backToMark(context);
}

Task<void> undoOneCommand(CommandContext& context) {
    takeBack(context, 1);
    co_return;
}

Task<void> redoCommand(CommandContext& context) {
    tell(context, context.database.undoLog().redo(), "Nothing to redo");
    co_return;
}

constexpr CommandRow rows[] = {
    {"UNDO", "", undoCommand, kCommandWithoutStep},
    {"U", "", undoOneCommand, kCommandWithoutStep},
    {"REDO", "", redoCommand, kCommandWithoutStep},
};

} // namespace

std::span<const CommandRow> undoCommands() {
    return rows;
}

} // namespace veldrin
