// Revolving entities, with the reason when it cannot be done: what the host's own members answer
// with a bare status.
#pragma once

#include <string>
#include <vector>

#include "dbsol3d.h"
#include "host/solid/profile.h"
#include "host/solid/sat_text.h"

namespace host::solid {

// Makes this modeller the process's one: AcDb3dSolid, AcDbRegion and AcDbBody work from then on.
void InstallModeller();

// The profile of a full turn of a closed planar curve or a region about an axis in its plane. The
// entity is open for read; nothing in the drawing changes. out changes only on success.
Refusal ProfileOfEntity(const AcDbEntity& entity, const AcGePoint3d& axisPoint,
                        const AcGeVector3d& axisDirection, Profile& out);

// Millimetres that one drawing unit stands for; 1 for drawings without unit.
double MillimetresPerUnit(AcDb::UnitsValue units);

// Who is told why a SAT file was not written, "PATH: cannot be written: REASON", as it happens:
// AcDbBody::acisOut answers with a bare status. null: nobody.
using SatFailureSink = void (*)(const std::string& failure);
void SetSatFailureSink(SatFailureSink sink);

// Writes solids as a SAT file: beside the path, then renamed. path is UTF-8. False with a reason,
// in the system's words, when the file cannot be written.
bool WriteSatFile(const std::string& path, const std::vector<const Profile*>& bodies,
                  const SatOptions& options, std::string& reason);

}  // namespace host::solid
