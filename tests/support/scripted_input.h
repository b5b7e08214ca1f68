// Answers to prompts from a list, and everything that was said.
#pragma once

#include <deque>
#include <string>

#include "host/ed/session.h"
#include "host/ed/user_input.h"

namespace test {

// Installs itself for its life. A prompt without an answer left is cancelled, as Esc does.
class ScriptedInput : public host::UserInput {
public:
    ScriptedInput() { host::Session::Get().SetInput(this); }
    ~ScriptedInput() override {
        host::Session::Get().CloseAll();
        host::Session::Get().SetInput(nullptr);
    }

    std::deque<host::SelectionAnswer> selections;
    std::deque<host::Answer> points;
    std::deque<host::Answer> texts;
    std::wstring transcript;

    void GiveText(const std::wstring& text) {
        host::Answer answer;
        answer.kind = text.empty() ? host::Answer::kEnter : host::Answer::kGiven;
        answer.text = text;
        texts.push_back(answer);
    }
    void GivePoint(double x, double y) {
        host::Answer answer;
        answer.kind = host::Answer::kGiven;
        answer.point.set(x, y, 0.0);
        points.push_back(answer);
    }
    void GiveSelection(host::SelectionAnswer::Kind kind) {
        host::SelectionAnswer answer;
        answer.kind = kind;
        selections.push_back(answer);
    }

    host::SelectionAnswer Select() override { return Take(selections); }
    host::Answer Point(const host::PointRequest&) override { return Take(points); }
    host::Answer Text(bool) override { return Take(texts); }
    void Print(const std::wstring& text) override { transcript += text; }

private:
    template <class T>
    static T Take(std::deque<T>& queue) {
        if (queue.empty()) return T();
        const T first = queue.front();
        queue.pop_front();
        return first;
    }
};

}  // namespace test
