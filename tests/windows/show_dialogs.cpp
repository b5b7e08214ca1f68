// Makes every dialog of a module by Windows itself, says what is in it, and takes a picture of it.
//   show_dialogs MODULE FOLDER NUMBER...
// Prints, in UTF-8, what the file says of itself,
//   version A.B.C.D|description
// and for each number a line
//   dialog NUMBER|x,y,w,h|style|caption
// and one for each of its controls, in tab order, places in pixels within the dialog:
//   control NUMBER|class|x,y,w,h|style|text
// and writes FOLDER/NUMBER.bmp.
#include <windows.h>

#include <commctrl.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

std::string Narrow(const std::wstring& text) {
    const int size = static_cast<int>(text.size());
    std::string out(text.size() * 3, '\0');
    out.resize(static_cast<std::size_t>(
        ::WideCharToMultiByte(CP_UTF8, 0, text.data(), size, out.data(),
                              static_cast<int>(out.size()), nullptr, nullptr)));
    return out;
}

std::wstring TextOf(HWND window) {
    std::wstring text(static_cast<std::size_t>(::GetWindowTextLengthW(window)) + 1, L'\0');
    text.resize(static_cast<std::size_t>(
        ::GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
    return text;
}

void PrintWindowLine(const char* kind, HWND window, HWND parent, long long number,
                     const std::wstring& name) {
    RECT place;
    ::GetWindowRect(window, &place);
    ::MapWindowPoints(nullptr, parent, reinterpret_cast<POINT*>(&place), 2);
    std::printf("%s %lld|%s%ld,%ld,%ld,%ld|%08lx|%s\n", kind, number, Narrow(name).c_str(),
                place.left, place.top, place.right - place.left, place.bottom - place.top,
                static_cast<unsigned long>(::GetWindowLongPtrW(window, GWL_STYLE)),
                Narrow(TextOf(window)).c_str());
}

BOOL CALLBACK PrintControl(HWND control, LPARAM dialog) {
    wchar_t name[64] = L"";
    ::GetClassNameW(control, name, 64);
    // What controls make inside themselves, such as the header of a list, is theirs.
    if (::GetParent(control) == reinterpret_cast<HWND>(dialog))
        PrintWindowLine("control", control, reinterpret_cast<HWND>(dialog), ::GetDlgCtrlID(control),
                        std::wstring(name) + L"|");
    return TRUE;
}

void Pump(DWORD milliseconds) {
    const ULONGLONG end = ::GetTickCount64() + milliseconds;
    for (MSG message; ::GetTickCount64() < end; ::Sleep(5))
        while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            ::TranslateMessage(&message);
            ::DispatchMessageW(&message);
        }
}

// The window as it is on the screen, bottom row first, 32 bits a pixel.
bool SavePicture(HWND window, const std::wstring& path) {
    RECT place;
    ::GetWindowRect(window, &place);
    const LONG width = place.right - place.left, height = place.bottom - place.top;
    const HDC screen = ::GetDC(nullptr);
    const HDC memory = ::CreateCompatibleDC(screen);
    const HBITMAP bitmap = ::CreateCompatibleBitmap(screen, width, height);
    const HGDIOBJ former = ::SelectObject(memory, bitmap);
    ::BitBlt(memory, 0, 0, width, height, screen, place.left, place.top, SRCCOPY);
    ::SelectObject(memory, former);
    BITMAPINFOHEADER head = {};
    head.biSize = sizeof head;
    head.biWidth = width;
    head.biHeight = height;
    head.biPlanes = 1;
    head.biBitCount = 32;
    const DWORD size = static_cast<DWORD>(width) * static_cast<DWORD>(height) * 4;
    std::vector<char> pixels(size);
    const int rows = ::GetDIBits(memory, bitmap, 0, static_cast<UINT>(height), pixels.data(),
                                 reinterpret_cast<BITMAPINFO*>(&head), DIB_RGB_COLORS);
    ::DeleteObject(bitmap);
    ::DeleteDC(memory);
    ::ReleaseDC(nullptr, screen);
    BITMAPFILEHEADER file = {};
    file.bfType = 0x4d42;  // "BM"
    file.bfOffBits = sizeof file + sizeof head;
    file.bfSize = file.bfOffBits + size;
    FILE* const out = ::_wfopen(path.c_str(), L"wb");
    if (out == nullptr || rows != height) return false;
    const bool written = std::fwrite(&file, sizeof file, 1, out) == 1 &&
                         std::fwrite(&head, sizeof head, 1, out) == 1 &&
                         std::fwrite(pixels.data(), size, 1, out) == 1;
    return std::fclose(out) == 0 && written;
}

// The module's version resource, as the file's properties show it.
bool PrintVersion(HMODULE module) {
    const HRSRC found = ::FindResourceW(module, MAKEINTRESOURCEW(1), MAKEINTRESOURCEW(16));
    const HGLOBAL loaded = found == nullptr ? nullptr : ::LoadResource(module, found);
    const void* const block = loaded == nullptr ? nullptr : ::LockResource(loaded);
    if (block == nullptr) return false;
    void* value = nullptr;
    UINT size = 0;
    if (!::VerQueryValueW(block, L"\\", &value, &size) || size < sizeof(VS_FIXEDFILEINFO))
        return false;
    const auto* const fixed = static_cast<const VS_FIXEDFILEINFO*>(value);
    std::printf("version %u.%u.%u.%u|", HIWORD(fixed->dwFileVersionMS),
                LOWORD(fixed->dwFileVersionMS), HIWORD(fixed->dwFileVersionLS),
                LOWORD(fixed->dwFileVersionLS));
    if (!::VerQueryValueW(block, L"\\StringFileInfo\\080404B0\\FileDescription", &value, &size))
        return false;
    std::printf("%s\n", Narrow(static_cast<const wchar_t*>(value)).c_str());
    return true;
}

INT_PTR CALLBACK NoHandlers(HWND, UINT message, WPARAM, LPARAM) { return message == WM_INITDIALOG; }

bool Show(HMODULE module, int number, const std::wstring& folder) {
    const HWND dialog =
        ::CreateDialogParamW(module, MAKEINTRESOURCEW(number), nullptr, NoHandlers, 0);
    if (dialog == nullptr) {
        std::fprintf(stderr, "dialog %d cannot be made: error %lu\n", number, ::GetLastError());
        return false;
    }
    PrintWindowLine("dialog", dialog, nullptr, number, L"");
    // The units of the dialog's font, to tell where the script puts the controls.
    RECT units = {0, 0, 400, 800};
    ::MapDialogRect(dialog, &units);
    std::printf("units %ld,%ld\n", units.right, units.bottom);
    ::EnumChildWindows(dialog, PrintControl, reinterpret_cast<LPARAM>(dialog));
    ::SetWindowPos(dialog, HWND_TOP, 20, 20, 0, 0, SWP_NOSIZE | SWP_SHOWWINDOW);
    ::UpdateWindow(dialog);
    Pump(400);
    const bool saved = SavePicture(dialog, folder + L"/" + std::to_wstring(number) + L".bmp");
    ::DestroyWindow(dialog);
    Pump(50);
    return saved;
}

}  // namespace

int wmain(int count, wchar_t** arguments) {
    if (count < 4) return 2;
    const INITCOMMONCONTROLSEX classes = {sizeof classes, ICC_WIN95_CLASSES};
    ::InitCommonControlsEx(&classes);
    const HMODULE module = ::LoadLibraryExW(arguments[1], nullptr, LOAD_LIBRARY_AS_DATAFILE);
    if (module == nullptr) {
        std::fprintf(stderr, "the module cannot be loaded: error %lu\n", ::GetLastError());
        return 1;
    }
    bool isGood = PrintVersion(module);
    if (!isGood) std::fprintf(stderr, "the module has no version\n");
    for (int i = 3; i < count; ++i) isGood &= Show(module, ::_wtoi(arguments[i]), arguments[2]);
    return isGood ? 0 : 1;
}
