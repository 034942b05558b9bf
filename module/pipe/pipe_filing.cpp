#include "pipe/PlumbPipe.h"

#include "drawing/AcDbDwgFiler.h"
#include "pipe/PipeRecord.h"

#include <algorithm>

namespace plumb {

// The pipe's record in a drawing. The same record serves undo, copying and inserting, as the host drives all
// of them through a filer.

namespace {

constexpr Adesk::Int32 kCurrentVersion = 13;

// Both directions share one order of items, PipeRecord.h. A failing item ends the record.

class RecordWriter {
public:
    explicit RecordWriter(AcDbDwgFiler& filer) : m_filer(filer) {}

    bool item(bool value) { return ok(m_filer.writeBool(value)); }
    bool item(Adesk::Int32 value) { return ok(m_filer.writeInt32(value)); }
    bool item(double value) { return ok(m_filer.writeDouble(value)); }
    bool item(const AcGePoint3d& value) { return ok(m_filer.writePoint3d(value)); }
    bool item(const CString& value) { return ok(m_filer.writeString(value)); }
    bool item(const BreakSlots& slots) {
        for (const double slot : slots)
            if (!item(slot)) return false;
        return true;
    }
    bool item(const elbowInfo& e) { return item(e.dLength) && item(e.dAngle) && item(e.breaks); }
    bool item(const arcInfo& a) {
        return item(a.dLength) && item(a.dOffset) && item(a.iNormal) && item(a.breaks);
    }

    template<class T>
    bool item(const std::vector<T>& list) {
        const std::size_t count = std::min<std::size_t>(list.size(), kMostFiled);
        if (!item(static_cast<Adesk::Int32>(count))) return false;
        for (std::size_t i = 0; i < count; ++i)
            if (!item(list[i])) return false;
        return true;
    }

    // What is erased is left out of a file, but an undo record keeps it.
    bool item(const AcDbObjectId& id) {
        const bool written = id.isValid() && (!id.isErased() || m_filer.filerType() == AcDb::kUndoFiler);
        return item(written) && (!written || ok(m_filer.writeHardPointerId(id)));
    }
    bool embedded(const AcDbMText& text) { return ok(text.dwgOut(&m_filer)); }

    Acad::ErrorStatus status() const { return m_status; }

private:
    bool ok(Acad::ErrorStatus status) { return (m_status = status) == Acad::eOk; }

    AcDbDwgFiler& m_filer;
    Acad::ErrorStatus m_status = Acad::eOk;
};

class RecordReader {
public:
    explicit RecordReader(AcDbDwgFiler& filer) : m_filer(filer) {}

    bool item(bool& value) { return ok(m_filer.readBool(value)); }
    bool item(Adesk::Int32& value) { return ok(m_filer.readInt32(value)); }
    bool item(double& value) { return ok(m_filer.readDouble(value)); }
    bool item(AcGePoint3d& value) { return ok(m_filer.readPoint3d(value)); }
    bool item(CString& value) {
        char* text = nullptr;
        if (!ok(m_filer.readString(text))) return false;
        value = text ? text : "";
        acdbFree(text);
        return true;
    }
    bool item(BreakSlots& slots) {
        for (double& slot : slots)
            if (!item(slot)) return false;
        return true;
    }
    bool item(elbowInfo& e) {
        double length = 0.0;
        double angle = 0.0;
        if (!item(length) || !item(angle)) return false;
        e = elbowInfo(length, angle);
        return item(e.breaks);
    }
    bool item(arcInfo& a) { return item(a.dLength) && item(a.dOffset) && item(a.iNormal) && item(a.breaks); }

    template<class T>
    bool item(std::vector<T>& list) {
        Adesk::Int32 count = 0;
        if (!item(count)) return false;
        list.clear();
        for (Adesk::Int32 i = 0; i < count; ++i) {
            T element{};
            if (!item(element)) return false;
            list.push_back(element);
        }
        return true;
    }

    // A reference to what is gone does not stop the load.
    bool item(AcDbObjectId& id) {
        id.setNull();
        bool written = false;
        if (!item(written)) return false;
        if (!written) return true;
        const Acad::ErrorStatus status = m_filer.readHardPointerId(id);
        if (status != Acad::eUnknownHandle) return ok(status);
        if (m_filer.filerStatus() == status) m_filer.resetFilerStatus();
        return true;
    }
    bool embedded(AcDbMText& text) { return ok(text.dwgIn(&m_filer)); }

    Acad::ErrorStatus status() const { return m_status; }

private:
    bool ok(Acad::ErrorStatus status) { return (m_status = status) == Acad::eOk; }

    AcDbDwgFiler& m_filer;
    Acad::ErrorStatus m_status = Acad::eOk;
};

bool isKnown(Adesk::Int32 version) {
    return version == 1 || version == 2 || (version >= 11 && version <= kCurrentVersion);
}

} // namespace

Acad::ErrorStatus PlumbPipe::dwgOutFields(AcDbDwgFiler* filer) const {
    assertReadEnabled();
    if (const Acad::ErrorStatus status = AcDbEntity::dwgOutFields(filer); status != Acad::eOk) return status;
    RecordWriter writer(*filer);
    if (!writer.item(kCurrentVersion) || !filePipe(writer, m_data, m_mtext, kCurrentVersion))
        return writer.status();
    return filer->filerStatus();
}

Acad::ErrorStatus PlumbPipe::dwgInFields(AcDbDwgFiler* filer) {
    assertWriteEnabled();
    if (const Acad::ErrorStatus status = AcDbEntity::dwgInFields(filer); status != Acad::eOk) return status;
    RecordReader reader(*filer);
    Adesk::Int32 version = 0;
    if (!reader.item(version)) return reader.status();
    if (version > kCurrentVersion) return Acad::eMakeMeProxy;
    if (!isKnown(version)) return filer->filerStatus();
    if (!filePipe(reader, m_data, m_mtext, version)) return reader.status();
    return filer->filerStatus();
}

} // namespace plumb
