// Enumerations of the drawing database.
#pragma once

#include "acadstrc.h"
#include "adesk.h"

namespace AcDb {
// kForRead allows 256 readers at a time; kForWrite one writer alone; kForNotify is for reactors.
enum OpenMode { kForRead = 0, kForWrite = 1, kForNotify = 2 };

// The entity's own switch, group 60; layers hide besides.
enum Visibility { kVisible = 0, kInvisible = 1 };

// Hundredths of a millimetre, or one of the three negative states.
// Of group 370. Kept and written back; the desktop draws hairlines.
enum LineWeight {
    kLnWt000 = 0,
    kLnWt005 = 5,
    kLnWt009 = 9,
    kLnWt013 = 13,
    kLnWt015 = 15,
    kLnWt018 = 18,
    kLnWt020 = 20,
    kLnWt025 = 25,
    kLnWt030 = 30,
    kLnWt035 = 35,
    kLnWt040 = 40,
    kLnWt050 = 50,
    kLnWt053 = 53,
    kLnWt060 = 60,
    kLnWt070 = 70,
    kLnWt080 = 80,
    kLnWt090 = 90,
    kLnWt100 = 100,
    kLnWt106 = 106,
    kLnWt120 = 120,
    kLnWt140 = 140,
    kLnWt158 = 158,
    kLnWt200 = 200,
    kLnWt211 = 211,
    kLnWtByLayer = -1,     // of the entity's layer
    kLnWtByBlock = -2,     // of the reference that the block is shown by
    kLnWtByLwDefault = -3  // the host's usual one
};

// Drawing file versions; the marks in the file are AC1009 (kDHL_1009) to AC1032.
enum AcDbDwgVersion {
    kDHL_Unknown = 254,  // no drawing was read
    kDHL_1009 = 16,      // R11 and R12; no handles in many files
    kDHL_1012 = 19,      // R13
    kDHL_1014 = 21,      // R14
    kDHL_1015 = 23,      // 2000 to 2002; text in the code page of the header
    kDHL_1018 = 25,      // 2004 to 2006
    kDHL_1021 = 27,      // 2007 to 2009; UTF-8 from here on
    kDHL_1024 = 29,      // 2010 to 2012
    kDHL_1027 = 31,      // 2013 to 2017
    kDHL_1032 = 33,      // 2018 and later
    kDHL_CURRENT = kDHL_1032
};

// Group 70 of POLYLINE and VERTEX decide these.
enum Poly2dType {
    k2dSimplePoly = 0,      // as drawn
    k2dFitCurvePoly = 1,    // arcs through the vertices
    k2dQuadSplinePoly = 2,  // chords along a quadratic spline
    k2dCubicSplinePoly = 3  // along a cubic one
};
// The same in space.
enum Poly3dType { k3dSimplePoly = 0, k3dQuadSplinePoly = 1, k3dCubicSplinePoly = 2 };
enum Vertex2dType {
    k2dVertex = 0,           // a vertex as drawn
    k2dSplineCtlVertex = 1,  // frame of the spline; not drawn
    k2dSplineFitVertex = 2,  // made by the spline; drawn
    k2dCurveFitVertex = 3    // made by the curve fit; drawn
};
// The same in space.
enum Vertex3dType { k3dSimpleVertex = 0, k3dControlVertex = 1, k3dFitVertex = 2 };

// Group 72 and 73 of TEXT.
enum TextHorzMode {
    kTextLeft = 0,    // the position alone places it
    kTextCenter = 1,  // these need the alignment point
    kTextRight = 2,
    kTextAlign = 3,  // stretched between both points, height with it
    kTextMid = 4,    // middle of the text's box
    kTextFit = 5     // stretched, the height stays
};
// What of a line lies on the point: its base line, the lowest letter, the middle, or the top.
enum TextVertMode { kTextBase = 0, kTextBottom = 1, kTextVertMid = 2, kTextTop = 3 };

// Whose curves go on beyond their ends. No call of this host carries one out.
enum Intersect { kOnBothOperands = 0, kExtendThis = 1, kExtendArg = 2, kExtendBoth = 3 };

// What becomes of names that the target has already. Kept with dictionaries and records as files
// state it; cloning stays within one drawing, where no name meets itself.
enum DuplicateRecordCloning {
    kDrcNotApplicable = 0,
    kDrcIgnore = 1,
    kDrcReplace = 2,
    kDrcXrefMangleName = 3,
    kDrcMangleName = 4,
    kDrcUnmangleName = 5
};

// Why objects are cloned. Only kDcObjects happens here.
enum DeepCloneType {
    kDcCopy = 0,
    kDcExplode = 1,
    kDcBlock = 2,
    kDcXrefBind = 3,
    kDcSymTableMerge = 4,
    kDcInsert = 6,
    kDcWblock = 7,
    kDcObjects = 8
};

// Where a new object's drawing units come from ($INSUNITS).
// The numbers of the DXF reference; those of other units (miles, light years ...) pass through as
// numbers.
enum UnitsValue {
    kUnitsUndefined = 0,
    kUnitsInches = 1,
    kUnitsFeet = 2,
    kUnitsMillimeters = 4,
    kUnitsCentimeters = 5,
    kUnitsMeters = 6
};
}  // namespace AcDb
