#pragma once

#include "drawing/AcDbEntity.h"

#include <memory>
#include <string>

namespace veldrin {

// What a proxy keeps of the object that it stands in for.
struct ProxyContent {
    std::string className;
    std::string dxfName;
    std::string appName;
    std::string items; // the tagged items behind the base part (see RecordFiler.h)
};

} // namespace veldrin

// Stands in for an entity whose class is not here, or whose record is newer than its reader. Keeps class,
// record and last picture, shows the picture, and files the record unchanged; when the class comes back the
// entity comes alive in the same slot. Editing is refused, erasing is allowed.
class VELDRIN_API AcDbProxyEntity : public AcDbEntity {
public:
    ACRX_DECLARE_MEMBERS(AcDbProxyEntity);

    AcDbProxyEntity();
    AcDbProxyEntity(std::string className, std::string dxfName, std::string appName, std::string record);
    explicit AcDbProxyEntity(veldrin::ProxyContent content);
    ~AcDbProxyEntity() override;

    const std::string& originalClassName() const { return m_content.className; }
    const std::string& originalDxfName() const { return m_content.dxfName; }
    const std::string& applicationDescription() const { return m_content.appName; }
    // The tagged items behind the base part (see RecordFiler.h).
    const std::string& record() const { return m_content.items; }
    const veldrin::ProxyContent& content() const { return m_content; }

    // The last picture; null when there is none.
    void setPicture(std::shared_ptr<AcGiDrawable> picture) { m_picture = std::move(picture); }
    const std::shared_ptr<AcGiDrawable>& picture() const { return m_picture; }

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;

protected:
    bool subWorldDraw(AcGiWorldDraw* draw) override;
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& matrix) override;

private:
    veldrin::ProxyContent m_content;
    std::shared_ptr<AcGiDrawable> m_picture;
};

// The same for an object that is no entity.
class VELDRIN_API AcDbProxyObject : public AcDbObject {
public:
    ACRX_DECLARE_MEMBERS(AcDbProxyObject);

    AcDbProxyObject();
    explicit AcDbProxyObject(veldrin::ProxyContent content);
    ~AcDbProxyObject() override;

    const veldrin::ProxyContent& content() const { return m_content; }

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;

private:
    veldrin::ProxyContent m_content;
};

namespace veldrin {

// Null for an object that is no proxy.
VELDRIN_API const ProxyContent* proxyContentOf(const AcDbObject& object);
// A fresh object of the same class, a proxy's names included; null when the class makes none.
VELDRIN_API std::unique_ptr<AcDbObject> emptyLike(const AcDbObject& object);
// A stand-in for the object, with its base part; it is in no database.
VELDRIN_API std::unique_ptr<AcDbObject> makeProxy(const AcDbObject& object);
// The object that a proxy stands in for; null while its class is not here or does not read the record.
VELDRIN_API std::unique_ptr<AcDbObject> reviveProxy(const AcDbObject& proxy);
// An object from all that a record holds. A class that is not here, or that answers eMakeMeProxy, gives a
// proxy; any other failing status gives null. The names are needed when there is no class to ask.
VELDRIN_API std::unique_ptr<AcDbObject> objectFromRecord(const ProxyContent& names, bool isEntity,
                                                         AcDbDatabase& database, std::string_view record,
                                                         Acad::ErrorStatus& status);

} // namespace veldrin
