// The arithmetic and the comparisons of the language, once for built-ins and for compiled code. Integers wrap
// at 32 bits; an integer beside a real becomes a real.
#pragma once

#include "lisp/Args.h"
#include "lisp/Printer.h"
#include "lisp/Value.h"

#include <limits>

namespace veldrin::lisp {

inline std::int32_t wrap(std::uint32_t u) {
    return static_cast<std::int32_t>(u);
}
inline std::uint32_t unwrap(std::int32_t i) {
    return static_cast<std::uint32_t>(i);
}

struct Plus {
    static std::int32_t of(std::int32_t a, std::int32_t b) { return wrap(unwrap(a) + unwrap(b)); }
    static double of(double a, double b) { return a + b; }
};
struct Minus {
    static std::int32_t of(std::int32_t a, std::int32_t b) { return wrap(unwrap(a) - unwrap(b)); }
    static double of(double a, double b) { return a - b; }
};
struct Times {
    static std::int32_t of(std::int32_t a, std::int32_t b) { return wrap(unwrap(a) * unwrap(b)); }
    static double of(double a, double b) { return a * b; }
};
struct Divide {
    static std::int32_t of(std::int32_t a, std::int32_t b) {
        if (b == 0) throw Error::divideByZero();
        return b == -1 ? wrap(0u - unwrap(a)) : a / b;
    }
    static double of(double a, double b) {
        if (b == 0) throw Error::divideByZero();
        return a / b;
    }
};

struct Equal {
    static constexpr bool isEquality = true, whenSame = true;
    template<class N>
    static bool of(N a, N b) {
        return a == b;
    }
};
struct NotEqual {
    static constexpr bool isEquality = true, whenSame = false;
    template<class N>
    static bool of(N a, N b) {
        return a != b;
    }
};
struct Less {
    static constexpr bool isEquality = false;
    template<class N>
    static bool of(N a, N b) {
        return a < b;
    }
};
struct LessOrEqual {
    static constexpr bool isEquality = false;
    template<class N>
    static bool of(N a, N b) {
        return a <= b;
    }
};
struct Greater {
    static constexpr bool isEquality = false;
    template<class N>
    static bool of(N a, N b) {
        return a > b;
    }
};
struct GreaterOrEqual {
    static constexpr bool isEquality = false;
    template<class N>
    static bool of(N a, N b) {
        return a >= b;
    }
};

template<class Op>
Value arithmetic(const Value& a, const Value& b) {
    if (a.isInteger() && b.isInteger()) return Value::integer(Op::of(a.asInteger(), b.asInteger()));
    return Value::real(Op::of(numberOf(a), numberOf(b)));
}

// Texts compare by their characters; `=` and `/=` take anything.
template<class Op>
bool compares(const Value& a, const Value& b) {
    if (a.isInteger() && b.isInteger()) return Op::of(a.asInteger(), b.asInteger());
    if (a.isNumber() && b.isNumber()) return Op::of(a.asNumber(), b.asNumber());
    if (a.isText() && b.isText()) return Op::of(a.asText().compare(b.asText()), 0);
    if constexpr (Op::isEquality)
        return a.isSame(b) == Op::whenSame;
    else
        throw Error("bad argument type for compare: " + shortText(a) + " " + shortText(b));
}

} // namespace veldrin::lisp
