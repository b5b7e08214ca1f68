#include "product/report/Page.h"

#include <cstdio>

#include "product/picture/Picture.h"
#include "product/base/Text.h"
#include "host/solid/revolve.h"

namespace product {
namespace {

std::string Number(const char* format, double value) {
    char text[32];
    std::snprintf(text, sizeof text, format, value);
    return text;
}

// The names inside a drawing, such as those of its blocks, are those of any other one; in the page
// each row has its own.
std::string Renamed(const std::string& svg, size_t row) {
    std::string out;
    const std::string own = "r" + std::to_string(row);
    const char* const places[] = {"id=\"", "href=\"#"};
    for (size_t at = 0; at < svg.size();) {
        size_t next = std::string::npos;
        for (const char* place : places) {
            const size_t found = svg.find(place, at);
            if (found != std::string::npos)
                next = std::min(next, found + std::string(place).size());
        }
        if (next == std::string::npos) return out + svg.substr(at);
        out += svg.substr(at, next - at) + own;
        at = next;
    }
    return out;
}

class Writer {
public:
    Writer(const BatchResult& result, const PagePlace* place) : m_result(result), m_place(place) {}

    std::string Run() {
        Head();
        Summary();
        Troubles();
        Table();
        Remarks();
        m_out += "<script>";
        m_out += PageScript();
        m_out += "</script>\n</body>\n</html>\n";
        return std::move(m_out);
    }

private:
    void Head() {
        m_out =
            "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
            "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; "
            "img-src data:" +
            std::string(m_place != nullptr ? " 'self' file:" : "") +
            "; style-src 'unsafe-inline'; script-src 'unsafe-inline'\">\n"
            "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
            "<title>Tool envelopes</title>\n<style>";
        m_out += PageStyle();
        m_out += SvgStyle();
        m_out += "</style>\n</head>\n<body>\n";
    }

    void Figure(const char* kind, size_t number, const char* text) {
        m_out += std::string("<li class=\"") + kind + "\"><b>" + std::to_string(number) + "</b> " +
                 text + "</li>\n";
    }

    void Summary() {
        const size_t tools = m_result.ToolCount(), failed = m_result.FailedTools();
        m_out += "<header>\n<h1>Tool envelopes</h1>\n<ul class=\"figures\">\n";
        Figure("all", tools, tools == 1 ? "tool" : "tools");
        Figure("done", tools - failed, "done");
        Figure(failed > 0 ? "failed" : "none", failed, "failed");
        const size_t warned = m_result.ToolsWithWarnings();
        Figure(warned > 0 ? "look" : "none", warned, "worth a look");
        m_out += "</ul>\n<p>" + std::to_string(m_result.drawings.size()) +
                 (m_result.drawings.size() == 1 ? " drawing" : " drawings") + ", " +
                 Number("%.1f", m_result.seconds) + " s, " +
                 host::solid::IsoDateText(host::solid::StampTime()) + ", files in " +
                 Escaped(m_result.out) + "</p>\n";
        if (m_place != nullptr) Links();
        m_out +=
            "<p class=\"controls\"><label>Find <input type=\"search\" id=\"find\"></label> "
            "<label>Show <select id=\"show\"><option value=\"\">every tool</option>"
            "<option value=\"failed\">failed</option>"
            "<option value=\"look\">worth a look</option></select></label></p>\n</header>\n";
    }

    void Link(const std::string& file, const char* text) {
        if (!file.empty()) m_out += "<a href=\"" + Escaped(file) + "\">" + text + "</a>\n";
    }

    void Links() {
        m_out += "<p class=\"pages\">";
        Link(m_place->before, "previous");
        Link(m_place->index, "all pages");
        Link(m_place->after, "next");
        m_out += "page " + std::to_string(m_place->number) + "</p>\n";
    }

    // Inside the page, or a file beside it.
    std::string SolidPicture(const ToolResult& tool) const {
        if (tool.png.empty()) return "–";
        return "<img alt=\"the solid of tool " + Escaped(tool.name) + "\" src=\"" +
               (m_place != nullptr ? Escaped(tool.png) : "data:image/png;base64," + tool.png) +
               "\">";
    }

    std::string DrawingPicture(const ToolResult& tool) {
        const size_t row = m_row++;
        if (m_place == nullptr) return Renamed(tool.svg, row);
        if (tool.svg.empty()) return {};
        return "<img class=\"drawing\" alt=\"tool " + Escaped(tool.name) + "\" src=\"" +
               Escaped(tool.svg) + "\">";
    }

    // What concerns no single tool and went wrong.
    void Troubles() {
        std::string items;
        for (const std::string& warning : m_result.warnings)
            items += "<li>" + Escaped(warning) + "</li>\n";
        for (const DrawingResult& drawing : m_result.drawings)
            if (!drawing.reason.empty())
                items += "<li class=\"failed\">" + Escaped(drawing.reason) + "</li>\n";
        if (!items.empty()) m_out += "<ul class=\"troubles\">\n" + items + "</ul>\n";
    }

    // What was passed over in the files, which harms no tool.
    void Remarks() {
        std::string items;
        for (const DrawingResult& drawing : m_result.drawings)
            for (const std::string& note : drawing.notes)
                items += "<li>" + Escaped(drawing.input + ": " + note) + "</li>\n";
        if (!items.empty())
            m_out += "<section class=\"remarks\"><h2>Notes on the files</h2>\n<ul>\n" + items +
                     "</ul></section>\n";
    }

    void Table() {
        // Columns with a kind can be sorted.
        static const struct {
            const char *title, *kind;
        } kColumns[] = {{"Tool", "text"},       {"Verdict", "text"},
                        {"Findings", "number"}, {"Profile and envelope", ""},
                        {"Solid", ""},          {"Length", "number"},
                        {"Diameter", "number"}, {"Volume", "number"},
                        {"Unit", "text"},       {"Time, ms", "number"},
                        {"Drawing", "text"}};
        m_out += "<table>\n<thead><tr>";
        for (const auto& column : kColumns) {
            const std::string title = column.title;
            m_out += *column.kind == '\0'
                         ? "<th scope=\"col\">" + title + "</th>"
                         : "<th scope=\"col\" aria-sort=\"none\" data-kind=\"" +
                               std::string(column.kind) + "\"><button type=\"button\">" + title +
                               "</button></th>";
        }
        m_out += "</tr></thead>\n<tbody>\n";
        for (const DrawingResult& drawing : m_result.drawings)
            for (const ToolResult& tool : drawing.tools) Row(tool, drawing);
        m_out += "</tbody>\n</table>\n";
    }

    void Cell(const std::string& key, const std::string& contents, const char* kind = "") {
        m_out += "<td";
        if (*kind != '\0') m_out += std::string(" class=\"") + kind + "\"";
        m_out += " data-v=\"" + Escaped(key) + "\">" + contents + "</td>\n";
    }

    // An empty cell for what is not known.
    void Size(double value) {
        if (value > 0)
            Cell(Number("%.17g", value), Number("%.6g", value), "number");
        else
            Cell("", "–", "number");
    }

    void Row(const ToolResult& tool, const DrawingResult& drawing) {
        size_t warnings = 0;
        for (const Finding& finding : tool.findings) warnings += finding.isWarning ? 1 : 0;
        const char* const status = !tool.IsGood() ? "failed" : warnings > 0 ? "look" : "done";
        m_out += std::string("<tr class=\"") + status + "\">\n";
        Cell(tool.name, "<b class=\"name\">" + Escaped(tool.name) + "</b>");
        const char* const text = !tool.IsGood() ? "failed" : warnings > 0 ? "worth a look" : "sure";
        Cell(status, std::string("<span class=\"status ") + status + "\">" + text + "</span>" +
                         (tool.reason.empty() ? "" : "<p>" + Escaped(tool.reason) + "</p>"));
        Cell(std::to_string(warnings), Findings(tool), "findings");
        Cell("", DrawingPicture(tool), "picture");
        Cell("", SolidPicture(tool), "solid");
        Size(tool.length);
        Size(tool.diameter);
        Size(tool.volume);
        Cell(tool.unit, Escaped(tool.unit));
        Cell(Number("%.9g", tool.seconds), Number("%.1f", tool.seconds * 1000), "number");
        Cell(drawing.input, Escaped(drawing.input), "file");
        m_out += "</tr>\n";
    }

    // Warnings with the numbers that mark their places in the picture, then the rest.
    static std::string Findings(const ToolResult& tool) {
        std::string warnings, rest;
        size_t count = 0;
        for (const Finding& finding : tool.findings) {
            (finding.isWarning ? warnings : rest) += "<li>" + Escaped(finding.text) + "</li>\n";
            count += finding.isWarning ? 0 : 1;
        }
        std::string text;
        if (!warnings.empty()) text += "<ol>\n" + warnings + "</ol>\n";
        if (!rest.empty())
            text += "<details><summary>" + std::to_string(count) +
                    (count == 1 ? " remark" : " remarks") + "</summary><ul>\n" + rest +
                    "</ul></details>\n";
        return text.empty() ? "none" : text;
    }

    const BatchResult& m_result;
    const PagePlace* m_place;  // null: the page stands alone
    std::string m_out;
    size_t m_row = 0;
};

}  // namespace

std::string PageText(const BatchResult& result) { return Writer(result, nullptr).Run(); }

std::string PageText(const BatchResult& result, const PagePlace& place) {
    return Writer(result, &place).Run();
}

}  // namespace product
