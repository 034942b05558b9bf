// A Lisp value: eight bytes, passed by value.
//
// Reals are stored as they are. Everything else hides in the range of quiet NaNs that no arithmetic
// produces: a 16-bit tag above, a 32-bit integer or a 48-bit pointer below. Conses, texts and objects
// live on the heap and are counted; symbols belong to their engine and are not. Lists cannot be changed
// once built, so the language cannot make cycles and counting frees everything.
//
// Counting is not atomic: all values of a process belong to one thread.
#pragma once

#include "runtime/VeldrinApi.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

namespace veldrin::lisp {

class Symbol;
class Error;

using Bits = std::uint64_t;

enum class Kind : std::uint8_t {
    Nil,
    Integer,
    Real,
    Text,
    Symbol,
    Cons,
    Builtin,  // function or special form written in C++
    Function, // made by defun or lambda
    External, // function of a loaded module
    Ename,    // entity name: two words that the drawing understands
    PickSet,  // selection set
    File,
    Object,     // anything else that C++ hands to Lisp
    CatchError, // what vl-catch-all-apply answers for a failure
};

namespace bits {

inline constexpr int tagShift = 48;
inline constexpr Bits payloadMask = (Bits{1} << tagShift) - 1;
inline constexpr Bits tagInteger = 0xFFF9, tagNil = 0xFFFA, tagSymbol = 0xFFFB;
inline constexpr Bits tagCons = 0xFFFC, tagText = 0xFFFD, tagObject = 0xFFFE; // counted
inline constexpr Bits nil = tagNil << tagShift;
inline constexpr Bits firstTagged = tagInteger << tagShift;
inline constexpr Bits firstCounted = tagCons << tagShift;
inline constexpr Bits notANumber = 0x7FF8000000000000;

constexpr Bits tagOf(Bits b) {
    return b >> tagShift;
}
constexpr bool isInteger(Bits b) {
    return tagOf(b) == tagInteger;
}
constexpr bool isReal(Bits b) {
    return b < firstTagged;
}
constexpr bool isCons(Bits b) {
    return tagOf(b) == tagCons;
}
constexpr bool isObject(Bits b) {
    return tagOf(b) == tagObject;
}
constexpr bool isCounted(Bits b) {
    return b >= firstCounted;
}

constexpr Bits ofInteger(std::int32_t i) {
    return (tagInteger << tagShift) | static_cast<std::uint32_t>(i);
}
constexpr std::int32_t toInteger(Bits b) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(b));
}

inline Bits ofReal(double d) {
    if (d != d) return notANumber;
    Bits b;
    std::memcpy(&b, &d, sizeof b);
    return b;
}
inline double toReal(Bits b) {
    double d;
    std::memcpy(&d, &b, sizeof d);
    return d;
}
inline Bits ofPointer(Bits tag, const void* p) {
    return (tag << tagShift) | reinterpret_cast<std::uintptr_t>(p);
}
template<class T>
T* toPointer(Bits b) {
    return reinterpret_cast<T*>(b & payloadMask);
}

} // namespace bits

// The head of everything on the heap. `info` is the kind of an object, and of a cons the source line
// that its list began on (0 when it was not read from text).
struct Cell {
    std::uint32_t refs;
    std::uint32_t info;
};

struct Cons;

struct TextCell : Cell { // info: 0 not looked yet, 1 ASCII only, 2 other characters too
    std::uint32_t size;
    std::uint32_t capacity;
    char* chars() { return reinterpret_cast<char*>(this + 1); }
    const char* chars() const { return reinterpret_cast<const char*>(this + 1); }
};

// What C++ hands to Lisp inside a PickSet, File or Object value. Lisp passes it around, prints it and
// compares it; the last reference deletes it.
class VELDRIN_API Payload {
public:
    virtual ~Payload();
    // As `prin1` shows it: "<Selection set: 5>".
    virtual std::string describe() const = 0;
    // The symbol that `type` answers; empty for the kind's own (PICKSET, FILE, VLA-OBJECT).
    virtual std::string typeName() const { return {}; }
    // Whether `eq` holds between two values that are not the same object.
    virtual bool isSame(const Payload&) const { return false; }
};

namespace bits {
VELDRIN_API void destroy(Bits b) noexcept;

inline void retain(Bits b) {
    if (isCounted(b)) ++toPointer<Cell>(b)->refs;
}
inline void release(Bits b) noexcept {
    if (isCounted(b) && --toPointer<Cell>(b)->refs == 0) destroy(b);
}
} // namespace bits

struct Ename {
    std::int64_t words[2];
    bool operator==(const Ename&) const = default;
};

class VELDRIN_API Value {
public:
    // nil
    constexpr Value() noexcept = default;
    constexpr Value(std::nullptr_t) noexcept {}
    Value(const Value& other) noexcept : bits_(other.bits_) { bits::retain(bits_); }
    Value(Value&& other) noexcept : bits_(std::exchange(other.bits_, bits::nil)) {}
    Value& operator=(const Value& other) noexcept {
        bits::retain(other.bits_);
        bits::release(std::exchange(bits_, other.bits_));
        return *this;
    }
    Value& operator=(Value&& other) noexcept {
        if (this != &other) bits::release(std::exchange(bits_, std::exchange(other.bits_, bits::nil)));
        return *this;
    }
    ~Value() { bits::release(bits_); }

    // Making values
    static Value integer(std::int32_t i) { return adopt(bits::ofInteger(i)); }
    static Value real(double d) { return adopt(bits::ofReal(d)); }
    static Value text(std::string_view s);
    static Value symbol(const Symbol* s) { return adopt(bits::ofPointer(bits::tagSymbol, s)); }
    static Value t();
    static Value boolean(bool b) { return b ? t() : Value(); }
    static Value cons(Value car, Value cdr);
    static Value ename(Ename name);
    static Value pickSet(std::shared_ptr<Payload> payload);
    static Value file(std::shared_ptr<Payload> payload);
    static Value object(std::shared_ptr<Payload> payload);
    static Value catchError(const Error& error);

    // What it is. A symbol includes T, a list includes nil, a number is an integer or a real.
    Kind kind() const;
    bool isNil() const { return bits_ == bits::nil; }
    explicit operator bool() const { return bits_ != bits::nil; }
    bool isInteger() const { return bits::isInteger(bits_); }
    bool isReal() const { return bits::isReal(bits_); }
    bool isNumber() const { return bits_ < (bits::tagNil << bits::tagShift); }
    bool isText() const { return bits::tagOf(bits_) == bits::tagText; }
    bool isSymbol() const { return bits::tagOf(bits_) == bits::tagSymbol; }
    bool isCons() const { return bits::isCons(bits_); }
    bool isList() const { return isCons() || isNil(); }
    bool is(Kind k) const { return bits::isObject(bits_) ? objectKind() == k : kind() == k; }

    // Looking inside; each asks that the value is of that kind.
    std::int32_t asInteger() const { return bits::toInteger(bits_); }
    double asReal() const { return bits::toReal(bits_); }
    double asNumber() const { return isInteger() ? asInteger() : asReal(); }
    std::string_view asText() const {
        const auto* cell = bits::toPointer<TextCell>(bits_);
        return {cell->chars(), cell->size};
    }
    bool isAscii() const; // of a text
    Symbol* asSymbol() const { return bits::toPointer<Symbol>(bits_); }
    Ename asEname() const;
    const std::shared_ptr<Payload>& payload() const; // PickSet, File, Object
    const Error& asError() const;                    // CatchError

    // Of a cons; nil for anything else, so that walking a list needs no checks.
    const Value& car() const;
    const Value& cdr() const;

    // `eq`: the same object, or equal as integers, reals or entity names.
    bool isSame(const Value& other) const { return bits_ == other.bits_ || isSameObject(other); }

    // For the evaluator: the bits with and without their reference.
    Bits raw() const { return bits_; }
    Bits detach() { return std::exchange(bits_, bits::nil); }
    static Value adopt(Bits owned) {
        Value v;
        v.bits_ = owned;
        return v;
    }
    static Value share(Bits borrowed) {
        bits::retain(borrowed);
        return adopt(borrowed);
    }
    template<class T>
    T* cell() const {
        return bits::toPointer<T>(bits_);
    }

private:
    Kind objectKind() const { return static_cast<Kind>(cell<Cell>()->info); }
    bool isSameObject(const Value& other) const;

    Bits bits_ = bits::nil;
};

struct Cons : Cell {
    Value car;
    Value cdr;
};

namespace bits {
inline const Value nilValue;
}
inline const Value& Value::car() const {
    return isCons() ? cell<Cons>()->car : bits::nilValue;
}
inline const Value& Value::cdr() const {
    return isCons() ? cell<Cons>()->cdr : bits::nilValue;
}

// A name, interned by its engine in upper case, with the one value it has at the moment.
class VELDRIN_API Symbol {
public:
    explicit Symbol(std::string upperName) : name(std::move(upperName)) {}
    Symbol(const Symbol&) = delete;
    Symbol& operator=(const Symbol&) = delete;
    ~Symbol() { bits::release(value); }

    const std::string name;
    Bits value = bits::nil;          // owned
    Bits protectedValue = bits::nil; // T and PI: assigning is refused while the slot holds this

    Value get() const { return Value::share(value); }
    void set(Value v) { bits::release(std::exchange(value, v.detach())); }
    bool isProtected() const { return protectedValue != bits::nil && value == protectedValue; }

    // The symbol T, the same for all engines.
    static Symbol& t();
};

// Deep equality; reals may differ by `fuzz`. An integer equals a real of the same size.
VELDRIN_API bool isEqual(const Value& a, const Value& b, double fuzz = 0.0);

// Number of items of a proper list; -1 when `list` is not one.
VELDRIN_API std::int64_t listLength(const Value& list);

// Steps through the items of a list, up to an improper tail. The list must stay alive meanwhile.
class ListView {
public:
    class Iterator {
    public:
        explicit Iterator(const Value* at) : at_(at) {}
        const Value& operator*() const { return at_->cell<Cons>()->car; }
        Iterator& operator++() {
            at_ = &at_->cell<Cons>()->cdr;
            return *this;
        }
        bool operator!=(std::nullptr_t) const { return at_->isCons(); }

    private:
        const Value* at_;
    };
    explicit ListView(const Value& list) : list_(&list) {}
    Iterator begin() const { return Iterator(list_); }
    std::nullptr_t end() const { return nullptr; }

private:
    const Value* list_;
};

// Builds a list from front to back.
class VELDRIN_API ListBuilder {
public:
    void add(Value item);
    bool isEmpty() const { return head_.isNil(); }
    // The list so far, ended by `tail`; the builder is empty afterwards.
    Value finish(Value tail = {});

private:
    Value head_;
    Cons* last_ = nullptr;
};

template<class... Items>
Value list(Items... items) {
    ListBuilder builder;
    (builder.add(Value(std::move(items))), ...);
    return builder.finish();
}

// ("key" . value), the shape in which functions answer named results.
inline Value pair(std::string_view key, Value value) {
    return Value::cons(Value::text(key), std::move(value));
}
inline Value pair(std::int32_t key, Value value) {
    return Value::cons(Value::integer(key), std::move(value));
}

} // namespace veldrin::lisp
