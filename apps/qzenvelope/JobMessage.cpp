#include "apps/qzenvelope/JobMessage.h"

#include "product/report/ResultJson.h"

namespace app {
namespace {

using Json = nlohmann::ordered_json;

// Names come from drawings and may hold bytes that are no UTF-8.
std::string Dumped(const Json& json) {
    return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

}  // namespace

std::string ToText(const JobMessage& message, bool withPictures) {
    Json json{{"kind", static_cast<int>(message.kind)}, {"tool", message.tool}};
    if (message.kind == JobMessage::ToolEnds)
        json["result"] = product::ToJson(message.result, withPictures);
    if (message.kind == JobMessage::DrawingEnds) json["drawing"] = product::ToJson(message.drawing);
    return Dumped(json);
}

JobMessage MessageFromText(const std::string& text) {
    const Json json = Json::parse(text);
    JobMessage message;
    // Fails beyond the kinds that there are.
    message.kind = Json{JobMessage::ToolBegins, JobMessage::ToolEnds, JobMessage::DrawingEnds}.at(
        json.at("kind").get<size_t>());
    message.tool = json.at("tool");
    if (message.kind == JobMessage::ToolEnds)
        message.result = product::ToolFromJson(json.at("result"));
    if (message.kind == JobMessage::DrawingEnds)
        message.drawing = product::DrawingFromJson(json.at("drawing"));
    return message;
}

std::string NamesToText(const std::vector<std::string>& names) { return Dumped(Json(names)); }

std::vector<std::string> NamesFromText(const std::string& text) {
    return Json::parse(text).get<std::vector<std::string>>();
}

}  // namespace app
