#include "host/LispResults.h"

#include "drawing/AcDbEntity.h"
#include "editor/aced.h"

namespace plumb {

void retEntity(AcDbObjectId id) {
    ads_name name{};
    if (acdbGetAdsName(name, id) == Acad::eOk)
        acedRetName(name, RTENAME);
    else
        acedRetNil();
}

void retNewEntity(const AcDbEntity* entity) {
    retEntity(entity->objectId());
}

ResultList::~ResultList() {
    acutRelRb(m_head);
}

void ResultList::append(resbuf* items) {
    if (!items) return;
    if (m_tail)
        m_tail->rbnext = items;
    else
        m_head = items;
    for (m_tail = items; m_tail->rbnext;) m_tail = m_tail->rbnext;
}

void ResultList::listBegin() {
    acutRelRb(m_head);
    m_head = m_tail = nullptr;
    append(acutNewRb(RTLB));
}

void ResultList::listFinish() {
    append(acutNewRb(RTLE));
    acedRetList(m_head);
    acutRelRb(m_head);
    m_head = m_tail = nullptr;
}

void ResultList::pairInt(const CString& key, Adesk::Int32 value) {
    append(acutBuildList(RTLB, RTSTR, key.c_str(), RTDOTE, RTLONG, value, RTLE, 0));
}

void ResultList::pairReal(const CString& key, double value) {
    append(acutBuildList(RTLB, RTSTR, key.c_str(), RTDOTE, RTREAL, value, RTLE, 0));
}

void ResultList::pairText(const CString& key, const CString& value) {
    append(acutBuildList(RTLB, RTSTR, key.c_str(), RTDOTE, RTSTR, value.c_str(), RTLE, 0));
}

void ResultList::pairNil(const CString& key) {
    append(acutBuildList(RTLB, RTSTR, key.c_str(), RTDOTE, RTNIL, RTLE, 0));
}

void ResultList::pairIntReal(Adesk::Int32 key, double value) {
    append(acutBuildList(RTLB, RTLONG, key, RTDOTE, RTREAL, value, RTLE, 0));
}

void ResultList::pairEntity(const CString& key, const AcDbEntity* entity) {
    ads_name name{};
    if (!entity)
        pairNil(key);
    else if (acdbGetAdsName(name, entity->objectId()) == Acad::eOk)
        append(acutBuildList(RTLB, RTSTR, key.c_str(), RTDOTE, RTENAME, name, RTLE, 0));
}

void ResultList::itemText(const CString& value) {
    append(acutBuildList(RTSTR, value.c_str(), 0));
}

} // namespace plumb
