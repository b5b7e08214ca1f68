// Drawing files of either kind: DXF by this host itself, DWG by a converter that the user has, run
// as a process of its own.
//
// The converter is the one that SetConverter() names, else the environment's QZ_DWG_CONVERTER, else
// ODAFileConverter or dwg2dxf in PATH. A command is split at blanks, quotes keep words together; no
// shell sees it, and {in} and {out} in it become the paths of the two files.
#pragma once

#include <string>

#include "host/dxf/dxf_file.h"

namespace host::dwg {

// Takes the command of a converter; empty: as if none were given.
void SetConverter(const std::string& command);

// Whether there is a converter, as far as can be told without running it.
bool HasConverter();

// True for a path that ends in .dwg, in any case of letters.
bool IsDwgPath(const std::string& path);

// As dxf::ReadFile; a DWG drawing, known by its first bytes or its name, is converted first. The
// report says by what. The converter has five minutes, or as many seconds as the environment's
// QZ_DWG_TIME_LIMIT says; nothing of it stays.
//
// fails  also eInvalidDwgVersion when there is no converter, or it fails, takes too long or makes
// no
//        whole DXF file: the message says which, what it printed, and what helps
dxf::Result ReadFile(AcDbDatabase& db, const std::string& path, dxf::Report& report);

// As dxf::WriteFile; to a path that ends in .dwg by way of the converter, if it does both ways.
dxf::Result WriteFile(const AcDbDatabase& db, const std::string& path, dxf::Report& report);

}  // namespace host::dwg
