#include "database/LayerForKey.h"
#include "database/tables/tblTextStyle.h"
#include "drawing/AcDbDatabase.h"
#include "drawing/AcDbTextStyleTable.h"
#include "host/vqContext.h"
#include "util/DocumentLock.h"
#include "util/DrawingHelpers.h"

#include <memory>
#include <optional>

namespace plumb {

namespace {

constexpr const char* kDefaultKey = "DEFAULT";
constexpr const char* kDefaultStyle = "SIMPLEX";
constexpr const char* kLastStyle = "Standard";
constexpr double kDefaultHeight = 0.1;

struct StyleOfKey {
    CString name;
    double height;
};

StyleOfKey styleOfKey(tblTextStyle& styles, const CString& key) {
    std::optional<CString> name;
    std::optional<double> height;
    if (styles.Seek(key)) {
        if (!styles.sStyleName.isNull()) name = styles.sStyleName.get();
        if (!styles.dHeight.isNull()) height = styles.dHeight.get();
    }
    if ((!name || !height) && styles.Seek(kDefaultKey)) {
        if (!name) name = styles.sStyleName.isNull() ? kDefaultStyle : styles.sStyleName.get();
        if (!height) height = styles.dHeight.isNull() ? kDefaultHeight : styles.dHeight.get();
    }
    return {name && !name->empty() ? *name : kLastStyle, height && *height != 0.0 ? *height : kDefaultHeight};
}

bool addStyle(AcDbTextStyleTable& styles, const CString& name, AcDbObjectId& id) {
    const DocumentLock lock;
    auto style = std::make_unique<AcDbTextStyleTableRecord>();
    style->setName(name);
    style->setFileName((name + ".shx").c_str());
    if (styles.upgradeOpen() != Acad::eOk) return false;
    if (styles.add(style.get()) == Acad::eOk) style.release()->close();
    styles.downgradeOpen();
    return styles.getAt(name, id) == Acad::eOk;
}

} // namespace

bool GetTextStyleForKey(const StandardsTables& standards, const CString& key, AcDbObjectId& style,
                        double& height) {
    AcDbDatabase* drawing = CurrentDatabase();
    if (!standards.textStyle || !drawing) return false;
    const StyleOfKey wanted = styleOfKey(*standards.textStyle, key);
    // Heights of the standards are those on the sheet; LTSCALE is what the drawing keeps of its scale.
    height = wanted.height * drawing->header().ltscale;
    AcDbTextStyleTable* styles = nullptr;
    if (drawing->getTextStyleTable(styles, AcDb::kForRead) != Acad::eOk) return false;
    AcDbObjectPointer<AcDbTextStyleTable> table;
    table.acquire(styles);
    return styles->getAt(wanted.name, style) == Acad::eOk || addStyle(*styles, wanted.name, style);
}

} // namespace plumb
