#pragma once

#include "drawing/AcDbObject.h"
#include "runtime/ResbufChain.h"

#include <map>
#include <string>

// Objects by name. Hangs under the drawing (named objects) or, as extension dictionary, under any object.
class VELDRIN_API AcDbDictionary : public AcDbObject {
public:
    ACRX_DECLARE_MEMBERS(AcDbDictionary);

    AcDbDictionary();
    ~AcDbDictionary() override;

    Acad::ErrorStatus getAt(const std::string& name, AcDbObjectId& id) const; // eKeyNotFound
    bool has(const std::string& name) const;
    // Adds the object to the database with this dictionary as owner; it is then open for write. An entry of
    // the same name is replaced and its object erased.
    Acad::ErrorStatus setAt(const std::string& name, AcDbObject* object, AcDbObjectId& id);
    // Takes in an object of the database that no dictionary holds, under a name that is free: eDuplicateKey,
    // eAlreadyInDatabase, eNotApplicable for an entity or a table's record.
    Acad::ErrorStatus adopt(const std::string& name, AcDbObjectId object);
    // Takes the entry out; its object stays in the database.
    Acad::ErrorStatus remove(const std::string& name);
    // eKeyNotFound, or eDuplicateKey for a name that is taken.
    Acad::ErrorStatus rename(const std::string& from, const std::string& to);
    const std::map<std::string, AcDbObjectId>& entries() const { return m_entries; }

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;

private:
    friend class AcDbObjectAccess;
    std::map<std::string, AcDbObjectId> m_entries;
};

// A chain of group codes and values for an application's own use.
class VELDRIN_API AcDbXrecord : public AcDbObject {
public:
    ACRX_DECLARE_MEMBERS(AcDbXrecord);

    AcDbXrecord();
    ~AcDbXrecord() override;

    // A copy that the caller frees; null when empty.
    resbuf* rbChain() const;
    // eInvalidInput for a chain with a type that is no group code.
    Acad::ErrorStatus setFromRbChain(const resbuf* chain);

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;

private:
    veldrin::ResbufPtr m_chain;
};
