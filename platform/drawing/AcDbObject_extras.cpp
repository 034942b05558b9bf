#include "drawing/AcDbDatabase.h"
#include "drawing/AcDbDictionary.h"
#include "drawing/AcDbObject.h"
#include "drawing/AcDbObjectAccess.h"
#include "drawing/AcDbObjectExtras.h"
#include "drawing/AcDbRegAppTable.h"
#include "drawing/SymbolNames.h"

#include <memory>

namespace {

constexpr int kFirstCode = 1000;
constexpr int kLastCode = 1071;

bool isApplication(const resbuf& item) {
    return item.restype == AcDb::kDxfRegAppName;
}

// Names the application of the item, which is one of those that begin an application's part.
bool isOf(const resbuf& item, const char* application) {
    return veldrin::sameSymbolName(veldrin::textOf(item), application);
}

// The parts of a chain whose application passes the test.
template<class Test>
veldrin::ResbufPtr partsOf(const resbuf* chain, const Test& test) {
    veldrin::ResbufBuilder parts;
    bool taken = false;
    for (; chain; chain = chain->rbnext) {
        if (isApplication(*chain)) taken = test(*chain);
        if (taken) parts.addCopy(*chain);
    }
    return parts.take();
}

bool names(const resbuf* chain, const char* application) {
    for (; chain; chain = chain->rbnext) {
        if (isApplication(*chain) && isOf(*chain, application)) return true;
    }
    return false;
}

Acad::ErrorStatus check(const resbuf* chain, const AcDbDatabase* database) {
    if (!chain || !isApplication(*chain)) return Acad::eInvalidInput;
    for (; chain; chain = chain->rbnext) {
        if (chain->restype < kFirstCode || chain->restype > kLastCode) return Acad::eInvalidInput;
        if (acutGroupCodeKind(chain->restype) == RTNONE) return Acad::eInvalidInput;
        if (!isApplication(*chain) || !database) continue;
        const AcDbObjectId known =
            AcDbObjectAccess::findRecord(database->regAppTableId(), veldrin::textOf(*chain));
        if (known.isNull()) return Acad::eKeyNotFound;
    }
    return Acad::eOk;
}

} // namespace

resbuf* AcDbObject::xData(const char* regappName) const {
    assertReadEnabled();
    if (!m_extras) return nullptr;
    const bool all = !regappName || !*regappName;
    const auto wanted = [&](const resbuf& item) { return all || isOf(item, regappName); };
    return partsOf(m_extras->xdata.get(), wanted).release();
}

Acad::ErrorStatus AcDbObject::setXData(const resbuf* xdata) {
    assertWriteEnabled();
    const Acad::ErrorStatus status = check(xdata, database());
    if (status != Acad::eOk) return status;
    // What the others had stays; a name with nothing behind it adds nothing.
    const resbuf* const before = m_extras ? m_extras->xdata.get() : nullptr;
    const auto isOther = [&](const resbuf& item) { return !names(xdata, veldrin::textOf(item)); };
    const auto hasValues = [](const resbuf& item) { return item.rbnext && !isApplication(*item.rbnext); };
    veldrin::ResbufPtr kept = partsOf(before, isOther);
    veldrin::ResbufPtr added = partsOf(xdata, hasValues);
    if (!kept) {
        kept = std::move(added);
    } else {
        resbuf* last = kept.get();
        while (last->rbnext) last = last->rbnext;
        last->rbnext = added.release();
    }
    extras().xdata = std::move(kept);
    return Acad::eOk;
}

AcDbObjectId AcDbObject::extensionDictionary() const {
    const AcDbObjectId dictionary = AcDbObjectAccess::extensionDictionary(*this);
    return dictionary.isErased() ? AcDbObjectId() : dictionary;
}

Acad::ErrorStatus AcDbObject::createExtensionDictionary() {
    assertWriteEnabled();
    if (!database()) return Acad::eNotInDatabase;
    if (!extensionDictionary().isNull()) return Acad::eDuplicateKey;
    auto dictionary = std::make_unique<AcDbDictionary>();
    const Acad::ErrorStatus status = AcDbObjectAccess::add(*database(), dictionary.get(), m_id);
    if (status != Acad::eOk) return status;
    AcDbObject* const added = dictionary.release();
    extras().dictionary = added->objectId();
    return added->close();
}
