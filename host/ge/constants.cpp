// All of them are set before any code runs, so constructors of static objects may use them.
#include "gegbl.h"
#include "gemat2d.h"
#include "gemat3d.h"
#include "gescl3d.h"

AcGeTol AcGeContext::gTol;

const AcGeVector2d AcGeVector2d::kIdentity;
const AcGeVector2d AcGeVector2d::kXAxis(1, 0);
const AcGeVector2d AcGeVector2d::kYAxis(0, 1);
const AcGePoint2d AcGePoint2d::kOrigin;
const AcGeMatrix2d AcGeMatrix2d::kIdentity{};

const AcGeVector3d AcGeVector3d::kIdentity;
const AcGeVector3d AcGeVector3d::kXAxis(1, 0, 0);
const AcGeVector3d AcGeVector3d::kYAxis(0, 1, 0);
const AcGeVector3d AcGeVector3d::kZAxis(0, 0, 1);
const AcGePoint3d AcGePoint3d::kOrigin;
const AcGeScale3d AcGeScale3d::kIdentity;
const AcGeMatrix3d AcGeMatrix3d::kIdentity{};
