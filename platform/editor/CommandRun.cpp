#include "editor/CommandRun.h"

#include "drawing/AcDbDatabase.h"
#include "editor/CommandLine.h"
#include "editor/DocumentManager.h"
#include "editor/EditorEvents.h"
#include "lisp/Error.h"
#include "runtime/CException.h"
#include "runtime/Host.h"

#include <fmt/format.h>

namespace veldrin {

namespace {

void say(Host& host, const std::string& text) {
    host.commandLine().freshLine();
    host.commandLine().print(text + "\n");
}

} // namespace

CommandRun::CommandRun(Host& host, AcDbDatabase& database, EditorInput& input, const CommandRow& row,
                       std::string name)
    : m_name(std::move(name)), m_context{host, database, input, m_name}, m_row(row) {}

CommandRun::~CommandRun() {
    m_task = Task<void>(); // before what it works under goes
    release();
}

void CommandRun::start() {
    m_activity.emplace(ActivityStack::Kind::Command, m_name);
    if (!(m_row.flags & kCommandWithoutStep)) {
        m_step.emplace(m_name);
        DocumentManager& documents = m_context.host.documents();
        AcApDocument* document = documents.document(&m_context.database);
        if (document &&
            documents.lockDocument(document, AcAp::kWrite, m_name.c_str(), m_name.c_str(), true) == Acad::eOk)
            m_lockedDocument = document;
    }
    m_context.host.editorEvents().tell(&AcEditorReactor::commandWillStart, m_name.c_str());
    m_task = m_row.function(m_context);
    m_task.handle().resume();
}

void CommandRun::release() {
    m_step.reset();
    DocumentManager& documents = m_context.host.documents();
    if (m_lockedDocument && documents.document(&m_context.database) == m_lockedDocument)
        documents.unlockDocument(m_lockedDocument);
    m_lockedDocument = nullptr;
    m_activity.reset();
}

bool CommandRun::finish() {
    auto notification = &AcEditorReactor::commandFailed;
    try {
        m_task.result();
        notification = &AcEditorReactor::commandEnded;
    } catch (const InputCancelled&) {
        notification = &AcEditorReactor::commandCancelled;
        say(m_context.host, "*Cancel*");
    } catch (const CException& failure) {
        if (!failure.GetErrorMessage().empty()) say(m_context.host, failure.GetErrorMessage());
    } catch (const lisp::Error& failure) {
        say(m_context.host, "error: " + failure.message);
    }
    m_task = Task<void>();
    release();
    m_context.host.editorEvents().tell(notification, m_name.c_str());
    return notification == &AcEditorReactor::commandEnded;
}

} // namespace veldrin
