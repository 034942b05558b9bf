#include "lisp/Builtins.h"
#include "lisp/Units.h"

#include <array>
#include <cmath>
#include <numbers>

namespace veldrin::lisp {

namespace {

double variable(Engine& e, const char* name) {
    const Value value = e.services().systemVariable(name);
    return value.isNumber() ? value.asNumber() : 0.0;
}

// An optional integer argument with a system variable as default, checked against its range.
int choice(Engine& e, Args args, std::size_t i, const char* name, int least, int most) {
    const int n = args.has(i) ? args.integer(i) : static_cast<int>(variable(e, name));
    if (n < least || n > most) throw Error("bad argument value: " + std::to_string(n));
    return n;
}

Value rtos(Engine& e, Args args) {
    const double number = args.number(0);
    const auto units = static_cast<LengthUnits>(choice(e, args, 1, "LUNITS", 1, 5));
    const int precision = choice(e, args, 2, "LUPREC", 0, 255);
    return Value::text(formatLength(number, units, precision, static_cast<int>(variable(e, "DIMZIN"))));
}

// Angles are shown from ANGBASE, clockwise when ANGDIR is 1.
Value angtos(Engine& e, Args args) {
    const double direction = variable(e, "ANGDIR") == 1 ? -1 : 1;
    const double shown = direction * (args.number(0) - variable(e, "ANGBASE"));
    const auto units = static_cast<AngleUnits>(choice(e, args, 1, "AUNITS", 0, 4));
    const int precision = choice(e, args, 2, "AUPREC", 0, 255);
    return Value::text(formatAngle(shown, units, precision, static_cast<int>(variable(e, "DIMZIN"))));
}

Value distof(Engine& e, Args args) {
    const auto text = args.text(0);
    choice(e, args, 1, "LUNITS", 1, 5);
    const auto length = parseLength(text);
    return length ? Value::real(*length) : Value();
}

Value angtof(Engine& e, Args args) {
    const auto text = args.text(0);
    const auto angle = parseAngle(text, static_cast<AngleUnits>(choice(e, args, 1, "AUNITS", 0, 4)));
    if (!angle) return {};
    const double direction = variable(e, "ANGDIR") == 1 ? -1 : 1;
    const double turn = 2 * std::numbers::pi;
    const double result = std::fmod(variable(e, "ANGBASE") + direction * *angle, turn);
    return Value::real(result < 0 ? result + turn : result);
}

// ---- cvunit

enum class Quantity { Length, Mass, Time, Angle, Volume, Area, Temperature };

struct Unit {
    std::array<const char*, 4> names;
    Quantity quantity;
    double factor; // to metres, kilograms, seconds, radians, cubic and square metres, kelvins
    double offset = 0;
};

constexpr double inch = 0.0254, pound = 0.45359237, gallon = 0.003785411784;
constexpr double pi = std::numbers::pi;

constexpr Unit units[] = {
    {{"m", "meter", "meters", "metre"}, Quantity::Length, 1},
    {{"mm", "millimeter", "millimeters", "millimetre"}, Quantity::Length, 0.001},
    {{"cm", "centimeter", "centimeters", "centimetre"}, Quantity::Length, 0.01},
    {{"km", "kilometer", "kilometers", "kilometre"}, Quantity::Length, 1000},
    {{"in", "inch", "inches", "inchs"}, Quantity::Length, inch},
    {{"ft", "foot", "feet", "foots"}, Quantity::Length, 12 * inch},
    {{"yd", "yard", "yards", ""}, Quantity::Length, 36 * inch},
    {{"mi", "mile", "miles", ""}, Quantity::Length, 63360 * inch},
    {{"g", "gram", "grams", "gm"}, Quantity::Mass, 0.001},
    {{"kg", "kilogram", "kilograms", ""}, Quantity::Mass, 1},
    {{"lb", "pound", "pounds", "lbs"}, Quantity::Mass, pound},
    {{"oz", "ounce", "ounces", ""}, Quantity::Mass, pound / 16},
    {{"ton", "tons", "short_ton", ""}, Quantity::Mass, 2000 * pound},
    {{"tonne", "tonnes", "metric_ton", ""}, Quantity::Mass, 1000},
    {{"s", "sec", "second", "seconds"}, Quantity::Time, 1},
    {{"min", "minute", "minutes", ""}, Quantity::Time, 60},
    {{"hr", "hour", "hours", "h"}, Quantity::Time, 3600},
    {{"day", "days", "", ""}, Quantity::Time, 86400},
    {{"rad", "radian", "radians", ""}, Quantity::Angle, 1},
    {{"deg", "degree", "degrees", ""}, Quantity::Angle, pi / 180},
    {{"grad", "grads", "grade", ""}, Quantity::Angle, pi / 200},
    {{"l", "liter", "liters", "litre"}, Quantity::Volume, 0.001},
    {{"gal", "gallon", "gallons", ""}, Quantity::Volume, gallon},
    {{"cu in", "cubic inch", "cubic inches", ""}, Quantity::Volume, inch* inch* inch},
    {{"cu ft", "cubic foot", "cubic feet", ""}, Quantity::Volume, 1728 * inch* inch* inch},
    {{"cu m", "cubic meter", "cubic meters", "cubic metre"}, Quantity::Volume, 1},
    {{"sq in", "square inch", "square inches", ""}, Quantity::Area, inch* inch},
    {{"sq ft", "square foot", "square feet", ""}, Quantity::Area, 144 * inch* inch},
    {{"sq m", "square meter", "square meters", "square metre"}, Quantity::Area, 1},
    {{"acre", "acres", "", ""}, Quantity::Area, 43560 * 144 * inch* inch},
    {{"hectare", "hectares", "ha", ""}, Quantity::Area, 10000},
    {{"K", "kelvin", "Kelvin", ""}, Quantity::Temperature, 1},
    {{"C", "celsius", "Celsius", "centigrade"}, Quantity::Temperature, 1, 273.15},
    {{"F", "fahrenheit", "Fahrenheit", ""}, Quantity::Temperature, 5.0 / 9, 273.15 - 32 * 5.0 / 9},
};

const Unit* findUnit(std::string_view name) {
    if (name.empty()) return nullptr;
    for (const Unit& unit : units)
        for (const std::string_view known : unit.names)
            if (known == name) return &unit;
    return nullptr;
}

Value cvunit(Engine&, Args args) {
    const Unit* from = findUnit(args.text(1));
    const Unit* to = findUnit(args.text(2));
    if (!args[0].isNumber()) args.point(0);
    if (!from || !to || from->quantity != to->quantity) return {};
    const auto convert = [&](double x) {
        return from == to ? x : (x * from->factor + from->offset - to->offset) / to->factor;
    };
    if (args[0].isNumber()) return Value::real(convert(args.number(0)));
    const Point p = args.point(0);
    return Point{convert(p.x), convert(p.y), convert(p.z), p.dimensions}.toList();
}

constexpr BuiltinRow rows[] = {
    {"rtos", 1, 3, rtos},     {"angtos", 1, 3, angtos}, {"distof", 1, 2, distof},
    {"angtof", 1, 2, angtof}, {"cvunit", 3, 3, cvunit},
};

} // namespace

std::span<const BuiltinRow> unitBuiltins() {
    return rows;
}

} // namespace veldrin::lisp
