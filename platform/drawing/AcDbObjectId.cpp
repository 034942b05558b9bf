#include "drawing/AcDbObjectId.h"

#include "drawing/AcDbDatabase.h"
#include "drawing/AcDbObjectAccess.h"
#include "drawing/DatabaseRegistry.h"
#include "drawing/SlotTable.h"
#include "runtime/Host.h"

#include <fmt/format.h>

#include <charconv>

const AcDbObjectId AcDbObjectId::kNull;

std::string AcDbHandle::text() const {
    return fmt::format("{:X}", m_value);
}

AcDbHandle AcDbHandle::fromText(const std::string& text) {
    std::uint64_t value = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value, 16);
    return error == std::errc() && stop == end ? AcDbHandle(value) : AcDbHandle();
}

AcDbDatabase* AcDbObjectId::database() const {
    if (isNull() || !veldrin::Host::exists()) return nullptr;
    return veldrin::Host::current().databases().find(generation());
}

bool AcDbObjectId::isValid() const {
    return AcDbObjectAccess::slot(*this) != nullptr;
}

bool AcDbObjectId::isErased() const {
    const veldrin::Slot* const slot = AcDbObjectAccess::slot(*this);
    return !slot || slot->erased;
}

AcDbHandle AcDbObjectId::handle() const {
    const veldrin::Slot* const slot = AcDbObjectAccess::slot(*this);
    return slot ? AcDbHandle(slot->handle) : AcDbHandle();
}

AcRxClass* AcDbObjectId::objectClass() const {
    const veldrin::Slot* const slot = AcDbObjectAccess::slot(*this);
    return slot ? slot->object->isA() : nullptr;
}

namespace {

// The second word of a name is made from the first, so that numbers which never were a name are told apart.
std::int64_t checkWord(std::uint64_t word) {
    word += 0x9E3779B97F4A7C15U;
    word = (word ^ (word >> 30)) * 0xBF58476D1CE4E5B9U;
    word = (word ^ (word >> 27)) * 0x94D049BB133111EBU;
    return static_cast<std::int64_t>(word ^ (word >> 31));
}

} // namespace

Acad::ErrorStatus acdbGetObjectId(AcDbObjectId& id, const ads_name name) {
    id.setNull();
    const auto word = static_cast<std::uint64_t>(name[0]);
    const AcDbObjectId named = AcDbObjectId::fromWord(word);
    if (name[1] != checkWord(word) || !named.isValid()) return Acad::eInvalidInput;
    id = named;
    return Acad::eOk;
}

Acad::ErrorStatus acdbGetAdsName(ads_name& name, AcDbObjectId id) {
    name[0] = name[1] = 0;
    if (!id.isValid()) return Acad::eInvalidInput;
    name[0] = static_cast<std::int64_t>(id.word());
    name[1] = checkWord(id.word());
    return Acad::eOk;
}
