#include "grid/CGridCell.h"

#include "system/AsciiCase.h"

namespace plumb {

std::shared_ptr<const CGridCellCombo> CGridCellCombo::fromText(const CString& text) {
    auto list = std::make_shared<CGridCellCombo>();
    list->isOpen = !text.empty() && text.front() == '|';
    std::size_t from = list->isOpen ? 1 : 0;
    if (from == text.size()) return list;
    for (std::size_t bar = text.find('|', from); bar != CString::npos; bar = text.find('|', from)) {
        list->items.push_back(text.substr(from, bar - from));
        from = bar + 1;
    }
    list->items.push_back(text.substr(from));
    return list;
}

int CGridCellCombo::find(const CString& text) const {
    for (std::size_t at = 0; at < items.size(); ++at)
        if (veldrin::asciiEqual(items[at], text)) return static_cast<int>(at);
    return -1;
}

int CGridCellCombo::findPrefix(const CString& text) const {
    for (std::size_t at = 0; at < items.size(); ++at)
        if (veldrin::asciiStartsWith(items[at], text)) return static_cast<int>(at);
    return -1;
}

} // namespace plumb
