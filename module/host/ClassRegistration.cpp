#include "host/ClassRegistration.h"

namespace plumb {

void ClassRegistration::add(const AcRxClass::Traits& traits) {
    if (const AcRxClass* known = acrxClassByName(traits.name.c_str())) {
        if (known != m_descriptor) acrx_abort("Class mismatch");
        return;
    }
    m_descriptor =
        newAcRxClass(traits.name.c_str(), traits.parentName.c_str(), traits.dwgVersion, traits.maintVersion,
                     traits.proxyFlags, traits.factory, traits.dxfName.c_str(), traits.appName.c_str());
}

void ClassRegistration::remove() {
    if (!m_descriptor) return;
    deleteAcRxClass(m_descriptor);
    m_descriptor = nullptr;
}

AcRxClass* ClassRegistration::descriptor(const char* name) {
    if (!m_descriptor) m_descriptor = acrxClassByName(name);
    return m_descriptor;
}

} // namespace plumb
