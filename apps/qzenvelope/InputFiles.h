// Which drawings a batch takes: files, folders and patterns, and a share of them.
#pragma once

#include <string>
#include <vector>

#include "apps/qzenvelope/Options.h"

namespace app {

// The drawings that some words mean, in their order. A folder stands for the drawings in it (.dxf,
// .dwg), with `recursive` for those in its folders too, by name; a pattern with *, ? or [] that is
// no file's name for the drawings and folders that match it. What lies in the output folder is left
// out of folders.
//
// fails  Failure with Input for a folder that cannot be read, and for a folder or pattern without
//        any drawing; a name that is no file stays, and is told when it is read
std::vector<std::string> ExpandInputs(const std::vector<std::string>& words, bool recursive,
                                      const std::string& out);

// The drawings in a folder, as ExpandInputs() finds them; there may be none.
//
// fails  Failure with Input for a folder that cannot be read
std::vector<std::string> DrawingsIn(const std::string& folder, bool recursive,
                                    const std::string& out);

// Every count-th of a list, beginning with the number-th, counted from 1.
std::vector<std::string> ShareOf(const std::vector<std::string>& list, const Shard& shard);

// A file's content as a short text, the same for the same bytes; empty when it cannot be read.
std::string MarkOf(const std::string& path);
// The same of a text.
std::string MarkOfText(const std::string& text);

}  // namespace app
