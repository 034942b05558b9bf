#include "lisp/marshal.h"

#include "lisp/Engine.h"

#include <limits>

namespace veldrin::lisp {

namespace {

constexpr int deepestNesting = 1000;
constexpr std::size_t mostItems = std::size_t{1} << 23; // also of a list that holds others many times over

// ---- Towards C++

class ChainWriter {
public:
    explicit ChainWriter(Engine& engine) : engine_(engine) {}

    void add(const Value& value);
    void addItems(const Value& list) { // without brackets
        for (const Value& item : ListView(list)) add(item);
    }
    ResbufChain take() { return chain_.take(); }

private:
    void addInteger(std::int32_t n);
    void addName(int type, const Ename& name) { chain_.addName(type, name.words); }
    void addPoint(const Point& p) { chain_.addPoint(p.dimensions == 2 ? RTPOINT : RT3DPOINT, p.x, p.y, p.z); }
    void addList(const Value& list);

    Engine& engine_;
    ResbufBuilder chain_;
    int depth_ = 0;
    std::size_t items_ = 0;
};

void ChainWriter::addInteger(std::int32_t n) {
    using Short = std::numeric_limits<short>;
    chain_.addInteger(n >= Short::min() && n <= Short::max() ? RTSHORT : RTLONG, n);
}

void ChainWriter::addList(const Value& list) {
    if (Point point; readPoint(list, point)) return addPoint(point);
    if (++depth_ > deepestNesting) throw Error("list nested too deeply");
    chain_.add(RTLB);
    const Value* at = &list;
    for (; at->isCons(); at = &at->cdr()) add(at->car());
    if (at->isNil()) {
        chain_.add(RTLE);
    } else {
        add(*at);
        chain_.add(RTDOTE);
    }
    --depth_;
}

void ChainWriter::add(const Value& value) {
    if (++items_ > mostItems) throw Error("list too long for a C++ function");
    engine_.checkBreak();
    switch (value.kind()) {
    case Kind::Nil: chain_.add(RTNIL); break;
    case Kind::Integer: addInteger(value.asInteger()); break;
    case Kind::Real: chain_.addReal(RTREAL, value.asReal()); break;
    case Kind::Text: chain_.addText(RTSTR, std::string(value.asText())); break;
    case Kind::Cons: addList(value); break;
    case Kind::Ename: addName(RTENAME, value.asEname()); break;
    case Kind::Symbol:
        if (value.asSymbol() == &Symbol::t())
            chain_.add(RTT);
        else
            chain_.addText(RTSTR, value.asSymbol()->name);
        break;
    case Kind::PickSet: addName(RTPICKS, engine_.services().pickSetName(value)); break;
    default: throw Error::badArgument("value for a C++ function", value);
    }
}

// ---- From C++

// A list that is being read.
struct OpenList {
    ListBuilder items;
    Value last; // the newest item, which may turn out to be the tail
    int count = 0;
    bool expectsTail = false, hasTail = false;

    void add(Value item) {
        if (hasTail) throw Error("malformed result list: value behind a dotted tail");
        if (expectsTail)
            hasTail = true;
        else if (count++ > 0)
            items.add(std::move(last));
        last = std::move(item);
    }
    Value close() {
        if (expectsTail != hasTail) throw Error("malformed result list: dot without a value");
        if (hasTail) return items.finish(std::move(last));
        if (count) items.add(std::move(last));
        return items.finish();
    }
};

class ChainReader {
public:
    ChainReader(Engine& engine, const resbuf* chain) : engine_(engine), chain_(chain) {
        int open = 0;
        for (const resbuf* rb = chain; rb; rb = rb->rbnext)
            open += (rb->restype == RTLB) - (rb->restype == RTLE);
        hasUnclosedPairs_ = open > 0;
    }
    std::vector<Value> read();

private:
    void give(Value value) {
        if (open_.empty())
            values_.push_back(std::move(value));
        else
            open_.back().add(std::move(value));
    }
    void closeList() {
        if (open_.empty()) throw Error("malformed result list: too many ends");
        Value list = open_.back().close();
        open_.pop_back();
        give(std::move(list));
    }
    void dot();
    Value atom(const resbuf& rb);

    Engine& engine_;
    const resbuf* chain_;
    bool hasUnclosedPairs_; // dotted lists in the form that ends in RTDOTE
    std::vector<OpenList> open_;
    std::vector<Value> values_;
};

// With one item before it a dot announces the tail; with more it ends the list, unless all lists of the chain
// are closed by an RTLE of their own.
void ChainReader::dot() {
    if (open_.empty() || open_.back().count == 0) throw Error("malformed result list: misplaced dot");
    OpenList& list = open_.back();
    if (list.count == 1 || !hasUnclosedPairs_) {
        list.items.add(std::move(list.last));
        list.expectsTail = true;
        return;
    }
    Value dotted = list.items.finish(std::move(list.last));
    open_.pop_back();
    give(std::move(dotted));
}

Value ChainReader::atom(const resbuf& rb) {
    const auto& v = rb.resval;
    switch (rb.restype) {
    case RTREAL:
    case RTANG:
    case RTORINT: return Value::real(v.rreal);
    case RTPOINT: return Point{v.rpoint[0], v.rpoint[1], 0, 2}.toList();
    case RT3DPOINT: return Point{v.rpoint[0], v.rpoint[1], v.rpoint[2], 3}.toList();
    case RTSHORT: return Value::integer(v.rint);
    case RTLONG: return Value::integer(v.rlong);
    case RTSTR: return Value::text(veldrin::textOf(rb));
    case RTENAME: return Value::ename({{v.rlname[0], v.rlname[1]}});
    case RTPICKS: return engine_.services().pickSetOf({{v.rlname[0], v.rlname[1]}});
    case RTNIL:
    case RTNONE: return {};
    case RTT: return Value::t();
    case RTVOID: return Value::symbol(&engine_.intern(""));
    default: throw Error("malformed result list: type " + std::to_string(rb.restype));
    }
}

std::vector<Value> ChainReader::read() {
    for (const resbuf* rb = chain_; rb; rb = rb->rbnext) {
        if (rb->restype == RTLB)
            open_.emplace_back();
        else if (rb->restype == RTLE)
            closeList();
        else if (rb->restype == RTDOTE)
            dot();
        else
            give(atom(*rb));
    }
    if (!open_.empty()) throw Error("malformed result list: end missing");
    return std::move(values_);
}

} // namespace

ResbufChain toResbufs(Engine& engine, Args values) {
    ChainWriter writer(engine);
    for (const Value& value : values) writer.add(value);
    return writer.take();
}

ResbufChain resultToResbufs(Engine& engine, const Value& result) {
    ChainWriter writer(engine);
    Point point;
    if (result.isCons() && listLength(result) > 0 && !readPoint(result, point))
        writer.addItems(result);
    else
        writer.add(result);
    return writer.take();
}

std::vector<Value> fromResbufs(Engine& engine, const resbuf* chain) {
    return ChainReader(engine, chain).read();
}

Value resultFromResbufs(Engine& engine, const resbuf* chain) {
    std::vector<Value> values = fromResbufs(engine, chain);
    if (values.size() == 1) return std::move(values[0]);
    ListBuilder items;
    for (Value& value : values) items.add(std::move(value));
    return items.finish();
}

} // namespace veldrin::lisp
