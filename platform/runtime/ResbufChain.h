#pragma once

#include "runtime/resbuf.h"

#include <memory>
#include <string>

namespace veldrin {

struct ResbufDeleter {
    void operator()(resbuf* chain) const { acutRelRb(chain); }
};

// Owns a chain.
using ResbufPtr = std::unique_ptr<resbuf, ResbufDeleter>;

// Builds a chain item by item.
class VELDRIN_API ResbufBuilder {
public:
    resbuf& add(int type); // with a zero value
    void addText(int type, const std::string& text);
    void addReal(int type, double value);
    void addPoint(int type, double x, double y, double z);
    void addInteger(int type, std::int64_t value); // short or long, as the type stores it
    void addName(int type, const ads_name name);
    void addCopy(const resbuf& item);

    bool isEmpty() const { return !m_head; }
    ResbufPtr take(); // the builder is empty then

private:
    ResbufPtr m_head;
    resbuf* m_tail = nullptr;
};

VELDRIN_API ResbufPtr copyChain(const resbuf* chain);

// The text of an item that carries one; never null.
inline const char* textOf(const resbuf& item) {
    return item.resval.rstring ? item.resval.rstring : "";
}

} // namespace veldrin
