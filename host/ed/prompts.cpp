#include "host/ed/prompts.h"

#include <cmath>
#include <cwchar>

#include "host/ed/entity_query.h"
#include "host/ed/session.h"
#include "host/ed/text_compare.h"

namespace host {
namespace {

TypedText* PendingText() {
    AcApDocument* const document = Session::Get().Current();
    if (document == nullptr || document->imp().typed.IsEmpty()) return nullptr;
    // Keystrokes that wait for the idle host are commands, not answers to a dialog's prompt.
    if (document->isQuiescent()) return nullptr;
    return &document->imp().typed;
}

Answer Typed(const std::wstring& text) {
    Answer answer;
    answer.kind = text.empty() ? Answer::kEnter : Answer::kGiven;
    answer.text = text;
    return answer;
}

template <class T>
T Unanswered(T answer) {
    if (answer.kind == T::kUnanswered) answer.kind = T::kEscape;
    return answer;
}

// Two corners from typed text; false when there are none.
bool TypedCorners(TypedText& typed, SelectionAnswer& answer) {
    return !typed.IsEmpty() && ParsePoint(typed.Next(false), answer.corner1) && !typed.IsEmpty() &&
           ParsePoint(typed.Next(false), answer.corner2);
}

// A selection typed as keystrokes: option words until an empty line.
SelectionAnswer TypedSelection(TypedText& typed) {
    SelectionAnswer selection;
    selection.kind = SelectionAnswer::kEnter;
    while (!typed.IsEmpty()) {
        const std::wstring word = ToUpper(typed.Next(false));
        if (word.empty()) break;
        if (word == L"ALL") {
            selection.kind = SelectionAnswer::kAll;
        } else if (word == L"P" || word == L"PREVIOUS") {
            selection.kind = SelectionAnswer::kEntities;
            selection.entities = Session::Get().Current()->imp().previousSelection;
        } else if (word == L"L" || word == L"LAST") {
            selection.kind = SelectionAnswer::kEntities;
            selection.entities = LastDisplayed(*Session::Get().Current());
        } else if ((word == L"W" || word == L"C") && TypedCorners(typed, selection)) {
            selection.kind = word == L"W" ? SelectionAnswer::kWindow : SelectionAnswer::kCrossing;
        } else {
            Session::Get().Print(L"\nNot a way to select: " + word);
        }
    }
    return selection;
}

}  // namespace

bool ParsePoint(const std::wstring& text, AcGePoint3d& point) {
    double values[3] = {0.0, 0.0, 0.0};
    const wchar_t* at = text.c_str();
    int count = 0;
    for (; count < 3; ++count) {
        wchar_t* end = nullptr;
        values[count] = std::wcstod(at, &end);
        if (end == at || !std::isfinite(values[count])) return false;
        at = end;
        if (*at != L',') break;
        ++at;
    }
    if (count == 0 || count == 3 || *at != 0) return false;
    point.set(values[0], values[1], values[2]);
    return true;
}

Answer AskPoint(const std::wstring& prompt, const AcGePoint3d* base) {
    Session& session = Session::Get();
    session.Print(prompt);
    while (TypedText* typed = PendingText()) {
        Answer answer = Typed(typed->Next(false));
        if (answer.kind == Answer::kEnter || ParsePoint(answer.text, answer.point)) return answer;
        session.Print(L"\nInvalid point: " + answer.text);
    }
    return session.Input() == nullptr ? Unanswered(Answer())
                                      : Unanswered(session.Input()->Point(base));
}

Answer AskText(const std::wstring& prompt, bool spacesAllowed) {
    Session& session = Session::Get();
    session.Print(prompt);
    if (TypedText* typed = PendingText()) return Typed(typed->Next(spacesAllowed));
    return session.Input() == nullptr ? Unanswered(Answer())
                                      : Unanswered(session.Input()->Text(spacesAllowed));
}

SelectionAnswer AskSelection(const std::wstring& prompt) {
    Session& session = Session::Get();
    session.Print(prompt);
    if (TypedText* typed = PendingText()) return TypedSelection(*typed);
    return session.Input() == nullptr ? Unanswered(SelectionAnswer())
                                      : Unanswered(session.Input()->Select());
}

}  // namespace host
