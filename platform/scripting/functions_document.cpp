// vd-args vd-capture vd-documents vd-new vd-open vd-activate vd-save vd-save-as vd-close

#include "editor/CommandLine.h"
#include "editor/CommandRegistry.h"
#include "editor/DocumentManager.h"
#include "runtime/Host.h"
#include "scripting/drawing_values.h"
#include "scripting/tables.h"

namespace veldrin::scripting {

namespace {

using lisp::Args;
using lisp::Engine;
using lisp::Value;

DocumentManager& documents() {
    return Host::current().documents();
}

Value arguments(Engine&, Args) {
    lisp::ListBuilder list;
    for (const std::string& argument : Host::current().commandLine().arguments())
        list.add(Value::text(argument));
    return list.finish();
}

Value capture(Engine& engine, Args args) {
    const CommandLine::Capture captured(Host::current().commandLine());
    engine.apply(args[0], Args(nullptr, 0));
    return Value::text(captured.text());
}

Value listDocuments(Engine&, Args) {
    lisp::ListBuilder list;
    const Document* current = documents().current();
    if (current) list.add(Value::text(current->path()));
    for (const auto& document : documents().documents())
        if (document.get() != current) list.add(Value::text(document->path()));
    return list.finish();
}

// A drawing that is not open is told of on the command line.
Document* openDocumentNamed(Args args) {
    Document* document = documents().find(args.string(0));
    if (!document) {
        CommandLine& line = Host::current().commandLine();
        line.freshLine();
        line.print("No open drawing is called \"" + args.string(0) + "\".\n");
    }
    return document;
}

Value makeNew(Engine&, Args) {
    return Value::boolean(documents().newDocument() != nullptr);
}

Value open(Engine&, Args args) {
    return Value::boolean(documents().openDocument(args.string(0)) != nullptr);
}

Value activate(Engine&, Args args) {
    if (!documents().mayChangeDocuments()) return {};
    Document* document = openDocumentNamed(args);
    return Value::boolean(document && documents().activateDocument(document) == Acad::eOk);
}

Value save(Engine&, Args) {
    currentDatabase();
    return Value::boolean(documents().save(documents().current()));
}

Value saveAs(Engine&, Args args) {
    const std::string path = args.string(0);
    currentDatabase();
    if (!documents().mayChangeDocuments()) return {};
    return Value::boolean(documents().saveAs(documents().current(), path));
}

// A command that waits for answers holds the drawing: it is cancelled first.
Value close(Engine&, Args args) {
    Document* document = openDocumentNamed(args);
    if (!document || !documents().mayChangeDocuments()) return {};
    Host::current().commands().cancelAll();
    return Value::boolean(documents().closeDocument(document));
}

constexpr lisp::BuiltinRow rows[] = {
    {"vd-args", 0, 0, arguments}, {"vd-capture", 1, 1, capture}, {"vd-documents", 0, 0, listDocuments},
    {"vd-new", 0, 0, makeNew},    {"vd-open", 1, 1, open},       {"vd-activate", 1, 1, activate},
    {"vd-save", 0, 0, save},      {"vd-save-as", 1, 1, saveAs},  {"vd-close", 1, 1, close},
};

} // namespace

std::span<const lisp::BuiltinRow> documentFunctions() {
    return rows;
}

} // namespace veldrin::scripting
