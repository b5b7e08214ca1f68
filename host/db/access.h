// Fields of the database's classes that have no setter in the public interface. For codecs and for
// the database itself: neither asks for an open mode nor marks a change.
#pragma once

#include "dbblkref.h"
#include "dbdim.h"
#include "dbelipse.h"
#include "dbents.h"
#include "dbgroup.h"
#include "dbhatch.h"
#include "dblayout.h"
#include "dblead.h"
#include "dbmtext.h"
#include "dbpl.h"
#include "dbproxy.h"
#include "dbray.h"
#include "dbsol3d.h"
#include "dbspline.h"
#include "dbsurf.h"
#include "dbsymtb.h"
#include "dbxrecrd.h"
#include "dbdict.h"
#include "host/db/hatch_data.h"
#include "host/db/image.h"

namespace host {

// A reference to each field: Access::Bulge(vertex) = 0.5;
struct Access {
    // Type and member names cannot stand in brackets.
    // NOLINTBEGIN(bugprone-macro-parentheses)
#define HOST_FIELD(Name, Class, field)                        \
    static auto& Name(Class& object) { return object.field; } \
    static const auto& Name(const Class& object) { return object.field; }

    // NOLINTEND(bugprone-macro-parentheses)

    // Every object
    HOST_FIELD(StubOf, AcDbObject, m_stub)  // where the database keeps it; null while non-resident
    HOST_FIELD(Record, AcDbObject, m_record)    // number of its record in the file, or kNoRecord
    HOST_FIELD(DirtyBits, AcDbObject, m_dirty)  // aspects that were changed since it was read
    HOST_FIELD(OpenFlags, AcDbObject, m_openFlags)  // see OpenFlag
    HOST_FIELD(Extras, AcDbObject, m_extras)        // null until something needs them
    // The protected members that the database calls at the right moments.
    static void OwnedIds(const AcDbObject& object, AcDbObjectIdArray& ids) { object.ownedIds(ids); }
    static void SettleOwned(AcDbObject& object) { object.settleOwned(); }
    static void TranslateIds(AcDbObject& object, const AcDbIdMapping& map) {
        object.translateIds(map);
    }
    static Acad::ErrorStatus BeginWrite(AcDbObject& object, Adesk::UInt16 mask) {
        return object.beginWrite(mask);
    }
    static AcRxClass* RecordClass(const AcDbSymbolTable& table) { return table.recordClass(); }
    static DatabaseImp& Imp(const AcDbDatabase& db) { return *db.m_imp; }  // what dbmain.h hides

    // Common properties
    HOST_FIELD(Layer, AcDbEntity, m_layerId)                // group 8
    HOST_FIELD(Linetype, AcDbEntity, m_linetypeId)          // group 6
    HOST_FIELD(LinetypeScale, AcDbEntity, m_linetypeScale)  // group 48
    HOST_FIELD(Color, AcDbEntity, m_color)                  // groups 62 and 420
    HOST_FIELD(LineWeight, AcDbEntity, m_lineWeight)        // group 370
    HOST_FIELD(Visibility, AcDbEntity, m_visibility)        // group 60

    // Curves
    HOST_FIELD(Start, AcDbLine, m_start)          // group 10
    HOST_FIELD(End, AcDbLine, m_end)              // group 11
    HOST_FIELD(Normal, AcDbLine, m_normal)        // group 210, unit, as everywhere
    HOST_FIELD(Thickness, AcDbLine, m_thickness)  // group 39, as everywhere
    HOST_FIELD(Center, AcDbArc, m_center)         // group 10, in OCS there
    HOST_FIELD(Normal, AcDbArc, m_normal)
    HOST_FIELD(Radius, AcDbArc, m_radius)          // group 40
    HOST_FIELD(StartAngle, AcDbArc, m_startAngle)  // group 50, degrees there
    HOST_FIELD(EndAngle, AcDbArc, m_endAngle)      // group 51, degrees there
    HOST_FIELD(Thickness, AcDbArc, m_thickness)
    HOST_FIELD(Center, AcDbCircle, m_center)  // group 10, in OCS there
    HOST_FIELD(Normal, AcDbCircle, m_normal)
    HOST_FIELD(Radius, AcDbCircle, m_radius)  // group 40
    HOST_FIELD(Thickness, AcDbCircle, m_thickness)
    HOST_FIELD(Center, AcDbEllipse, m_center)  // group 10
    HOST_FIELD(Normal, AcDbEllipse, m_normal)
    HOST_FIELD(MajorAxis, AcDbEllipse, m_major)           // group 11, from the centre
    HOST_FIELD(Ratio, AcDbEllipse, m_ratio)               // group 40
    HOST_FIELD(StartParam, AcDbEllipse, m_start)          // group 41
    HOST_FIELD(EndParam, AcDbEllipse, m_end)              // group 42
    HOST_FIELD(Base, UnboundedLine, m_base)               // group 10
    HOST_FIELD(Direction, UnboundedLine, m_direction)     // group 11, unit
    HOST_FIELD(Controls, AcDbSpline, m_controls)          // group 10
    HOST_FIELD(Knots, AcDbSpline, m_knots)                // group 40
    HOST_FIELD(Weights, AcDbSpline, m_weights)            // group 41; empty: all 1
    HOST_FIELD(FitPoints, AcDbSpline, m_fitPoints)        // group 11
    HOST_FIELD(StartTangent, AcDbSpline, m_startTangent)  // group 12
    HOST_FIELD(EndTangent, AcDbSpline, m_endTangent)      // group 13
    HOST_FIELD(KnotTol, AcDbSpline, m_knotTol)            // group 42
    HOST_FIELD(ControlTol, AcDbSpline, m_controlTol)      // group 43
    HOST_FIELD(FitTol, AcDbSpline, m_fitTol)              // group 44
    HOST_FIELD(Degree, AcDbSpline, m_degree)              // group 71
    HOST_FIELD(Closed, AcDbSpline, m_closed)              // bit 1 of group 70
    HOST_FIELD(Periodic, AcDbSpline, m_periodic)          // bit 2
    HOST_FIELD(Vertices, AcDbLeader, m_vertices)          // group 10
    HOST_FIELD(Normal, AcDbLeader, m_normal)
    HOST_FIELD(DimStyle, AcDbLeader, m_style)         // group 3
    HOST_FIELD(Annotation, AcDbLeader, m_annotation)  // group 340
    HOST_FIELD(Arrow, AcDbLeader, m_arrow)            // group 71
    HOST_FIELD(Splined, AcDbLeader, m_splined)        // group 72

    // Polylines
    HOST_FIELD(Vertices, AcDbPolyline, m_vertices)    // groups 10, 40, 41, 42, 91
    HOST_FIELD(Elevation, AcDbPolyline, m_elevation)  // group 38
    HOST_FIELD(Thickness, AcDbPolyline, m_thickness)
    HOST_FIELD(ConstantWidth, AcDbPolyline, m_constantWidth)  // group 43
    HOST_FIELD(Normal, AcDbPolyline, m_normal)
    HOST_FIELD(Closed, AcDbPolyline, m_closed)          // bit 1 of group 70
    HOST_FIELD(Plinegen, AcDbPolyline, m_plinegen)      // bit 128
    HOST_FIELD(Closed, HeavyPolyline, m_closed)         // bit 1 of group 70
    HOST_FIELD(Owned, HeavyPolyline, m_owned)           // vertices, up to SEQEND
    HOST_FIELD(Type, AcDb2dPolyline, m_type)            // bits 2 and 4 of group 70, and group 75
    HOST_FIELD(Elevation, AcDb2dPolyline, m_elevation)  // z of group 10
    HOST_FIELD(Thickness, AcDb2dPolyline, m_thickness)
    HOST_FIELD(StartWidth, AcDb2dPolyline, m_startWidth)  // group 40
    HOST_FIELD(EndWidth, AcDb2dPolyline, m_endWidth)      // group 41
    HOST_FIELD(Normal, AcDb2dPolyline, m_normal)
    HOST_FIELD(Type, AcDb3dPolyline, m_type)                // bit 4 of group 70, and group 75
    HOST_FIELD(Position, AcDb2dVertex, m_position)          // group 10
    HOST_FIELD(Bulge, AcDb2dVertex, m_bulge)                // group 42
    HOST_FIELD(StartWidth, AcDb2dVertex, m_startWidth)      // group 40
    HOST_FIELD(EndWidth, AcDb2dVertex, m_endWidth)          // group 41
    HOST_FIELD(Tangent, AcDb2dVertex, m_tangent)            // group 50
    HOST_FIELD(TangentUsed, AcDb2dVertex, m_tangentUsed)    // bit 2 of group 70
    HOST_FIELD(Type, AcDb2dVertex, m_type)                  // bits 1, 8 and 16
    HOST_FIELD(Position, AcDb3dPolylineVertex, m_position)  // group 10
    HOST_FIELD(Type, AcDb3dPolylineVertex, m_type)          // bits 8 and 16 of group 70

    // Points, texts, faces
    HOST_FIELD(Position, AcDbPoint, m_position)  // group 10
    HOST_FIELD(Normal, AcDbPoint, m_normal)
    HOST_FIELD(Thickness, AcDbPoint, m_thickness)
    HOST_FIELD(Rotation, AcDbPoint, m_rotation)   // group 50
    HOST_FIELD(Position, AcDbText, m_position)    // group 10, in OCS there
    HOST_FIELD(Alignment, AcDbText, m_alignment)  // group 11, likewise
    HOST_FIELD(Normal, AcDbText, m_normal)
    HOST_FIELD(Thickness, AcDbText, m_thickness)
    HOST_FIELD(Oblique, AcDbText, m_oblique)          // group 51
    HOST_FIELD(Rotation, AcDbText, m_rotation)        // group 50
    HOST_FIELD(Height, AcDbText, m_height)            // group 40
    HOST_FIELD(WidthFactor, AcDbText, m_widthFactor)  // group 41
    HOST_FIELD(Text, AcDbText, m_text)                // group 1
    HOST_FIELD(Style, AcDbText, m_style)              // group 7
    HOST_FIELD(Horizontal, AcDbText, m_horizontal)    // group 72
    HOST_FIELD(Vertical, AcDbText, m_vertical)        // group 73, 74 of attributes
    HOST_FIELD(MirroredX, AcDbText, m_mirroredX)      // bit 2 of group 71
    HOST_FIELD(MirroredY, AcDbText, m_mirroredY)      // bit 4
    HOST_FIELD(Tag, AcDbAttribute, m_tag)             // group 2
    HOST_FIELD(Flags, AcDbAttribute, m_flags)         // group 70
    HOST_FIELD(Tag, AcDbAttributeDefinition, m_tag)
    HOST_FIELD(Prompt, AcDbAttributeDefinition, m_prompt)  // group 3
    HOST_FIELD(Flags, AcDbAttributeDefinition, m_flags)
    HOST_FIELD(Location, AcDbMText, m_location)  // group 10
    HOST_FIELD(Normal, AcDbMText, m_normal)
    HOST_FIELD(Direction, AcDbMText, m_direction)        // group 11, or the angle of group 50
    HOST_FIELD(Width, AcDbMText, m_width)                // group 41
    HOST_FIELD(TextHeight, AcDbMText, m_textHeight)      // group 40
    HOST_FIELD(LineSpacing, AcDbMText, m_lineSpacing)    // group 44
    HOST_FIELD(StoredWidth, AcDbMText, m_storedWidth)    // group 42
    HOST_FIELD(StoredHeight, AcDbMText, m_storedHeight)  // group 43
    HOST_FIELD(Contents, AcDbMText, m_contents)          // groups 3 and 1
    HOST_FIELD(Style, AcDbMText, m_style)
    HOST_FIELD(Attachment, AcDbMText, m_attachment)  // group 71
    // Groups 10 to 13.
    static AcGePoint3d* Corners(FourCorners& object) { return object.m_points; }
    static const AcGePoint3d* Corners(const FourCorners& object) { return object.m_points; }
    HOST_FIELD(Normal, FourCorners, m_normal)
    HOST_FIELD(Thickness, FourCorners, m_thickness)
    static AcGePoint3d* Corners(AcDbFace& object) { return object.m_points; }
    static const AcGePoint3d* Corners(const AcDbFace& object) { return object.m_points; }
    HOST_FIELD(HiddenEdges, AcDbFace, m_hiddenEdges)  // group 70
    HOST_FIELD(Center, AcDbViewport, m_center)        // group 10
    HOST_FIELD(Width, AcDbViewport, m_width)          // group 40
    HOST_FIELD(Height, AcDbViewport, m_height)        // group 41
    HOST_FIELD(Number, AcDbViewport, m_number)        // group 69

    // Block references
    HOST_FIELD(Block, AcDbBlockReference, m_blockId)      // group 2
    HOST_FIELD(Position, AcDbBlockReference, m_position)  // group 10, in OCS there
    HOST_FIELD(Scale, AcDbBlockReference, m_scale)        // groups 41 to 43
    HOST_FIELD(Normal, AcDbBlockReference, m_normal)
    HOST_FIELD(Rotation, AcDbBlockReference, m_rotation)  // group 50
    HOST_FIELD(Owned, AcDbBlockReference, m_attributes)   // attributes, up to SEQEND
    // One transform a cell of the array, or just one.
    static std::vector<AcGeMatrix3d> Cells(const AcDbBlockReference& object) {
        return object.cellTransforms();
    }
    HOST_FIELD(Columns, AcDbMInsertBlock, m_columns)              // group 70
    HOST_FIELD(Rows, AcDbMInsertBlock, m_rows)                    // group 71
    HOST_FIELD(ColumnSpacing, AcDbMInsertBlock, m_columnSpacing)  // group 44
    HOST_FIELD(RowSpacing, AcDbMInsertBlock, m_rowSpacing)        // group 45

    // Dimensions
    HOST_FIELD(Block, AcDbDimension, m_blockId)   // group 2
    HOST_FIELD(DimStyle, AcDbDimension, m_style)  // group 3
    HOST_FIELD(Normal, AcDbDimension, m_normal)
    HOST_FIELD(TextPosition, AcDbDimension, m_textPosition)              // group 11
    HOST_FIELD(Measurement, AcDbDimension, m_measurement)                // group 42
    HOST_FIELD(TextRotation, AcDbDimension, m_textRotation)              // group 53
    HOST_FIELD(HorizontalRotation, AcDbDimension, m_horizontalRotation)  // group 51
    HOST_FIELD(Rotation, AcDbDimension, m_rotation)                      // group 50
    HOST_FIELD(Oblique, AcDbDimension, m_oblique)                        // group 52
    HOST_FIELD(Text, AcDbDimension, m_text)                              // group 1
    HOST_FIELD(TypeFlags, AcDbDimension, m_typeFlags)                    // group 70
    HOST_FIELD(UsedPoints, AcDbDimension, m_used)                        // a bit for each slot
    // Slots of definition points, in the order of their groups; see SlotOfGroup.
    static AcGePoint3d* Points(AcDbDimension& object) { return object.m_points; }
    static const AcGePoint3d* Points(const AcDbDimension& object) { return object.m_points; }
    // Slot of a point group (10, 12, 13, 14, 15, 16), or -1. Group 11 is TextPosition.
    static int SlotOfGroup(int group) {
        switch (group) {
            case 10:
                return AcDbDimension::kDimLine;
            case 12:
                return AcDbDimension::kClone;
            case 13:
                return AcDbDimension::kFirst;
            case 14:
                return AcDbDimension::kSecond;
            case 15:
                return AcDbDimension::kThird;
            case 16:
                return AcDbDimension::kFourth;
            default:
                return -1;
        }
    }
    static constexpr int kDimSlots = AcDbDimension::kNumSlots;

    // Hatch, pictures, modelled and unknown entities
    // See hatch_data.h.
    static HatchData& Hatch(AcDbHatch& object) { return *object.m_data; }
    static const HatchData& Hatch(const AcDbHatch& object) { return *object.m_data; }
    HOST_FIELD(Origin, AcDbRasterImage, m_origin)  // group 10
    HOST_FIELD(UVector, AcDbRasterImage, m_u)      // group 11, of one pixel
    HOST_FIELD(VVector, AcDbRasterImage, m_v)      // group 12, of one pixel
    HOST_FIELD(Width, AcDbRasterImage, m_width)    // group 13
    HOST_FIELD(Height, AcDbRasterImage, m_height)
    HOST_FIELD(Boundary, AcDbRasterImage, m_boundary)       // group 14
    HOST_FIELD(ShapeOf, ModelledEntity, m_shape)            // null: none here
    HOST_FIELD(Stored, ModelledEntity, m_stored)            // the file holds the data
    HOST_FIELD(OpaqueExtents, AcDbZombieEntity, m_extents)  // empty: unknown
    HOST_FIELD(Owned, AcDbZombieEntity, m_owned)

    // Table records and objects
    HOST_FIELD(Name, AcDbSymbolTableRecord, m_name)                // group 2
    HOST_FIELD(LayerLinetype, AcDbLayerTableRecord, m_linetypeId)  // group 6
    HOST_FIELD(Description, AcDbLayerTableRecord, m_description)
    HOST_FIELD(Color, AcDbLayerTableRecord, m_color)  // group 62, without its sign
    HOST_FIELD(LineWeight, AcDbLayerTableRecord, m_lineWeight)
    HOST_FIELD(Off, AcDbLayerTableRecord, m_off)        // the sign of group 62
    HOST_FIELD(Frozen, AcDbLayerTableRecord, m_frozen)  // bit 1 of group 70
    HOST_FIELD(Locked, AcDbLayerTableRecord, m_locked)  // bit 4
    HOST_FIELD(Hidden, AcDbLayerTableRecord, m_hidden)
    HOST_FIELD(Plottable, AcDbLayerTableRecord, m_plottable)                  // group 290
    HOST_FIELD(Comments, AcDbLinetypeTableRecord, m_comments)                 // group 3
    HOST_FIELD(Dashes, AcDbLinetypeTableRecord, m_dashes)                     // group 49
    HOST_FIELD(PatternLength, AcDbLinetypeTableRecord, m_patternLength)       // group 40
    HOST_FIELD(FileName, AcDbTextStyleTableRecord, m_fileName)                // group 3
    HOST_FIELD(BigFontFileName, AcDbTextStyleTableRecord, m_bigFontFileName)  // group 4
    HOST_FIELD(TextSize, AcDbTextStyleTableRecord, m_textSize)                // group 40
    HOST_FIELD(XScale, AcDbTextStyleTableRecord, m_xScale)                    // group 41
    HOST_FIELD(Obliquing, AcDbTextStyleTableRecord, m_obliquing)              // group 50
    HOST_FIELD(ShapeFile, AcDbTextStyleTableRecord, m_shapeFile)              // bit 1 of group 70
    HOST_FIELD(Origin, AcDbUCSTableRecord, m_origin)                          // group 10
    HOST_FIELD(XAxis, AcDbUCSTableRecord, m_xAxis)                            // group 11
    HOST_FIELD(YAxis, AcDbUCSTableRecord, m_yAxis)                            // group 12
    HOST_FIELD(ViewCenter, AcDbAbstractViewTableRecord, m_center)
    HOST_FIELD(ViewTarget, AcDbAbstractViewTableRecord, m_target)
    HOST_FIELD(ViewDirection, AcDbAbstractViewTableRecord, m_direction)
    HOST_FIELD(ViewHeight, AcDbAbstractViewTableRecord, m_height)
    HOST_FIELD(ViewWidth, AcDbAbstractViewTableRecord, m_width)
    HOST_FIELD(ViewTwist, AcDbAbstractViewTableRecord, m_twist)
    HOST_FIELD(Paperspace, AcDbViewTableRecord, m_paperspace)
    HOST_FIELD(LowerLeft, AcDbViewportTableRecord, m_lowerLeft)
    HOST_FIELD(UpperRight, AcDbViewportTableRecord, m_upperRight)
    HOST_FIELD(Entities, AcDbBlockTableRecord, m_entities)  // in the order of drawing
    HOST_FIELD(Origin, AcDbBlockTableRecord, m_origin)      // group 10 of BLOCK
    HOST_FIELD(LayoutId, AcDbBlockTableRecord, m_layoutId)  // group 340 of BLOCK_RECORD
    HOST_FIELD(Comments, AcDbBlockTableRecord, m_comments)
    HOST_FIELD(PathName, AcDbBlockTableRecord, m_pathName)      // group 1: an external file
    HOST_FIELD(IsSpace, AcDbBlockTableRecord, m_space)          // model or paper space by name
    HOST_FIELD(Anonymous, AcDbBlockTableRecord, m_anonymous)    // bit 1 of group 70
    HOST_FIELD(Xref, AcDbBlockTableRecord, m_xref)              // bit 4
    HOST_FIELD(Overlay, AcDbBlockTableRecord, m_overlay)        // bit 8
    HOST_FIELD(Explodable, AcDbBlockTableRecord, m_explodable)  // group 280
    HOST_FIELD(Records, AcDbSymbolTable, m_records)
    HOST_FIELD(RecordsByName, AcDbSymbolTable, m_byName)  // by folded name; what is not erased
    HOST_FIELD(Entries, AcDbDictionary, m_entries)        // groups 3 and 350
    HOST_FIELD(EntriesByName, AcDbDictionary, m_byName)
    HOST_FIELD(Hard, AcDbDictionary, m_hard)              // group 280
    HOST_FIELD(MergeStyle, AcDbDictionary, m_mergeStyle)  // group 281
    HOST_FIELD(Chain, AcDbXrecord, m_chain)               // owned; replace it only after acutRelRb
    HOST_FIELD(MergeStyle, AcDbXrecord, m_mergeStyle)
    HOST_FIELD(GroupIds, AcDbGroup, m_ids)  // group 340
    HOST_FIELD(Description, AcDbGroup, m_description)
    HOST_FIELD(Selectable, AcDbGroup, m_selectable)
    HOST_FIELD(Anonymous, AcDbGroup, m_anonymous)
    HOST_FIELD(LayoutName, AcDbLayout, m_name)  // group 1
    HOST_FIELD(LayoutBlock, AcDbLayout, m_blockId)
    HOST_FIELD(TabOrder, AcDbLayout, m_tabOrder)  // group 71
#undef HOST_FIELD
};

// Extended data of an object as one chain, owned by the object; null when there is none.
const resbuf* XDataChain(const AcDbObject& object);
// Persistent reactors in order, and the extension dictionary, erased or not.
const std::vector<AcDbObjectId>& ReactorIds(const AcDbObject& object);
AcDbObjectId ExtensionDictionaryId(const AcDbObject& object);

}  // namespace host
