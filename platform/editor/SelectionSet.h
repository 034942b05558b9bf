#pragma once

#include "drawing/AcDbObjectId.h"
#include "lisp/Value.h"
#include "runtime/VeldrinApi.h"

#include <memory>
#include <string>
#include <unordered_set>
#include <vector>

namespace veldrin {

// Entities in the order in which they were selected, each once. Lisp holds it as a value of its own kind.
class VELDRIN_API SelectionSet : public lisp::Payload {
public:
    SelectionSet(int number, const std::vector<AcDbObjectId>& ids);
    ~SelectionSet() override;

    const std::vector<AcDbObjectId>& ids() const { return m_ids; }
    bool contains(AcDbObjectId id) const { return m_members.contains(id); }
    bool add(AcDbObjectId id); // false when it was in already
    bool remove(AcDbObjectId id);

    std::string describe() const override; // "<Selection set: 5>"

private:
    int m_number;
    std::vector<AcDbObjectId> m_ids;
    std::unordered_set<AcDbObjectId> m_members;
};

// Numbers the selection sets of a host, and remembers the last one that was selected.
class VELDRIN_API SelectionSets {
public:
    std::shared_ptr<SelectionSet> make(const std::vector<AcDbObjectId>& ids = {});

    // What the last select-objects prompt of a command, or the last ssget by picking, gave.
    const std::vector<AcDbObjectId>& previous() const { return m_previous; }
    void setPrevious(std::vector<AcDbObjectId> ids) { m_previous = std::move(ids); }

    // What is selected before a command is named.
    const std::vector<AcDbObjectId>& implied() const { return m_implied; }
    void setImplied(std::vector<AcDbObjectId> ids) { m_implied = std::move(ids); }

private:
    std::vector<AcDbObjectId> m_implied;
    std::vector<AcDbObjectId> m_previous;
    int m_lastNumber = 0;
};

} // namespace veldrin
