#include <algorithm>
#include <cmath>
#include <cstdio>

#include "plane/point.h"
#include "product/base/Colours.h"
#include "product/base/Text.h"
#include "product/picture/Picture.h"

namespace product {
namespace {

constexpr double kLongSide = 1400;        // pixels of the picture's longer side
constexpr double kShortSide = 240;        // and at least for the shorter one
constexpr double kMargin = 0.05;          // of the view's longer side
constexpr double kMarkRadius = 20;        // pixels
constexpr double kFontPerCapital = 1.38;  // font size by height of capitals, of usual sans fonts

const std::string& Style() {
    static const std::string style =
        std::string(
            "path,rect{fill:none;vector-effect:non-scaling-stroke;stroke-linejoin:round}"
            "text{font-family:'DejaVu Sans','Noto Sans CJK SC',sans-serif;fill:#9a9a9a}"
            ".outline{stroke:#8a8a8a;stroke-width:1px}"
            ".dashed{stroke:#a8a8a8;stroke-width:1px;stroke-dasharray:6 3}"
            ".centre{stroke:#b0b0b0;stroke-width:1px;stroke-dasharray:12 3 2 3}"
            ".dimension{stroke:") +
        kFillColour + ";stroke-width:1px}.solid{fill:" + kFillColour +
        ";stroke:none}"
        ".hatch{stroke:#e2e2e2;stroke-width:1px}"
        ".axis{stroke:" +
        kAxisColour +
        ";stroke-width:1.2px;stroke-dasharray:18 4 3 4}"
        ".window{stroke:#b9c9b9;stroke-width:1px;stroke-dasharray:3 4}"
        ".envelope{stroke:" +
        kEnvelopeColour + ";stroke-width:2.4px;fill:" + kEnvelopeColour +
        ";fill-opacity:.09}"
        ".part{fill-opacity:.45;stroke:#5a5a5a;stroke-width:1px}"
        ".mark circle{fill:#fff3c4;stroke:" +
        kNoticeColour +
        ";stroke-width:2px;vector-effect:non-scaling-stroke}"
        ".mark text{fill:#6b3c00;font-weight:bold;text-anchor:middle}";
    return style;
}

// SVG writes what the path data or an attribute needs: enough digits for any screen.
class Writer {
public:
    Writer(const Picture& picture, const std::string* prefix)
        : m_picture(picture), m_isElement(prefix != nullptr), m_prefix(prefix ? *prefix : "") {
        m_view = picture.view;
        if (m_view.IsEmpty()) m_view.Add(Point{});
        const double margin = kMargin * std::max(m_view.Width(), m_view.Height()) + 1e-9;
        m_view.Add(Point{m_view.low.x - margin, m_view.low.y - margin});
        m_view.Add(Point{m_view.high.x + margin, m_view.high.y + margin});
        m_scale = kLongSide / std::max(m_view.Width(), m_view.Height());
        if (!picture.below.empty())
            m_belowHeight = m_view.Width() * m_scale * picture.belowHeight / picture.belowWidth;
        m_origin = {(m_view.low.x + m_view.high.x) / 2, (m_view.low.y + m_view.high.y) / 2};
    }

    std::string Run() {
        Head();
        Blocks();
        m_out += "<g transform=\"scale(1,-1)\">\n";
        if (m_picture.hasWindow) Window();
        for (const Shape& shape : m_picture.shapes) Add(shape, m_origin);
        if (m_picture.hasAxis) Axis();
        for (const FilledRing& part : m_picture.parts) Part(part);
        if (!m_picture.envelope.empty()) Envelope();
        m_out += "</g>\n";
        for (const Mark& mark : m_picture.marks) AddMark(mark);
        if (!m_picture.below.empty()) Below();
        m_out += "</svg>\n";
        return m_out;
    }

private:
    void Number(double value) {
        char text[32];
        // In a page of many pictures a hundredth of a pixel will do.
        std::snprintf(text, sizeof text, m_isElement ? "%.7g" : "%.9g", value);
        m_out += text;
    }
    void Pair(Point p, Point origin) {
        Number((p.x - origin.x) * m_scale);
        m_out += ' ';
        Number((p.y - origin.y) * m_scale);
    }
    void Text(const std::string& text) { m_out += Escaped(text); }

    void Head() {
        const double width = m_view.Width() * m_scale, height = m_view.Height() * m_scale;
        if (m_isElement) {
            m_out = "<svg class=\"drawing\" role=\"img\"";
        } else {
            m_out =
                "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                "<svg xmlns=\"http://www.w3.org/2000/svg\"";
            Attribute("width", std::round(std::max(kShortSide, width)));
            Attribute("height", std::round(std::max(kShortSide, height) + m_belowHeight));
        }
        m_out += " viewBox=\"";
        for (const double value : {-width / 2, -height / 2, width, height + m_belowHeight}) {
            Number(value);
            m_out += ' ';
        }
        m_out.back() = '"';
        m_out += ">\n<title>";
        Text(m_picture.title);
        m_out += "</title>\n";
        if (m_isElement) return;
        m_out += "<style>";
        m_out += Style();
        m_out += "</style>\n<rect";
        Attribute("x", -width / 2);
        Attribute("y", -height / 2);
        Attribute("width", width);
        Attribute("height", height + m_belowHeight);
        m_out += " style=\"fill:#fff\"/>\n";
    }

    void Attribute(const char* name, double value) {
        m_out += ' ';
        m_out += name;
        m_out += "=\"";
        Number(value);
        m_out += '"';
    }

    void Blocks() {
        m_out += "<defs>\n";
        for (size_t i = 0; i < m_picture.blocks.size(); ++i) {
            m_out += "<g id=\"" + m_prefix + "b" + std::to_string(i) + "\">\n";
            for (const Shape& shape : m_picture.blocks[i]) Add(shape, Point{});
            m_out += "</g>\n";
        }
        m_out += "</defs>\n";
    }

    void Matrix(const Affine& m, Point origin) {
        m_out += "matrix(";
        for (const double value : {m.a, m.b, m.c, m.d}) {
            Number(value);
            m_out += ' ';
        }
        Pair({m.e, m.f}, origin);
        m_out += ')';
    }

    void Data(const Path& path, Point origin) {
        for (const PathStep& step : path.Steps()) {
            if (step.kind == PathStep::Close) {
                m_out += 'Z';
                continue;
            }
            m_out += "MLAC"[step.kind];
            if (step.kind == PathStep::Arc) {
                const double degrees = step.turn * 180 / plane::kHalfTurn;
                for (const double value :
                     {step.radiusX * m_scale, step.radiusY * m_scale, degrees}) {
                    Number(value);
                    m_out += ' ';
                }
                m_out += step.large ? "1 " : "0 ";
                m_out += step.ccw ? "1 " : "0 ";
            }
            if (step.kind == PathStep::Cubic) {
                Pair(step.control1, origin);
                m_out += ' ';
                Pair(step.control2, origin);
                m_out += ' ';
            }
            Pair(step.to, origin);
        }
    }

    void Stroke(const char* kind, const Path& path, Point origin) {
        m_out += "<path class=\"";
        m_out += kind;
        m_out += "\" d=\"";
        Data(path, origin);
        m_out += "\"/>\n";
    }

    void Add(const Shape& shape, Point origin) {
        static const char* const kClasses[] = {"outline",   "dashed", "centre",
                                               "dimension", "solid",  "hatch"};
        if (shape.kind == Shape::Stroke)
            Stroke(kClasses[static_cast<int>(shape.ink)], shape.path, origin);
        if (shape.kind == Shape::Label) Label(shape, origin);
        if (shape.kind == Shape::BlockUse) {
            m_out +=
                "<use href=\"#" + m_prefix + "b" + std::to_string(shape.block) + "\" transform=\"";
            Matrix(shape.place, origin);
            m_out += "\"/>\n";
        }
    }

    void Label(const Shape& shape, Point origin) {
        static const char* const kAnchors[] = {"start", "middle", "end"};
        Affine upright = shape.place;  // letters grow downwards in SVG
        upright.c = -upright.c;
        upright.d = -upright.d;
        m_out += "<text text-anchor=\"";
        m_out += kAnchors[shape.anchor];
        m_out += "\" font-size=\"";
        Number(shape.textHeight * kFontPerCapital * m_scale);
        m_out += "\" transform=\"";
        Matrix(upright, origin);
        m_out += "\">";
        Text(shape.text);
        m_out += "</text>\n";
    }

    void Window() {
        const Box& w = m_picture.window;
        Path path;
        path.AddRing({{w.low.x, w.low.y, 0},
                      {w.high.x, w.low.y, 0},
                      {w.high.x, w.high.y, 0},
                      {w.low.x, w.high.y, 0}},
                     true);
        Stroke("window", path, m_origin);
    }

    void Axis() {
        Path path;
        path.MoveTo(m_picture.axisFrom);
        path.LineTo(m_picture.axisTo);
        Stroke("axis", path, m_origin);
    }

    void Envelope() {
        Path path;
        path.AddRing(m_picture.envelope, true);
        Stroke("envelope", path, m_origin);
    }

    void Part(const FilledRing& part) {
        Path path;
        path.AddRing(part.ring, true);
        char colour[16];
        std::snprintf(colour, sizeof colour, "#%06x", part.rgb & 0xFFFFFFu);
        m_out += "<path class=\"part\" style=\"fill:" + std::string(colour) + "\" d=\"";
        Data(path, m_origin);
        m_out += "\"/>\n";
    }

    void AddMark(const Mark& mark) {
        const double x = (mark.at.x - m_origin.x) * m_scale;
        const double y = (m_origin.y - mark.at.y) * m_scale;
        m_out += "<g class=\"mark\"><circle";
        Attribute("cx", x);
        Attribute("cy", y);
        Attribute("r", kMarkRadius);
        m_out += "/><text";
        Attribute("x", x);
        Attribute("y", y + kMarkRadius * 0.45);
        Attribute("font-size", kMarkRadius * 1.3);
        m_out += ">";
        Text(mark.label);
        m_out += "</text></g>\n";
    }

    void Below() {
        m_out += "<image";
        Attribute("x", -m_view.Width() * m_scale / 2);
        Attribute("y", m_view.Height() * m_scale / 2);
        Attribute("width", m_view.Width() * m_scale);
        Attribute("height", m_belowHeight);
        m_out += " href=\"data:image/png;base64,";
        m_out += Base64(m_picture.below);
        m_out += "\"/>\n";
    }

    const Picture& m_picture;
    bool m_isElement;
    std::string m_prefix;
    Box m_view;
    Point m_origin;
    // Pixels per drawing unit. Applied to the coordinates, so that strokes have their width in
    // pixels even for viewers that do not know strokes which keep it.
    double m_scale = 1;
    double m_belowHeight = 0;
    std::string m_out;
};

}  // namespace

std::string ToSvg(const Picture& picture) { return Writer(picture, nullptr).Run(); }

std::string ToSvgElement(const Picture& picture, const std::string& prefix) {
    return Writer(picture, &prefix).Run();
}

const char* SvgStyle() { return Style().c_str(); }

std::string Base64(const std::string& bytes) {
    static const char kDigits[] =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    text.reserve((bytes.size() + 2) / 3 * 4);
    for (size_t i = 0; i < bytes.size(); i += 3) {
        unsigned word = 0;
        for (size_t k = 0; k < 3; ++k)
            word =
                word << 8 | (i + k < bytes.size() ? static_cast<unsigned char>(bytes[i + k]) : 0u);
        for (size_t k = 0; k < 4; ++k)
            text += i + k > bytes.size() ? '=' : kDigits[word >> (18 - 6 * k) & 63u];
    }
    return text;
}

std::string FromBase64(const std::string& text) {
    std::string bytes;
    bytes.reserve(text.size() / 4 * 3);
    unsigned word = 0;
    int bits = 0;
    for (const char c : text) {
        int digit = 0;
        if (c >= 'A' && c <= 'Z')
            digit = c - 'A';
        else if (c >= 'a' && c <= 'z')
            digit = c - 'a' + 26;
        else if (c >= '0' && c <= '9')
            digit = c - '0' + 52;
        else if (c == '+' || c == '/')
            digit = c == '+' ? 62 : 63;
        else
            continue;
        word = word << 6 | static_cast<unsigned>(digit);
        bits += 6;
        if (bits < 8) continue;
        bits -= 8;
        bytes += static_cast<char>(word >> bits & 0xFFu);
    }
    return bytes;
}

}  // namespace product
