#pragma once

#include "drawing/AcDbEntity.h"
#include "geometry/AcGeArrays.h"
#include "runtime/ResbufChain.h"

#include <string>
#include <vector>

// An entity of other programs that is kept as the groups in which it came: it is listed, filed, copied and
// written back with every one of them. Of a kind that nothing is known of, it shows nothing and cannot be
// moved; classes derived from it know what their groups mean.
class VELDRIN_API AcDbForeignEntity : public AcDbEntity {
public:
    ACRX_DECLARE_MEMBERS(AcDbForeignEntity);

    AcDbForeignEntity();
    explicit AcDbForeignEntity(std::string dxfName);
    ~AcDbForeignEntity() override;

    // As exchange data names its kind: "LEADER".
    const std::string& dxfName() const { return m_dxfName; }
    // Behind the common properties: markers of classes and their groups, in order.
    const resbuf* groups() const { return m_groups.get(); }

    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override;
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override;
    // A list that has any of the entity's own groups replaces all of them.
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override;
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override;

protected:
    bool subWorldDraw(AcGiWorldDraw* draw) override;
    void subList() const override;
    Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& matrix) override;
    Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;

    // What it looks like, in the world; extents, snaps and pieces follow from it.
    struct Outline {
        AcGePoint3dArray points;
        bool isFilled = false;
    };
    virtual std::vector<Outline> outlines() const;
    Acad::ErrorStatus subExplode(std::vector<AcDbEntity*>& pieces) const override;
    // A group as it is written and listed now.
    virtual std::string textOfGroup(const resbuf& group) const;

    // False from the group on that files have in records of their own.
    virtual bool isOwnGroup(const resbuf& group, const AcDbDxfFiler& filer) const;
    // Whether the point of this group has no third coordinate in files; `index` counts the groups.
    virtual bool isFlat(const resbuf& group, int index) const;
    // Markers of classes for groups from a file of old, which has none.
    struct Markers {
        std::vector<std::string> first;  // in front of all
        std::vector<std::string> second; // in front of those that follow
        std::vector<int> behindSecond;
        std::vector<std::string> last; // behind all
    };
    virtual Markers markersFor(const resbuf* groups) const;
    // The groups have changed.
    virtual void groupsChanged() {}

    double realGroup(int code, double missing = 0.0) const;
    int integerGroup(int code, int missing = 0) const;
    std::string textGroup(int code) const;
    bool pointGroup(int code, AcGePoint3d& point) const; // the first one; false without one
    AcGeVector3d normalGroup() const;
    resbuf* mutableGroups() { return m_groups.get(); }
    void setGroups(veldrin::ResbufPtr groups) { m_groups = std::move(groups); }

private:
    const resbuf* find(int code) const;
    void addMarkers();

    std::string m_dxfName;
    veldrin::ResbufPtr m_groups;
};

namespace veldrin {

inline AcGePoint3d pointOf(const resbuf& group) {
    return {group.resval.rpoint[0], group.resval.rpoint[1], group.resval.rpoint[2]};
}
inline void setPoint(resbuf& group, const AcGePoint3d& point) {
    group.resval.rpoint[0] = point.x;
    group.resval.rpoint[1] = point.y;
    group.resval.rpoint[2] = point.z;
}

} // namespace veldrin
