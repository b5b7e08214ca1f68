// The colours that pictures and pages share, as CSS writes them.
#pragma once

namespace product {

constexpr const char* kAxisColour = "#2f6fb3";  // what a tool turns about, and what has the focus
constexpr const char* kEnvelopeColour =
    "#d1123f";                                    // the outline that was computed, its filling too
constexpr const char* kNoticeColour = "#a35c00";  // of what somebody should look at
constexpr const char* kFillColour = "#c4c4c4";    // of solid areas and of dimensions

}  // namespace product
