#pragma once

#include "drawing/AcDbDwgFiler.h"
#include "drawing/AcDbEntity.h"
#include "drawing/AcDbMText.h"
#include "runtime/AcRxClass.h"

namespace veldrin::tests {

// An entity of a class that comes and goes, as a module's do. It has an embedded object and a pointer.
class TestPart : public AcDbEntity {
public:
    static constexpr Adesk::Int32 kVersion = 2;

    static AcRxClass* desc() { return acrxClassByName("TestPart"); }
    static TestPart* cast(AcRxObject* object) {
        return object && object->isKindOf(desc()) ? static_cast<TestPart*>(object) : nullptr;
    }
    AcRxClass* isA() const override { return desc(); }

    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override {
        AcDbEntity::dwgOutFields(filer);
        filer->writeInt32(version);
        filer->writeDouble(size);
        note.dwgOut(filer);
        return filer->writeHardPointerId(layerOfNote);
    }
    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override {
        const Acad::ErrorStatus base = AcDbEntity::dwgInFields(filer);
        if (base != Acad::eOk) return base;
        if (filer->readInt32(version) != Acad::eOk) return filer->filerStatus();
        if (version > kVersion) return Acad::eMakeMeProxy;
        filer->readDouble(size);
        note.dwgIn(filer);
        filer->readHardPointerId(layerOfNote);
        return filer->filerStatus();
    }

    Adesk::Int32 version = kVersion;
    double size = 0.0;
    AcDbMText note;
    AcDbObjectId layerOfNote;
};

// Registers the class while it lives.
class TestPartClass {
public:
    TestPartClass() {
        m_class = newAcRxClass(
            "TestPart", "AcDbEntity", 1, 0, 0, []() -> AcRxObject* { return new TestPart; }, "TESTPART",
            "Tests");
        acrxBuildClassHierarchy();
    }
    ~TestPartClass() {
        if (m_class) deleteAcRxClass(m_class);
    }
    TestPartClass(const TestPartClass&) = delete;
    TestPartClass& operator=(const TestPartClass&) = delete;
    AcRxClass* get() const { return m_class; }

private:
    AcRxClass* m_class = nullptr;
};

} // namespace veldrin::tests
