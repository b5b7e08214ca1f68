// Symbol tables: layers, linetypes, blocks, styles, views, applications.
//
// Names compare without case and keep the spelling they were given. Look-up costs O(1).
#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "dbmain.h"
#include "gescl3d.h"

// Names of the records that are always there.
#define ACDB_MODEL_SPACE ACRX_T("*Model_Space")
#define ACDB_PAPER_SPACE ACRX_T("*Paper_Space")
#define ACDB_NULL_HANDLE ACRX_T("0")

class AcDbSymbolTable;
class AcDbSymbolTableRecord;  // see below

// A named record of a table.
class AcDbSymbolTableRecord : public AcDbObject {  // abstract
public:
    ACRX_DECLARE_MEMBERS(AcDbSymbolTableRecord);

    // The name: owned by the record, copied for acutDelString, or into a string.
    Acad::ErrorStatus getName(const ACHAR*& name) const;  // valid while the record is
    Acad::ErrorStatus getName(ACHAR*& name) const;        // a copy
    Acad::ErrorStatus getName(AcString& name) const;      // into a string
    // eInvalidInput for an empty or overlong name or one with a forbidden character;
    // eDuplicateRecordName; eNotOpenForWrite. Names that begin with an asterisk are kept for
    // blocks.
    Acad::ErrorStatus setName(const ACHAR* name);

    // Of an external reference.
    // By its name: "drawing|record".
    bool isDependent() const;
    bool isResolved() const { return true; }

protected:
    friend struct host::Access;
    AcDbSymbolTableRecord() = default;
    AcDbSymbolTableRecord(const AcDbSymbolTableRecord&) = default;
    AcDbSymbolTableRecord& operator=(const AcDbSymbolTableRecord&) = default;
    // The name becomes free for another record; un-erasing needs it back, else
    // eDuplicateRecordName.
    Acad::ErrorStatus subErase(bool erasing) override;

private:
    std::wstring m_name;  // group 2
};

// Visits the records in the order in which they were made.
class AcDbSymbolTableIterator {  // for all kinds of tables
public:
    AcDbSymbolTableIterator(const AcDbSymbolTable& table, bool atBeginning, bool skipDeleted);
    virtual ~AcDbSymbolTableIterator() = default;
    void start(bool atBeginning = true, bool skipDeleted = true);  // at the first, or the last
    bool done() const;  // behind the last, or before the first
    void step(bool forward = true, bool skipDeleted = true);  // towards the end, or back
    Acad::ErrorStatus getRecordId(AcDbObjectId& id) const;  // eInvalidIndex when the visit is done
    Acad::ErrorStatus getRecord(AcDbSymbolTableRecord*& record,
                                AcDb::OpenMode mode = AcDb::kForRead,
                                bool openErased = false) const;  // the caller closes it
    // eKeyNotFound.
    Acad::ErrorStatus seek(AcDbObjectId id);

protected:
    AcDbObjectId current() const;  // null at the end

private:
    void skip(bool forward, bool skipDeleted);  // passes over erased records
    const AcDbSymbolTable& m_table;
    std::ptrdiff_t m_at = 0;  // place in the table's list
};

// What all tables are: names, and the records behind them.
class AcDbSymbolTable : public AcDbObject {
public:
    ACRX_DECLARE_MEMBERS(AcDbSymbolTable);

    // eKeyNotFound. getErasedRecord: an erased record of that name is found too.
    Acad::ErrorStatus getAt(const ACHAR* name, AcDbObjectId& id,
                            bool getErasedRecord = false) const;
    Acad::ErrorStatus getAt(const ACHAR* name, AcDbSymbolTableRecord*& record, AcDb::OpenMode mode,
                            bool openErasedRecord = false) const;
    bool has(const ACHAR* name) const;  // erased records do not count
    bool has(AcDbObjectId id) const;

    // Adds a new record with a name; the table must be open for write; the record is then open for
    // write. eDuplicateRecordName, eInvalidInput for a missing name, eWrongObjectType,
    // eAlreadyInDb.
    Acad::ErrorStatus add(AcDbSymbolTableRecord* record);
    Acad::ErrorStatus add(AcDbObjectId& id, AcDbSymbolTableRecord* record);

    // The caller deletes it.
    Acad::ErrorStatus newIterator(AcDbSymbolTableIterator*& iterator, bool atBeginning = true,
                                  bool skipDeleted = true) const;

protected:
    friend struct host::Access;
    friend class AcDbSymbolTableIterator;
    friend class AcDbSymbolTableRecord;
    AcDbSymbolTable() = default;
    // Class of the records this table takes.
    virtual AcRxClass* recordClass() const = 0;
    void ownedIds(AcDbObjectIdArray& ids) const override;

private:
    std::vector<AcDbObjectId> m_records;                      // in the order they were made
    std::unordered_map<std::wstring, AcDbObjectId> m_byName;  // folded names of what is not erased
};

namespace host {
// The typed members that every table has under the same names.
template <class Record, class Iterator>
class TypedSymbolTable : public AcDbSymbolTable {  // made by the kind of record
public:
    using AcDbSymbolTable::add;
    using AcDbSymbolTable::getAt;
    Acad::ErrorStatus getAt(const ACHAR* name, Record*& record, AcDb::OpenMode mode,
                            bool openErasedRecord = false) const {
        record = nullptr;
        AcDbObjectId id;
        const Acad::ErrorStatus es = getAt(name, id, openErasedRecord);
        return es == Acad::eOk ? acdbOpenObject(record, id, mode, openErasedRecord) : es;
    }
    Acad::ErrorStatus add(Record* record) { return AcDbSymbolTable::add(record); }
    Acad::ErrorStatus add(AcDbObjectId& id, Record* record) {
        return AcDbSymbolTable::add(id, record);
    }
    Acad::ErrorStatus newIterator(Iterator*& iterator, bool atBeginning = true,
                                  bool skipDeleted = true) const {
        iterator = new Iterator(*this, atBeginning, skipDeleted);
        return Acad::eOk;
    }

protected:
    AcRxClass* recordClass() const override { return Record::desc(); }
};

template <class Record>
class TypedTableIterator : public AcDbSymbolTableIterator {  // likewise
public:
    using AcDbSymbolTableIterator::AcDbSymbolTableIterator;
    using AcDbSymbolTableIterator::getRecord;
    Acad::ErrorStatus getRecord(Record*& record, AcDb::OpenMode mode = AcDb::kForRead,
                                bool openErased = false) const {
        return acdbOpenObject(record, current(), mode, openErased);
    }
};
}  // namespace host

// LAYER. Overrides for single viewports, transparency, materials and filters are kept in the file
// only.
class AcDbLayerTableRecord : public AcDbSymbolTableRecord {
public:
    ACRX_DECLARE_MEMBERS(AcDbLayerTableRecord);
    // On, thawed, unlocked, colour 7, continuous.
    AcDbLayerTableRecord();

    // Void setters stop the program when the record is not open for write.
    bool isOff() const { return m_off; }  // a negative group 62
    void setIsOff(bool off);
    bool isFrozen() const { return m_frozen; }  // bit 1 of group 70
    // eInvalidInput for the current layer.
    Acad::ErrorStatus setIsFrozen(bool frozen);
    bool isLocked() const { return m_locked; }  // bit 4: shows, and cannot be changed
    void setIsLocked(bool locked);
    bool isHidden() const { return m_hidden; }  // not offered to users
    Acad::ErrorStatus setIsHidden(bool hidden);
    bool isPlottable() const { return m_plottable; }  // group 290
    Acad::ErrorStatus setIsPlottable(bool plottable);
    // True when an entity that is not erased lies on the layer. O(all entities).
    bool isInUse() const;

    AcCmColor color() const { return AcCmColor(m_color); }  // of what is ByLayer
    void setColor(const AcCmColor& color);
    AcDbObjectId linetypeObjectId() const { return m_linetypeId; }  // group 6
    // eWrongObjectType.
    Acad::ErrorStatus setLinetypeObjectId(AcDbObjectId linetype);
    AcDb::LineWeight lineWeight() const { return AcDb::LineWeight(m_lineWeight); }  // group 370
    Acad::ErrorStatus setLineWeight(AcDb::LineWeight weight);
    // Copy for acutDelString.
    ACHAR* description() const;
    Acad::ErrorStatus setDescription(const ACHAR* text);  // eInvalidInput for null

    AcRxObject* clone() const override;
    Acad::ErrorStatus copyFrom(const AcRxObject* other) override;

private:
    friend struct host::Access;
    AcDbObjectId m_linetypeId;
    std::wstring m_description;
    AcCmEntityColor m_color;
    Adesk::Int16 m_lineWeight = AcDb::kLnWtByLwDefault;  // hundredths of a millimetre, or a state
    bool m_off = false;                                  // group 62 below 0
    bool m_frozen = false;
    bool m_locked = false;
    bool m_hidden = false;
    bool m_plottable = true;  // group 290
};
// Visits the layers in the order in which they were made.
class AcDbLayerTableIterator : public host::TypedTableIterator<AcDbLayerTableRecord> {
public:
    using TypedTableIterator::TypedTableIterator;
};
// The layers of a drawing.
class AcDbLayerTable : public host::TypedSymbolTable<AcDbLayerTableRecord, AcDbLayerTableIterator> {
public:
    ACRX_DECLARE_MEMBERS(AcDbLayerTable);  // in files: TABLE LAYER
    using AcDbSymbolTable::has;
    using TypedSymbolTable::getAt;
    // The last flag would hide hidden layers; here they are always found.
    Acad::ErrorStatus getAt(const ACHAR* name, AcDbObjectId& id, bool getErasedRecord,
                            bool getHiddenRecord) const {
        // Nothing is hidden from programs.
        static_cast<void>(getHiddenRecord);
        return AcDbSymbolTable::getAt(name, id, getErasedRecord);
    }
};

// Pattern of dashes (positive lengths), gaps (negative) and dots (zero), in drawing units.
class AcDbLinetypeTableRecord : public AcDbSymbolTableRecord {
public:
    ACRX_DECLARE_MEMBERS(AcDbLinetypeTableRecord);
    AcDbLinetypeTableRecord() = default;  // no gaps

    ACHAR* comments() const;  // group 3, as "____ _ ____"
    Acad::ErrorStatus setComments(const ACHAR* text);
    double patternLength() const { return m_patternLength; }  // group 40: the sum of all parts
    Acad::ErrorStatus setPatternLength(double length);
    int numDashes() const { return static_cast<int>(m_dashes.size()); }  // group 73
    Acad::ErrorStatus setNumDashes(int count);
    double dashLengthAt(int index) const;  // group 49; 0 for a wrong index
    Acad::ErrorStatus setDashLengthAt(int index, double length);

    AcRxObject* clone() const override;
    Acad::ErrorStatus copyFrom(const AcRxObject* other) override;

private:
    friend struct host::Access;
    std::wstring m_comments;
    std::vector<double> m_dashes;  // drawing units
    double m_patternLength = 0.0;  // as stated, not summed up
};
// Visits the line types.
class AcDbLinetypeTableIterator : public host::TypedTableIterator<AcDbLinetypeTableRecord> {
public:
    using TypedTableIterator::TypedTableIterator;
};
// The line types of a drawing. Loading from files of line types is not carried out.
class AcDbLinetypeTable
    : public host::TypedSymbolTable<AcDbLinetypeTableRecord, AcDbLinetypeTableIterator> {
public:
    ACRX_DECLARE_MEMBERS(AcDbLinetypeTable);  // in files: TABLE LTYPE
};

// STYLE. Fonts are named and not read: letters are those of the display.
class AcDbTextStyleTableRecord : public AcDbSymbolTableRecord {
public:
    ACRX_DECLARE_MEMBERS(AcDbTextStyleTableRecord);
    AcDbTextStyleTableRecord() = default;  // no font

    double textSize() const { return m_textSize; }  // group 40; 0: each text has its own
    Acad::ErrorStatus setTextSize(double size);
    double xScale() const { return m_xScale; }  // group 41
    Acad::ErrorStatus setXScale(double scale);
    double obliquingAngle() const { return m_obliquing; }  // group 50, radians
    Acad::ErrorStatus setObliquingAngle(double angle);
    Acad::ErrorStatus fileName(AcString& name) const;  // group 3
    Acad::ErrorStatus setFileName(const ACHAR* name);
    Acad::ErrorStatus bigFontFileName(AcString& name) const;  // group 4
    Acad::ErrorStatus setBigFontFileName(const ACHAR* name);
    bool isShapeFile() const { return m_shapeFile; }  // bit 1 of group 70: shapes, no letters

    AcRxObject* clone() const override;
    Acad::ErrorStatus copyFrom(const AcRxObject* other) override;

private:
    friend struct host::Access;
    std::wstring m_fileName;         // font or file of shapes
    std::wstring m_bigFontFileName;  // of Asian letters
    double m_textSize = 0.0;
    double m_xScale = 1.0;
    double m_obliquing = 0.0;  // radians
    bool m_shapeFile = false;
};
// Visits the text styles.
class AcDbTextStyleTableIterator : public host::TypedTableIterator<AcDbTextStyleTableRecord> {
public:
    using TypedTableIterator::TypedTableIterator;
};
// The text styles of a drawing.
class AcDbTextStyleTable
    : public host::TypedSymbolTable<AcDbTextStyleTableRecord, AcDbTextStyleTableIterator> {
public:
    ACRX_DECLARE_MEMBERS(AcDbTextStyleTable);  // in files: TABLE STYLE
};

// Name of an application that stores extended data.
class AcDbRegAppTableRecord : public AcDbSymbolTableRecord {
public:
    ACRX_DECLARE_MEMBERS(AcDbRegAppTableRecord);  // in files: APPID
    AcDbRegAppTableRecord() = default;
    AcRxObject* clone() const override;
    Acad::ErrorStatus copyFrom(const AcRxObject* other) override;
};
// Visits the applications.
class AcDbRegAppTableIterator : public host::TypedTableIterator<AcDbRegAppTableRecord> {
public:
    using TypedTableIterator::TypedTableIterator;
};
// The applications of a drawing.
class AcDbRegAppTable
    : public host::TypedSymbolTable<AcDbRegAppTableRecord, AcDbRegAppTableIterator> {
public:
    ACRX_DECLARE_MEMBERS(AcDbRegAppTable);  // in files: TABLE APPID
};
// Registers an application in the working database, once. True when it is registered afterwards.
bool acdbRegApp(const ACHAR* name);

// Dimension styles keep their values in the drawing source; here they have a name.
class AcDbDimStyleTableRecord : public AcDbSymbolTableRecord {
public:
    ACRX_DECLARE_MEMBERS(AcDbDimStyleTableRecord);  // in files: DIMSTYLE
    AcDbDimStyleTableRecord() = default;
    AcRxObject* clone() const override;
    Acad::ErrorStatus copyFrom(const AcRxObject* other) override;
};
// Visits the dimension styles.
class AcDbDimStyleTableIterator : public host::TypedTableIterator<AcDbDimStyleTableRecord> {
public:
    using TypedTableIterator::TypedTableIterator;
};
// The dimension styles of a drawing.
class AcDbDimStyleTable
    : public host::TypedSymbolTable<AcDbDimStyleTableRecord, AcDbDimStyleTableIterator> {
public:
    ACRX_DECLARE_MEMBERS(AcDbDimStyleTable);  // in files: TABLE DIMSTYLE
};

// UCS: a named coordinate system. The current one of this host is always the world's.
class AcDbUCSTableRecord : public AcDbSymbolTableRecord {
public:
    ACRX_DECLARE_MEMBERS(AcDbUCSTableRecord);
    AcDbUCSTableRecord() = default;                  // the world's
    AcGePoint3d origin() const { return m_origin; }  // group 10, WCS
    Acad::ErrorStatus setOrigin(const AcGePoint3d& origin);
    AcGeVector3d xAxis() const { return m_xAxis; }  // group 11, unit
    Acad::ErrorStatus setXAxis(const AcGeVector3d& axis);
    AcGeVector3d yAxis() const { return m_yAxis; }  // group 12, unit
    Acad::ErrorStatus setYAxis(const AcGeVector3d& axis);
    AcRxObject* clone() const override;
    Acad::ErrorStatus copyFrom(const AcRxObject* other) override;

private:
    friend struct host::Access;
    AcGePoint3d m_origin;
    AcGeVector3d m_xAxis{1.0, 0.0, 0.0};
    AcGeVector3d m_yAxis{0.0, 1.0, 0.0};
};
// Visits the coordinate systems.
class AcDbUCSTableIterator : public host::TypedTableIterator<AcDbUCSTableRecord> {
public:
    using TypedTableIterator::TypedTableIterator;
};
// The named coordinate systems of a drawing.
class AcDbUCSTable : public host::TypedSymbolTable<AcDbUCSTableRecord, AcDbUCSTableIterator> {
public:
    ACRX_DECLARE_MEMBERS(AcDbUCSTable);  // in files: TABLE UCS
};

// What views and viewports have in common: where the drawing is looked at from, and how wide.
class AcDbAbstractViewTableRecord : public AcDbSymbolTableRecord {
public:
    ACRX_DECLARE_MEMBERS(AcDbAbstractViewTableRecord);
    AcGePoint2d centerPoint() const { return m_center; }  // of the picture, in its own plane
    void setCenterPoint(const AcGePoint2d& center);
    double height() const { return m_height; }  // of the picture, drawing units
    void setHeight(double height);
    double width() const { return m_width; }  // likewise
    void setWidth(double width);
    AcGePoint3d target() const { return m_target; }  // what is looked at, WCS
    void setTarget(const AcGePoint3d& target);
    AcGeVector3d viewDirection() const { return m_direction; }  // from the target to the eye
    void setViewDirection(const AcGeVector3d& direction);
    double viewTwist() const { return m_twist; }  // of the picture about that, radians
    void setViewTwist(double angle);

protected:
    friend struct host::Access;
    AcDbAbstractViewTableRecord() = default;

private:
    AcGePoint2d m_center;                     // group 10 of VIEW, 12 of VPORT
    AcGePoint3d m_target;                     // group 12 of VIEW, 17 of VPORT
    AcGeVector3d m_direction{0.0, 0.0, 1.0};  // group 11 of VIEW, 16 of VPORT
    double m_height = 1.0;                    // group 40
    double m_width = 1.0;                     // group 41 of VIEW; a ratio in VPORT
    double m_twist = 0.0;                     // group 50 of VIEW, 51 of VPORT
};

// VIEW: a named view.
class AcDbViewTableRecord : public AcDbAbstractViewTableRecord {
public:
    ACRX_DECLARE_MEMBERS(AcDbViewTableRecord);
    AcDbViewTableRecord() = default;  // one unit of plan view about the origin
    bool isPaperspaceView() const { return m_paperspace; }  // bit 1 of group 70
    void setIsPaperspaceView(bool paperspace);
    AcRxObject* clone() const override;
    Acad::ErrorStatus copyFrom(const AcRxObject* other) override;

private:
    friend struct host::Access;
    bool m_paperspace = false;
};
// Visits the views.
class AcDbViewTableIterator : public host::TypedTableIterator<AcDbViewTableRecord> {
public:
    using TypedTableIterator::TypedTableIterator;
};
// The named views of a drawing.
class AcDbViewTable : public host::TypedSymbolTable<AcDbViewTableRecord, AcDbViewTableIterator> {
public:
    ACRX_DECLARE_MEMBERS(AcDbViewTable);  // in files: TABLE VIEW
};

// Several records may be called "*Active": the viewports of one screen arrangement.
class AcDbViewportTableRecord : public AcDbAbstractViewTableRecord {
public:
    ACRX_DECLARE_MEMBERS(AcDbViewportTableRecord);
    AcDbViewportTableRecord() = default;  // the whole screen
    // groups 10 and 11, shares of the screen
    AcGePoint2d lowerLeftCorner() const { return m_lowerLeft; }
    void setLowerLeftCorner(const AcGePoint2d& corner);
    AcGePoint2d upperRightCorner() const { return m_upperRight; }
    void setUpperRightCorner(const AcGePoint2d& corner);
    AcRxObject* clone() const override;
    Acad::ErrorStatus copyFrom(const AcRxObject* other) override;

private:
    friend struct host::Access;
    AcGePoint2d m_lowerLeft;
    AcGePoint2d m_upperRight{1.0, 1.0};
};
// Visits the viewports.
class AcDbViewportTableIterator : public host::TypedTableIterator<AcDbViewportTableRecord> {
public:
    using TypedTableIterator::TypedTableIterator;
};
// The arrangements of the screen.
class AcDbViewportTable
    : public host::TypedSymbolTable<AcDbViewportTableRecord, AcDbViewportTableIterator> {
public:
    ACRX_DECLARE_MEMBERS(AcDbViewportTable);  // in files: TABLE VPORT
};

#include "dbblkrec.h"
