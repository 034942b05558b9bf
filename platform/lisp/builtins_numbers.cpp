#include "lisp/Builtins.h"
#include "lisp/Machine.h"
#include "lisp/NumberOps.h"

#include <cmath>
#include <numeric>

namespace veldrin::lisp {

namespace {

// (+), (-), (*) and (/) without arguments are 0.
template<class Op>
Value fold(Engine&, Args args) {
    if (args.size() == 0) return Value::integer(0);
    numberOf(args[0]);
    Value sum = args[0];
    for (const Value& item : args.from(1)) sum = arithmetic<Op>(sum, item);
    return sum;
}

Value subtract(Engine& e, Args args) {
    if (args.size() == 1) return arithmetic<Minus>(Value::integer(0), args[0]);
    return fold<Minus>(e, args);
}

template<class Op>
Value compareAll(Engine&, Args args) {
    for (std::size_t i = 1; i < args.size(); ++i)
        if (!compares<Op>(args[i - 1], args[i])) return {};
    return Value::t();
}

template<int Step>
Value step(Engine&, Args args) {
    return arithmetic<Plus>(args[0], Value::integer(Step));
}

Value absolute(Engine&, Args args) {
    if (args[0].isInteger() && args[0].asInteger() < 0) return arithmetic<Minus>(Value::integer(0), args[0]);
    return args[0].isInteger() ? args[0] : Value::real(std::abs(args.number(0)));
}

// A real among the arguments makes the result a real.
template<class Op>
Value extreme(Engine&, Args args) {
    if (args.size() == 0) return Value::integer(0);
    bool anyReal = false;
    std::size_t best = 0;
    for (std::size_t i = 0; i < args.size(); ++i) {
        if (Op::of(args.number(i), args.number(best))) best = i;
        anyReal = anyReal || args[i].isReal();
    }
    return anyReal ? Value::real(args.number(best)) : args[best];
}

Value remainder(const Value& a, const Value& b) {
    if (numberOf(b) == 0) throw Error::divideByZero();
    if (a.isInteger() && b.isInteger())
        return Value::integer(b.asInteger() == -1 ? 0 : a.asInteger() % b.asInteger());
    return Value::real(std::fmod(numberOf(a), numberOf(b)));
}

Value rem(Engine&, Args args) {
    if (args.size() == 0) return Value::integer(0);
    numberOf(args[0]);
    Value result = args[0];
    for (const Value& item : args.from(1)) result = remainder(result, item);
    return result;
}

// A real beyond the integers stays a real, cut to a whole number.
Value fix(Engine&, Args args) {
    if (args[0].isInteger()) return args[0];
    const double n = std::trunc(args.number(0));
    const bool fits =
        n >= std::numeric_limits<std::int32_t>::min() && n <= std::numeric_limits<std::int32_t>::max();
    return fits ? Value::integer(static_cast<std::int32_t>(n)) : Value::real(n);
}

Value toReal(Engine&, Args args) {
    return Value::real(args.number(0));
}

Value squareRoot(Engine&, Args args) {
    if (args.number(0) < 0) throw Error("function undefined for argument: " + shortText(args[0]));
    return Value::real(std::sqrt(args.number(0)));
}

// Integers give an integer as long as it fits.
Value expt(Engine&, Args args) {
    const double result = std::pow(args.number(0), args.number(1));
    if (std::isnan(result) || (args.number(0) == 0 && args.number(1) < 0))
        throw Error("function undefined for argument: " + shortText(args[0]));
    const bool whole = args[0].isInteger() && args[1].isInteger() && args[1].asInteger() >= 0;
    if (whole && std::abs(result) <= std::numeric_limits<std::int32_t>::max())
        return Value::integer(static_cast<std::int32_t>(result));
    return Value::real(result);
}

Value logarithm(Engine&, Args args) {
    if (args.number(0) <= 0) throw Error("function undefined for argument: " + shortText(args[0]));
    return Value::real(std::log(args.number(0)));
}

template<double (*F)(double)>
Value realFunction(Engine&, Args args) {
    return Value::real(F(args.number(0)));
}
double sine(double x) {
    return std::sin(x);
}
double cosine(double x) {
    return std::cos(x);
}
double exponential(double x) {
    return std::exp(x);
}

Value arcTangent(Engine&, Args args) {
    if (args.has(1)) return Value::real(std::atan2(args.number(0), args.number(1)));
    return Value::real(std::atan(args.number(0)));
}

Value gcd(Engine&, Args args) {
    const auto size = [&](std::size_t i) { return std::abs(static_cast<std::int64_t>(args.integer(i))); };
    return Value::integer(wrap(static_cast<std::uint32_t>(std::gcd(size(0), size(1)))));
}

struct BitAnd {
    static constexpr std::int32_t start = -1;
    static std::int32_t of(std::int32_t a, std::int32_t b) { return a & b; }
};
struct BitOr {
    static constexpr std::int32_t start = 0;
    static std::int32_t of(std::int32_t a, std::int32_t b) { return a | b; }
};

template<class Op>
Value bitwise(Engine&, Args args) {
    if (args.size() == 0) return Value::integer(0);
    std::int32_t result = Op::start;
    for (std::size_t i = 0; i < args.size(); ++i) result = Op::of(result, args.integer(i));
    return Value::integer(result);
}

Value shift(Engine&, Args args) {
    const std::uint32_t n = unwrap(args.integer(0));
    const std::int32_t by = args.integer(1);
    if (by <= -32 || by >= 32) return Value::integer(0);
    return Value::integer(wrap(by >= 0 ? n << by : n >> -by));
}

Value complement(Engine&, Args args) {
    return Value::integer(~args.integer(0));
}

// The function number says, bit by bit, for which pairs of bits of two integers the result has a one:
// 8 both zero, 4 the second alone, 2 the first alone, 1 both.
Value boole(Engine&, Args args) {
    const std::int32_t table = args.integer(0);
    std::int32_t result = args.integer(1);
    for (std::size_t i = 2; i < args.size(); ++i) {
        const std::int32_t a = result, b = args.integer(i);
        result = ((table & 1) ? a & b : 0) | ((table & 2) ? a & ~b : 0) | ((table & 4) ? ~a & b : 0) |
                 ((table & 8) ? ~(a | b) : 0);
    }
    return Value::integer(result);
}

Value isZero(Engine&, Args args) {
    return Value::boolean(args.number(0) == 0);
}
Value isMinus(Engine&, Args args) {
    return Value::boolean(args.number(0) < 0);
}
Value isNumber(Engine&, Args args) {
    return Value::boolean(args[0].isNumber());
}

constexpr BuiltinRow rows[] = {
    {"+", 0, anyNumber, fold<Plus>},
    {"-", 0, anyNumber, subtract},
    {"*", 0, anyNumber, fold<Times>},
    {"/", 0, anyNumber, fold<Divide>},
    {"1+", 1, 1, step<1>},
    {"1-", 1, 1, step<-1>},
    {"=", 1, anyNumber, compareAll<Equal>},
    {"/=", 1, anyNumber, compareAll<NotEqual>},
    {"<", 1, anyNumber, compareAll<Less>},
    {"<=", 1, anyNumber, compareAll<LessOrEqual>},
    {">", 1, anyNumber, compareAll<Greater>},
    {">=", 1, anyNumber, compareAll<GreaterOrEqual>},
    {"abs", 1, 1, absolute},
    {"min", 0, anyNumber, extreme<Less>},
    {"max", 0, anyNumber, extreme<Greater>},
    {"rem", 0, anyNumber, rem},
    {"fix", 1, 1, fix},
    {"float", 1, 1, toReal},
    {"sqrt", 1, 1, squareRoot},
    {"expt", 2, 2, expt},
    {"exp", 1, 1, realFunction<exponential>},
    {"log", 1, 1, logarithm},
    {"sin", 1, 1, realFunction<sine>},
    {"cos", 1, 1, realFunction<cosine>},
    {"atan", 1, 2, arcTangent},
    {"gcd", 2, 2, gcd},
    {"logand", 0, anyNumber, bitwise<BitAnd>},
    {"logior", 0, anyNumber, bitwise<BitOr>},
    {"lsh", 2, 2, shift},
    {"~", 1, 1, complement},
    {"boole", 2, anyNumber, boole},
    {"zerop", 1, 1, isZero},
    {"minusp", 1, 1, isMinus},
    {"numberp", 1, 1, isNumber},
};

} // namespace

std::span<const BuiltinRow> numberBuiltins() {
    return rows;
}

} // namespace veldrin::lisp
