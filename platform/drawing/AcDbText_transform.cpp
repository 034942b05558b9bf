#include "drawing/AcDbDatabase.h"
#include "drawing/AcDbText.h"
#include "drawing/AcGiTextLook.h"

#include <utility>

// Mirrored text reads from behind. In a drawing whose MIRRTEXT is off it stays readable; elsewhere it turns
// backwards or upside down, whichever leaves it closer to how it stood.
Acad::ErrorStatus AcDbText::subTransformBy(const AcGeMatrix3d& matrix) {
    if (matrix.isSingular()) return Acad::eInvalidInput;
    const AcGeVector3d before = direction();
    AcGiText text = drawn(shownText());
    veldrin::transformText(text, matrix);
    m_position = text.location;
    if (!isDefaultAlignment()) m_alignment.transformBy(matrix);
    m_height = text.height;
    m_widthFactor = text.widthFactor;
    m_oblique = text.oblique;
    const bool isMirrored = matrix.det() < 0.0;
    m_normal = (isMirrored ? -text.normal : text.normal) + AcGeVector3d(); // no minus in front of a zero
    setDirection(text.direction);
    if (!isMirrored) return Acad::eOk;
    if (database() && database()->header().mirrtext == 0) {
        mirrorReadably(before);
        return Acad::eOk;
    }
    if (text.direction.dotProduct(before) >= 0.0) {
        m_upsideDown = !m_upsideDown;
    } else {
        m_backwards = !m_backwards;
        setDirection(-text.direction);
    }
    return Acad::eOk;
}

// The text covers the mirrored place, and keeps its alignment.
void AcDbText::mirrorReadably(const AcGeVector3d& before) {
    const bool turnsLines = direction().dotProduct(before) >= 0.0;
    if (!turnsLines) setDirection(-direction());
    if (!turnsLines && runsBetweenPoints()) {
        std::swap(m_position, m_alignment);
        return;
    }
    adjust();
    // The box beside the point that holds the text has to change sides.
    const auto corners = veldrin::cornersOf(drawn(shownText()));
    const AcGePoint3d center = corners[0] + (corners[2] - corners[0]) * 0.5;
    const bool heldByPosition = isDefaultAlignment() || runsBetweenPoints();
    const AcGeVector3d beside = center - (heldByPosition ? m_position : m_alignment);
    const AcGeVector3d across = turnsLines ? m_normal.crossProduct(direction()) : direction();
    const AcGeVector3d shift = across * (-2.0 * beside.dotProduct(across));
    m_position += shift;
    if (!isDefaultAlignment()) m_alignment += shift;
}
