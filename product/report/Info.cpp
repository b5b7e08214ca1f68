#include "product/report/Info.h"

#include <limits>
#include <map>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <unordered_map>

#include "BatchTaskList.h"
#include "DrawnWalk.h"
#include "EncircleLayers.h"
#include "LayerTools.h"
#include "ToolFrame.h"

#include "product/tool/EngineRequest.h"
#include "product/tool/FoundTools.h"
#include "product/base/Extents.h"
#include "product/base/Failure.h"
#include "product/report/SolidReport.h"
#include "product/base/Text.h"
#include "product/base/Words.h"

namespace product {
namespace {

using Json = nlohmann::ordered_json;

struct LayerInfo {
    std::string name, linetype;
    bool off = false, frozen = false, locked = false;
    int colour = 7;
    int entities = 0;
};

struct EnvelopeInfo {
    std::string handle;
    SolidRun solid;
};

struct FrameInfo {
    std::string number, carrier, handle, block;
    std::optional<Box> extents;
};

struct DrawingInfo {
    std::vector<LayerInfo> layers;
    std::map<std::string, int> types;
    int entities = 0, unreadable = 0, blocks = 0;
    Box extents;
    std::vector<FrameInfo> frames;
    std::vector<EnvelopeInfo> envelopes;
    std::optional<int> taskItems;
    std::string units;
    std::vector<detect::FoundTool> candidates;  // those that compute would take first
    std::string notLookedFor;                   // why there are none; empty: there are none
};

class Collector {
public:
    explicit Collector(AcDbDatabase& database) : m_database(database) {}

    DrawingInfo Run() {
        ReadLayers();
        ReadModelSpace();
        for (const SToolFrame& frame : CollectToolFrames(&m_database)) ReadFrame(frame);
        for (const AcDbObjectId& id : m_envelopeIds)
            m_info.envelopes.push_back({HandleText(id), RevolveEnvelope(id)});
        CountBlocks();
        m_info.taskItems = CountTaskItems();
        m_info.units = UnitName(m_database);
        FindCandidates();
        return std::move(m_info);
    }

private:
    void ReadLayers() {
        AcDbObjectPointer<AcDbLayerTable> table(m_database.layerTableId(), AcDb::kForRead);
        AcDbLayerTableIterator* made = nullptr;
        if (table.openStatus() != Acad::eOk || table->newIterator(made) != Acad::eOk) return;
        const std::unique_ptr<AcDbLayerTableIterator> records(made);
        for (; !records->done(); records->step()) {
            AcDbObjectId id;
            if (records->getRecordId(id) != Acad::eOk) continue;
            AcDbLayerTableRecordPointer record(id, AcDb::kForRead);
            AcString text;
            if (record.openStatus() != Acad::eOk || record->getName(text) != Acad::eOk) continue;
            LayerInfo layer;
            layer.name = ToUtf8(text);
            layer.off = record->isOff();
            layer.frozen = record->isFrozen();
            layer.locked = record->isLocked();
            layer.colour = record->color().colorIndex();
            if (acdbSymUtil()->getSymbolName(text, record->linetypeObjectId()) == Acad::eOk)
                layer.linetype = ToUtf8(text);
            m_layerIndex[id] = m_info.layers.size();
            m_info.layers.push_back(layer);
        }
    }

    void ReadModelSpace() {
        m_envelopeLayer = FindLayer(kEnvelopeLayer, &m_database);
        const AcDbObjectId modelSpace = acdbSymUtil()->blockModelSpaceId(&m_database);
        SDrawnOptions options;
        options.m_bIntoBlocks = false;
        options.m_bWithHidden = true;
        options.m_nMost = std::numeric_limits<size_t>::max();
        CDrawnWalk walk(&m_database, options);
        walk.WalkSpace(modelSpace, [this](const SDrawnItem& item) { ReadItem(item); });
        for (const SDrawnFault& fault : walk.Faults()) {
            if (fault.m_id == modelSpace)
                throw Failure(Fault::Input, Tr("the drawing has no model space that can be read"));
            Count(fault.m_id);
            ++m_info.unreadable;
        }
    }

    void Count(const AcDbObjectId& id) {
        ++m_info.entities;
        ++m_info.types[TypeName(id.objectClass())];
    }

    void ReadItem(const SDrawnItem& item) {
        if (item.m_id != item.m_pickedId) return;  // an attribute, which counts with its reference
        Count(item.m_id);
        const auto layer = m_layerIndex.find(item.m_layerId);
        if (layer != m_layerIndex.end()) {
            ++m_info.layers[layer->second].entities;
            if (layer->first == m_envelopeLayer && item.m_entity.isKindOf(AcDbPolyline::desc()))
                m_envelopeIds.push_back(item.m_id);
        }
        if (const auto box = ExtentsOf(item.m_entity)) m_info.extents.Add(*box);
    }

    void ReadFrame(const SToolFrame& frame) {
        static const char* const kCarriers[] = {"", "xdata", "xrecord", "attribute"};
        FrameInfo info;
        info.number = ToUtf8(frame.m_strNumber);
        info.carrier = kCarriers[frame.m_carrier];
        info.handle = HandleText(frame.m_id);
        AcDbObjectPointer<AcDbBlockReference> reference(frame.m_id, AcDb::kForRead);
        if (reference.openStatus() != Acad::eOk) return;
        AcString block;
        if (acdbSymUtil()->getSymbolName(block, reference->blockTableRecord()) == Acad::eOk)
            info.block = ToUtf8(block);
        info.extents = ExtentsOf(*reference.object());
        m_info.frames.push_back(std::move(info));
    }

    void FindCandidates() {
        try {
            FoundTools found = CandidatesOf(m_database);
            for (FoundRequest& one : found.tools) m_info.candidates.push_back(std::move(one.tool));
            for (detect::FoundTool& one : found.doubtful)
                m_info.candidates.push_back(std::move(one));
        } catch (const Failure& failure) {
            m_info.notLookedFor = failure.what();
        }
    }

    void CountBlocks() {
        AcDbObjectPointer<AcDbBlockTable> table(m_database.blockTableId(), AcDb::kForRead);
        AcDbBlockTableIterator* made = nullptr;
        if (table.openStatus() != Acad::eOk || table->newIterator(made) != Acad::eOk) return;
        const std::unique_ptr<AcDbBlockTableIterator> records(made);
        for (; !records->done(); records->step()) {
            AcDbObjectId id;
            if (records->getRecordId(id) != Acad::eOk) continue;
            AcDbObjectPointer<AcDbBlockTableRecord> block(id, AcDb::kForRead);
            if (block.openStatus() == Acad::eOk && !block->isLayout()) ++m_info.blocks;
        }
    }

    std::optional<int> CountTaskItems() const {
        AcDbObjectId id;
        AcDbObjectPointer<AcDbDictionary> named(m_database.namedObjectsDictionaryId(),
                                                AcDb::kForRead);
        if (named.openStatus() != Acad::eOk || named->getAt(kStoreDictionary, id) != Acad::eOk)
            return std::nullopt;
        AcDbObjectPointer<AcDbDictionary> tasks(id, AcDb::kForRead);
        if (tasks.openStatus() != Acad::eOk || tasks->getAt(kStoreRecord, id) != Acad::eOk)
            return std::nullopt;
        AcDbObjectPointer<AcDbXrecord> record(id, AcDb::kForRead);
        resbuf* chain = nullptr;
        if (record.openStatus() != Acad::eOk || record->rbChain(&chain) != Acad::eOk)
            return std::nullopt;
        int items = 0;
        for (const resbuf* item = chain; item != nullptr; item = item->rbnext) ++items;
        acutRelRb(chain);
        return items;
    }

    AcDbDatabase& m_database;
    DrawingInfo m_info;
    std::unordered_map<AcDbObjectId, size_t> m_layerIndex;
    AcDbObjectId m_envelopeLayer;
    std::vector<AcDbObjectId> m_envelopeIds;
};

Json Corners(const std::optional<Box>& box) {
    if (!box || box->IsEmpty()) return nullptr;
    return {box->low.x, box->low.y, box->high.x, box->high.y};
}

Json CandidateJson(const detect::FoundTool& tool) {
    return {{"axis", {{tool.from.x, tool.from.y}, {tool.to.x, tool.to.y}}},
            {"window", Corners(tool.window)},
            {"cue", NameOf(tool.cue)},
            {"confidence", tool.confidence},
            {"sure", tool.isSure},
            {"half", tool.isHalf},
            {"agreement", tool.agreement},
            {"remarks", tool.remarks}};
}

std::string AsJson(const DrawingInfo& info, const Drawing& drawing, const std::string& path) {
    Json layers = Json::array(), types = Json::object(), frames = Json::array(),
         envelopes = Json::array(), candidates = Json::array();
    for (const detect::FoundTool& tool : info.candidates) candidates.push_back(CandidateJson(tool));
    for (const LayerInfo& layer : info.layers)
        layers.push_back({{"name", layer.name},
                          {"on", !layer.off},
                          {"frozen", layer.frozen},
                          {"locked", layer.locked},
                          {"colour", layer.colour},
                          {"linetype", layer.linetype},
                          {"entities", layer.entities}});
    for (const auto& [type, count] : info.types) types[type] = count;
    for (const FrameInfo& frame : info.frames)
        frames.push_back({{"tool", frame.number},
                          {"carrier", frame.carrier},
                          {"handle", frame.handle},
                          {"block", frame.block},
                          {"extents", Corners(frame.extents)}});
    for (const EnvelopeInfo& envelope : info.envelopes)
        envelopes.push_back({{"handle", envelope.handle}, {"solid", SolidJson(envelope.solid)}});
    const Json json = {{"file", path},
                       {"version", drawing.Version()},
                       {"binary", drawing.IsBinary()},
                       {"code_page", drawing.CodePage()},
                       {"units", info.units},
                       {"extents", Corners(info.extents)},
                       {"entities", info.entities},
                       {"blocks", info.blocks},
                       {"types", std::move(types)},
                       {"layers", std::move(layers)},
                       {"frames", std::move(frames)},
                       {"envelopes", std::move(envelopes)},
                       {"candidates", std::move(candidates)},
                       {"tasks", info.taskItems ? Json{{"items", *info.taskItems}} : Json()},
                       {"unreadable", info.unreadable},
                       {"notes", drawing.Notes()}};
    return json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

std::string Padded(std::string text, size_t width) {
    if (text.size() < width) text.append(width - text.size(), ' ');
    return text + " ";
}

std::string Counted(int count) {
    const std::string number = std::to_string(count);
    return "  " + std::string(number.size() < 7 ? 7 - number.size() : 0, ' ') + number + "  ";
}

// What compute would take, and what it would tell of only.
std::string CandidatesText(const DrawingInfo& info) {
    if (!info.notLookedFor.empty()) return Tr("not looked for: ") + info.notLookedFor + "\n";
    if (info.candidates.empty()) return Tr("none\n");
    std::string out = std::to_string(info.candidates.size()) + "\n";
    for (const detect::FoundTool& tool : info.candidates) {
        out += std::string("  ") + (tool.isSure ? Tr("sure    ") : Tr("unsure  ")) + Describe(tool);
        if (!tool.isHalf)
            out += Tr(", halves alike over ") +
                   std::to_string(static_cast<int>(100 * tool.agreement + 0.5)) + " %";
        else
            out += Tr(", one half");
        for (const std::string& remark : tool.remarks) out += "; " + remark;
        out += "\n          " + OptionsFor(tool) + "\n";
    }
    return out;
}

std::string AsText(const DrawingInfo& info, const Drawing& drawing, const std::string& path) {
    std::string out = path + "\n  " + (drawing.IsBinary() ? Tr("binary ") : "") + Tr("DXF ") +
                      drawing.Version() + Tr(", code page ") + drawing.CodePage() + Tr(", units ") +
                      info.units + "\n";
    if (!info.extents.IsEmpty()) out += Tr("  extents ") + Describe(info.extents) + "\n";
    out += "\n" + std::to_string(info.entities) + Tr(" entities in model space, ") +
           std::to_string(info.blocks) + Tr(" block definitions\n");
    for (const auto& [type, count] : info.types) out += Counted(count) + type + "\n";
    if (info.unreadable > 0) out += Counted(info.unreadable) + Tr("of them cannot be read\n");
    out += Tr("\nLayers (entities, state, colour, linetype, name)\n");
    for (const LayerInfo& layer : info.layers) {
        std::string state = layer.off ? "off" : "on";
        if (layer.frozen) state += ",frozen";
        if (layer.locked) state += ",locked";
        out += Counted(layer.entities) + Padded(state, 16) +
               Padded(std::to_string(layer.colour), 4) + Padded(layer.linetype, 14) + layer.name +
               "\n";
    }
    out += Tr("\nTool frames: ") +
           (info.frames.empty() ? Tr("none") : std::to_string(info.frames.size())) + "\n";
    for (const FrameInfo& frame : info.frames) {
        out += Tr("  tool ") + frame.number + Tr(", block ") + frame.block + Tr(", handle ") +
               frame.handle + Tr(", number in ") + frame.carrier;
        if (frame.extents) out += ", " + Describe(*frame.extents);
        out += "\n";
    }
    out += Tr("Envelopes: ") +
           (info.envelopes.empty() ? Tr("none") : std::to_string(info.envelopes.size())) + "\n";
    for (const EnvelopeInfo& envelope : info.envelopes) {
        const std::string phrase = SolidPhrase(envelope.solid);
        out += "  handle " + envelope.handle + Tr(", solid ") +
               (phrase.empty() ? Tr("none: no horizontal edge to be its axis") : phrase) + "\n";
    }
    out += Tr("Tools by their looks: ") + CandidatesText(info);
    out +=
        Tr("Stored task list: ") +
        (info.taskItems ? Tr("yes, a record of ") + std::to_string(*info.taskItems) + Tr(" items")
                        : std::string(Tr("none"))) +
        "\n";
    out += Tr("Faults in the file: ") +
           (drawing.Notes().empty() ? Tr("none") : std::to_string(drawing.Notes().size())) + "\n";
    for (const std::string& note : drawing.Notes()) out += "  " + note + "\n";
    return out;
}

}  // namespace

std::string InfoText(const Drawing& drawing, const std::string& path, bool asJson) {
    const DrawingInfo info = Collector(drawing.Database()).Run();
    return asJson ? AsJson(info, drawing, path) : AsText(info, drawing, path);
}

std::string NoToolJson(const NoSureTool& refusal) {
    Json candidates = Json::array();
    for (const detect::FoundTool& tool : refusal.Considered())
        candidates.push_back(CandidateJson(tool));
    const Json json = {{"tools", Json::array()},
                       {"verdict", refusal.what()},
                       {"candidates", std::move(candidates)}};
    return json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace product
