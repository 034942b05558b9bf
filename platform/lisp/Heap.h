// Memory of Lisp values: conses come from a free list, everything else from the C++ heap. Like the C++ heap
// itself it belongs to the process, not to an engine.
#pragma once

#include "lisp/Value.h"

#include <cstddef>

namespace veldrin::lisp {

class VELDRIN_API Heap {
public:
    static Heap& instance();

    Bits newCons(Value car, Value cdr, std::uint32_t line = 0);
    void freeCons(Cons* cell) noexcept;

    // Room for a text of that many bytes; the caller fills in the characters. Size is set, the end marked.
    Bits newText(std::size_t size, std::size_t capacity);
    void freeText(TextCell* cell) noexcept;
    // `text` must have no other holder; the bits may change.
    Bits growText(Bits text, std::size_t capacity);

    void countObject() { ++liveObjects_; }
    void discountObject() { --liveObjects_; }

    // For tests of leaks: conses, texts and objects that are alive.
    std::size_t liveCells() const { return liveConses_ + liveTexts_ + liveObjects_; }
    std::size_t liveBytes() const {
        return liveConses_ * sizeof(Cons) + textBytes_ + liveObjects_ * objectBytes;
    }

    // Allocating more than this throws an Error.
    void setLimit(std::size_t bytes) { limit_ = bytes; }
    // Throws when there would be no room for a text of that size, which is still being made.
    void checkText(std::size_t size) const;

private:
    struct FreeCell {
        FreeCell* next;
    };
    static constexpr std::size_t objectBytes = 96; // about what one takes
    void addSlab();

    FreeCell* free_ = nullptr;
    std::size_t liveConses_ = 0, liveTexts_ = 0, liveObjects_ = 0;
    std::size_t textBytes_ = 0;
    std::size_t limit_ = ~std::size_t{0};
};

} // namespace veldrin::lisp
