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
    HOST_FIELD(StubOf, AcDbObject, m_stub)
    HOST_FIELD(Record, AcDbObject, m_record)
    HOST_FIELD(DirtyBits, AcDbObject, m_dirty)
    HOST_FIELD(OpenFlags, AcDbObject, m_openFlags)
    HOST_FIELD(Extras, AcDbObject, m_extras)
    static void OwnedIds(const AcDbObject& object, AcDbObjectIdArray& ids) { object.ownedIds(ids); }
    static void SettleOwned(AcDbObject& object) { object.settleOwned(); }
    static void TranslateIds(AcDbObject& object, const AcDbIdMapping& map) {
        object.translateIds(map);
    }
    static Acad::ErrorStatus SubErase(AcDbObject& object, bool erasing) {
        return object.subErase(erasing);
    }
    static Acad::ErrorStatus BeginWrite(AcDbObject& object, Adesk::UInt16 mask) {
        return object.beginWrite(mask);
    }
    static Acad::ErrorStatus SubTransformBy(AcDbEntity& entity, const AcGeMatrix3d& matrix) {
        return entity.subTransformBy(matrix);
    }
    static AcRxClass* RecordClass(const AcDbSymbolTable& table) { return table.recordClass(); }
    static DatabaseImp& Imp(const AcDbDatabase& db) { return *db.m_imp; }

    // Common properties
    HOST_FIELD(Layer, AcDbEntity, m_layerId)
    HOST_FIELD(Linetype, AcDbEntity, m_linetypeId)
    HOST_FIELD(LinetypeScale, AcDbEntity, m_linetypeScale)
    HOST_FIELD(Color, AcDbEntity, m_color)
    HOST_FIELD(LineWeight, AcDbEntity, m_lineWeight)
    HOST_FIELD(Visibility, AcDbEntity, m_visibility)

    // Curves
    HOST_FIELD(Start, AcDbLine, m_start)
    HOST_FIELD(End, AcDbLine, m_end)
    HOST_FIELD(Normal, AcDbLine, m_normal)
    HOST_FIELD(Thickness, AcDbLine, m_thickness)
    HOST_FIELD(Center, AcDbArc, m_center)
    HOST_FIELD(Normal, AcDbArc, m_normal)
    HOST_FIELD(Radius, AcDbArc, m_radius)
    HOST_FIELD(StartAngle, AcDbArc, m_startAngle)
    HOST_FIELD(EndAngle, AcDbArc, m_endAngle)
    HOST_FIELD(Thickness, AcDbArc, m_thickness)
    HOST_FIELD(Center, AcDbCircle, m_center)
    HOST_FIELD(Normal, AcDbCircle, m_normal)
    HOST_FIELD(Radius, AcDbCircle, m_radius)
    HOST_FIELD(Thickness, AcDbCircle, m_thickness)
    HOST_FIELD(Center, AcDbEllipse, m_center)
    HOST_FIELD(Normal, AcDbEllipse, m_normal)
    HOST_FIELD(MajorAxis, AcDbEllipse, m_major)
    HOST_FIELD(Ratio, AcDbEllipse, m_ratio)
    HOST_FIELD(StartParam, AcDbEllipse, m_start)
    HOST_FIELD(EndParam, AcDbEllipse, m_end)
    HOST_FIELD(Base, UnboundedLine, m_base)
    HOST_FIELD(Direction, UnboundedLine, m_direction)
    HOST_FIELD(Controls, AcDbSpline, m_controls)
    HOST_FIELD(Knots, AcDbSpline, m_knots)
    HOST_FIELD(Weights, AcDbSpline, m_weights)
    HOST_FIELD(FitPoints, AcDbSpline, m_fitPoints)
    HOST_FIELD(StartTangent, AcDbSpline, m_startTangent)
    HOST_FIELD(EndTangent, AcDbSpline, m_endTangent)
    HOST_FIELD(KnotTol, AcDbSpline, m_knotTol)
    HOST_FIELD(ControlTol, AcDbSpline, m_controlTol)
    HOST_FIELD(FitTol, AcDbSpline, m_fitTol)
    HOST_FIELD(Degree, AcDbSpline, m_degree)
    HOST_FIELD(Closed, AcDbSpline, m_closed)
    HOST_FIELD(Periodic, AcDbSpline, m_periodic)
    HOST_FIELD(Vertices, AcDbLeader, m_vertices)
    HOST_FIELD(Normal, AcDbLeader, m_normal)
    HOST_FIELD(DimStyle, AcDbLeader, m_style)
    HOST_FIELD(Annotation, AcDbLeader, m_annotation)
    HOST_FIELD(Arrow, AcDbLeader, m_arrow)
    HOST_FIELD(Splined, AcDbLeader, m_splined)

    // Polylines
    HOST_FIELD(Vertices, AcDbPolyline, m_vertices)
    HOST_FIELD(Elevation, AcDbPolyline, m_elevation)
    HOST_FIELD(Thickness, AcDbPolyline, m_thickness)
    HOST_FIELD(ConstantWidth, AcDbPolyline, m_constantWidth)
    HOST_FIELD(Normal, AcDbPolyline, m_normal)
    HOST_FIELD(Closed, AcDbPolyline, m_closed)
    HOST_FIELD(Plinegen, AcDbPolyline, m_plinegen)
    HOST_FIELD(Closed, HeavyPolyline, m_closed)
    HOST_FIELD(Owned, HeavyPolyline, m_owned)
    HOST_FIELD(Type, AcDb2dPolyline, m_type)
    HOST_FIELD(Elevation, AcDb2dPolyline, m_elevation)
    HOST_FIELD(Thickness, AcDb2dPolyline, m_thickness)
    HOST_FIELD(StartWidth, AcDb2dPolyline, m_startWidth)
    HOST_FIELD(EndWidth, AcDb2dPolyline, m_endWidth)
    HOST_FIELD(Normal, AcDb2dPolyline, m_normal)
    HOST_FIELD(Type, AcDb3dPolyline, m_type)
    HOST_FIELD(Position, AcDb2dVertex, m_position)
    HOST_FIELD(Bulge, AcDb2dVertex, m_bulge)
    HOST_FIELD(StartWidth, AcDb2dVertex, m_startWidth)
    HOST_FIELD(EndWidth, AcDb2dVertex, m_endWidth)
    HOST_FIELD(Tangent, AcDb2dVertex, m_tangent)
    HOST_FIELD(TangentUsed, AcDb2dVertex, m_tangentUsed)
    HOST_FIELD(Type, AcDb2dVertex, m_type)
    HOST_FIELD(Position, AcDb3dPolylineVertex, m_position)
    HOST_FIELD(Type, AcDb3dPolylineVertex, m_type)

    // Points, texts, faces
    HOST_FIELD(Position, AcDbPoint, m_position)
    HOST_FIELD(Normal, AcDbPoint, m_normal)
    HOST_FIELD(Thickness, AcDbPoint, m_thickness)
    HOST_FIELD(Rotation, AcDbPoint, m_rotation)
    HOST_FIELD(Position, AcDbText, m_position)
    HOST_FIELD(Alignment, AcDbText, m_alignment)
    HOST_FIELD(Normal, AcDbText, m_normal)
    HOST_FIELD(Thickness, AcDbText, m_thickness)
    HOST_FIELD(Oblique, AcDbText, m_oblique)
    HOST_FIELD(Rotation, AcDbText, m_rotation)
    HOST_FIELD(Height, AcDbText, m_height)
    HOST_FIELD(WidthFactor, AcDbText, m_widthFactor)
    HOST_FIELD(Text, AcDbText, m_text)
    HOST_FIELD(Style, AcDbText, m_style)
    HOST_FIELD(Horizontal, AcDbText, m_horizontal)
    HOST_FIELD(Vertical, AcDbText, m_vertical)
    HOST_FIELD(MirroredX, AcDbText, m_mirroredX)
    HOST_FIELD(MirroredY, AcDbText, m_mirroredY)
    HOST_FIELD(Tag, AcDbAttribute, m_tag)
    HOST_FIELD(Flags, AcDbAttribute, m_flags)
    HOST_FIELD(Tag, AcDbAttributeDefinition, m_tag)
    HOST_FIELD(Prompt, AcDbAttributeDefinition, m_prompt)
    HOST_FIELD(Flags, AcDbAttributeDefinition, m_flags)
    HOST_FIELD(Location, AcDbMText, m_location)
    HOST_FIELD(Normal, AcDbMText, m_normal)
    HOST_FIELD(Direction, AcDbMText, m_direction)
    HOST_FIELD(Width, AcDbMText, m_width)
    HOST_FIELD(TextHeight, AcDbMText, m_textHeight)
    HOST_FIELD(LineSpacing, AcDbMText, m_lineSpacing)
    HOST_FIELD(StoredWidth, AcDbMText, m_storedWidth)
    HOST_FIELD(StoredHeight, AcDbMText, m_storedHeight)
    HOST_FIELD(Contents, AcDbMText, m_contents)
    HOST_FIELD(Style, AcDbMText, m_style)
    HOST_FIELD(Attachment, AcDbMText, m_attachment)
    static AcGePoint3d* Corners(FourCorners& object) { return object.m_points; }
    static const AcGePoint3d* Corners(const FourCorners& object) { return object.m_points; }
    HOST_FIELD(Normal, FourCorners, m_normal)
    HOST_FIELD(Thickness, FourCorners, m_thickness)
    static AcGePoint3d* Corners(AcDbFace& object) { return object.m_points; }
    static const AcGePoint3d* Corners(const AcDbFace& object) { return object.m_points; }
    HOST_FIELD(HiddenEdges, AcDbFace, m_hiddenEdges)
    HOST_FIELD(Center, AcDbViewport, m_center)
    HOST_FIELD(Width, AcDbViewport, m_width)
    HOST_FIELD(Height, AcDbViewport, m_height)
    HOST_FIELD(Number, AcDbViewport, m_number)

    // Block references
    HOST_FIELD(Block, AcDbBlockReference, m_blockId)
    HOST_FIELD(Position, AcDbBlockReference, m_position)
    HOST_FIELD(Scale, AcDbBlockReference, m_scale)
    HOST_FIELD(Normal, AcDbBlockReference, m_normal)
    HOST_FIELD(Rotation, AcDbBlockReference, m_rotation)
    HOST_FIELD(Owned, AcDbBlockReference, m_attributes)
    // One transform a cell of the array, or just one.
    static std::vector<AcGeMatrix3d> Cells(const AcDbBlockReference& object) {
        return object.cellTransforms();
    }
    HOST_FIELD(Columns, AcDbMInsertBlock, m_columns)
    HOST_FIELD(Rows, AcDbMInsertBlock, m_rows)
    HOST_FIELD(ColumnSpacing, AcDbMInsertBlock, m_columnSpacing)
    HOST_FIELD(RowSpacing, AcDbMInsertBlock, m_rowSpacing)

    // Dimensions
    HOST_FIELD(Block, AcDbDimension, m_blockId)
    HOST_FIELD(DimStyle, AcDbDimension, m_style)
    HOST_FIELD(Normal, AcDbDimension, m_normal)
    HOST_FIELD(TextPosition, AcDbDimension, m_textPosition)
    HOST_FIELD(Measurement, AcDbDimension, m_measurement)
    HOST_FIELD(TextRotation, AcDbDimension, m_textRotation)
    HOST_FIELD(HorizontalRotation, AcDbDimension, m_horizontalRotation)
    HOST_FIELD(Rotation, AcDbDimension, m_rotation)
    HOST_FIELD(Oblique, AcDbDimension, m_oblique)
    HOST_FIELD(Text, AcDbDimension, m_text)
    HOST_FIELD(TypeFlags, AcDbDimension, m_typeFlags)
    HOST_FIELD(UsedPoints, AcDbDimension, m_used)
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
    static HatchData& Hatch(AcDbHatch& object) { return *object.m_data; }
    static const HatchData& Hatch(const AcDbHatch& object) { return *object.m_data; }
    HOST_FIELD(Origin, AcDbRasterImage, m_origin)
    HOST_FIELD(UVector, AcDbRasterImage, m_u)
    HOST_FIELD(VVector, AcDbRasterImage, m_v)
    HOST_FIELD(Width, AcDbRasterImage, m_width)
    HOST_FIELD(Height, AcDbRasterImage, m_height)
    HOST_FIELD(Boundary, AcDbRasterImage, m_boundary)
    HOST_FIELD(ShapeOf, ModelledEntity, m_shape)
    HOST_FIELD(Stored, ModelledEntity, m_stored)
    HOST_FIELD(OpaqueExtents, AcDbZombieEntity, m_extents)
    HOST_FIELD(Owned, AcDbZombieEntity, m_owned)

    // Table records and objects
    HOST_FIELD(Name, AcDbSymbolTableRecord, m_name)
    HOST_FIELD(LayerLinetype, AcDbLayerTableRecord, m_linetypeId)
    HOST_FIELD(Description, AcDbLayerTableRecord, m_description)
    HOST_FIELD(Color, AcDbLayerTableRecord, m_color)
    HOST_FIELD(LineWeight, AcDbLayerTableRecord, m_lineWeight)
    HOST_FIELD(Off, AcDbLayerTableRecord, m_off)
    HOST_FIELD(Frozen, AcDbLayerTableRecord, m_frozen)
    HOST_FIELD(Locked, AcDbLayerTableRecord, m_locked)
    HOST_FIELD(Hidden, AcDbLayerTableRecord, m_hidden)
    HOST_FIELD(Plottable, AcDbLayerTableRecord, m_plottable)
    HOST_FIELD(Comments, AcDbLinetypeTableRecord, m_comments)
    HOST_FIELD(Dashes, AcDbLinetypeTableRecord, m_dashes)
    HOST_FIELD(PatternLength, AcDbLinetypeTableRecord, m_patternLength)
    HOST_FIELD(FileName, AcDbTextStyleTableRecord, m_fileName)
    HOST_FIELD(BigFontFileName, AcDbTextStyleTableRecord, m_bigFontFileName)
    HOST_FIELD(TextSize, AcDbTextStyleTableRecord, m_textSize)
    HOST_FIELD(XScale, AcDbTextStyleTableRecord, m_xScale)
    HOST_FIELD(Obliquing, AcDbTextStyleTableRecord, m_obliquing)
    HOST_FIELD(ShapeFile, AcDbTextStyleTableRecord, m_shapeFile)
    HOST_FIELD(Origin, AcDbUCSTableRecord, m_origin)
    HOST_FIELD(XAxis, AcDbUCSTableRecord, m_xAxis)
    HOST_FIELD(YAxis, AcDbUCSTableRecord, m_yAxis)
    HOST_FIELD(ViewCenter, AcDbAbstractViewTableRecord, m_center)
    HOST_FIELD(ViewTarget, AcDbAbstractViewTableRecord, m_target)
    HOST_FIELD(ViewDirection, AcDbAbstractViewTableRecord, m_direction)
    HOST_FIELD(ViewHeight, AcDbAbstractViewTableRecord, m_height)
    HOST_FIELD(ViewWidth, AcDbAbstractViewTableRecord, m_width)
    HOST_FIELD(ViewTwist, AcDbAbstractViewTableRecord, m_twist)
    HOST_FIELD(Paperspace, AcDbViewTableRecord, m_paperspace)
    HOST_FIELD(LowerLeft, AcDbViewportTableRecord, m_lowerLeft)
    HOST_FIELD(UpperRight, AcDbViewportTableRecord, m_upperRight)
    HOST_FIELD(Entities, AcDbBlockTableRecord, m_entities)
    HOST_FIELD(Origin, AcDbBlockTableRecord, m_origin)
    HOST_FIELD(LayoutId, AcDbBlockTableRecord, m_layoutId)
    HOST_FIELD(Comments, AcDbBlockTableRecord, m_comments)
    HOST_FIELD(PathName, AcDbBlockTableRecord, m_pathName)
    HOST_FIELD(IsSpace, AcDbBlockTableRecord, m_space)  // model or paper space by name
    HOST_FIELD(Anonymous, AcDbBlockTableRecord, m_anonymous)
    HOST_FIELD(Xref, AcDbBlockTableRecord, m_xref)
    HOST_FIELD(Overlay, AcDbBlockTableRecord, m_overlay)
    HOST_FIELD(Explodable, AcDbBlockTableRecord, m_explodable)
    HOST_FIELD(Records, AcDbSymbolTable, m_records)
    HOST_FIELD(RecordsByName, AcDbSymbolTable, m_byName)
    HOST_FIELD(Entries, AcDbDictionary, m_entries)
    HOST_FIELD(EntriesByName, AcDbDictionary, m_byName)
    HOST_FIELD(Hard, AcDbDictionary, m_hard)
    HOST_FIELD(MergeStyle, AcDbDictionary, m_mergeStyle)
    HOST_FIELD(Chain, AcDbXrecord, m_chain)  // owned; replace it only after acutRelRb
    HOST_FIELD(MergeStyle, AcDbXrecord, m_mergeStyle)
    HOST_FIELD(GroupIds, AcDbGroup, m_ids)
    HOST_FIELD(Description, AcDbGroup, m_description)
    HOST_FIELD(Selectable, AcDbGroup, m_selectable)
    HOST_FIELD(Anonymous, AcDbGroup, m_anonymous)
    HOST_FIELD(LayoutName, AcDbLayout, m_name)
    HOST_FIELD(LayoutBlock, AcDbLayout, m_blockId)
    HOST_FIELD(TabOrder, AcDbLayout, m_tabOrder)
#undef HOST_FIELD
};

// Extended data of an object as one chain, owned by the object; null when there is none.
const resbuf* XDataChain(const AcDbObject& object);
// Persistent reactors in order, and the extension dictionary, erased or not.
const std::vector<AcDbObjectId>& ReactorIds(const AcDbObject& object);
AcDbObjectId ExtensionDictionaryId(const AcDbObject& object);

}  // namespace host
