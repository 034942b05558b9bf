// What sinks do around the contents of a block that a reference places.

#include "drawing/AcDbDatabase.h"
#include "drawing/AcDbLayerTable.h"
#include "drawing/block_parts.h"
#include "graphics/SinkBase.h"

#include <algorithm>

namespace veldrin {

namespace {

using LayerPointer = AcDbObjectPointer<AcDbLayerTableRecord>;

bool isByLayer(AcDbObjectId linetype, const AcDbDatabase& database) {
    return linetype.isNull() || linetype == database.byLayerLinetype();
}

} // namespace

// By layer means the part's own layer; so a reference that is by layer hands on what its layer has, unless
// both are on the same one.
DrawTraits traitsInBlock(const DrawTraits& own, const DrawTraits& reference) {
    DrawTraits traits = own;
    const AcDbDatabase* database = own.layer.database();
    if (!database) database = reference.layer.database();
    if (!database) return traits;
    if (own.layer.isNull() || own.layer == database->layerZero()) traits.layer = reference.layer;
    const bool sameLayer = traits.layer == reference.layer;
    const auto layer = [&] { return LayerPointer(reference.layer, AcDb::kForRead, true); };
    if (own.color.isByBlock()) {
        traits.color = reference.color;
        if (reference.color.isByLayer() && !sameLayer)
            if (const LayerPointer record = layer()) traits.color = record->color();
    }
    if (own.linetype == database->byBlockLinetype()) {
        traits.linetype = reference.linetype;
        if (isByLayer(reference.linetype, *database) && !sameLayer)
            if (const LayerPointer record = layer()) traits.linetype = record->linetypeObjectId();
    }
    if (own.lineWeight == AcDb::kLnWtByBlock) {
        traits.lineWeight = reference.lineWeight;
        if (reference.lineWeight == AcDb::kLnWtByLayer && !sameLayer)
            if (const LayerPointer record = layer()) traits.lineWeight = record->lineWeight();
    }
    return traits;
}

const DrawTraits& SinkBase::resolvedTraits() const {
    if (!m_traits.stale) return m_resolved;
    m_resolved = traitsInBlock(m_traits.value, m_blocks.back().reference);
    m_resolved.linetypeScale *= m_blocks.back().linetypeScale;
    m_traits.stale = false;
    return m_resolved;
}

bool SinkBase::beginBlock(AcDbObjectId block, const AcGeMatrix3d& placing) {
    if (m_stopped || m_blocks.size() >= kDeepestBlock) return false;
    if (std::ranges::find(m_blocks, block, &OpenBlock::block) != m_blocks.end()) return false;
    if (m_blocks.empty()) m_begunBlocks = 0;
    if (++m_begunBlocks > kMostBlocks) return false;
    const DrawTraits reference = traits();
    const double outer = m_blocks.empty() ? 1.0 : m_blocks.back().linetypeScale;
    m_blocks.push_back({block, reference, m_traits.value, outer * placing.axisScales().x});
    m_traits.touch();
    pushModelTransform(placing);
    return true;
}

void SinkBase::endBlock() {
    if (m_blocks.empty()) return;
    popModelTransform();
    m_traits.value = m_blocks.back().before;
    m_blocks.pop_back();
    m_traits.touch();
}

} // namespace veldrin
