// What a worker's process sends to the one that started it, as text.
#pragma once

#include <string>
#include <vector>

#include "product/tool/ToolResult.h"

namespace app {

struct JobMessage {
    enum Kind { ToolBegins, ToolEnds, DrawingEnds } kind = ToolBegins;
    size_t tool = 0;                 // ToolBegins, ToolEnds
    product::ToolResult result;      // ToolEnds
    product::DrawingResult drawing;  // DrawingEnds; its tools were sent before
};

// To text and back; what comes out of a drawing and is no UTF-8 is replaced.
//
// withPictures  false leaves out what only the page shows
// fails         nlohmann::json::exception for text that is no message
std::string ToText(const JobMessage& message, bool withPictures);
JobMessage MessageFromText(const std::string& text);

// Names of a drawing's tools, as a text to send.
std::string NamesToText(const std::vector<std::string>& names);
std::vector<std::string> NamesFromText(const std::string& text);

}  // namespace app
