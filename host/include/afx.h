// The part of MFC that has nothing to do with windows: run-time classes, text, time.
#pragma once

#include "atlstr.h"
#include "host_wintypes.h"

// Checks of the debug build. VERIFY evaluates its condition in both builds.
#ifdef NDEBUG
#define ASSERT(condition) ((void)0)
#define VERIFY(condition) ((void)(condition))
#else
#include <cassert>
#define ASSERT(condition) assert(condition)
#define VERIFY(condition) assert(condition)
#endif
// Says nothing here; arguments are not evaluated.
#define TRACE(...) ((void)0)
#define AFXAPI __stdcall  // the calling convention; means nothing but on 32-bit Windows

class CObject;

// What a class made with DECLARE_DYNAMIC knows about itself.
struct CRuntimeClass {
    LPCSTR m_lpszClassName;             // as in the source
    int m_nObjectSize;                  // bytes
    CObject* (*m_pfnCreateObject)();    // null unless DECLARE_DYNCREATE
    const CRuntimeClass* m_pBaseClass;  // null at the root

    // A new object the caller owns, or null when the class cannot be made by name.
    CObject* CreateObject() const { return m_pfnCreateObject ? m_pfnCreateObject() : nullptr; }
    BOOL IsDerivedFrom(const CRuntimeClass* base) const;  // TRUE for the class itself, too
};

// Root of the MFC classes; not copyable.
class CObject {
public:
    CObject(const CObject&) = delete;
    CObject& operator=(const CObject&) = delete;
    virtual ~CObject() = default;

    // The class of the object; made by the macros below.
    virtual CRuntimeClass* GetRuntimeClass() const;
    BOOL IsKindOf(const CRuntimeClass* pClass) const;  // of the class or derived from it

    static CRuntimeClass classCObject;

protected:
    CObject() = default;
};

// The description of a class by its name.
#define RUNTIME_CLASS(class_name) (&class_name::class##class_name)

// In the class: it knows its description.
#define DECLARE_DYNAMIC(class_name)         \
public:                                     \
    static CRuntimeClass class##class_name; \
    CRuntimeClass* GetRuntimeClass() const override;

// In the class: it can be made by its description, too.
#define DECLARE_DYNCREATE(class_name) \
    DECLARE_DYNAMIC(class_name)       \
    static CObject* CreateObject();

// In one source: the description itself. The two macros below are what sources use.
#define HOST_RUNTIME_CLASS(class_name, base_name, create)                                        \
    CRuntimeClass class_name::class##class_name = {#class_name, int(sizeof(class_name)), create, \
                                                   RUNTIME_CLASS(base_name)};                    \
    CRuntimeClass* class_name::GetRuntimeClass() const { return RUNTIME_CLASS(class_name); }

#define IMPLEMENT_DYNAMIC(class_name, base_name) HOST_RUNTIME_CLASS(class_name, base_name, nullptr)

// NOLINTNEXTLINE(bugprone-macro-parentheses): a type takes none
#define HOST_NEW(class_name) new class_name

#define IMPLEMENT_DYNCREATE(class_name, base_name)                       \
    CObject* class_name::CreateObject() { return HOST_NEW(class_name); } \
    HOST_RUNTIME_CLASS(class_name, base_name, &class_name::CreateObject)

// A point in time in whole seconds since 1970-01-01 UTC. Readings by calendar are local time.
class CTime {
public:
    CTime() = default;                          // the beginning of 1970
    CTime(std::int64_t time) : m_time(time) {}  // seconds
    // Local calendar time; month 1..12, day 1..31.
    CTime(int year, int month, int day, int hour, int minute, int second);

    static CTime GetCurrentTime();                   // of the system's clock
    std::int64_t GetTime() const { return m_time; }  // seconds

    int GetYear() const;
    int GetMonth() const;  // 1..12
    int GetDay() const;    // 1..31
    int GetHour() const;   // 0..23
    int GetMinute() const;
    int GetSecond() const;
    // By strftime's letters: %Y-%m-%d %H:%M:%S.
    CString Format(LPCTSTR format) const;

    bool operator==(CTime other) const { return m_time == other.m_time; }
    bool operator!=(CTime other) const { return m_time != other.m_time; }
    bool operator<(CTime other) const { return m_time < other.m_time; }
    bool operator>(CTime other) const { return m_time > other.m_time; }
    bool operator<=(CTime other) const { return m_time <= other.m_time; }
    bool operator>=(CTime other) const { return m_time >= other.m_time; }

private:
    std::int64_t m_time = 0;
};
