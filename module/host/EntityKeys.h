#pragma once

#include "drawing/AcDbObject.h"
#include "host/HandlerFrame.h"
#include "host/LispArguments.h"

#include <span>
#include <string_view>

namespace plumb {

// The frame of every handler whose first argument is an entity of one class: opens it, hands entity and
// cursor to the work, and closes it on every way out. No entity name is a wrong type; an entity that does not
// open (erased, of another class) gives nil without a word.
template<class Entity, class Work>
int withEntity(AcDb::OpenMode mode, Work&& work) {
    LispArguments args;
    AcDbObjectId id;
    if (!argObjectId(args.cursor, id)) return kWrongType;
    const AcDbObjectPointer<Entity> entity(id, mode);
    if (!entity) return kDone;
    return work(*entity, args.cursor);
}

// A key and what reads its value into the entity. A value that cannot be read leaves the field as it was,
// where the setter does not say otherwise.
template<class Entity>
struct EntityKey {
    std::string_view name;
    void (*set)(Entity& entity, const resbuf*& cursor);
};

// Lists of a key and its value. Whatever is no such list is walked over item by item, so an unknown key or a
// value of the wrong type costs nothing, and a list inside of a bad value starts a fresh key.
template<class Entity>
void setByKeys(Entity& entity, const resbuf*& cursor, std::span<const EntityKey<Entity>> keys) {
    while (cursor) {
        CString name;
        if (!argListBegin(cursor)) {
            argSkip(cursor);
            continue;
        }
        if (!argText(cursor, name)) continue;
        for (const EntityKey<Entity>& key : keys)
            if (key.name == name) {
                key.set(entity, cursor);
                break;
            }
    }
}

} // namespace plumb
