#include "apps/qzenvelope/ToolFrames.h"

#include <memory>

#include "apps/qzenvelope/Selection.h"
#include "apps/qzenvelope/Text.h"

namespace app {
namespace {

constexpr const ACHAR* kToolNumber = _T("TUKANGE_NAME_IDENTITY");

struct ReleaseChain {
    void operator()(resbuf* chain) const { acutRelRb(chain); }
};
using Chain = std::unique_ptr<resbuf, ReleaseChain>;

bool IsTextCode(int code) { return (code >= 1 && code <= 9) || code == 300 || code == 1000; }

// The first text of a chain that is not the application's name.
std::optional<std::string> FirstText(const resbuf* chain) {
    for (; chain != nullptr; chain = chain->rbnext)
        if (IsTextCode(chain->restype) && chain->resval.rstring != nullptr)
            return ToUtf8(chain->resval.rstring);
    return std::nullopt;
}

std::optional<std::string> FromExtendedData(const AcDbEntity& entity) {
    const Chain chain(entity.xData(kToolNumber));
    return FirstText(chain.get());
}

std::optional<std::string> FromXrecord(const AcDbEntity& entity) {
    const AcDbObjectId dictionaryId = entity.extensionDictionary();
    if (dictionaryId.isNull()) return std::nullopt;
    AcDbObjectPointer<AcDbDictionary> dictionary(dictionaryId, AcDb::kForRead);
    AcDbObjectId recordId;
    if (dictionary.openStatus() != Acad::eOk ||
        dictionary->getAt(kToolNumber, recordId) != Acad::eOk)
        return std::nullopt;
    AcDbObjectPointer<AcDbXrecord> record(recordId, AcDb::kForRead);
    resbuf* made = nullptr;
    if (record.openStatus() != Acad::eOk || record->rbChain(&made) != Acad::eOk)
        return std::nullopt;
    const Chain chain(made);
    return FirstText(chain.get());
}

std::optional<std::string> FromAttribute(const AcDbEntity& entity) {
    const auto* reference = AcDbBlockReference::cast(&entity);
    if (reference == nullptr) return std::nullopt;
    const std::unique_ptr<AcDbObjectIterator> attributes(reference->attributeIterator());
    for (; attributes && !attributes->done(); attributes->step()) {
        AcDbObjectPointer<AcDbAttribute> attribute(attributes->objectId(), AcDb::kForRead);
        if (attribute.openStatus() != Acad::eOk) continue;
        if (AcString(attribute->tagConst()).compareNoCase(kToolNumber) == 0)
            return ToUtf8(attribute->textStringConst());
    }
    return std::nullopt;
}

const struct {
    const char* name;
    std::optional<std::string> (*read)(const AcDbEntity&);
} kCarriers[] = {
    {"xdata", &FromExtendedData},
    {"xrecord", &FromXrecord},
    {"attribute", &FromAttribute},
};

}  // namespace

std::optional<ToolFrame> FrameOf(const AcDbEntity& entity) {
    const auto* reference = AcDbBlockReference::cast(&entity);
    if (reference == nullptr) return std::nullopt;
    for (const auto& carrier : kCarriers)
        if (const auto number = carrier.read(entity)) {
            ToolFrame frame;
            frame.number = *number;
            frame.carrier = carrier.name;
            frame.handle = HandleText(entity.objectId());
            AcString block;
            if (acdbSymUtil()->getSymbolName(block, reference->blockTableRecord()) == Acad::eOk)
                frame.block = ToUtf8(block);
            frame.extents = ExtentsOf(entity);
            return frame;
        }
    return std::nullopt;
}

}  // namespace app
