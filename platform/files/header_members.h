#pragma once

#include "drawing/AcDbDatabase.h"

#include <cstdint>
#include <span>
#include <variant>

namespace veldrin {

// A header variable by the name that all files give it.
struct HeaderMember {
    const char* name;
    std::variant<int HeaderVariables::*, std::int16_t HeaderVariables::*, double HeaderVariables::*,
                 AcDbObjectId HeaderVariables::*, AcCmColor HeaderVariables::*,
                 AcGePoint3d HeaderVariables::*, AcGeVector3d HeaderVariables::*>
        member;
};

std::span<const HeaderMember> headerMembers();

} // namespace veldrin
