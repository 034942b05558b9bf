#pragma once

#include "runtime/AcRxClass.h"

namespace plumb {

// The descriptor of one class of this module while it is registered. The class registry outlives the module,
// and a class that comes back gets a new descriptor.
class ClassRegistration {
public:
    // Nothing happens when it is registered already; a stranger under the name ends the load (CException).
    void add(const AcRxClass::Traits& traits);
    void remove();
    // Looked up by name on first use and kept.
    AcRxClass* descriptor(const char* name);

private:
    AcRxClass* m_descriptor = nullptr;
};

} // namespace plumb
