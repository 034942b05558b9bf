#include "ui/UiTable.h"

namespace veldrin {

TableView::~TableView() = default;
UiTable::~UiTable() = default;

} // namespace veldrin
