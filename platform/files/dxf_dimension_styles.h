#pragma once

namespace veldrin {

// Dimension styles are kept as they came, each as a record of groups in this dictionary of the drawing, since
// dimensions refer to them and nothing here changes them.
inline constexpr const char* kDimensionStyles = "VELDRIN_DIMSTYLES";

} // namespace veldrin
