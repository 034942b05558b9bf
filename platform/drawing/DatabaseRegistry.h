#pragma once

#include "drawing/AcDb.h"
#include "runtime/VeldrinApi.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

class AcGiDrawable;

namespace veldrin {

// The living databases of a host by generation, which counts up and is never used again: an id that names a
// generation that is gone finds nothing. Also turns objects into proxies and back as classes go and come.
class VELDRIN_API DatabaseRegistry {
public:
    DatabaseRegistry();
    ~DatabaseRegistry();
    DatabaseRegistry(const DatabaseRegistry&) = delete;
    DatabaseRegistry& operator=(const DatabaseRegistry&) = delete;

    // Null when there is none (any more).
    AcDbDatabase* find(std::uint32_t generation) const {
        return generation < m_databases.size() ? m_databases[generation] : nullptr;
    }
    std::uint32_t add(AcDbDatabase* database);
    void remove(std::uint32_t generation);

    AcDbDatabase* working() const { return m_working; }
    void setWorking(AcDbDatabase* database) { m_working = database; }

    // Records what an entity draws, for the picture of the proxy that takes its place.
    using PictureMaker = std::function<std::shared_ptr<AcGiDrawable>(AcDbEntity&)>;
    void setPictureMaker(PictureMaker maker) { m_pictureOf = std::move(maker); }

private:
    void classCame(AcRxClass& aClass);
    void classGoes(AcRxClass& aClass);

    std::vector<AcDbDatabase*> m_databases; // slot 0 stays empty
    AcDbDatabase* m_working = nullptr;
    PictureMaker m_pictureOf;
    int m_classListener = 0;
};

// Makes every class of the drawing room known by name; more than once is no harm.
VELDRIN_API void registerDrawingClasses();

} // namespace veldrin
