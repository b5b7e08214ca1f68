// The database, its reactors, entities and their extents.
#pragma once

#include "AcString.h"
#include "acarray.h"
#include "dbObject.h"
#include "dbcolor.h"
#include "dbidmap.h"
#include "gemat3d.h"
#include "gepnt2d.h"
#include "gepnt3d.h"
#include "gept3dar.h"
#include "gevec3d.h"

class AcDbBlockTable;
class AcDbBlockTableRecord;
class AcDbDatabase;
class AcDbDictionary;
class AcDbDimStyleTable;
class AcDbEntity;
class AcDbLayerTable;
class AcDbLinetypeTable;
class AcDbRegAppTable;
class AcDbTextStyleTable;
class AcDbUCSTable;
class AcDbViewTable;
class AcDbViewportTable;

namespace host {
struct DatabaseImp;
}

// An axis-parallel box in drawing units. Default: empty, its minimum above its maximum.
class AcDbExtents {
public:
    // An empty box.
    AcDbExtents();
    AcDbExtents(const AcGePoint3d& min, const AcGePoint3d& max) : m_min(min), m_max(max) {}

    // lowest corner; above the other one when empty
    const AcGePoint3d& minPoint() const { return m_min; }
    const AcGePoint3d& maxPoint() const { return m_max; }

    // eInvalidInput, nothing changed, unless min <= max in every coordinate.
    Acad::ErrorStatus set(const AcGePoint3d& min, const AcGePoint3d& max);
    void addPoint(const AcGePoint3d& point);  // grows to hold it
    // An empty box adds nothing.
    void addExt(const AcDbExtents& box);  // grows to hold it, too
    // Grows the box to hold its copy moved by vec.
    void expandBy(const AcGeVector3d& vec);
    // Box of the moved corners.
    void transformBy(const AcGeMatrix3d& matrix);

private:
    AcGePoint3d m_min;
    AcGePoint3d m_max;  // highest corner
};

// A part of an object inside nested block references. Only whole objects are told apart here.
// Highlighting takes one; paths into blocks are kept and not followed.
class AcDbFullSubentPath {
public:
    AcDbFullSubentPath() = default;
    const AcDbObjectIdArray& objectIds() const { return m_ids; }
    AcDbObjectIdArray& objectIds() { return m_ids; }

private:
    AcDbObjectIdArray m_ids;
};
extern const AcDbFullSubentPath kNullSubent;

// Base of all objects that are drawn.
//
// Common properties of an entity made by its constructor: no layer, no linetype, colour ByLayer,
// visible, linetype scale 1, weight ByLayer. Appending fills in the current layer and linetype.
// All lengths are in drawing units, all angles in radians. Setters need write: eNotOpenForWrite.
class AcDbEntity : public AcDbObject {  // whatever is drawn
public:
    ACRX_DECLARE_MEMBERS(AcDbEntity);

    // Block table record (or owning entity) that holds the entity; null when non-resident.
    // O(1); open for read.
    AcDbObjectId blockId() const;

    AcCmColor color() const { return AcCmColor(m_color); }  // as stated, group 62 or 420
    virtual Acad::ErrorStatus setColor(const AcCmColor& color, bool doSubents = true,
                                       AcDbDatabase* db = nullptr);
    Adesk::UInt16 colorIndex() const { return m_color.colorIndex(); }  // 0 ByBlock, 256 ByLayer
    AcCmEntityColor entityColor() const { return m_color; }
    // eInvalidInput above 257.
    virtual Acad::ErrorStatus setColorIndex(Adesk::UInt16 index, bool doSubents = true);

    // Name of the layer: a copy for acutDelString, or into a string. Null, or eNullObjectId, before
    // the entity has a layer.
    ACHAR* layer() const;
    Acad::ErrorStatus layer(AcString& name) const;
    AcDbObjectId layerId() const { return m_layerId; }  // group 8; null before it has one
    // Names are looked up, without case, in the entity's database, for a non-resident entity in the
    // working one: eKeyNotFound, eDeletedEntry; eWrongObjectType for an identifier that is no
    // layer; eWrongDatabase. A hidden layer, unless allowed, is ignored with eOk. doSubents takes
    // vertices and attributes along. Never makes a layer.
    virtual Acad::ErrorStatus setLayer(const ACHAR* name, Adesk::Boolean doSubents = true,
                                       bool allowHiddenLayer = false);
    virtual Acad::ErrorStatus setLayer(AcDbObjectId layer, Adesk::Boolean doSubents = true,
                                       bool allowHiddenLayer = false);

    // Name of the linetype as the entity states it, "ByLayer" and "ByBlock" included.
    ACHAR* linetype() const;
    Acad::ErrorStatus linetype(AcString& name) const;
    // group 6, ByLayer and ByBlock as records of their own
    AcDbObjectId linetypeId() const { return m_linetypeId; }
    // Failures as for setLayer.
    virtual Acad::ErrorStatus setLinetype(const ACHAR* name, bool doSubents = true);
    virtual Acad::ErrorStatus setLinetype(AcDbObjectId linetype, bool doSubents = true);

    double linetypeScale() const { return m_linetypeScale; }  // group 48, times that of the drawing
    // eInvalidInput unless positive.
    virtual Acad::ErrorStatus setLinetypeScale(double scale, bool doSubents = true);

    AcDb::Visibility visibility() const { return AcDb::Visibility(m_visibility); }  // group 60
    virtual Acad::ErrorStatus setVisibility(AcDb::Visibility visibility, bool doSubents = true);

    AcDb::LineWeight lineWeight() const { return AcDb::LineWeight(m_lineWeight); }  // group 370
    virtual Acad::ErrorStatus setLineWeight(AcDb::LineWeight weight, bool doSubents = true);

    // Layer, colour, linetype, linetype scale and weight from the database's current settings; null
    // means the working database.
    void setDatabaseDefaults(AcDbDatabase* db = nullptr);

    // Takes over layer, colour, linetype, scale, weight and visibility.
    virtual Acad::ErrorStatus setPropertiesFrom(const AcDbEntity* source, bool doSubents = true);

    // Smallest box of what is drawn, in WCS; curves exactly, texts by an estimate of their width
    // (fonts are not read). eNullExtents when nothing is drawn, eInvalidExtents for unbounded
    // curves; the output then stays as it is. Costs O(size), for block references of all they hold.
    Acad::ErrorStatus getGeomExtents(AcDbExtents& extents) const;

    // Moves, turns, mirrors or scales the entity. eCannotScaleNonUniformly where the class cannot
    // hold the result, eInvalidInput for a singular matrix; the entity is then unchanged.
    Acad::ErrorStatus transformBy(const AcGeMatrix3d& matrix);
    // A new non-resident entity; a class may answer with another one (a circle scaled unequally
    // becomes an ellipse). The output is null on failure.
    Acad::ErrorStatus getTransformedCopy(const AcGeMatrix3d& matrix, AcDbEntity*& copy) const;

    // Appends the pieces as new non-resident entities (the caller's) to the array. Open for read is
    // enough. eNotApplicable for classes that have no pieces, eCannotExplodeEntity,
    // eCannotScaleNonUniformly; nothing is appended on failure.
    Acad::ErrorStatus explode(AcDbVoidPtrArray& pieces) const;

    // Screen state only; open for read is enough, no lock needed.
    Acad::ErrorStatus highlight(const AcDbFullSubentPath& path = kNullSubent,
                                const Adesk::Boolean highlightAll = false) const;
    Acad::ErrorStatus unhighlight(const AcDbFullSubentPath& path = kNullSubent,
                                  const Adesk::Boolean highlightAll = false) const;

    // Crossing points of two curves. Not done in this host: eNotImplementedYet.
    Acad::ErrorStatus intersectWith(const AcDbEntity* other, AcDb::Intersect type,
                                    AcGePoint3dArray& points, Adesk::GsMarker thisMarker = 0,
                                    Adesk::GsMarker otherMarker = 0) const;

    // Asks for the entity to be drawn again.
    Acad::ErrorStatus draw();
    // The same as draw(), for a change that went past the setters.
    Acad::ErrorStatus recordGraphicsModified(bool setModified = true);

    // True when the entity lies in a plane; for circles and the like that of their normal.
    virtual bool isPlanar() const { return false; }

protected:
    friend struct host::Access;
    AcDbEntity() = default;
    AcDbEntity(const AcDbEntity&) = default;
    AcDbEntity& operator=(const AcDbEntity&) = default;

    virtual Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const;
    virtual Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& matrix);
    virtual Acad::ErrorStatus subGetTransformedCopy(const AcGeMatrix3d& matrix,
                                                    AcDbEntity*& copy) const;
    virtual Acad::ErrorStatus subExplode(AcDbVoidPtrArray& pieces) const;
    void translateIds(const AcDbIdMapping& mapping) override;

private:
    AcDbObjectId m_layerId;
    AcDbObjectId m_linetypeId;
    double m_linetypeScale = 1.0;
    AcCmEntityColor m_color;
    Adesk::Int16 m_lineWeight = AcDb::kLnWtByLayer;  // hundredths of a millimetre, or a state
    Adesk::UInt8 m_visibility = AcDb::kVisible;
};

// Opens an entity; failures as acdbOpenAcDbObject, and eNotThatKindOfClass for other objects.
Acad::ErrorStatus acdbOpenAcDbEntity(AcDbEntity*& entity, AcDbObjectId id, AcDb::OpenMode mode,
                                     bool openErased = false);

// Hears what happens in one database. The database keeps the pointer only.
class AcDbDatabaseReactor {
public:
    virtual ~AcDbDatabaseReactor() = default;
    // A new object became the database's; it is still open for write.
    virtual void objectAppended(const AcDbDatabase*, const AcDbObject*) {}
    // Never called: undo puts whole states back.
    virtual void objectUnAppended(const AcDbDatabase*, const AcDbObject*) {}
    virtual void objectReAppended(const AcDbDatabase*, const AcDbObject*) {}
    // First change while open for write.
    virtual void objectOpenedForModify(const AcDbDatabase*, const AcDbObject*) {}
    // At close of a changed object, which is open for notify meanwhile.
    virtual void objectModified(const AcDbDatabase*, const AcDbObject*) {}
    // At close of an object whose erase state changed.
    virtual void objectErased(const AcDbDatabase*, const AcDbObject*, bool = true) {}
    // Around the change of a variable that the drawing stores, by name in capitals.
    virtual void headerSysVarWillChange(const AcDbDatabase*, const ACHAR*) {}
    virtual void headerSysVarChanged(const AcDbDatabase*, const ACHAR*, bool) {}
    // Never called: classes that a module brings late stay unknown.
    virtual void proxyResurrectionCompleted(const AcDbDatabase*, const ACHAR*, AcDbObjectIdArray&) {
    }
    // The database is being destroyed; it forgets the reactor.
    virtual void goodbye(const AcDbDatabase*) {}
};

// A drawing in memory. Destroying it frees all its objects; their identifiers then answer
// ePermanentlyErased.
class AcDbDatabase : public AcRxObject {
public:
    ACRX_DECLARE_MEMBERS(AcDbDatabase);
    enum OpenMode {
        kForReadAndReadShare = 1,     // others may read
        kForReadAndWriteNoShare = 2,  // nobody else
        kForReadAndAllShare = 3,      // others may write; the usual one
        kTryForReadShare = 4          // the first, else the third
    };

    // buildDefaultDrawing  true: the tables, records and dictionaries of an empty drawing (layer 0,
    //                      linetypes ByBlock, ByLayer, Continuous, styles Standard, model and paper
    //                      space ...); false: nothing, to be filled by readDwgFile or dxfIn
    // noDocument           true: belongs to no document; such a database needs no lock
    explicit AcDbDatabase(bool buildDefaultDrawing = true, bool noDocument = false);
    ~AcDbDatabase() override;
    AcDbDatabase(const AcDbDatabase&) = delete;
    AcDbDatabase& operator=(const AcDbDatabase&) = delete;

    // Open one of the tables; the caller closes it. Failures as acdbOpenObject.
    // Definitions, model space and paper spaces.
    Acad::ErrorStatus getBlockTable(AcDbBlockTable*& table, AcDb::OpenMode mode = AcDb::kForRead);
    // Layers; "0" is always there.
    Acad::ErrorStatus getLayerTable(AcDbLayerTable*& table, AcDb::OpenMode mode = AcDb::kForRead);
    // Line types; ByLayer, ByBlock and Continuous are always there.
    Acad::ErrorStatus getLinetypeTable(AcDbLinetypeTable*& table,
                                       AcDb::OpenMode mode = AcDb::kForRead);
    // Applications that may store extended data.
    Acad::ErrorStatus getRegAppTable(AcDbRegAppTable*& table, AcDb::OpenMode mode = AcDb::kForRead);
    // Styles of texts, and files of shapes.
    Acad::ErrorStatus getTextStyleTable(AcDbTextStyleTable*& table,
                                        AcDb::OpenMode mode = AcDb::kForRead);
    // Styles of dimensions.
    Acad::ErrorStatus getDimStyleTable(AcDbDimStyleTable*& table,
                                       AcDb::OpenMode mode = AcDb::kForRead);
    // Named coordinate systems.
    Acad::ErrorStatus getUCSTable(AcDbUCSTable*& table, AcDb::OpenMode mode = AcDb::kForRead);
    // Named views.
    Acad::ErrorStatus getViewTable(AcDbViewTable*& table, AcDb::OpenMode mode = AcDb::kForRead);
    // Arrangements of the screen.
    Acad::ErrorStatus getViewportTable(AcDbViewportTable*& table,
                                       AcDb::OpenMode mode = AcDb::kForRead);
    // The same, chosen by the kind of pointer.
    Acad::ErrorStatus getSymbolTable(AcDbBlockTable*& table, AcDb::OpenMode mode);
    Acad::ErrorStatus getSymbolTable(AcDbLayerTable*& table, AcDb::OpenMode mode);
    Acad::ErrorStatus getSymbolTable(AcDbLinetypeTable*& table, AcDb::OpenMode mode);
    Acad::ErrorStatus getSymbolTable(AcDbRegAppTable*& table, AcDb::OpenMode mode);
    Acad::ErrorStatus getSymbolTable(AcDbTextStyleTable*& table, AcDb::OpenMode mode);
    Acad::ErrorStatus getSymbolTable(AcDbDimStyleTable*& table, AcDb::OpenMode mode);
    Acad::ErrorStatus getSymbolTable(AcDbUCSTable*& table, AcDb::OpenMode mode);
    Acad::ErrorStatus getSymbolTable(AcDbViewTable*& table, AcDb::OpenMode mode);
    Acad::ErrorStatus getSymbolTable(AcDbViewportTable*& table, AcDb::OpenMode mode);
    // The root of all dictionaries, and the one that groups lie in.
    Acad::ErrorStatus getNamedObjectsDictionary(AcDbDictionary*& dictionary,
                                                AcDb::OpenMode mode = AcDb::kForRead);
    Acad::ErrorStatus getGroupDictionary(AcDbDictionary*& dictionary,
                                         AcDb::OpenMode mode = AcDb::kForRead);

    // The same as identifiers, without opening anything. Null in a database that nothing was read
    // into.
    AcDbObjectId blockTableId() const;
    AcDbObjectId layerTableId() const;
    AcDbObjectId linetypeTableId() const;
    AcDbObjectId regAppTableId() const;
    AcDbObjectId textStyleTableId() const;
    AcDbObjectId dimStyleTableId() const;
    AcDbObjectId UCSTableId() const;
    AcDbObjectId viewTableId() const;
    AcDbObjectId viewportTableId() const;
    AcDbObjectId namedObjectsDictionaryId() const;
    AcDbObjectId groupDictionaryId() const;
    AcDbObjectId layoutDictionaryId() const;  // where the layouts lie
    // The block record new entities go to: model space unless a layout is current.
    AcDbObjectId currentSpaceId() const;

    AcDbObjectId layerZero() const;           // the layer "0"
    AcDbObjectId byLayerLinetype() const;     // what entities follow their layers by
    AcDbObjectId byBlockLinetype() const;     // what they follow their references by
    AcDbObjectId continuousLinetype() const;  // no gaps

    // Current settings. Setters change a header variable: they need the document's lock
    // (eLockViolation) and tell the reactors.
    AcDbObjectId clayer() const;  // CLAYER: of new entities
    // eNullObjectId; eWrongObjectType; eWasErased; eWrongDatabase; a frozen layer is refused with
    // eInvalidInput. Layers that are off or locked may be current.
    Acad::ErrorStatus setClayer(AcDbObjectId layer);
    AcDbObjectId celtype() const;  // CELTYPE: of new entities
    Acad::ErrorStatus setCeltype(AcDbObjectId linetype);
    AcCmColor cecolor() const;  // CECOLOR
    Acad::ErrorStatus setCecolor(const AcCmColor& color);
    double celtscale() const;  // CELTSCALE
    Acad::ErrorStatus setCeltscale(double scale);
    AcDb::LineWeight celweight() const;  // CELWEIGHT
    Acad::ErrorStatus setCelweight(AcDb::LineWeight weight);
    AcDbObjectId textstyle() const;     // TEXTSTYLE
    AcDbObjectId dimstyle() const;      // DIMSTYLE
    double ltscale() const;             // LTSCALE: of all line types
    AcDb::UnitsValue insunits() const;  // INSUNITS: what one drawing unit is
    Acad::ErrorStatus setInsunits(AcDb::UnitsValue units);
    AcGePoint3d insbase() const;  // INSBASE: base point when inserted elsewhere

    AcDbHandle handseed() const;  // HANDSEED: the next free handle
    AcGePoint3d extmin() const;   // EXTMIN as last stored; see updateExt
    AcGePoint3d extmax() const;   // EXTMAX
    // Recomputes extmin and extmax from the visible entities of model space. Needs the lock.
    Acad::ErrorStatus updateExt(bool doBestFit = false);
    Adesk::Int32 approxNumObjects() const;  // erased ones included

    // Clones objects of one owner into an owner of the same database.
    // ids        eWrongDatabase or eInvalidInput when they are not of one owner; empty: eOk
    // owner      block table record or dictionary; is opened for write: eLockViolation and the like
    // mapping    receives a pair for every cloned object, owned ones as non-primary
    // drawing    the clones are appended in the order of ids and left closed
    Acad::ErrorStatus deepCloneObjects(const AcDbObjectIdArray& ids, const AcDbObjectId& owner,
                                       AcDbIdMapping& mapping, bool deferXlation = false);

    // Not done in this host: eNotImplementedYet.
    Acad::ErrorStatus wblock(AcDbDatabase*& output, const AcDbObjectIdArray& ids,
                             const AcGePoint3d& basePoint);

    // Pointer kept, not owned; a second add of the same reactor changes nothing. Order kept.
    Acad::ErrorStatus addReactor(AcDbDatabaseReactor* reactor) const;
    Acad::ErrorStatus removeReactor(AcDbDatabaseReactor* reactor) const;

    // eNoDatabase-like refusal (eNotApplicable) for a drawing without file.
    Acad::ErrorStatus getFilename(const ACHAR*& name) const;
    const ACHAR* originalFileName() const;             // that was read; empty for a new drawing
    AcDb::AcDbDwgVersion originalFileVersion() const;  // of that file

    // Unlike AutoCAD, reads DXF only, text or binary. Into a database made with
    // buildDefaultDrawing = false. eFileNotFound, eFileAccessErr, eBadDxfSequence, ...
    Acad::ErrorStatus readDwgFile(const ACHAR* fileName, OpenMode mode = kForReadAndAllShare,
                                  bool allowCPConversion = false,
                                  const wchar_t* password = nullptr);
    // Ends lazy loading: every object is in memory afterwards.
    Acad::ErrorStatus closeInput(bool closeFile = true);
    // The same for a file named so; logName is not written.
    Acad::ErrorStatus dxfIn(const ACHAR* dxfName, const ACHAR* logName = nullptr);
    // Writes text DXF. precision 16 gives every digit.
    Acad::ErrorStatus dxfOut(const ACHAR* fileName, const int precision = 16,
                             AcDb::AcDbDwgVersion version = AcDb::kDHL_CURRENT,
                             bool saveThumbnail = false);
    // Unlike AutoCAD, writes DXF, in the version of the file that was read.
    Acad::ErrorStatus saveAs(const ACHAR* fileName, bool bakAndRename = false,
                             AcDb::AcDbDwgVersion version = AcDb::kDHL_CURRENT);
    // To the file that was read or saved to last; eNoDatabase-like refusal (eNotApplicable) without
    // one.
    Acad::ErrorStatus save();

    // Identifier of a handle. eNullHandle for 0, eUnknownHandle when there is none; an erased
    // object's is returned. createIfNotFound is not done: eNotImplementedYet when it would matter.
    Acad::ErrorStatus getAcDbObjectId(AcDbObjectId& id, bool createIfNotFound,
                                      const AcDbHandle& handle, Adesk::UInt32 xrefId = 0);

private:
    friend struct host::Access;
    std::unique_ptr<host::DatabaseImp> m_imp;
};
