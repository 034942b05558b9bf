#pragma once

#include "drawing/AcDbObjectId.h"

#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

class AcDbDatabase;

namespace veldrin {

struct HeaderVariables;

// What a drawing was before each change, by steps. Every change of the drawing passes here: the first open
// for write of an object in a step files its state, an append, an erase and a change of header variables
// are entries of their own. Objects are held by id, never by pointer.
//
// A block's list of entities and a table's list of records only grow, and an erased one keeps its place. So
// they are in no record of state: taking back an append is erasing.
//
// Changes outside of any begin and end make a step of their own, which the next begin closes.
//
// Taking back swaps: a step is applied in reverse, and each entry becomes what it replaced. So redoing is the
// same once more, and both restore every object bit by bit.
class VELDRIN_API UndoLog {
public:
    enum class Kind { kState, kAppended, kErased, kUnerased, kHeader };

    struct Entry {
        Kind kind;
        AcDbObjectId id;
        std::string record;                      // kState: all that the object's filing writes
        std::shared_ptr<HeaderVariables> header; // kHeader: the values before
    };

    struct Step {
        std::string label; // the command that did it
        std::vector<Entry> entries;
        bool isMark = false; // no change, but a place to go back to
    };

    // What was taken back or done again, in that order. When an object is open or cannot be restored the rest
    // stays as it was, and the status says why.
    struct Report {
        std::vector<Step> steps; // without entries
        Acad::ErrorStatus status = Acad::eOk;
        AcDbObjectId culprit;
    };

    explicit UndoLog(AcDbDatabase& database);
    ~UndoLog();

    // Steps nest: what happens inside an outer one belongs to it. A step without entries leaves no trace.
    void begin(const std::string& label);
    void end();
    bool isOpen() const { return m_depth > 0; }

    // A group makes one step of many until it ends, within an open step a part of that; a second one ends the
    // first.
    void beginGroup(const std::string& label);
    void endGroup();
    bool isGroupOpen() const { return m_isGroupOpen; }
    void mark();
    bool hasMark() const;

    // Takes back the last steps, as many as there are. A mark counts as a step. What the step that is open
    // has changed counts as one too.
    Report undo(std::size_t count);
    Report undoToMark(); // the mark goes with the rest
    // Does again what the last undo has taken back, unless something has changed since.
    Report redo();
    bool canRedo() const { return !m_redo.empty(); }
    void clear();

    std::uint32_t currentStep() const { return m_serial; }

    // For an object that is about to be changed. Files nothing when the step has it already, or while
    // recording is off. The status is that of the object's filing.
    Acad::ErrorStatus fileState(AcDbObjectId id);
    void fileAppended(AcDbObjectId id);
    void fileErased(AcDbObjectId id, bool erased);
    void fileHeader(const HeaderVariables& before);
    // What the object was when it was last opened for write; empty once it was closed.
    std::string stateAtOpening(AcDbObjectId id) const;
    void forgetOpening(AcDbObjectId id);
    // While off nothing is filed, as for a drawing that is being read.
    void setRecording(bool recording) { m_recording = recording; }
    bool isRecording() const { return m_recording; }

    const std::vector<Step>& steps() const { return m_steps; }

private:
    Acad::ErrorStatus swap(Step& step, AcDbObjectId& culprit);
    Acad::ErrorStatus swap(Entry& entry);
    bool isInUse(const Step& step, AcDbObjectId& culprit) const;
    Report undoSteps(std::size_t count);
    Step& openStep();
    void closeStep();
    void fileEntry(Entry entry);

    AcDbDatabase& m_database;
    std::vector<Step> m_steps;
    std::vector<std::vector<Step>> m_redo; // what each undo took back, in that order
    int m_depth = 0;
    bool m_isGroupOpen = false;
    std::uint32_t m_serial = 1; // of the step that is open or comes next
    bool m_recording = true;
    bool m_stepStarted = false;
    std::string m_label;
    // States of objects that are open for write, of which the step has an earlier one.
    std::unordered_map<std::uint32_t, std::string> m_reopened;
};

// Puts an object back into the state that a record of the log holds. It must be open for write.
VELDRIN_API Acad::ErrorStatus restoreState(AcDbObject& object, const std::string& record);
// The same for an object that is in no database, with a record of that one.
VELDRIN_API Acad::ErrorStatus restoreInto(AcDbObject& object, AcDbDatabase* database,
                                          const std::string& record);

} // namespace veldrin
