#include "host/ed/prompts.h"

#include "host/base/plain_number.h"
#include "host/ed/entity_query.h"
#include "host/ed/point_text.h"
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

// "@" counts from the last point given.
Answer Remembered(Answer answer) {
    AcApDocument* const document = Session::Get().Current();
    if (answer.kind == Answer::kGiven && document != nullptr)
        document->imp().lastPoint = answer.point;
    return answer;
}

template <class T>
T Unanswered(T answer) {
    if (answer.kind == T::kUnanswered) answer.kind = T::kEscape;
    return answer;
}

// Two corners from typed text; false when there are none.
bool TypedCorners(TypedText& typed, SelectionAnswer& answer) {
    const AcGePoint3d last = Session::Get().Current()->imp().lastPoint;
    return !typed.IsEmpty() && ParsePoint(typed.Next(false), last, answer.corner1) &&
           !typed.IsEmpty() && ParsePoint(typed.Next(false), answer.corner1, answer.corner2);
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

std::wstring MatchKeyword(const std::wstring& text, const std::vector<std::wstring>& keywords) {
    const std::wstring typed = ToUpper(text);
    if (typed.empty()) return {};
    for (const std::wstring& keyword : keywords) {
        const std::wstring whole = ToUpper(keyword);
        std::wstring capitals;
        size_t least = 0;  // letters up to the last capital
        for (size_t i = 0; i < keyword.size(); ++i) {
            if (keyword[i] != whole[i]) continue;
            capitals += whole[i];
            least = i + 1;
        }
        const bool isBeginning =
            typed.size() >= least && whole.compare(0, typed.size(), typed) == 0;
        if (typed == capitals || isBeginning) return whole;
    }
    return {};
}

bool ParseAnswer(const std::wstring& text, const PointRequest& request, Answer& answer) {
    answer.text = text;
    const AcApDocument* const document = Session::Get().Current();
    const AcGePoint3d last = document == nullptr ? AcGePoint3d() : document->imp().lastPoint;
    const std::wstring keyword = MatchKeyword(text, request.keywords);
    if (!keyword.empty()) {
        answer.kind = Answer::kKeyword;
        answer.text = keyword;
    } else if (request.takesNumber && ReadWholeNumber(text, answer.number)) {
        answer.kind = Answer::kNumber;
    } else if (ParsePoint(text, request.base != nullptr ? *request.base : last, answer.point)) {
        answer.kind = Answer::kGiven;
    } else if (request.takesText) {
        answer.kind = Answer::kKeyword;
        answer.text = ToUpper(text);
    } else {
        return false;
    }
    return true;
}

Answer AskPoint(const std::wstring& prompt, const PointRequest& request) {
    Session& session = Session::Get();
    session.Print(prompt);
    while (TypedText* typed = PendingText()) {
        Answer answer = Typed(typed->Next(false));
        if (answer.kind == Answer::kEnter || ParseAnswer(answer.text, request, answer))
            return Remembered(answer);
        session.Print(L"\nInvalid point: " + answer.text);
    }
    return session.Input() == nullptr ? Unanswered(Answer())
                                      : Remembered(Unanswered(session.Input()->Point(request)));
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
