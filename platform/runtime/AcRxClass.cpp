#include "runtime/AcRxClass.h"

#include "runtime/CException.h"
#include "runtime/acrx.h"

#include <map>
#include <utility>

AcRxObject::~AcRxObject() = default;

AcRxClass* AcRxObject::desc() {
    static AcRxClass* const descriptor =
        AcRxClassRegistry::instance().addBuiltIn("AcRxObject", nullptr, "", nullptr);
    return descriptor;
}

AcRxClass* AcRxObject::isA() const {
    return desc();
}

bool AcRxObject::isKindOf(const AcRxClass* aClass) const {
    return isA()->isDerivedFrom(aClass);
}

AcRxClass::AcRxClass(Traits traits) : m_traits(std::move(traits)) {}
AcRxClass::~AcRxClass() = default;

void AcRxClass::getClassVersion(int& dwgVersion, int& maintVersion) const {
    dwgVersion = m_traits.dwgVersion;
    maintVersion = m_traits.maintVersion;
}

bool AcRxClass::isDerivedFrom(const AcRxClass* aClass) const {
    for (const AcRxClass* step = this; step; step = step->m_parent) {
        if (step == aClass) return true;
    }
    return false;
}

AcRxObject* AcRxClass::create() const {
    return m_traits.factory ? m_traits.factory() : nullptr;
}

struct AcRxClassRegistry::Impl {
    struct Entry {
        std::unique_ptr<AcRxClass> descriptor;
        bool announced = false;
    };
    struct Listeners {
        Listener added;
        Listener removed;
    };

    std::map<std::string, Entry, std::less<>> classes;
    std::map<int, Listeners> listeners;
    int nextToken = 1;

    // A listener may come or go while they are told, so they are looked up one by one.
    void tell(Listener Listeners::*which, AcRxClass& aClass) {
        for (auto it = listeners.begin(); it != listeners.end();) {
            const int token = it->first;
            const Listener listener = it->second.*which;
            if (listener) listener(aClass);
            it = listeners.upper_bound(token);
        }
    }
};

AcRxClassRegistry::AcRxClassRegistry() : m_impl(std::make_unique<Impl>()) {}
AcRxClassRegistry::~AcRxClassRegistry() = default;

AcRxClassRegistry& AcRxClassRegistry::instance() {
    static AcRxClassRegistry registry;
    return registry;
}

AcRxClass* AcRxClassRegistry::add(AcRxClass::Traits traits) {
    if (traits.name.empty() || m_impl->classes.contains(traits.name)) return nullptr;
    Impl::Entry& entry = m_impl->classes[traits.name];
    entry.descriptor = std::make_unique<AcRxClass>(std::move(traits));
    return entry.descriptor.get();
}

AcRxClass* AcRxClassRegistry::addBuiltIn(const char* name, AcRxClass* parent, const char* dxfName,
                                         AcRxClass::Factory factory) {
    AcRxClass* descriptor = add({.name = name,
                                 .parentName = parent ? parent->name() : "",
                                 .factory = factory,
                                 .dxfName = dxfName,
                                 .appName = "veldrin"});
    if (!descriptor) throw CException(std::string("A class of the host's own is taken: ") + name);
    descriptor->m_parent = parent;
    m_impl->classes.find(name)->second.announced = true;
    return descriptor;
}

void AcRxClassRegistry::remove(AcRxClass* aClass) {
    if (!aClass) return;
    const auto entry = m_impl->classes.find(aClass->name());
    if (entry == m_impl->classes.end() || entry->second.descriptor.get() != aClass) return;
    m_impl->tell(&Impl::Listeners::removed, *aClass);
    for (auto& [name, other] : m_impl->classes) {
        if (other.descriptor->m_parent == aClass) other.descriptor->m_parent = nullptr;
    }
    m_impl->classes.erase(entry);
}

AcRxClass* AcRxClassRegistry::at(std::string_view name) const {
    const auto entry = m_impl->classes.find(name);
    return entry == m_impl->classes.end() ? nullptr : entry->second.descriptor.get();
}

AcRxClass* AcRxClassRegistry::atDxfName(std::string_view dxfName) const {
    if (dxfName.empty()) return nullptr;
    for (const auto& [name, entry] : m_impl->classes) {
        if (entry.descriptor->dxfName() == dxfName) return entry.descriptor.get();
    }
    return nullptr;
}

std::vector<AcRxClass*> AcRxClassRegistry::all() const {
    std::vector<AcRxClass*> classes;
    for (const auto& [name, entry] : m_impl->classes) classes.push_back(entry.descriptor.get());
    return classes;
}

void AcRxClassRegistry::buildHierarchy() {
    for (auto& [name, entry] : m_impl->classes) {
        if (!entry.descriptor->m_parent)
            entry.descriptor->m_parent = at(entry.descriptor->m_traits.parentName);
    }
    std::vector<std::string> fresh;
    for (auto& [name, entry] : m_impl->classes) {
        if (!entry.announced) fresh.push_back(name);
        entry.announced = true;
    }
    for (const std::string& name : fresh) {
        if (AcRxClass* aClass = at(name)) m_impl->tell(&Impl::Listeners::added, *aClass);
    }
}

int AcRxClassRegistry::addListener(Listener added, Listener removed) {
    const int token = m_impl->nextToken++;
    m_impl->listeners[token] = {std::move(added), std::move(removed)};
    return token;
}

void AcRxClassRegistry::removeListener(int token) {
    m_impl->listeners.erase(token);
}

AcRxClass* newAcRxClass(const char* className, const char* parentClassName, int dwgVersion, int maintVersion,
                        int proxyFlags, AcRxClass::Factory factory, const char* dxfName,
                        const char* appName) {
    const auto text = [](const char* given) { return std::string(given ? given : ""); };
    return AcRxClassRegistry::instance().add({text(className), text(parentClassName), dwgVersion,
                                              maintVersion, proxyFlags, factory, text(dxfName),
                                              text(appName)});
}

AcRxClass* acrxClassByName(const char* className) {
    return className ? AcRxClassRegistry::instance().at(className) : nullptr;
}

void acrxBuildClassHierarchy() {
    AcRxClassRegistry::instance().buildHierarchy();
}

void deleteAcRxClass(AcRxClass* aClass) {
    AcRxClassRegistry::instance().remove(aClass);
}

void acrx_abort(const char* message) {
    throw CException(message ? message : "");
}
