// NEW, OPEN, CLOSE, QSAVE, SAVE, SAVEAS

#include "drawing/AcDbDatabase.h"
#include "editor/DocumentManager.h"
#include "editor/command_support.h"
#include "editor/command_tables.h"
#include "runtime/Host.h"
#include "system/AsciiCase.h"

#include <algorithm>
#include <filesystem>
#include <fmt/format.h>

namespace veldrin {

namespace {

namespace fs = std::filesystem;

Document& document(CommandContext& context) {
    Document* const current = context.host.documents().current();
    if (!current) failCommand("No drawing is open.");
    return *current;
}

Task<void> newCommand(CommandContext& context) {
    // A script may leave the template out.
    if (moreIsSaid(context)) {
        const Answer model =
            co_await context.input.string("Enter template file name or [. (for none)] <none>:");
        if (!model.isNone() && model.text != ".")
            failCommand(fmt::format("Drawing template \"{}\" cannot be read.", model.text));
    }
    if (!context.host.documents().newDocument()) failAsTold();
}

Task<void> openCommand(CommandContext& context) {
    const Answer file = co_await context.input.string("Enter name of drawing to open:");
    if (file.isNone()) throw InputCancelled();
    if (!context.host.documents().openDocument(file.text)) failAsTold();
}

Task<void> closeCommand(CommandContext& context) {
    Document& closing = document(context);
    if (closing.database()->isModified()) {
        const Answer sure = co_await context.input.keyword(
            "Really want to discard all changes to drawing? [Yes/No] <N>:", "Yes No");
        if (!sure.isKeyword("Yes")) co_return;
    }
    if (!context.host.documents().closeDocument(&closing)) failAsTold();
}

// A format may stand before the name. There is one kind of drawing file, whatever is asked for.
bool isFormat(std::string_view word) {
    const std::string text = asciiUpperCase(word);
    static constexpr std::string_view formats[] = {"",     "NATIVE", "VQD",  "R14",  "R2000", "2000",
                                                   "2004", "2007",   "2010", "2013", "R2018", "2018"};
    return std::find(std::begin(formats), std::end(formats), text) != std::end(formats);
}

bool isYesOrNo(const InputToken& token) {
    return token.kind == InputToken::Kind::Text && !token.text.empty() &&
           !matchKeyword(token.text, "Yes No").empty();
}

// Asks a person, and a script that has an answer: what was there is kept beside it in any case. The answer of
// a script that could not know that there is no such file is passed over.
Task<bool> mayReplace(CommandContext& context, const std::string& path) {
    const EditorInput::Session& session = context.input.session();
    const bool isAnswered = !session.tokens.empty() && isYesOrNo(session.tokens.front());
    std::error_code none;
    const bool isThere = fs::exists(path, none) && context.host.documents().find(path) != &document(context);
    if (!isAnswered && !(isThere && session.asksUser)) co_return true;
    const Answer answer = co_await context.input.keyword(
        fmt::format("{} already exists. Do you want to replace it? [Yes/No] <N>:", path), "Yes No");
    co_return !isThere || answer.isKeyword("Yes");
}

Task<void> saveUnder(CommandContext& context, const std::string& name) {
    const std::string path = drawingPath(name);
    if (!co_await mayReplace(context, path)) throw InputCancelled();
    if (!context.host.documents().saveAs(&document(context), path)) failAsTold();
}

void saveInPlace(CommandContext& context) {
    if (!context.host.documents().save(&document(context))) failAsTold();
}

Task<void> askName(CommandContext& context, bool mayBeFormat) {
    const Document& saved = document(context);
    const std::string prompt = fmt::format("Save drawing as <{}>:", saved.path());
    Answer name = co_await context.input.string(prompt);
    if (mayBeFormat && moreIsSaid(context) && isFormat(name.text))
        name = co_await context.input.string(prompt);
    if (!name.isNone() && !name.text.empty())
        co_await saveUnder(context, name.text);
    else if (saved.isTitled())
        saveInPlace(context);
    else
        co_await saveUnder(context, saved.path());
}

Task<void> saveCommand(CommandContext& context) {
    if (document(context).isTitled() && !moreIsSaid(context))
        saveInPlace(context);
    else
        co_await askName(context, false);
}

Task<void> quickSaveCommand(CommandContext& context) {
    if (document(context).isTitled() && !document(context).isReadOnly())
        saveInPlace(context);
    else
        co_await askName(context, false);
}

Task<void> saveAsCommand(CommandContext& context) {
    co_await askName(context, true);
}

constexpr CommandRow rows[] = {
    {"NEW", "", newCommand, kCommandWithoutStep},         {"OPEN", "", openCommand, kCommandWithoutStep},
    {"CLOSE", "", closeCommand, kCommandWithoutStep},     {"SAVE", "", saveCommand, kCommandWithoutStep},
    {"QSAVE", "", quickSaveCommand, kCommandWithoutStep}, {"SAVEAS", "", saveAsCommand, kCommandWithoutStep},
};

} // namespace

std::span<const CommandRow> fileCommands() {
    return rows;
}

} // namespace veldrin
