// Symbol tables: layers, linetypes, blocks, styles, views, applications.
//
// Names compare without case and keep the spelling they were given. Look-up costs O(1).
#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "dbmain.h"
#include "gescl3d.h"

#define ACDB_MODEL_SPACE ACRX_T("*Model_Space")
#define ACDB_PAPER_SPACE ACRX_T("*Paper_Space")
#define ACDB_NULL_HANDLE ACRX_T("0")

class AcDbSymbolTable;
class AcDbSymbolTableRecord;

// A named record of a table.
class AcDbSymbolTableRecord : public AcDbObject {
public:
    ACRX_DECLARE_MEMBERS(AcDbSymbolTableRecord);

    // The name: owned by the record, copied for acutDelString, or into a string.
    Acad::ErrorStatus getName(const ACHAR*& name) const;
    Acad::ErrorStatus getName(ACHAR*& name) const;
    Acad::ErrorStatus getName(AcString& name) const;
    // eInvalidInput for an empty or overlong name or one with a forbidden character;
    // eDuplicateRecordName; eNotOpenForWrite. Names that begin with an asterisk are kept for
    // blocks.
    Acad::ErrorStatus setName(const ACHAR* name);

    // Of an external reference.
    bool isDependent() const;
    bool isResolved() const { return true; }

protected:
    friend struct host::Access;
    AcDbSymbolTableRecord() = default;
    AcDbSymbolTableRecord(const AcDbSymbolTableRecord&) = default;
    AcDbSymbolTableRecord& operator=(const AcDbSymbolTableRecord&) = default;
    Acad::ErrorStatus subErase(bool erasing) override;

private:
    std::wstring m_name;
};

// Visits the records in the order in which they were made.
class AcDbSymbolTableIterator {
public:
    AcDbSymbolTableIterator(const AcDbSymbolTable& table, bool atBeginning, bool skipDeleted);
    virtual ~AcDbSymbolTableIterator() = default;
    void start(bool atBeginning = true, bool skipDeleted = true);
    bool done() const;
    void step(bool forward = true, bool skipDeleted = true);
    Acad::ErrorStatus getRecordId(AcDbObjectId& id) const;
    Acad::ErrorStatus getRecord(AcDbSymbolTableRecord*& record,
                                AcDb::OpenMode mode = AcDb::kForRead,
                                bool openErased = false) const;
    // eKeyNotFound.
    Acad::ErrorStatus seek(AcDbObjectId id);

protected:
    AcDbObjectId current() const;

private:
    void skip(bool forward, bool skipDeleted);
    const AcDbSymbolTable& m_table;
    std::ptrdiff_t m_at = 0;
};

class AcDbSymbolTable : public AcDbObject {
public:
    ACRX_DECLARE_MEMBERS(AcDbSymbolTable);

    // eKeyNotFound. getErasedRecord: an erased record of that name is found too.
    Acad::ErrorStatus getAt(const ACHAR* name, AcDbObjectId& id,
                            bool getErasedRecord = false) const;
    Acad::ErrorStatus getAt(const ACHAR* name, AcDbSymbolTableRecord*& record, AcDb::OpenMode mode,
                            bool openErasedRecord = false) const;
    bool has(const ACHAR* name) const;
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
    std::vector<AcDbObjectId> m_records;
    std::unordered_map<std::wstring, AcDbObjectId> m_byName;  // folded names of what is not erased
};

namespace host {
// The typed members that every table has under the same names.
template <class Record, class Iterator>
class TypedSymbolTable : public AcDbSymbolTable {
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
class TypedTableIterator : public AcDbSymbolTableIterator {
public:
    using AcDbSymbolTableIterator::AcDbSymbolTableIterator;
    using AcDbSymbolTableIterator::getRecord;
    Acad::ErrorStatus getRecord(Record*& record, AcDb::OpenMode mode = AcDb::kForRead,
                                bool openErased = false) const {
        return acdbOpenObject(record, current(), mode, openErased);
    }
};
}  // namespace host

class AcDbLayerTableRecord : public AcDbSymbolTableRecord {
public:
    ACRX_DECLARE_MEMBERS(AcDbLayerTableRecord);
    AcDbLayerTableRecord();

    // Void setters stop the program when the record is not open for write.
    bool isOff() const { return m_off; }
    void setIsOff(bool off);
    bool isFrozen() const { return m_frozen; }
    // eInvalidInput for the current layer.
    Acad::ErrorStatus setIsFrozen(bool frozen);
    bool isLocked() const { return m_locked; }
    void setIsLocked(bool locked);
    bool isHidden() const { return m_hidden; }
    Acad::ErrorStatus setIsHidden(bool hidden);
    bool isPlottable() const { return m_plottable; }
    Acad::ErrorStatus setIsPlottable(bool plottable);
    // True when an entity that is not erased lies on the layer. O(all entities).
    bool isInUse() const;

    AcCmColor color() const { return AcCmColor(m_color); }
    void setColor(const AcCmColor& color);
    AcDbObjectId linetypeObjectId() const { return m_linetypeId; }
    // eWrongObjectType.
    Acad::ErrorStatus setLinetypeObjectId(AcDbObjectId linetype);
    AcDb::LineWeight lineWeight() const { return AcDb::LineWeight(m_lineWeight); }
    Acad::ErrorStatus setLineWeight(AcDb::LineWeight weight);
    // Copy for acutDelString.
    ACHAR* description() const;
    Acad::ErrorStatus setDescription(const ACHAR* text);

    AcRxObject* clone() const override;
    Acad::ErrorStatus copyFrom(const AcRxObject* other) override;

private:
    friend struct host::Access;
    AcDbObjectId m_linetypeId;
    std::wstring m_description;
    AcCmEntityColor m_color;
    Adesk::Int16 m_lineWeight = AcDb::kLnWtByLwDefault;
    bool m_off = false;
    bool m_frozen = false;
    bool m_locked = false;
    bool m_hidden = false;
    bool m_plottable = true;
};
class AcDbLayerTableIterator : public host::TypedTableIterator<AcDbLayerTableRecord> {
public:
    using TypedTableIterator::TypedTableIterator;
};
class AcDbLayerTable : public host::TypedSymbolTable<AcDbLayerTableRecord, AcDbLayerTableIterator> {
public:
    ACRX_DECLARE_MEMBERS(AcDbLayerTable);
    using AcDbSymbolTable::has;
    using TypedSymbolTable::getAt;
    // The last flag would hide hidden layers; here they are always found.
    Acad::ErrorStatus getAt(const ACHAR* name, AcDbObjectId& id, bool getErasedRecord,
                            bool getHiddenRecord) const {
        static_cast<void>(getHiddenRecord);
        return AcDbSymbolTable::getAt(name, id, getErasedRecord);
    }
};

// Pattern of dashes (positive lengths), gaps (negative) and dots (zero), in drawing units.
class AcDbLinetypeTableRecord : public AcDbSymbolTableRecord {
public:
    ACRX_DECLARE_MEMBERS(AcDbLinetypeTableRecord);
    AcDbLinetypeTableRecord() = default;

    ACHAR* comments() const;
    Acad::ErrorStatus setComments(const ACHAR* text);
    double patternLength() const { return m_patternLength; }
    Acad::ErrorStatus setPatternLength(double length);
    int numDashes() const { return static_cast<int>(m_dashes.size()); }
    Acad::ErrorStatus setNumDashes(int count);
    double dashLengthAt(int index) const;
    Acad::ErrorStatus setDashLengthAt(int index, double length);

    AcRxObject* clone() const override;
    Acad::ErrorStatus copyFrom(const AcRxObject* other) override;

private:
    friend struct host::Access;
    std::wstring m_comments;
    std::vector<double> m_dashes;
    double m_patternLength = 0.0;
};
class AcDbLinetypeTableIterator : public host::TypedTableIterator<AcDbLinetypeTableRecord> {
public:
    using TypedTableIterator::TypedTableIterator;
};
class AcDbLinetypeTable
    : public host::TypedSymbolTable<AcDbLinetypeTableRecord, AcDbLinetypeTableIterator> {
public:
    ACRX_DECLARE_MEMBERS(AcDbLinetypeTable);
};

class AcDbTextStyleTableRecord : public AcDbSymbolTableRecord {
public:
    ACRX_DECLARE_MEMBERS(AcDbTextStyleTableRecord);
    AcDbTextStyleTableRecord() = default;

    double textSize() const { return m_textSize; }
    Acad::ErrorStatus setTextSize(double size);
    double xScale() const { return m_xScale; }
    Acad::ErrorStatus setXScale(double scale);
    double obliquingAngle() const { return m_obliquing; }
    Acad::ErrorStatus setObliquingAngle(double angle);
    Acad::ErrorStatus fileName(AcString& name) const;
    Acad::ErrorStatus setFileName(const ACHAR* name);
    Acad::ErrorStatus bigFontFileName(AcString& name) const;
    Acad::ErrorStatus setBigFontFileName(const ACHAR* name);
    bool isShapeFile() const { return m_shapeFile; }

    AcRxObject* clone() const override;
    Acad::ErrorStatus copyFrom(const AcRxObject* other) override;

private:
    friend struct host::Access;
    std::wstring m_fileName;
    std::wstring m_bigFontFileName;
    double m_textSize = 0.0;
    double m_xScale = 1.0;
    double m_obliquing = 0.0;
    bool m_shapeFile = false;
};
class AcDbTextStyleTableIterator : public host::TypedTableIterator<AcDbTextStyleTableRecord> {
public:
    using TypedTableIterator::TypedTableIterator;
};
class AcDbTextStyleTable
    : public host::TypedSymbolTable<AcDbTextStyleTableRecord, AcDbTextStyleTableIterator> {
public:
    ACRX_DECLARE_MEMBERS(AcDbTextStyleTable);
};

// Name of an application that stores extended data.
class AcDbRegAppTableRecord : public AcDbSymbolTableRecord {
public:
    ACRX_DECLARE_MEMBERS(AcDbRegAppTableRecord);
    AcDbRegAppTableRecord() = default;
    AcRxObject* clone() const override;
    Acad::ErrorStatus copyFrom(const AcRxObject* other) override;
};
class AcDbRegAppTableIterator : public host::TypedTableIterator<AcDbRegAppTableRecord> {
public:
    using TypedTableIterator::TypedTableIterator;
};
class AcDbRegAppTable
    : public host::TypedSymbolTable<AcDbRegAppTableRecord, AcDbRegAppTableIterator> {
public:
    ACRX_DECLARE_MEMBERS(AcDbRegAppTable);
};
// Registers an application in the working database, once. True when it is registered afterwards.
bool acdbRegApp(const ACHAR* name);

// Dimension styles keep their values in the drawing source; here they have a name.
class AcDbDimStyleTableRecord : public AcDbSymbolTableRecord {
public:
    ACRX_DECLARE_MEMBERS(AcDbDimStyleTableRecord);
    AcDbDimStyleTableRecord() = default;
    AcRxObject* clone() const override;
    Acad::ErrorStatus copyFrom(const AcRxObject* other) override;
};
class AcDbDimStyleTableIterator : public host::TypedTableIterator<AcDbDimStyleTableRecord> {
public:
    using TypedTableIterator::TypedTableIterator;
};
class AcDbDimStyleTable
    : public host::TypedSymbolTable<AcDbDimStyleTableRecord, AcDbDimStyleTableIterator> {
public:
    ACRX_DECLARE_MEMBERS(AcDbDimStyleTable);
};

class AcDbUCSTableRecord : public AcDbSymbolTableRecord {
public:
    ACRX_DECLARE_MEMBERS(AcDbUCSTableRecord);
    AcDbUCSTableRecord() = default;
    AcGePoint3d origin() const { return m_origin; }
    Acad::ErrorStatus setOrigin(const AcGePoint3d& origin);
    AcGeVector3d xAxis() const { return m_xAxis; }
    Acad::ErrorStatus setXAxis(const AcGeVector3d& axis);
    AcGeVector3d yAxis() const { return m_yAxis; }
    Acad::ErrorStatus setYAxis(const AcGeVector3d& axis);
    AcRxObject* clone() const override;
    Acad::ErrorStatus copyFrom(const AcRxObject* other) override;

private:
    friend struct host::Access;
    AcGePoint3d m_origin;
    AcGeVector3d m_xAxis{1.0, 0.0, 0.0};
    AcGeVector3d m_yAxis{0.0, 1.0, 0.0};
};
class AcDbUCSTableIterator : public host::TypedTableIterator<AcDbUCSTableRecord> {
public:
    using TypedTableIterator::TypedTableIterator;
};
class AcDbUCSTable : public host::TypedSymbolTable<AcDbUCSTableRecord, AcDbUCSTableIterator> {
public:
    ACRX_DECLARE_MEMBERS(AcDbUCSTable);
};

// What views and viewports have in common: where the drawing is looked at from, and how wide.
class AcDbAbstractViewTableRecord : public AcDbSymbolTableRecord {
public:
    ACRX_DECLARE_MEMBERS(AcDbAbstractViewTableRecord);
    AcGePoint2d centerPoint() const { return m_center; }
    void setCenterPoint(const AcGePoint2d& center);
    double height() const { return m_height; }
    void setHeight(double height);
    double width() const { return m_width; }
    void setWidth(double width);
    AcGePoint3d target() const { return m_target; }
    void setTarget(const AcGePoint3d& target);
    AcGeVector3d viewDirection() const { return m_direction; }
    void setViewDirection(const AcGeVector3d& direction);
    double viewTwist() const { return m_twist; }
    void setViewTwist(double angle);

protected:
    friend struct host::Access;
    AcDbAbstractViewTableRecord() = default;

private:
    AcGePoint2d m_center;
    AcGePoint3d m_target;
    AcGeVector3d m_direction{0.0, 0.0, 1.0};
    double m_height = 1.0;
    double m_width = 1.0;
    double m_twist = 0.0;
};

class AcDbViewTableRecord : public AcDbAbstractViewTableRecord {
public:
    ACRX_DECLARE_MEMBERS(AcDbViewTableRecord);
    AcDbViewTableRecord() = default;
    bool isPaperspaceView() const { return m_paperspace; }
    void setIsPaperspaceView(bool paperspace);
    AcRxObject* clone() const override;
    Acad::ErrorStatus copyFrom(const AcRxObject* other) override;

private:
    friend struct host::Access;
    bool m_paperspace = false;
};
class AcDbViewTableIterator : public host::TypedTableIterator<AcDbViewTableRecord> {
public:
    using TypedTableIterator::TypedTableIterator;
};
class AcDbViewTable : public host::TypedSymbolTable<AcDbViewTableRecord, AcDbViewTableIterator> {
public:
    ACRX_DECLARE_MEMBERS(AcDbViewTable);
};

// Several records may be called "*Active": the viewports of one screen arrangement.
class AcDbViewportTableRecord : public AcDbAbstractViewTableRecord {
public:
    ACRX_DECLARE_MEMBERS(AcDbViewportTableRecord);
    AcDbViewportTableRecord() = default;
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
class AcDbViewportTableIterator : public host::TypedTableIterator<AcDbViewportTableRecord> {
public:
    using TypedTableIterator::TypedTableIterator;
};
class AcDbViewportTable
    : public host::TypedSymbolTable<AcDbViewportTableRecord, AcDbViewportTableIterator> {
public:
    ACRX_DECLARE_MEMBERS(AcDbViewportTable);
};

#include "dbblkrec.h"
