// The arguments of a built-in, and the checks that word all complaints alike.
//
// A reader that does not find what it asks for throws "bad argument type: PREDICATE VALUE". The number of
// arguments was checked against the built-in's row before it was called; asking behind the end gives nil.
#pragma once

#include "lisp/Error.h"
#include "lisp/Value.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace veldrin::lisp {

// Two or three numbers of a list.
struct Point {
    double x = 0, y = 0, z = 0;
    int dimensions = 3; // 2: z was not given and is 0
    Value toList() const;
};

class VELDRIN_API Args {
public:
    Args(const Value* first, std::size_t count) : first_(first), count_(count) {}

    std::size_t size() const { return count_; }
    const Value& operator[](std::size_t i) const { return i < count_ ? first_[i] : bits::nilValue; }
    const Value* begin() const { return first_; }
    const Value* end() const { return first_ + count_; }
    Args from(std::size_t i) const { return i < count_ ? Args(first_ + i, count_ - i) : Args(first_, 0); }

    // Given, and not nil.
    bool has(std::size_t i) const { return !(*this)[i].isNil(); }

    std::int32_t integer(std::size_t i) const {
        if (!(*this)[i].isInteger()) wrong(i, "fixnump:");
        return first_[i].asInteger();
    }
    // An integer, or a real cut towards zero.
    std::int32_t wholeNumber(std::size_t i) const;
    double number(std::size_t i) const {
        if (!(*this)[i].isNumber()) wrong(i, "numberp:");
        return first_[i].asNumber();
    }
    std::string_view text(std::size_t i) const {
        if (!(*this)[i].isText()) wrong(i, "stringp");
        return first_[i].asText();
    }
    std::string string(std::size_t i) const { return std::string(text(i)); }
    Symbol& symbol(std::size_t i) const {
        if (!(*this)[i].isSymbol()) wrong(i, "symbolp");
        return *first_[i].asSymbol();
    }
    // A list, nil included; its end is not looked at.
    const Value& list(std::size_t i) const {
        if (!(*this)[i].isList()) wrong(i, "listp");
        return (*this)[i];
    }
    Point point(std::size_t i) const;
    Ename ename(std::size_t i) const;
    // The payload of a PickSet, File or Object when it is a T.
    template<class T>
    T& payload(std::size_t i, Kind kind, std::string_view expected) const {
        if ((*this)[i].is(kind))
            if (auto* p = dynamic_cast<T*>(first_[i].payload().get())) return *p;
        wrong(i, expected);
    }

    [[noreturn]] void wrong(std::size_t i, std::string_view expected) const;

private:
    const Value* first_;
    std::size_t count_;
};

// The same checks for values that do not stand in an argument's place.
VELDRIN_API double numberOf(const Value& value);
VELDRIN_API std::int32_t integerOf(const Value& value);
VELDRIN_API std::string_view textOf(const Value& value);
VELDRIN_API bool readPoint(const Value& value, Point& point); // false when it is none
VELDRIN_API Point pointOf(const Value& value);

} // namespace veldrin::lisp
