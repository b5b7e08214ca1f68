#include <ctime>

#include "afx.h"

CRuntimeClass CObject::classCObject = {"CObject", int(sizeof(CObject)), nullptr, nullptr};

CRuntimeClass* CObject::GetRuntimeClass() const { return &classCObject; }

BOOL CObject::IsKindOf(const CRuntimeClass* pClass) const {
    return GetRuntimeClass()->IsDerivedFrom(pClass);
}

BOOL CRuntimeClass::IsDerivedFrom(const CRuntimeClass* base) const {
    const CRuntimeClass* at = this;
    while (at && at != base) at = at->m_pBaseClass;
    return at != nullptr;
}

namespace {

// A time the calendar cannot show gives the epoch. The C library's static record is copied at once.
std::tm LocalTime(std::int64_t time) {
    const std::time_t seconds = static_cast<std::time_t>(time);
    const std::tm* const local = std::localtime(&seconds);
    return local ? *local : std::tm();
}

}  // namespace

CTime::CTime(int year, int month, int day, int hour, int minute, int second) {
    std::tm local = {};
    local.tm_year = year - 1900;
    local.tm_mon = month - 1;
    local.tm_mday = day;
    local.tm_hour = hour;
    local.tm_min = minute;
    local.tm_sec = second;
    local.tm_isdst = -1;
    m_time = std::mktime(&local);
}

CTime CTime::GetCurrentTime() { return CTime(static_cast<std::int64_t>(std::time(nullptr))); }

int CTime::GetYear() const { return LocalTime(m_time).tm_year + 1900; }
int CTime::GetMonth() const { return LocalTime(m_time).tm_mon + 1; }
int CTime::GetDay() const { return LocalTime(m_time).tm_mday; }
int CTime::GetHour() const { return LocalTime(m_time).tm_hour; }
int CTime::GetMinute() const { return LocalTime(m_time).tm_min; }
int CTime::GetSecond() const { return LocalTime(m_time).tm_sec; }

CString CTime::Format(LPCTSTR format) const {
    const std::tm local = LocalTime(m_time);
    wchar_t text[256];
    return CString(text, static_cast<int>(std::wcsftime(text, 256, format, &local)));
}
