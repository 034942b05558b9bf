#include "drawing/AcDbObject.h"

#include "drawing/AcDbDxfFiler.h"
#include "drawing/AcDbEntity.h"
#include "drawing/AcDbObjectExtras.h"
#include "runtime/AcRxClass.h"

#include <memory>

namespace veldrin {

namespace {

int lengthOf(const resbuf* chain) {
    int count = 0;
    for (; chain; chain = chain->rbnext) ++count;
    return count;
}

void writeValue(AcDbDwgFiler& filer, const resbuf& item) {
    const ads_u_val& value = item.resval;
    switch (acutGroupCodeKind(item.restype)) {
    case RTSTR: filer.writeString(textOf(item)); break;
    case RTREAL: filer.writeDouble(value.rreal); break;
    case RT3DPOINT: filer.writePoint3d({value.rpoint[0], value.rpoint[1], value.rpoint[2]}); break;
    case RTSHORT: filer.writeInt16(value.rint); break;
    case RTLONG: filer.writeInt32(value.rlong); break;
    case RTENAME: {
        AcDbObjectId id;
        acdbGetObjectId(id, value.rlname);
        filer.writeSoftPointerId(id);
        break;
    }
    default: break; // a code alone
    }
}

void readValue(AcDbDwgFiler& filer, int code, ResbufBuilder& chain) {
    switch (acutGroupCodeKind(code)) {
    case RTSTR: {
        std::string text;
        filer.readString(text);
        chain.addText(code, text);
        break;
    }
    case RTREAL: filer.readDouble(chain.add(code).resval.rreal); break;
    case RT3DPOINT: {
        AcGePoint3d point;
        filer.readPoint3d(point);
        chain.addPoint(code, point.x, point.y, point.z);
        break;
    }
    case RTSHORT: filer.readInt16(chain.add(code).resval.rint); break;
    case RTLONG: filer.readInt32(chain.add(code).resval.rlong); break;
    case RTENAME: {
        AcDbObjectId id;
        filer.readSoftPointerId(id);
        ads_name name;
        acdbGetAdsName(name, id);
        chain.addName(code, name);
        break;
    }
    default: chain.add(code); break;
    }
}

} // namespace

void writeChain(AcDbDwgFiler& filer, const resbuf* chain) {
    filer.writeInt32(lengthOf(chain));
    for (; chain; chain = chain->rbnext) {
        filer.writeInt16(chain->restype);
        writeValue(filer, *chain);
    }
}

Acad::ErrorStatus readChain(AcDbDwgFiler& filer, ResbufPtr& chain) {
    Adesk::Int32 count = 0;
    filer.readInt32(count);
    ResbufBuilder builder;
    for (Adesk::Int32 i = 0; i < count && filer.filerStatus() == Acad::eOk; ++i) {
        Adesk::Int16 code = 0;
        if (filer.readInt16(code) == Acad::eOk) readValue(filer, code, builder);
    }
    if (count < 0) filer.setFilerStatus(Acad::eBadRecord);
    if (filer.filerStatus() == Acad::eOk) chain = builder.take();
    return filer.filerStatus();
}

} // namespace veldrin

AcDbObject::Extras& AcDbObject::extras() {
    if (!m_extras) m_extras = std::make_unique<Extras>();
    return *m_extras;
}

Acad::ErrorStatus AcDbObject::dwgIn(AcDbDwgFiler* filer) {
    Acad::ErrorStatus status = filer->beginEmbedded(isA()->name().c_str());
    if (status == Acad::eOk) status = dwgInFields(filer);
    return status == Acad::eOk ? filer->endEmbedded() : status;
}

Acad::ErrorStatus AcDbObject::dwgOut(AcDbDwgFiler* filer) const {
    Acad::ErrorStatus status = filer->beginEmbedded(isA()->name().c_str());
    if (status == Acad::eOk) status = dwgOutFields(filer);
    return status == Acad::eOk ? filer->endEmbedded() : status;
}

Acad::ErrorStatus AcDbObject::dxfIn(AcDbDxfFiler* filer) {
    return dxfInFields(filer);
}

Acad::ErrorStatus AcDbObject::dxfOut(AcDbDxfFiler* filer) const {
    return dxfOutFields(filer);
}

Acad::ErrorStatus AcDbObject::dwgInFields(AcDbDwgFiler* filer) {
    assertWriteEnabled();
    AcDbObjectId owner, dictionary;
    veldrin::ResbufPtr xdata;
    filer->readSoftPointerId(owner);
    filer->readHardOwnershipId(dictionary);
    if (veldrin::readChain(*filer, xdata) != Acad::eOk) return filer->filerStatus();
    if (!owner.isNull() || filer->filerType() == AcDb::kUndoFiler) m_owner = owner;
    if (!xdata && dictionary.isNull())
        m_extras.reset();
    else
        extras() = {std::move(xdata), dictionary};
    return isKindOf(AcDbEntity::desc()) ? Acad::eOk : filer->endBasePart();
}

Acad::ErrorStatus AcDbObject::dwgOutFields(AcDbDwgFiler* filer) const {
    assertReadEnabled();
    filer->writeSoftPointerId(m_owner);
    filer->writeHardOwnershipId(m_extras ? m_extras->dictionary : AcDbObjectId());
    veldrin::writeChain(*filer, m_extras ? m_extras->xdata.get() : nullptr);
    if (!isKindOf(AcDbEntity::desc())) filer->endBasePart();
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbObject::dxfInFields(AcDbDxfFiler* filer) {
    assertWriteEnabled();
    return filer->filerStatus();
}

Acad::ErrorStatus AcDbObject::dxfOutFields(AcDbDxfFiler* filer) const {
    assertReadEnabled();
    return filer->filerStatus();
}
