#include "lisp/Args.h"

#include <cmath>
#include <limits>

namespace veldrin::lisp {

void Args::wrong(std::size_t i, std::string_view expected) const {
    throw Error::badArgument(expected, (*this)[i]);
}

std::int32_t Args::wholeNumber(std::size_t i) const {
    const double n = std::trunc(number(i));
    if (!(std::abs(n) <= std::numeric_limits<std::int32_t>::max())) wrong(i, "fixnump:");
    return static_cast<std::int32_t>(n);
}

Point Args::point(std::size_t i) const {
    return pointOf((*this)[i]);
}

Ename Args::ename(std::size_t i) const {
    if (!(*this)[i].is(Kind::Ename)) wrong(i, "lentityp");
    return first_[i].asEname();
}

double numberOf(const Value& value) {
    if (!value.isNumber()) throw Error::badArgument("numberp:", value);
    return value.asNumber();
}

std::int32_t integerOf(const Value& value) {
    if (!value.isInteger()) throw Error::badArgument("fixnump:", value);
    return value.asInteger();
}

std::string_view textOf(const Value& value) {
    if (!value.isText()) throw Error::badArgument("stringp", value);
    return value.asText();
}

bool readPoint(const Value& value, Point& point) {
    double numbers[3] = {};
    int count = 0;
    const Value* at = &value;
    for (; at->isCons(); at = &at->cdr()) {
        if (count == 3 || !at->car().isNumber()) return false;
        numbers[count++] = at->car().asNumber();
    }
    if (count < 2 || !at->isNil()) return false;
    point = {numbers[0], numbers[1], numbers[2], count};
    return true;
}

Point pointOf(const Value& value) {
    Point point;
    if (!readPoint(value, point)) throw Error::badArgument("2D/3D point:", value);
    return point;
}

Value Point::toList() const {
    if (dimensions == 2) return list(Value::real(x), Value::real(y));
    return list(Value::real(x), Value::real(y), Value::real(z));
}

} // namespace veldrin::lisp
