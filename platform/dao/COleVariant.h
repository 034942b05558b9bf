#pragma once

#include "runtime/CString.h"
#include "runtime/VeldrinApi.h"

#include <cstdint>
#include <variant>
#include <vector>

// The type tags of a value, with the numbers that lists of columns and scripts know them by.
enum VARENUM : std::uint16_t {
    VT_EMPTY = 0,
    VT_NULL = 1,
    VT_I2 = 2,       // integer
    VT_I4 = 3,       // long
    VT_R4 = 4,       // single
    VT_R8 = 5,       // double
    VT_DATE = 7,     // days since 1899-12-30, the time of day as their fraction
    VT_BSTR = 8,     // text
    VT_BOOL = 11,    // -1 for true, 0 for false
    VT_VARIANT = 12, // an array of values
    VT_UI1 = 17,     // byte
};

// A value with its type, as fields of a table and cells of a grid hold it. Nothing is converted on the way in
// or out: a reader that asks for another kind than there is gets nothing (0, an empty text, no items).
class VELDRIN_API COleVariant {
public:
    COleVariant() = default;
    COleVariant(std::int16_t value, VARENUM type = VT_I2); // VT_I2 or VT_BOOL; any number but 0 is true
    COleVariant(std::int32_t value) : m_type(VT_I4), m_value(std::int64_t{value}) {}
    COleVariant(std::uint8_t value) : m_type(VT_UI1), m_value(std::int64_t{value}) {}
    COleVariant(float value) : m_type(VT_R4), m_value(static_cast<double>(value)) {}
    COleVariant(double value) : m_type(VT_R8), m_value(value) {}
    COleVariant(const char* text) : m_type(VT_BSTR), m_value(CString(text)) {}
    COleVariant(CString text) : m_type(VT_BSTR), m_value(std::move(text)) {}
    COleVariant(std::vector<COleVariant> items) : m_type(VT_VARIANT), m_value(std::move(items)) {}
    COleVariant(bool) = delete; // say which of the two kinds of truth is meant

    // The same in place, for readers of many values.
    void setNull() {
        m_type = VT_NULL;
        if (!std::holds_alternative<std::monostate>(m_value)) m_value = std::monostate();
    }
    void setWhole(std::int64_t value, VARENUM type) {
        m_type = type;
        if (auto* there = std::get_if<std::int64_t>(&m_value))
            *there = value;
        else
            m_value = value;
    }
    void setReal(double value, VARENUM type = VT_R8) {
        m_type = type;
        if (auto* there = std::get_if<double>(&m_value))
            *there = value;
        else
            m_value = value;
    }
    void setText(const char* text, std::size_t length) {
        m_type = VT_BSTR;
        if (auto* there = std::get_if<CString>(&m_value))
            there->assign(text, length);
        else
            m_value.emplace<CString>(text, length);
    }

    static COleVariant null();
    static COleVariant date(double days);

    VARENUM vt() const { return m_type; }
    bool isEmpty() const { return m_type == VT_EMPTY; }
    bool isNull() const { return m_type == VT_NULL; }
    bool isWhole() const { return std::holds_alternative<std::int64_t>(m_value); } // boolean among them
    bool isReal() const { return std::holds_alternative<double>(m_value); }        // date among them

    std::int64_t whole() const { return isWhole() ? std::get<std::int64_t>(m_value) : 0; }
    double real() const { return isReal() ? std::get<double>(m_value) : 0.0; }
    const CString& text() const;
    const std::vector<COleVariant>& items() const;

    bool operator==(const COleVariant& other) const = default;

private:
    VARENUM m_type = VT_EMPTY;
    std::variant<std::monostate, std::int64_t, double, CString, std::vector<COleVariant>> m_value;
};

// A date as text: 2026-11-23 14:05:09, without the time at midnight, without the date on day 0.
VELDRIN_API CString dateText(double days);
