#pragma once

#include "drawing/AcDbObject.h"

#include <cstdint>
#include <vector>

namespace veldrin {

// Where a database keeps its objects. A slot outlives erasing, and a change of its object into a proxy.
struct Slot {
    AcDbObject* object = nullptr; // owned
    std::uint64_t handle = 0;
    std::uint32_t undoStep = 0; // step of the undo log in which the state was filed last
    std::uint16_t readers = 0;
    std::uint8_t notified = 0; // openings for notification, which mind nobody
    bool writer = false;
    bool erased = false;
    bool erasedBefore = false; // when it was opened for write
    bool changed = false;      // opened for write since the last save
    bool appended = false;     // came into being in undoStep
    bool fresh = false;        // not closed yet since it was added

    bool isOpen() const { return readers > 0 || writer; }
};

class VELDRIN_API SlotTable {
public:
    SlotTable();
    ~SlotTable();

    std::uint32_t size() const { return static_cast<std::uint32_t>(m_slots.size()); }
    Slot& operator[](std::uint32_t number) { return m_slots[number]; }
    const Slot& operator[](std::uint32_t number) const { return m_slots[number]; }
    bool holds(std::uint32_t number) const { return number < m_slots.size() && m_slots[number].object; }

    // Takes the object over and gives its slot; slot 0 is never used. A handle of 0 asks for the next one.
    std::uint32_t add(AcDbObject* object, std::uint64_t handle = 0);
    // 0 when no slot has the handle.
    std::uint32_t findHandle(std::uint64_t handle) const;
    std::uint64_t nextHandle() const { return m_nextHandle; }
    void reserveHandlesBelow(std::uint64_t handle);

private:
    std::vector<Slot> m_slots;
    mutable std::vector<std::uint32_t> m_byHandle; // slots ordered by handle, made when needed
    mutable bool m_handlesAscend = true;           // slots are in the order of their handles
    std::uint64_t m_nextHandle = 1;
};

} // namespace veldrin
