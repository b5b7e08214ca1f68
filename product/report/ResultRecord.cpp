#include "product/report/ResultRecord.h"

#include "product/report/ResultJson.h"

namespace product {
namespace {

using Json = nlohmann::ordered_json;

std::string Line(const Json& json) {
    return json.dump(-1, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace

std::string ToLine(const ResultRecord& record) {
    Json json = ToJson(record.drawing);
    json["tools"] = Json::array();
    for (const ToolResult& tool : record.drawing.tools)
        json["tools"].push_back(ToJson(tool, record.hasPictures));
    json["run"] = {{"content", record.content},      {"options", record.options},
                   {"pictures", record.hasPictures}, {"names", record.names},
                   {"files", record.files},          {"written", record.written}};
    return Line(json);
}

ResultRecord RecordFromLine(const std::string& line) {
    const Json json = Json::parse(line);
    ResultRecord record;
    record.drawing = DrawingFromJson(json);
    for (const Json& tool : json.at("tools")) record.drawing.tools.push_back(ToolFromJson(tool));
    const Json& run = json.at("run");
    run.at("content").get_to(record.content);
    run.at("options").get_to(record.options);
    run.at("pictures").get_to(record.hasPictures);
    run.at("names").get_to(record.names);
    run.at("files").get_to(record.files);
    run.at("written").get_to(record.written);
    return record;
}

std::string ToLine(const ResultHead& head) {
    return Line({{"results_of", head.version},
                 {"shard", {head.number, head.count}},
                 {"drawings", head.drawings}});
}

bool IsHead(const std::string& line, ResultHead& head) {
    const Json json = Json::parse(line, nullptr, false);
    if (!json.is_object() || !json.contains("results_of")) return false;
    ResultHead read;
    read.version = json.value("results_of", "");
    read.drawings = json.value("drawings", size_t{0});
    if (json.contains("shard") && json["shard"].is_array() && json["shard"].size() == 2) {
        read.number = json["shard"][0].get<size_t>();
        read.count = json["shard"][1].get<size_t>();
    }
    head = read;
    return true;
}

}  // namespace product
