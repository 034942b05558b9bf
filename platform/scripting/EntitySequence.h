#pragma once

#include "drawing/AcDb2dPolyline.h"
#include "drawing/AcDbAttribute.h"
#include "drawing/AcDbBlockReference.h"
#include "lisp/Value.h"

#include <memory>
#include <string>
#include <vector>

namespace veldrin::scripting {

// Entities that scripts make in several calls: a polyline, its vertices and SEQEND; a reference, its
// attributes and SEQEND; BLOCK, the block's entities and ENDBLK. Nothing comes into the drawing before the
// end. What is begun anew, in another drawing or as another head, drops what was not ended.
class EntitySequence {
public:
    // An entity that goes to model space, or to the block that is being made.
    struct Whole {
        std::unique_ptr<AcDbEntity> entity;
        std::vector<std::unique_ptr<AcDbAttribute>> attributes;
    };

    // What became of an entity: where it is, or that it waits for ENDBLK.
    struct Result {
        bool ok = false;
        AcDbObjectId id;
        std::string blockName; // of ENDBLK
    };

    // Drops what belongs to another drawing.
    void enter(AcDbDatabase& database);
    bool isMakingBlock() const { return m_hasBlock; }

    bool beginBlock(const std::string& name, const AcGePoint3d& base);
    Result endBlock();
    Result add(std::unique_ptr<AcDbEntity> entity);
    void beginPolyline(std::unique_ptr<AcDb2dPolyline> polyline);
    bool addVertex(const AcGePoint3d& point, double bulge);
    void beginReference(std::unique_ptr<AcDbBlockReference> reference);
    bool addAttribute(std::unique_ptr<AcDbAttribute> attribute);
    Result endSequence();

private:
    Result put(Whole whole);
    Acad::ErrorStatus place(Whole& whole, AcDbObjectId blockId, AcDbObjectId& id);
    void dropHead();

    AcDbDatabase* m_database = nullptr; // only compared, and used in the call that gave it
    std::uint32_t m_generation = 0;
    Whole m_head; // in front of SEQEND
    bool m_hasBlock = false;
    std::string m_blockName;
    AcGePoint3d m_blockBase;
    std::vector<Whole> m_blockEntities;
};

} // namespace veldrin::scripting
