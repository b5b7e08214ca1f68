// CFont: descriptions of fonts by handle.
#include <cmath>
#include <map>
#include <memory>

#include "host/mfc/fonts.h"

IMPLEMENT_DYNAMIC(CGdiObject, CObject)
IMPLEMENT_DYNAMIC(CFont, CGdiObject)

namespace {

struct Font {
    LOGFONT description;
    CFont* object = nullptr;       // the CFont that made it
    std::unique_ptr<CFont> stand;  // made for FromHandle
};

struct FontTable {
    std::map<std::uintptr_t, Font> fonts;
    std::uintptr_t last = 0;
};

// Never destroyed: fonts of static objects end later.
FontTable& Table() {
    static FontTable* const table = new FontTable();
    return *table;
}

Font* Find(HFONT handle) {
    const auto found = Table().fonts.find(reinterpret_cast<std::uintptr_t>(handle));
    return found == Table().fonts.end() ? nullptr : &found->second;
}

}  // namespace

HFONT host::MakeFont(const LOGFONT& description) {
    const std::uintptr_t number = ++Table().last;
    Table().fonts[number].description = description;
    return reinterpret_cast<HFONT>(number);
}

void host::DropFont(HFONT handle) {
    Font* const font = Find(handle);
    if (font == nullptr) return;
    if (font->stand) font->stand->m_hObject = nullptr;
    Table().fonts.erase(reinterpret_cast<std::uintptr_t>(handle));
}

const LOGFONT* host::FindFont(HFONT handle) {
    const Font* const font = Find(handle);
    return font == nullptr ? nullptr : &font->description;
}

LOGFONT host::DescribeFont(double points, const std::wstring& face, int weight, bool isItalic) {
    // 96 pixels an inch, 72 points an inch.
    LOGFONT font = {};
    font.lfHeight = -static_cast<LONG>(std::lround(points * 96.0 / 72.0));
    font.lfWeight = weight;
    font.lfItalic = isItalic ? 1 : 0;
    font.lfCharSet = DEFAULT_CHARSET;
    for (std::size_t i = 0; i < face.size() && i + 1 < LF_FACESIZE; ++i)
        font.lfFaceName[i] = face[i];
    return font;
}

BOOL CGdiObject::DeleteObject() {
    if (m_hObject == nullptr) return FALSE;
    host::DropFont(static_cast<HFONT>(m_hObject));
    m_hObject = nullptr;
    return TRUE;
}

BOOL CFont::CreateFontIndirect(const LOGFONT* lpLogFont) {
    if (lpLogFont == nullptr) return FALSE;
    DeleteObject();
    m_hObject = host::MakeFont(*lpLogFont);
    Find(*this)->object = this;
    return TRUE;
}

BOOL CFont::CreatePointFont(int nPointSize, LPCTSTR lpszFaceName, CDC*) {
    const LOGFONT font = host::DescribeFont(nPointSize / 10.0, lpszFaceName, FW_NORMAL, false);
    return CreateFontIndirect(&font);
}

int CFont::GetLogFont(LOGFONT* pLogFont) const {
    const Font* const font = Find(*this);
    if (font == nullptr) return 0;
    *pLogFont = font->description;
    return static_cast<int>(sizeof(LOGFONT));
}

CFont* CFont::FromHandle(HFONT hFont) {
    Font* const font = Find(hFont);
    if (font == nullptr) return nullptr;
    if (font->object != nullptr) return font->object;
    if (!font->stand) {
        font->stand = std::make_unique<CFont>();
        font->stand->m_hObject = hFont;
    }
    return font->stand.get();
}
