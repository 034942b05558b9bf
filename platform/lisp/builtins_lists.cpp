// Building lists and taking them apart.
#include "lisp/Builtins.h"
#include "lisp/Characters.h"
#include "lisp/Heap.h"
#include "lisp/Machine.h"

#include <algorithm>

namespace veldrin::lisp {

namespace {

// The letters of c....r, taken from the last to the first; nil has nil for both halves.
template<char... Letters>
Value path(Engine&, Args args) {
    constexpr char letters[] = {Letters...};
    const Value* at = &args[0];
    for (std::size_t i = sizeof...(Letters); i-- > 0;) {
        if (!at->isList()) throw Error::badArgument(at == &args[0] ? "listp" : "consp", *at);
        at = letters[i] == 'a' ? &at->car() : &at->cdr();
    }
    return *at;
}

Value cons(Engine&, Args args) {
    return Value::cons(args[0], args[1]);
}

Value makeList(Engine&, Args args) {
    ListBuilder items;
    for (const Value& item : args) items.add(item);
    return items.finish();
}

// (vl-list* a b '(c)) gives (a b c); with an atom at the end a dotted list.
Value makeDotted(Engine&, Args args) {
    ListBuilder items;
    for (std::size_t i = 0; i + 1 < args.size(); ++i) items.add(args[i]);
    return items.finish(args[args.size() - 1]);
}

void addProper(ListBuilder& into, const Value& items) {
    const Value* at = &items;
    for (; at->isCons(); at = &at->cdr()) into.add(at->car());
    if (!at->isNil()) throw Error::badArgument("listp", *at);
}

// The last list is not copied.
Value append(Engine&, Args args) {
    ListBuilder items;
    for (std::size_t i = 0; i + 1 < args.size(); ++i) addProper(items, args.list(i));
    return items.finish(args.size() ? args.list(args.size() - 1) : Value());
}

Value reverse(Engine&, Args args) {
    Value result;
    const Value* at = &args.list(0);
    for (; at->isCons(); at = &at->cdr()) result = Value::cons(at->car(), std::move(result));
    if (!at->isNil()) throw Error::badArgument("listp", *at);
    return result;
}

Value nth(Engine&, Args args) {
    std::int32_t left = args.integer(0);
    const Value* at = &args.list(1);
    if (left < 0) return {};
    for (; left > 0 && at->isCons(); --left) at = &at->cdr();
    return at->car();
}

Value last(Engine&, Args args) {
    const Value* at = &args.list(0);
    while (at->cdr().isCons()) at = &at->cdr();
    return at->car();
}

Value length(Engine&, Args args) {
    const std::int64_t count = listLength(args.list(0));
    if (count < 0) args.wrong(0, "listp");
    return Value::integer(static_cast<std::int32_t>(count));
}

Value listLengthOrNil(Engine&, Args args) { // vl-list-length: nil for a dotted list
    const std::int64_t count = listLength(args.list(0));
    return count < 0 ? Value() : Value::integer(static_cast<std::int32_t>(count));
}

Value isAtom(Engine&, Args args) {
    return Value::boolean(!args[0].isCons());
}
Value isList(Engine&, Args args) {
    return Value::boolean(args[0].isList());
}
Value isCons(Engine&, Args args) {
    return Value::boolean(args[0].isCons());
}

// ---- Sorting

// Equal integers and equal symbols are one object, and the dialect keeps one object once.
bool isDuplicate(const Value& a, const Value& b) {
    return a.raw() == b.raw() && (a.isInteger() || a.isSymbol());
}

// `<` and `>` of numbers alone or texts alone need no calls.
enum class Plain { No, Up, Down };

Plain plainOrder(Engine& e, const Value& function, const std::vector<Value>& items) {
    if (items.empty()) return Plain::No;
    const auto means = [&](const char* name) {
        const Value meaning = e.machine().callee(function);
        return meaning.is(Kind::Builtin) && static_cast<BuiltinCell*>(meaning.cell<Cell>())->name == name;
    };
    const auto ordered = [](const Value& v) {
        return v.isInteger() || (v.isReal() && v.asReal() == v.asReal());
    };
    const bool numbers = std::all_of(items.begin(), items.end(), ordered);
    const bool texts = std::all_of(items.begin(), items.end(), [](const Value& v) { return v.isText(); });
    if (!numbers && !texts) return Plain::No;
    return means("<") ? Plain::Up : means(">") ? Plain::Down : Plain::No;
}

// Indices in sorted order by keys that compare without calls; equal ones stay in their order.
template<class Key, class KeyOf>
std::vector<std::size_t> sortedByKey(const std::vector<Value>& items, Plain plain, KeyOf keyOf) {
    std::vector<std::pair<Key, std::size_t>> keyed;
    keyed.reserve(items.size());
    for (std::size_t i = 0; i < items.size(); ++i) keyed.emplace_back(keyOf(items[i]), i);
    if (plain == Plain::Up)
        std::ranges::sort(keyed, [](const auto& a, const auto& b) {
            return a.first != b.first ? a.first < b.first : a.second < b.second;
        });
    else
        std::ranges::sort(keyed, [](const auto& a, const auto& b) {
            return a.first != b.first ? b.first < a.first : a.second < b.second;
        });
    std::vector<std::size_t> order;
    order.reserve(keyed.size());
    for (const auto& [key, index] : keyed) order.push_back(index);
    return order;
}

// Indices in sorted order. Merging, since a user's function need not be an order at all.
std::vector<std::size_t> sortedIndices(Engine& e, const std::vector<Value>& items, const Value& function) {
    if (const Plain plain = plainOrder(e, function, items); plain != Plain::No) {
        if (items.front().isText())
            return sortedByKey<std::string_view>(items, plain, [](const Value& v) { return v.asText(); });
        return sortedByKey<double>(items, plain, [](const Value& v) { return v.asNumber(); });
    }
    std::vector<std::size_t> order(items.size()), merged(items.size());
    for (std::size_t i = 0; i < order.size(); ++i) order[i] = i;
    const auto before = [&](std::size_t a, std::size_t b) {
        const Value pair[] = {items[a], items[b]};
        return !e.apply(function, Args(pair, 2)).isNil();
    };
    for (std::size_t width = 1; width < order.size(); width *= 2) {
        e.checkBreak();
        for (std::size_t start = 0; start < order.size(); start += 2 * width) {
            const std::size_t middle = std::min(start + width, order.size());
            const std::size_t end = std::min(start + 2 * width, order.size());
            std::size_t left = start, right = middle;
            for (std::size_t at = start; at < end; ++at) {
                const bool takeRight = left == middle || (right < end && before(order[right], order[left]));
                merged[at] = takeRight ? order[right++] : order[left++];
            }
        }
        order.swap(merged);
    }
    return order;
}

std::vector<Value> itemsOf(const Value& items) {
    std::vector<Value> result;
    for (const Value& item : ListView(items)) result.push_back(item);
    return result;
}

Value sort(Engine& e, Args args) {
    const auto items = itemsOf(args.list(0));
    const Value function = e.machine().callee(args[1]);
    ListBuilder sorted;
    const Value* previous = nullptr;
    for (const std::size_t i : sortedIndices(e, items, function)) {
        if (!previous || !isDuplicate(*previous, items[i])) sorted.add(items[i]);
        previous = &items[i];
    }
    return sorted.finish();
}

Value sortIndices(Engine& e, Args args) {
    const auto items = itemsOf(args.list(0));
    const Value function = e.machine().callee(args[1]);
    ListBuilder sorted;
    for (const std::size_t i : sortedIndices(e, items, function))
        sorted.add(Value::integer(static_cast<std::int32_t>(i)));
    return sorted.finish();
}

// Alphabetically: the case of letters decides between texts that are equal without it.
Value sortTexts(Engine&, Args args) { // acad_strlsort
    auto items = itemsOf(args.list(0));
    std::vector<std::pair<std::string, Value>> keyed;
    for (Value& item : items) keyed.emplace_back(upperCase(textOf(item)), std::move(item));
    std::stable_sort(keyed.begin(), keyed.end(), [](const auto& a, const auto& b) {
        return a.first != b.first ? a.first < b.first : a.second.asText() < b.second.asText();
    });
    items.clear();
    for (auto& [key, item] : keyed) items.push_back(std::move(item));
    ListBuilder sorted;
    for (Value& item : items) sorted.add(std::move(item));
    return sorted.finish();
}

constexpr BuiltinRow rows[] = {
    {"car", 1, 1, path<'a'>},
    {"cdr", 1, 1, path<'d'>},
    {"caar", 1, 1, path<'a', 'a'>},
    {"cadr", 1, 1, path<'a', 'd'>},
    {"cdar", 1, 1, path<'d', 'a'>},
    {"cddr", 1, 1, path<'d', 'd'>},
    {"caaar", 1, 1, path<'a', 'a', 'a'>},
    {"caadr", 1, 1, path<'a', 'a', 'd'>},
    {"cadar", 1, 1, path<'a', 'd', 'a'>},
    {"caddr", 1, 1, path<'a', 'd', 'd'>},
    {"cdaar", 1, 1, path<'d', 'a', 'a'>},
    {"cdadr", 1, 1, path<'d', 'a', 'd'>},
    {"cddar", 1, 1, path<'d', 'd', 'a'>},
    {"cdddr", 1, 1, path<'d', 'd', 'd'>},
    {"caaaar", 1, 1, path<'a', 'a', 'a', 'a'>},
    {"caaadr", 1, 1, path<'a', 'a', 'a', 'd'>},
    {"caadar", 1, 1, path<'a', 'a', 'd', 'a'>},
    {"caaddr", 1, 1, path<'a', 'a', 'd', 'd'>},
    {"cadaar", 1, 1, path<'a', 'd', 'a', 'a'>},
    {"cadadr", 1, 1, path<'a', 'd', 'a', 'd'>},
    {"caddar", 1, 1, path<'a', 'd', 'd', 'a'>},
    {"cadddr", 1, 1, path<'a', 'd', 'd', 'd'>},
    {"cdaaar", 1, 1, path<'d', 'a', 'a', 'a'>},
    {"cdaadr", 1, 1, path<'d', 'a', 'a', 'd'>},
    {"cdadar", 1, 1, path<'d', 'a', 'd', 'a'>},
    {"cdaddr", 1, 1, path<'d', 'a', 'd', 'd'>},
    {"cddaar", 1, 1, path<'d', 'd', 'a', 'a'>},
    {"cddadr", 1, 1, path<'d', 'd', 'a', 'd'>},
    {"cdddar", 1, 1, path<'d', 'd', 'd', 'a'>},
    {"cddddr", 1, 1, path<'d', 'd', 'd', 'd'>},
    {"cons", 2, 2, cons},
    {"list", 0, anyNumber, makeList},
    {"vl-list*", 1, anyNumber, makeDotted},
    {"append", 0, anyNumber, append},
    {"reverse", 1, 1, reverse},
    {"nth", 2, 2, nth},
    {"last", 1, 1, last},
    {"length", 1, 1, length},
    {"vl-list-length", 1, 1, listLengthOrNil},
    {"atom", 1, 1, isAtom},
    {"listp", 1, 1, isList},
    {"vl-consp", 1, 1, isCons},
    {"vl-sort", 2, 2, sort},
    {"vl-sort-i", 2, 2, sortIndices},
    {"acad_strlsort", 1, 1, sortTexts},
};

} // namespace

std::span<const BuiltinRow> listBuiltins() {
    return rows;
}

} // namespace veldrin::lisp
