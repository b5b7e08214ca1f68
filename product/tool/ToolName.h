// What a tool is called.
#pragma once

#include <string>

#include "product/tool/Envelope.h"
#include "product/tool/ToolRequest.h"

namespace product {

// The name that the request gives, else the number of the database's tool frame around the
// envelope, else the name of the input file; UTF-8. cost  O(entities of model space) where the
// request gives none
std::string NameOfTool(const ToolRequest& request, const Envelope& envelope,
                       AcDbDatabase& database);

}  // namespace product
