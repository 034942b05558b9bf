#pragma once

#include "runtime/VeldrinApi.h"

#include <string>

class AcRxClass;

// The root of everything that carries its class at run time.
class VELDRIN_API AcRxObject {
public:
    AcRxObject() = default;
    virtual ~AcRxObject();
    AcRxObject(const AcRxObject&) = delete;
    AcRxObject& operator=(const AcRxObject&) = delete;

    static AcRxClass* desc();
    virtual AcRxClass* isA() const;
    bool isKindOf(const AcRxClass* aClass) const;
};

// Declares what every registered class has: its descriptor, a checked cast, and its registration.
#define ACRX_DECLARE_MEMBERS(CLASS)                                                                          \
    static AcRxClass* desc();                                                                                \
    static CLASS* cast(AcRxObject* object) {                                                                 \
        return object && object->isKindOf(desc()) ? static_cast<CLASS*>(object) : nullptr;                   \
    }                                                                                                        \
    static const CLASS* cast(const AcRxObject* object) {                                                     \
        return object && object->isKindOf(desc()) ? static_cast<const CLASS*>(object) : nullptr;             \
    }                                                                                                        \
    AcRxClass* isA() const override;                                                                         \
    static void rxInit()
