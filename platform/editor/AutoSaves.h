#pragma once

#include "runtime/VeldrinApi.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <string>

#include <sys/types.h>

class AcDbDatabase;

namespace veldrin {

class Document;
class DocumentManager;

// A document's copy for the case of a crash, and the process that is writing it.
struct AutoSaveState {
    std::chrono::steady_clock::time_point lastTime{}; // when it was opened, saved or copied last
    std::uint64_t lastChange = 0;                     // the drawing's count of changes then
    std::string path;                                 // the copy, being written or there; empty without one
    bool isRecovered = false;                         // an earlier session left it
    pid_t writer = 0;                                 // 0: none
    int messages = -1;                                // where the writer tells what failed
};

// Copies of changed drawings, every SAVETIME minutes, for the case of a crash. A copy is written by a process
// that is split off for it: it has the drawing as it was at that moment, and nobody waits. Reactors hear of
// it as of a save under the path that the variable SAVEFILE has.
class VELDRIN_API AutoSaves {
public:
    using Clock = std::chrono::steady_clock;
    using WriteCopy = std::function<bool(AcDbDatabase&, const std::string& path, std::string& error)>;

    explicit AutoSaves(DocumentManager& documents);
    ~AutoSaves();
    AutoSaves(const AutoSaves&) = delete;
    AutoSaves& operator=(const AutoSaves&) = delete;

    void setWriter(WriteCopy write) { m_write = std::move(write); }
    void setClock(std::function<Clock::time_point()> now) { m_now = std::move(now); }

    // Starts what is due and finishes what is written, if the host is at rest. Costs next to nothing and is
    // called at the end of everything that commands and Lisp do; whoever waits for the user in a loop calls
    // it there too.
    void look();
    // Writes a copy now and waits for it. False: what failed was printed.
    bool saveNow(Document& document);

    // The interval begins anew: the drawing was opened or saved.
    void restart(Document& document);
    // The copy goes, also one that is being written: the drawing is safe.
    void drop(Document& document);
    // The same at the end of the document. A copy that an earlier session left, and that nobody has saved
    // yet, stays.
    void close(Document& document);
    // The document goes on with a copy that an earlier session left.
    void adopt(Document& document, const std::string& copy);

    // Where the copy of a drawing lies that is in nobody else's hands.
    static std::string copyBeside(const std::string& drawing);

private:
    bool isDue(const Document& document, Clock::time_point now) const;
    bool start(Document& document);
    bool finish(Document& document, bool wait);
    static void stopWriter(AutoSaveState& state);
    bool conclude(Document& document, const std::string& problem);

    DocumentManager& m_documents;
    WriteCopy m_write;
    std::function<Clock::time_point()> m_now = Clock::now;
    Clock::time_point m_lastLook{};
    bool m_isLooking = false;
};

} // namespace veldrin
