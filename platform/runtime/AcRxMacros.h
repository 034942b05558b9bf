#pragma once

#include "runtime/AcRxClass.h"

// The .cpp side of ACRX_DECLARE_MEMBERS for the host's own classes: a class is one line. The class is
// registered, its parents before it, when its descriptor is first asked for, and stays for the life of the
// process. Modules register theirs by newAcRxClass, since they come and go.

// A class that is made by name, from its constructor without arguments.
#define ACRX_DEFINE_MEMBERS(CLASS, PARENT, DXF_NAME)                                                         \
    ACRX_DEFINE_MEMBERS_WITH(CLASS, PARENT, DXF_NAME, []() -> AcRxObject* { return new CLASS; })

// A class that is never made by name.
#define ACRX_NO_CONS_DEFINE_MEMBERS(CLASS, PARENT) ACRX_DEFINE_MEMBERS_WITH(CLASS, PARENT, "", nullptr)

#define ACRX_DEFINE_MEMBERS_WITH(CLASS, PARENT, DXF_NAME, FACTORY)                                           \
    AcRxClass* CLASS::desc() {                                                                               \
        static AcRxClass* const descriptor =                                                                 \
            AcRxClassRegistry::instance().addBuiltIn(#CLASS, PARENT::desc(), DXF_NAME, FACTORY);             \
        return descriptor;                                                                                   \
    }                                                                                                        \
    AcRxClass* CLASS::isA() const {                                                                          \
        return CLASS::desc();                                                                                \
    }                                                                                                        \
    void CLASS::rxInit() {                                                                                   \
        CLASS::desc();                                                                                       \
    }                                                                                                        \
    static_assert(true, "ends with a semicolon")
