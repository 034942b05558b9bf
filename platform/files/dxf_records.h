#pragma once

#include <cstddef>

namespace veldrin {

// The whole record of a module's entity, as its extended data in an exchange file: the application, the name
// of the class, then the items behind the base part as bytes. Others take so much extended data of one
// object.
inline constexpr const char* kDxfRecordApplication = "VELDRIN";
inline constexpr int kDxfRecordClass = 1000;
inline constexpr int kDxfRecordBytes = 1004;
inline constexpr std::size_t kLargestDxfRecord = 12'000;

} // namespace veldrin
