#pragma once

#include "drawing/RecordFiler.h"
#include "graphics/SinkBase.h"

#include <memory>
#include <string_view>

namespace veldrin {

// The sink that turns what an entity draws into a record: item by item a number for the kind, then what it
// needs; traits stand where they change.
class PictureWriter final : public SinkBase {
public:
    // What the drawable draws with its own properties. The bytes stay until the next picture.
    std::string_view write(AcGiDrawable& drawable);

protected:
    void putPolyline(std::span<const AcGePoint3d> points) override;
    void putPolygon(std::span<const AcGePoint3d> points) override;
    void putCircle(const AcGePoint3d& center, double radius, const AcGeVector3d& normal) override;
    void putArc(const AcGePoint3d& center, double radius, const AcGeVector3d& normal,
                const AcGeVector3d& startVector, double sweep, AcGiArcType type) override;
    void putText(const AcGiText& text) override;
    void putFittedCurve(const AcGiFittedCurve& curve) override;

private:
    void begin(int kind);
    void putPoints(std::span<const AcGePoint3d> points);

    RecordWriter m_record{AcDb::kFileFiler};
    DrawTraits m_written;
    bool m_anyTraits = false;
};

// The picture of a record; null for one that is damaged.
std::shared_ptr<AcGiDrawable> readPicture(std::string_view record, AcDbDatabase& database);

} // namespace veldrin
