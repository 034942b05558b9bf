#pragma once

#include "drawing/AcDbObjectId.h"
#include "runtime/CString.h"
#include "runtime/resbuf.h"

namespace plumb {

// Results of the Lisp call that runs now.

// An entity's name, nil when it has none.
void retEntity(AcDbObjectId id);
void retNewEntity(const AcDbEntity* entity);

// A list that is put together item by item. listBegin starts it, listFinish makes it the result; a list that
// is not finished is dropped.
class ResultList {
public:
    ResultList() = default;
    ~ResultList();
    ResultList(const ResultList&) = delete;
    ResultList& operator=(const ResultList&) = delete;

    void listBegin();
    void listFinish();

    // (key . value)
    void pairInt(const CString& key, Adesk::Int32 value);
    void pairReal(const CString& key, double value);
    void pairText(const CString& key, const CString& value);
    void pairNil(const CString& key);
    void pairIntReal(Adesk::Int32 key, double value);
    // Nil for a null entity; nothing at all for one that has no name.
    void pairEntity(const CString& key, const AcDbEntity* entity);
    void itemText(const CString& value);

private:
    void append(resbuf* items);

    resbuf* m_head = nullptr;
    resbuf* m_tail = nullptr;
};

} // namespace plumb
