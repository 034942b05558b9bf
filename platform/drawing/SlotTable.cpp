#include "drawing/SlotTable.h"

#include <algorithm>

namespace veldrin {

SlotTable::SlotTable() : m_slots(1) {}

SlotTable::~SlotTable() {
    for (const Slot& slot : m_slots) delete slot.object;
}

std::uint32_t SlotTable::add(AcDbObject* object, std::uint64_t handle) {
    if (handle == 0) handle = m_nextHandle;
    if (handle < m_slots.back().handle) m_handlesAscend = false;
    m_nextHandle = std::max(m_nextHandle, handle + 1);
    const std::uint32_t number = size();
    Slot& slot = m_slots.emplace_back();
    slot.object = object;
    slot.handle = handle;
    return number;
}

std::uint32_t SlotTable::findHandle(std::uint64_t handle) const {
    if (handle == 0) return 0;
    // In a drawing that lost nothing yet, handles count as slots do.
    if (handle < m_slots.size() && m_slots[handle].handle == handle)
        return static_cast<std::uint32_t>(handle);
    if (m_handlesAscend) {
        const auto found =
            std::lower_bound(m_slots.begin(), m_slots.end(), handle,
                             [](const Slot& slot, std::uint64_t h) { return slot.handle < h; });
        if (found == m_slots.end() || found->handle != handle) return 0;
        return static_cast<std::uint32_t>(found - m_slots.begin());
    }
    const auto handleOf = [this](std::uint32_t number) { return m_slots[number].handle; };
    if (m_byHandle.size() != m_slots.size()) {
        const auto known = static_cast<std::uint32_t>(m_byHandle.size());
        for (std::uint32_t number = known; number < size(); ++number) m_byHandle.push_back(number);
        std::ranges::sort(m_byHandle, {}, handleOf);
    }
    const auto found = std::ranges::lower_bound(m_byHandle, handle, {}, handleOf);
    return found != m_byHandle.end() && handleOf(*found) == handle ? *found : 0;
}

void SlotTable::reserveHandlesBelow(std::uint64_t handle) {
    m_nextHandle = std::max(m_nextHandle, handle);
}

} // namespace veldrin
