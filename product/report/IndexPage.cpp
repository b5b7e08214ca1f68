#include "product/base/Text.h"
#include "product/picture/Picture.h"
#include "product/report/Page.h"

namespace product {

std::string IndexText(const std::vector<PageEntry>& pages, size_t drawings,
                      const std::vector<std::string>& troubles) {
    size_t tools = 0, failed = 0, warned = 0;
    std::string rows;
    for (const PageEntry& page : pages) {
        tools += page.tools;
        failed += page.failed;
        warned += page.warned;
        rows += "<tr><td><a href=\"" + Escaped(page.file) + "\">" + Escaped(page.first) +
                (page.tools > 1 ? " … " + Escaped(page.last) : "") +
                "</a></td><td class=\"number\">" + std::to_string(page.tools) +
                "</td><td class=\"number\">" + std::to_string(page.failed) +
                "</td><td class=\"number\">" + std::to_string(page.warned) + "</td></tr>\n";
    }
    const auto figure = [](const char* kind, size_t number, const char* text) {
        return std::string("<li class=\"") + kind + "\"><b>" + std::to_string(number) + "</b> " +
               text + "</li>\n";
    };
    std::string out =
        "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
        "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; style-src "
        "'unsafe-inline'\">\n<title>Tool envelopes</title>\n<style>";
    out += PageStyle();
    out += "</style>\n</head>\n<body>\n<header>\n<h1>Tool envelopes</h1>\n<ul class=\"figures\">\n";
    out += figure("all", tools, tools == 1 ? "tool" : "tools");
    out += figure("done", tools - failed, "done");
    out += figure(failed > 0 ? "failed" : "none", failed, "failed");
    out += figure(warned > 0 ? "look" : "none", warned, "worth a look");
    out += "</ul>\n<p>" + std::to_string(drawings) + (drawings == 1 ? " drawing" : " drawings") +
           " on " + std::to_string(pages.size()) + (pages.size() == 1 ? " page" : " pages") +
           "</p>\n</header>\n";
    if (!troubles.empty()) {
        out += "<ul class=\"troubles\">\n";
        for (const std::string& trouble : troubles) out += "<li>" + Escaped(trouble) + "</li>\n";
        out += "</ul>\n";
    }
    return out +
           "<table>\n<thead><tr><th>Tools</th><th>Number</th><th>Failed</th><th>Worth a look</th>"
           "</tr></thead>\n<tbody>\n" +
           rows + "</tbody>\n</table>\n</body>\n</html>\n";
}

}  // namespace product
