// The stored task list: whatever stands in its record is read without harm, and what was read is
// stored and read back alike.
#include <string>

#include "arxHeaders.h"
#include "fuzz/check.h"
#include "host/dxf/dxf_file.h"
#include "host/ed/session.h"
#include "plugin/batch/BatchTaskList.h"
#include "plugin/batch/Progress.h"
#include "plugin/util/SatExport.h"

// No tool runs here: nobody shows how far it is, or asks for a file.
void progressStart() {}
void progressStep(int, int, double) {}
void progressEnd() {}
CString AskSatPath(const CString&, CWnd*) { return CString(); }

namespace {

// Values of the record out of bytes: a type, then as many bytes as it takes.
class Values {
public:
    Values(const uint8_t* data, size_t size) : m_at(data), m_end(data + size) {}

    resbuf* Chain() {
        resbuf* first = nullptr;
        resbuf** next = &first;
        while (m_at < m_end) {
            *next = One();
            if (*next == nullptr) break;
            next = &(*next)->rbnext;
        }
        return first;
    }

private:
    unsigned Byte() { return m_at < m_end ? *m_at++ : 0; }
    resbuf* One() {
        static const short kTypes[] = {1, 90, 70, 40, 10, 340, 290, 330, 300};
        const short type = kTypes[Byte() % (sizeof kTypes / sizeof *kTypes)];
        resbuf* const value = acutNewRb(type);
        if (value == nullptr) return nullptr;
        const unsigned number = Byte();
        switch (type) {
            case 1:
            case 300: {
                std::wstring text;
                for (unsigned i = 0; i < number % 12; ++i) text += static_cast<wchar_t>(Byte());
                if (acutNewString(text.c_str(), value->resval.rstring) != Acad::eOk)
                    value->resval.rstring = nullptr;
                break;
            }
            case 90:
                value->resval.rlong = static_cast<Adesk::Int32>(number << 24 | Byte());
                if (number < 128) value->resval.rlong = static_cast<Adesk::Int32>(number);
                break;
            case 70:
            case 290:
                value->resval.rint = static_cast<short>(number);
                break;
            case 40:
                value->resval.rreal = static_cast<double>(number) - 100.0;
                break;
            case 10:
                value->resval.rpoint[0] = number;
                value->resval.rpoint[1] = Byte();
                value->resval.rpoint[2] = 0.0;
                break;
            default:
                value->resval.rlname[0] = value->resval.rlname[1] = 0;
        }
        return value;
    }

    const uint8_t *m_at, *m_end;
};

std::string Stored(BatchTaskList& list, AcDbDatabase& database) {
    FUZZ_CHECK(list.store(&database) == Acad::eOk);
    std::string bytes;
    host::dxf::Report report;
    FUZZ_CHECK(host::dxf::WriteToString(database, bytes, report).ok());
    return bytes;
}

void PutRecord(AcDbDatabase& database, const resbuf* chain) {
    // An empty list makes the dictionary and the record; its data are then replaced.
    BatchTaskList none;
    FUZZ_CHECK(none.store(&database) == Acad::eOk);
    AcDbObjectPointer<AcDbDictionary> named(database.namedObjectsDictionaryId(), AcDb::kForRead);
    AcDbObjectId id;
    FUZZ_CHECK(named->getAt(ACRX_T("QZDJBLX"), id) == Acad::eOk);
    AcDbObjectPointer<AcDbDictionary> own(id, AcDb::kForRead);
    FUZZ_CHECK(own->getAt(ACRX_T("BLX"), id) == Acad::eOk);
    AcDbObjectPointer<AcDbXrecord> record(id, AcDb::kForWrite);
    FUZZ_CHECK(record.openStatus() == Acad::eOk);
    static_cast<void>(record->setFromRbChain(*chain));
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    static_cast<void>(host::Session::Get());
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    AcDbDatabase database(true, true);
    acdbHostApplicationServices()->setWorkingDatabase(&database);
    resbuf* const chain = Values(data, size).Chain();
    if (chain != nullptr) {
        PutRecord(database, chain);
        acutRelRb(chain);
        BatchTaskList list, again;
        list.load(&database);
        const std::string first = Stored(list, database);
        again.load(&database);
        FUZZ_CHECK(again.size() == list.size());
        FUZZ_CHECK(Stored(again, database) == first);
    }
    acdbHostApplicationServices()->setWorkingDatabase(nullptr);
    return 0;
}
