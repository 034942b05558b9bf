#include "lisp/Value.h"

#include "lisp/Heap.h"
#include "lisp/Objects.h"

#include <algorithm>
#include <cmath>
#include <set>
#include <tuple>
#include <vector>

namespace veldrin::lisp {

Payload::~Payload() = default;

namespace {

void deleteObject(ObjectCell* cell) noexcept {
    switch (static_cast<Kind>(cell->info)) {
    case Kind::Builtin: delete static_cast<BuiltinCell*>(cell); break;
    case Kind::Function: delete static_cast<FunctionCell*>(cell); break;
    case Kind::External: delete static_cast<ExternalCell*>(cell); break;
    case Kind::Ename: delete static_cast<EnameObject*>(cell); break;
    case Kind::CatchError: delete static_cast<CatchErrorObject*>(cell); break;
    default: delete static_cast<PayloadObject*>(cell); break;
    }
}

// An object that dies while another one is being deleted waits: functions hold functions to any depth.
void destroyObject(Bits b) noexcept {
    static ObjectCell* dead = nullptr;
    static bool isDeleting = false;
    auto* cell = static_cast<ObjectCell*>(bits::toPointer<Cell>(b));
    cell->nextDead = std::exchange(dead, cell);
    if (isDeleting) return;
    isDeleting = true;
    while (dead) {
        ObjectCell* next = std::exchange(dead, dead->nextDead);
        deleteObject(next);
    }
    isDeleting = false;
}

// Gives up one reference; whether it was the last one.
bool drop(Bits b) noexcept {
    return bits::isCounted(b) && --bits::toPointer<Cell>(b)->refs == 0;
}

} // namespace

// Frees without recursion: a dead cons whose two halves both died waits, linked through its own cdr, with
// its car still to be freed.
void bits::destroy(Bits b) noexcept {
    Cons* waiting = nullptr;
    for (;;) {
        Bits next = bits::nil;
        if (bits::isCons(b)) {
            auto* cons = bits::toPointer<Cons>(b);
            const Bits car = cons->car.detach(), cdr = cons->cdr.detach();
            const bool carDied = drop(car), cdrDied = drop(cdr);
            if (carDied && cdrDied) {
                cons->car = Value::adopt(car);
                cons->cdr = Value::adopt(bits::ofPointer(bits::tagSymbol, waiting));
                waiting = cons;
                next = cdr;
            } else {
                Heap::instance().freeCons(cons);
                if (carDied || cdrDied) next = carDied ? car : cdr;
            }
        } else if (bits::isObject(b)) {
            destroyObject(b);
        } else {
            Heap::instance().freeText(bits::toPointer<TextCell>(b));
        }
        if (next == bits::nil) {
            if (!waiting) return;
            Cons* cons = waiting;
            next = cons->car.detach();
            waiting = bits::toPointer<Cons>(cons->cdr.detach());
            Heap::instance().freeCons(cons);
        }
        b = next;
    }
}

Value Value::text(std::string_view s) {
    const Bits b = Heap::instance().newText(s.size(), s.size());
    if (!s.empty()) std::memcpy(bits::toPointer<TextCell>(b)->chars(), s.data(), s.size());
    return adopt(b);
}

Value Value::t() {
    return symbol(&Symbol::t());
}
Value Value::cons(Value car, Value cdr) {
    return adopt(Heap::instance().newCons(std::move(car), std::move(cdr)));
}
Value Value::ename(Ename name) {
    return ownObject(new EnameObject(name));
}
Value Value::pickSet(std::shared_ptr<Payload> p) {
    return ownObject(new PayloadObject(Kind::PickSet, std::move(p)));
}
Value Value::file(std::shared_ptr<Payload> p) {
    return ownObject(new PayloadObject(Kind::File, std::move(p)));
}
Value Value::object(std::shared_ptr<Payload> p) {
    return ownObject(new PayloadObject(Kind::Object, std::move(p)));
}
Value Value::catchError(const Error& error) {
    return ownObject(new CatchErrorObject(error));
}

Kind Value::kind() const {
    if (isReal()) return Kind::Real;
    switch (bits::tagOf(bits_)) {
    case bits::tagInteger: return Kind::Integer;
    case bits::tagNil: return Kind::Nil;
    case bits::tagSymbol: return Kind::Symbol;
    case bits::tagCons: return Kind::Cons;
    case bits::tagText: return Kind::Text;
    default: return objectKind();
    }
}

bool Value::isAscii() const {
    auto* text = cell<TextCell>();
    if (text->info == 0) {
        const auto s = asText();
        const bool plain = std::all_of(s.begin(), s.end(), [](char c) { return (c & 0x80) == 0; });
        text->info = plain ? 1 : 2;
    }
    return text->info == 1;
}

Ename Value::asEname() const {
    return static_cast<EnameObject*>(cell<Cell>())->name;
}
const std::shared_ptr<Payload>& Value::payload() const {
    return static_cast<PayloadObject*>(cell<Cell>())->payload;
}
const Error& Value::asError() const {
    return static_cast<CatchErrorObject*>(cell<Cell>())->error;
}

bool Value::isSameObject(const Value& other) const {
    if (isReal() && other.isReal()) return asReal() == other.asReal();
    if (isText() && other.isText()) return asText() == other.asText();
    if (!bits::isObject(bits_) || !bits::isObject(other.bits_) || kind() != other.kind()) return false;
    switch (kind()) {
    case Kind::Ename: return asEname() == other.asEname();
    case Kind::PickSet:
    case Kind::File:
    case Kind::Object: return payload() == other.payload() || payload()->isSame(*other.payload());
    default: return false;
    }
}

Symbol& Symbol::t() {
    static Symbol& symbol = []() -> Symbol& {
        static Symbol t("T");
        t.value = t.protectedValue = bits::ofPointer(bits::tagSymbol, &t);
        return t;
    }();
    return symbol;
}

namespace {

bool isEqualAtom(const Value& a, const Value& b, double fuzz) {
    if (a.raw() == b.raw() && !a.isReal()) return true;
    if (a.isNumber() && b.isNumber()) {
        if (a.isInteger() && b.isInteger() && fuzz == 0.0) return false;
        return a.asNumber() == b.asNumber() || std::abs(a.asNumber() - b.asNumber()) <= fuzz;
    }
    if (a.isText() && b.isText()) return a.asText() == b.asText();
    return a.isSame(b);
}

} // namespace

// Two lists that hold a list twice, which does so too, and so on, have few cells and endless paths through
// them: after many comparisons each pair of cells is looked at once.
bool isEqual(const Value& a, const Value& b, double fuzz) {
    if (!a.isCons() || !b.isCons()) return isEqualAtom(a, b, fuzz);
    constexpr std::size_t manyPairs = 200'000;
    std::size_t pairs = 0;
    std::set<std::pair<Bits, Bits>> seen;
    std::vector<std::pair<const Value*, const Value*>> open; // heads still to compare, for nested lists
    const Value* left = &a;
    const Value* right = &b;
    for (;;) {
        while (left->isCons() && right->isCons() && left->raw() != right->raw()) {
            const Value &x = left->car(), &y = right->car();
            if (x.isCons() && y.isCons()) {
                if (++pairs < manyPairs || seen.emplace(x.raw(), y.raw()).second) open.emplace_back(&x, &y);
            } else if (!isEqualAtom(x, y, fuzz))
                return false;
            left = &left->cdr();
            right = &right->cdr();
        }
        if (left->isCons() != right->isCons()) return false;
        if (!left->isCons() && !isEqualAtom(*left, *right, fuzz)) return false;
        if (open.empty()) return true;
        std::tie(left, right) = open.back();
        open.pop_back();
    }
}

std::int64_t listLength(const Value& list) {
    std::int64_t count = 0;
    const Value* at = &list;
    for (; at->isCons(); at = &at->cdr()) ++count;
    return at->isNil() ? count : -1;
}

void ListBuilder::add(Value item) {
    Value cell = Value::cons(std::move(item), Value());
    auto* cons = cell.cell<Cons>();
    (last_ ? last_->cdr : head_) = std::move(cell);
    last_ = cons;
}

Value ListBuilder::finish(Value tail) {
    if (!last_) return tail;
    last_->cdr = std::move(tail);
    last_ = nullptr;
    return std::move(head_);
}

} // namespace veldrin::lisp
