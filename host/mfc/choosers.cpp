// Choosers of files and folders: answered by the script, else by the display.
#include <algorithm>
#include <cwchar>
#include <vector>

#include "afxdlgs.h"
#include "host/mfc/window_system.h"
#include "shlobj.h"

IMPLEMENT_DYNAMIC(CFileDialog, CDialog)
IMPLEMENT_DYNAMIC(CFolderPickerDialog, CFileDialog)

using host::ChooserRequest;
using host::UserAnswers;
using host::WindowSystem;

// A chosen folder, behind the opaque name of the original.
struct ITEMIDLIST {
    CString path;
};

namespace {

typedef std::optional<std::wstring> Path;

Path AskForFile(const ChooserRequest& request) {
    UserAnswers* const answers = WindowSystem::Get().Answers();
    return answers != nullptr ? answers->nextFile(request)
                              : WindowSystem::Get().Driver().ChooseFile(request);
}

Path AskForFolder(const ChooserRequest& request) {
    UserAnswers* const answers = WindowSystem::Get().Answers();
    return answers != nullptr ? answers->nextFolder(request)
                              : WindowSystem::Get().Driver().ChooseFolder(request);
}

std::wstring TextOf(LPCTSTR text) { return text == nullptr ? L"" : text; }

// "name|pattern|name|pattern||"
std::vector<host::FileFilter> SplitFilters(const CString& filter) {
    std::vector<host::FileFilter> pairs;
    int at = 0;
    while (true) {
        const CString name = at < 0 ? CString() : filter.Tokenize(_T("|"), at);
        const CString pattern = at < 0 ? CString() : filter.Tokenize(_T("|"), at);
        if (pattern.IsEmpty()) return pairs;
        pairs.emplace_back(name.GetString(), pattern.GetString());
    }
}

int LastSeparator(const CString& path) {
    return (std::max)(path.ReverseFind(_T('\\')), path.ReverseFind(_T('/')));
}

// Position of the point that begins the extension, or -1.
int ExtensionPoint(const CString& path) {
    const int point = path.ReverseFind(_T('.'));
    return point > LastSeparator(path) ? point : -1;
}

// Without a window in front of which it stays, a chooser may come to lie behind the host's.
void CheckParent(const CWnd* parent, const std::wstring& title) {
    if (parent == nullptr || !::IsWindow(parent->GetSafeHwnd()))
        WindowSystem::Get().Report(L"a chooser has no parent: " + title);
}

// "/" and "C:\" keep theirs: they are roots.
CString WithoutLastSeparator(CString path) {
    while (path.GetLength() > 1 && LastSeparator(path) == path.GetLength() - 1 &&
           path[path.GetLength() - 2] != _T(':'))
        path.Truncate(path.GetLength() - 1);
    return path;
}

}  // namespace

CFileDialog::CFileDialog(BOOL bOpenFileDialog, LPCTSTR lpszDefExt, LPCTSTR lpszFileName,
                         DWORD dwFlags, LPCTSTR lpszFilter, CWnd* pParentWnd, DWORD, BOOL)
    : m_bOpen(bOpenFileDialog),
      m_defaultExtension(lpszDefExt),
      m_fileName(lpszFileName),
      m_filter(lpszFilter) {
    m_pParentWnd = pParentWnd;
    m_ofn.lStructSize = sizeof(m_ofn);
    m_ofn.Flags = dwFlags;
}

INT_PTR CFileDialog::DoModal() {
    CheckParent(m_pParentWnd, TextOf(m_ofn.lpstrTitle));
    ChooserRequest request;
    request.isSave = !m_bOpen;
    request.title = TextOf(m_ofn.lpstrTitle);
    request.start = TextOf(m_ofn.lpstrInitialDir);
    if (!request.start.empty() && !m_fileName.IsEmpty()) request.start += L'/';
    request.start += m_fileName.GetString();
    request.filters = SplitFilters(m_filter);
    request.asksBeforeOverwriting = !m_bOpen && (m_ofn.Flags & OFN_OVERWRITEPROMPT) != 0;
    const Path path = AskForFile(request);
    if (!path || path->empty()) return IDCANCEL;
    m_path = path->c_str();
    if (ExtensionPoint(m_path) < 0 && !m_defaultExtension.IsEmpty())
        m_path += _T(".") + m_defaultExtension;
    return IDOK;
}

CString CFileDialog::GetFileName() const { return m_path.Mid(LastSeparator(m_path) + 1); }
CString CFileDialog::GetFileTitle() const {
    const CString name = GetFileName();
    const int point = ExtensionPoint(name);
    return point < 0 ? name : name.Left(point);
}
CString CFileDialog::GetFileExt() const {
    const int point = ExtensionPoint(m_path);
    return point < 0 ? CString() : m_path.Mid(point + 1);
}
CString CFileDialog::GetFolderPath() const {
    return WithoutLastSeparator(m_path.Left(LastSeparator(m_path) + 1));
}

CFolderPickerDialog::CFolderPickerDialog(LPCTSTR lpszFolder, DWORD dwFlags, CWnd* pParentWnd,
                                         DWORD dwSize, BOOL)
    : CFileDialog(TRUE, nullptr, nullptr, dwFlags, nullptr, pParentWnd, dwSize),
      m_folder(lpszFolder) {}

INT_PTR CFolderPickerDialog::DoModal() {
    CheckParent(m_pParentWnd, TextOf(m_ofn.lpstrTitle));
    ChooserRequest request;
    request.title = TextOf(m_ofn.lpstrTitle);
    request.start = m_folder.IsEmpty() ? TextOf(m_ofn.lpstrInitialDir) : m_folder.GetString();
    const Path path = AskForFolder(request);
    if (!path || path->empty()) return IDCANCEL;
    m_path = WithoutLastSeparator(path->c_str());
    return IDOK;
}

LPITEMIDLIST SHBrowseForFolder(LPBROWSEINFO lpbi) {
    ChooserRequest request;
    request.title = TextOf(lpbi->lpszTitle);
    const Path path = AskForFolder(request);
    if (!path || path->empty()) return nullptr;
    LPITEMIDLIST const item = new ITEMIDLIST{WithoutLastSeparator(path->c_str())};
    if (lpbi->pszDisplayName != nullptr) {
        const CString name = item->path.Mid(LastSeparator(item->path) + 1).Left(MAX_PATH - 1);
        std::wcscpy(lpbi->pszDisplayName, name);
    }
    return item;
}

BOOL SHGetPathFromIDList(LPCITEMIDLIST pidl, LPTSTR pszPath) {
    if (pidl == nullptr || pidl->path.GetLength() >= MAX_PATH) return FALSE;
    std::wcscpy(pszPath, pidl->path);
    return TRUE;
}

// Here only ever used for the choosers' records.
void CoTaskMemFree(void* pv) { delete static_cast<LPITEMIDLIST>(pv); }
