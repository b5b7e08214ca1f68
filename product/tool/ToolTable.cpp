#include "product/tool/ToolTable.h"

#include <charconv>
#include <cmath>
#include <optional>

#include "product/base/Failure.h"

namespace product {
namespace {

constexpr size_t kLeastFields = 7;

std::string Trimmed(const std::string& text) {
    const char* const blanks = " \t\r";
    const size_t first = text.find_first_not_of(blanks);
    if (first == std::string::npos) return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

std::vector<std::string> Fields(const std::string& line, char separator) {
    std::vector<std::string> fields(1);
    bool isQuoted = false, wasQuoted = false;
    const auto finish = [&] {
        if (!wasQuoted) fields.back() = Trimmed(fields.back());
        wasQuoted = false;
    };
    for (size_t i = 0; i < line.size(); ++i) {
        const char c = line[i];
        if (c == '"' && isQuoted && i + 1 < line.size() && line[i + 1] == '"') {
            fields.back() += '"';
            ++i;
        } else if (c == '"' && (isQuoted || Trimmed(fields.back()).empty())) {
            if (!isQuoted) fields.back().clear();
            isQuoted = !isQuoted;
            wasQuoted = true;
        } else if (c == separator && !isQuoted) {
            finish();
            fields.emplace_back();
        } else if (!wasQuoted || isQuoted) {
            fields.back() += c;
        }
    }
    finish();
    return fields;
}

char SeparatorOf(const std::string& line) {
    for (const char c : {'\t', ';'})
        if (line.find(c) != std::string::npos) return c;
    return ',';
}

std::optional<double> Number(const std::string& text) {
    double number = 0;
    const char* const end = text.data() + text.size();
    const auto [next, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc() || next != end || !std::isfinite(number)) return std::nullopt;
    return number;
}

class Reader {
public:
    explicit Reader(const std::string& path) : m_path(path) {}

    void Take(const std::string& line) {
        ++m_line;
        if (Trimmed(line).empty() || Trimmed(line)[0] == '#') return;
        const bool isFirst = m_separator == 0;
        if (isFirst) m_separator = SeparatorOf(line);
        const std::vector<std::string> fields = Fields(line, m_separator);
        if (isFirst && fields.size() > 1 && !Number(fields[1])) return;
        TakeTool(fields);
    }

    std::vector<NamedTool> Finish() {
        if (m_tools.empty())
            throw Failure(Fault::Input, m_path +
                                            ": names no tool; give one a line: "
                                            "name,centre x,centre y,x1,y1,x2,y2");
        return std::move(m_tools);
    }

private:
    [[noreturn]] void Refuse(const std::string& why) const {
        throw Failure(Fault::Input, m_path + ": line " + std::to_string(m_line) + ": " + why +
                                        "; a line is name,centre x,centre y,x1,y1,x2,y2[,drawing]");
    }

    void TakeTool(const std::vector<std::string>& fields) {
        if (fields.size() < kLeastFields)
            Refuse("has " + std::to_string(fields.size()) + " fields where 7 are needed");
        NamedTool tool;
        tool.name = fields[0];
        if (tool.name.empty()) Refuse("the tool has no name");
        double numbers[6];
        for (size_t i = 0; i < 6; ++i) {
            const auto number = Number(fields[i + 1]);
            if (!number) Refuse("'" + fields[i + 1] + "' is not a number");
            numbers[i] = *number;
        }
        tool.centre = {numbers[0], numbers[1]};
        tool.window.Add(Point{numbers[2], numbers[3]});
        tool.window.Add(Point{numbers[4], numbers[5]});
        if (tool.window.Width() == 0 || tool.window.Height() == 0) Refuse("the window has no area");
        if (fields.size() > kLeastFields) tool.drawing = fields[kLeastFields];
        tool.line = m_line;
        m_tools.push_back(tool);
    }

    const std::string& m_path;
    std::vector<NamedTool> m_tools;
    int m_line = 0;
    char m_separator = 0;  // 0: no line taken yet
};

}  // namespace

std::vector<NamedTool> ReadToolTable(const std::string& text, const std::string& path) {
    Reader reader(path);
    const char* const mark = "\xEF\xBB\xBF";
    size_t at = text.rfind(mark, 0) == 0 ? 3 : 0;
    while (at < text.size()) {
        const size_t end = std::min(text.find('\n', at), text.size());
        reader.Take(text.substr(at, end - at));
        at = end + 1;
    }
    return reader.Finish();
}

}  // namespace product
