#include "runtime/resbuf.h"

#include <algorithm>
#include <array>
#include <cstdarg>
#include <cstdlib>
#include <iterator>
#include <new>
#include <utility>

namespace {

struct CodeRange {
    short first;
    short last;
    short kind;
};

// Group codes in ascending order; what lies between the ranges is no group code.
constexpr CodeRange kRanges[] = {
    {-5, -5, RTENAME},    {-4, -4, RTSTR},         {-2, -1, RTENAME},    {0, 9, RTSTR},
    {10, 18, RT3DPOINT},  {19, 59, RTREAL},        {60, 79, RTSHORT},    {90, 99, RTLONG},
    {100, 105, RTSTR},    {110, 112, RT3DPOINT},   {113, 149, RTREAL},   {160, 169, RTLONG},
    {170, 179, RTSHORT},  {210, 218, RT3DPOINT},   {219, 239, RTREAL},   {270, 299, RTSHORT},
    {300, 329, RTSTR},    {330, 369, RTENAME},     {370, 389, RTSHORT},  {390, 399, RTENAME},
    {400, 409, RTSHORT},  {410, 419, RTSTR},       {420, 429, RTLONG},   {430, 439, RTSTR},
    {440, 459, RTLONG},   {460, 469, RTREAL},      {470, 479, RTSTR},    {480, 481, RTENAME},
    {999, 1009, RTSTR},   {1010, 1019, RT3DPOINT}, {1020, 1059, RTREAL}, {1060, 1070, RTSHORT},
    {1071, 1071, RTLONG},
};
constexpr int kFirstCode = std::begin(kRanges)->first;
constexpr int kLastCode = std::prev(std::end(kRanges))->last;

// Items that were freed wait for the next chain: chains come and go with every call between Lisp and C++, a
// dozen items at a time. What waits goes with its thread.
class ItemPool {
public:
    ~ItemPool() {
        while (m_first) delete std::exchange(m_first, m_first->rbnext);
    }
    resbuf* take() {
        if (!m_first) return new resbuf;
        --m_count;
        return std::exchange(m_first, m_first->rbnext);
    }
    void give(resbuf* item) {
        if (m_count == kMost) {
            delete item;
            return;
        }
        ++m_count;
        item->rbnext = std::exchange(m_first, item);
    }

private:
    static constexpr int kMost = 256;
    resbuf* m_first = nullptr;
    int m_count = 0;
};

thread_local ItemPool itemPool;

// What a type's value is stored as; the type itself for what is no group code.
short storageKind(int type) {
    switch (type) {
    case RTANG:
    case RTORINT: return type == RTANG ? short{RTREAL} : short{RTSHORT};
    case RTPOINT: return RT3DPOINT;
    case RTPICKS: return RTENAME;
    case RTDXF0: return RTSTR;
    case RTREAL:
    case RTSHORT:
    case RTLONG:
    case RTSTR:
    case RTENAME:
    case RT3DPOINT: return static_cast<short>(type);
    default: return type < RTNONE ? acutGroupCodeKind(type) : short{RTNONE};
    }
}

bool carriesNoValue(int type) {
    static constexpr int kPlain[] = {-3, RTNONE, RTVOID, RTLB, RTLE, RTDOTE, RTNIL, RTT};
    return std::find(std::begin(kPlain), std::end(kPlain), type) != std::end(kPlain);
}

void copyName(ads_u_val& value, const std::int64_t* name) {
    if (name) std::copy_n(name, 2, value.rlname);
}

// Takes the next argument as the item's value; false for a type that is not known.
bool takeValue(resbuf& item, int type, std::va_list& arguments) {
    if (carriesNoValue(type)) return true;
    switch (storageKind(type)) {
    case RTREAL: item.resval.rreal = va_arg(arguments, double); return true;
    case RTSHORT: item.resval.rint = static_cast<short>(va_arg(arguments, int)); return true;
    case RTLONG: item.resval.rlong = va_arg(arguments, int); return true;
    case RTSTR: item.resval.rstring = acutNewString(va_arg(arguments, const char*)); return true;
    case RT3DPOINT:
        std::copy_n(va_arg(arguments, const double*), type == RTPOINT ? 2 : 3, item.resval.rpoint);
        return true;
    case RTENAME: copyName(item.resval, va_arg(arguments, const std::int64_t*)); return true;
    default: return false;
    }
}

} // namespace

resbuf* acutNewRb(int type) {
    resbuf* const item = itemPool.take();
    std::memset(item, 0, sizeof *item);
    item->restype = static_cast<short>(type);
    return item;
}

int acutRelRb(resbuf* head) {
    while (head) {
        resbuf* const next = head->rbnext;
        if (storageKind(head->restype) == RTSTR) acdbFree(head->resval.rstring);
        itemPool.give(head);
        head = next;
    }
    return RTNORM;
}

resbuf* acutBuildList(int type, ...) {
    std::va_list arguments;
    va_start(arguments, type);
    resbuf* head = nullptr;
    resbuf** end = &head;
    for (; type != 0; type = va_arg(arguments, int)) {
        *end = acutNewRb(type);
        if (!takeValue(**end, type, arguments)) {
            acutRelRb(head);
            head = nullptr;
            break;
        }
        // A list ends with type 0, so the group of that code has a stand-in.
        if (type == RTDXF0) (*end)->restype = 0;
        end = &(*end)->rbnext;
    }
    va_end(arguments);
    return head;
}

char* acutNewString(const char* text) {
    const char* const source = text ? text : "";
    const std::size_t size = std::strlen(source) + 1;
    auto* copy = static_cast<char*>(std::malloc(size));
    if (!copy) throw std::bad_alloc();
    std::memcpy(copy, source, size);
    return copy;
}

void acdbFree(void* memory) {
    std::free(memory);
}

short acutGroupCodeKind(int groupCode) {
    static constexpr auto kKinds = [] {
        std::array<short, kLastCode - kFirstCode + 1> kinds{};
        kinds.fill(RTNONE);
        for (const CodeRange& range : kRanges)
            for (int code = range.first; code <= range.last; ++code)
                kinds[static_cast<std::size_t>(code - kFirstCode)] = range.kind;
        return kinds;
    }();
    if (groupCode < kFirstCode || groupCode > kLastCode) return RTNONE;
    return kKinds[static_cast<std::size_t>(groupCode - kFirstCode)];
}
