#pragma once

#include "runtime/AcRxObject.h"

#include <functional>
#include <memory>
#include <string_view>
#include <vector>

// What is known of a class at run time. Owned by the class registry of the process.
class VELDRIN_API AcRxClass : public AcRxObject {
public:
    using Factory = AcRxObject* (*)();

    struct Traits {
        std::string name;
        std::string parentName;
        int dwgVersion = 0;
        int maintVersion = 0;
        int proxyFlags = 0;
        Factory factory = nullptr; // null for a class that is never made by name
        std::string dxfName;
        std::string appName;
    };

    explicit AcRxClass(Traits traits);
    ~AcRxClass() override;

    const std::string& name() const { return m_traits.name; }
    const std::string& dxfName() const { return m_traits.dxfName; }
    const std::string& appName() const { return m_traits.appName; }
    int proxyFlags() const { return m_traits.proxyFlags; }
    void getClassVersion(int& dwgVersion, int& maintVersion) const;
    const Traits& traits() const { return m_traits; }

    AcRxClass* myParent() const { return m_parent; } // null for AcRxObject, and until the hierarchy is built
    bool isDerivedFrom(const AcRxClass* aClass) const;
    // A fresh object from the factory that the caller owns; null without a factory.
    AcRxObject* create() const;

private:
    friend class AcRxClassRegistry;
    Traits m_traits;
    AcRxClass* m_parent = nullptr;
};

// All classes of the process by name. Told of each class that comes or goes are the listeners, which the
// drawing room uses to turn live objects into proxies and back.
class VELDRIN_API AcRxClassRegistry {
public:
    using Listener = std::function<void(AcRxClass&)>;

    static AcRxClassRegistry& instance();

    // Null when the name is taken already: a class is never registered twice.
    AcRxClass* add(AcRxClass::Traits traits);
    // A class of the host itself, linked to its parent at once (see AcRxMacros.h).
    AcRxClass* addBuiltIn(const char* name, AcRxClass* parent, const char* dxfName,
                          AcRxClass::Factory factory);
    void remove(AcRxClass* aClass);
    AcRxClass* at(std::string_view name) const;
    AcRxClass* atDxfName(std::string_view dxfName) const;
    std::vector<AcRxClass*> all() const; // by name
    // Links each class to its parent by name and tells the listeners of the classes that are new since.
    void buildHierarchy();

    // Returns a token for removal. `added` runs after linking, `removed` before the descriptor goes.
    int addListener(Listener added, Listener removed);
    void removeListener(int token);

    ~AcRxClassRegistry();

private:
    AcRxClassRegistry();
    struct Impl;
    std::unique_ptr<Impl> m_impl;
};

// The calls by which a module brings its classes. A name that is taken gives null.
VELDRIN_API AcRxClass* newAcRxClass(const char* className, const char* parentClassName, int dwgVersion,
                                    int maintVersion, int proxyFlags, AcRxClass::Factory factory,
                                    const char* dxfName, const char* appName);
VELDRIN_API AcRxClass* acrxClassByName(const char* className); // null when unknown
VELDRIN_API void acrxBuildClassHierarchy();
// Live objects of the class become proxies. Throws CException, and leaves all as it was, when one is open.
VELDRIN_API void deleteAcRxClass(AcRxClass* aClass);

// Ends the loading of the module that calls it with the message: throws CException.
[[noreturn]] VELDRIN_API void acrx_abort(const char* message);
