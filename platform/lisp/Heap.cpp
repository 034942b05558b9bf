#include "lisp/Heap.h"

#include "lisp/Error.h"

#include <cstdlib>
#include <new>

#if defined(__SANITIZE_ADDRESS__)
#define VELDRIN_LISP_PLAIN_CONSES 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define VELDRIN_LISP_PLAIN_CONSES 1
#endif
#endif

namespace veldrin::lisp {

namespace {
constexpr std::size_t slabConses = 8192;
}

Heap& Heap::instance() {
    static Heap heap;
    return heap;
}

// Slabs are kept for the life of the process, as the C++ heap keeps its arenas.
void Heap::addSlab() {
    if (liveBytes() + slabConses * sizeof(Cons) > limit_) throw Error("insufficient node space");
    auto* raw = static_cast<char*>(::operator new(slabConses * sizeof(Cons)));
    for (std::size_t i = slabConses; i-- > 0;) {
        free_ = new (raw + i * sizeof(Cons)) FreeCell{free_};
    }
}

Bits Heap::newCons(Value car, Value cdr, std::uint32_t line) {
#ifdef VELDRIN_LISP_PLAIN_CONSES // lets the sanitizer see every cell by itself
    if (liveBytes() > limit_) throw Error("insufficient node space");
    void* place = ::operator new(sizeof(Cons));
#else
    if (!free_) addSlab();
    void* place = free_;
    free_ = free_->next;
#endif
    ++liveConses_;
    return bits::ofPointer(bits::tagCons, new (place) Cons{{1, line}, std::move(car), std::move(cdr)});
}

void Heap::freeCons(Cons* cell) noexcept {
    --liveConses_;
#ifdef VELDRIN_LISP_PLAIN_CONSES
    ::operator delete(cell);
#else
    free_ = new (cell) FreeCell{free_};
#endif
}

void Heap::checkText(std::size_t size) const {
    constexpr std::size_t longest = std::size_t{1} << 30;
    if (size > longest || liveBytes() + size > limit_) throw Error("insufficient string space");
}

Bits Heap::newText(std::size_t size, std::size_t capacity) {
    checkText(capacity);
    void* place = std::malloc(sizeof(TextCell) + capacity + 1);
    if (!place) throw Error("insufficient string space");
    auto* cell =
        new (place) TextCell{{1, 0}, static_cast<std::uint32_t>(size), static_cast<std::uint32_t>(capacity)};
    cell->chars()[size] = '\0';
    ++liveTexts_;
    textBytes_ += sizeof(TextCell) + capacity;
    return bits::ofPointer(bits::tagText, cell);
}

Bits Heap::growText(Bits text, std::size_t capacity) {
    checkText(capacity);
    auto* cell = bits::toPointer<TextCell>(text);
    textBytes_ += capacity - cell->capacity;
    auto* grown =
        static_cast<TextCell*>(std::realloc(static_cast<void*>(cell), sizeof(TextCell) + capacity + 1));
    if (!grown) throw std::bad_alloc();
    grown->capacity = static_cast<std::uint32_t>(capacity);
    return bits::ofPointer(bits::tagText, grown);
}

void Heap::freeText(TextCell* cell) noexcept {
    --liveTexts_;
    textBytes_ -= sizeof(TextCell) + cell->capacity;
    std::free(cell);
}

} // namespace veldrin::lisp
