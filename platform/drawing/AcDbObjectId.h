#pragma once

#include "drawing/AcDb.h"
#include "runtime/VeldrinApi.h"
#include "runtime/resbuf.h"

#include <compare>
#include <cstdint>
#include <functional>
#include <string>

// A number that an object keeps for life, in its file too. Shown in upper-case hexadecimal.
class AcDbHandle {
public:
    AcDbHandle() = default;
    explicit AcDbHandle(std::uint64_t value) : m_value(value) {}

    std::uint64_t value() const { return m_value; }
    bool isNull() const { return m_value == 0; }
    VELDRIN_API std::string text() const;
    // Null for a text that is no hexadecimal number.
    VELDRIN_API static AcDbHandle fromText(const std::string& text);
    auto operator<=>(const AcDbHandle&) const = default;

private:
    std::uint64_t m_value = 0;
};

// Names an object's slot in a database, and stays meaningful when the object is erased. The word holds the
// database's generation and the slot's number, so that an id of a database that is gone is recognised and
// never meets another object.
class VELDRIN_API AcDbObjectId {
public:
    AcDbObjectId() = default;
    AcDbObjectId(std::uint32_t generation, std::uint32_t slot)
        : m_word((static_cast<std::uint64_t>(generation) << 32) | slot) {}
    static AcDbObjectId fromWord(std::uint64_t word) {
        AcDbObjectId id;
        id.m_word = word;
        return id;
    }

    static const AcDbObjectId kNull;

    bool isNull() const { return m_word == 0; }
    void setNull() { m_word = 0; }
    // True for an id of a slot in a living database, erased or not.
    bool isValid() const;
    bool isErased() const;          // true for a null id, and for one whose database is gone
    AcDbDatabase* database() const; // null for a null id, and when the database is gone
    AcDbHandle handle() const;
    AcRxClass* objectClass() const; // null when there is no object

    std::uint64_t word() const { return m_word; }
    std::uint32_t generation() const { return static_cast<std::uint32_t>(m_word >> 32); }
    std::uint32_t slot() const { return static_cast<std::uint32_t>(m_word); }
    auto operator<=>(const AcDbObjectId&) const = default;

private:
    std::uint64_t m_word = 0;
};

template<>
struct std::hash<AcDbObjectId> {
    std::size_t operator()(const AcDbObjectId& id) const noexcept {
        return std::hash<std::uint64_t>{}(id.word());
    }
};

// Between ids and the names that Lisp holds. Both fail with eInvalidInput for what is null or no longer
// there.
VELDRIN_API Acad::ErrorStatus acdbGetObjectId(AcDbObjectId& id, const ads_name name);
VELDRIN_API Acad::ErrorStatus acdbGetAdsName(ads_name& name, AcDbObjectId id);
