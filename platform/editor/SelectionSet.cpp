#include "editor/SelectionSet.h"

#include <algorithm>
#include <fmt/format.h>

namespace veldrin {

SelectionSet::SelectionSet(int number, const std::vector<AcDbObjectId>& ids) : m_number(number) {
    for (const AcDbObjectId id : ids) add(id);
}

SelectionSet::~SelectionSet() = default;

bool SelectionSet::add(AcDbObjectId id) {
    if (!m_members.insert(id).second) return false;
    m_ids.push_back(id);
    return true;
}

bool SelectionSet::remove(AcDbObjectId id) {
    if (m_members.erase(id) == 0) return false;
    m_ids.erase(std::find(m_ids.begin(), m_ids.end(), id));
    return true;
}

std::string SelectionSet::describe() const {
    return fmt::format("<Selection set: {:x}>", m_number);
}

std::shared_ptr<SelectionSet> SelectionSets::make(const std::vector<AcDbObjectId>& ids) {
    return std::make_shared<SelectionSet>(++m_lastNumber, ids);
}

} // namespace veldrin
