// Working sets for tests of the passes: from text, random ones of several kinds, and as text.
#pragma once

#include <cstdint>
#include <cstring>
#include <random>
#include <sstream>

#include "plugin/engine/LineInfo.h"
#include "support/test_drawing.h"
#include "plugin/util/AddEntity.h"

namespace test {

using Lines = std::vector<CLineInfo>;

// A record with a line of its own in the working database.
inline CLineInfo AddRecord(CBlockAppender& space, const AcGePoint3d& p, const AcGePoint3d& q) {
    CLineInfo line;
    line.m_id = space.AppendLine(p, q, 256);
    line.m_startPt = p;
    line.m_endPt = q;
    return line;
}

// "0,0 10,0 | 5,0 5,3 !": one line each, "!" for a dropped one.
inline Lines ParseLines(const std::string& text) {
    Lines lines;
    CBlockAppender space;
    for (const std::string& part : Split(text, '|')) {
        const std::vector<std::string> words = Split(part, ' ');
        lines.push_back(AddRecord(space, ParsePoint(words.at(0)), ParsePoint(words.at(1))));
        lines.back().m_bValid = words.size() < 3;
    }
    return lines;
}

inline std::string Show(const Lines& lines) {
    std::string text;
    for (const CLineInfo& line : lines) {
        text += (text.empty() ? "" : " | ") + Show(line.m_startPt) + " " + Show(line.m_endPt) +
                (line.m_bValid ? "" : " !");
    }
    return text;
}

// Exact text of coordinates.
inline std::string Bits(const AcGePoint3d& pt) {
    char text[80];
    // Adding 0 makes the two zeros one.
    std::snprintf(text, sizeof text, "%a,%a,%a", pt.x + 0.0, pt.y + 0.0, pt.z + 0.0);
    return text;
}

// What a record says, with its entity, if there is one that lives.
inline std::string Bits(const CLineInfo& line) {
    std::string text =
        Bits(line.m_startPt) + " " + Bits(line.m_endPt) + (line.m_bValid ? "" : " !");
    for (const AcGePoint3d& pt : line.m_breakPts) text += " b" + Bits(pt);
    AcDbObjectPointer<AcDbLine> entity(line.m_id, AcDb::kForRead);
    if (entity.openStatus() != Acad::eOk) return text + " no entity";
    return text + " is " + Bits(entity->startPoint()) + " " + Bits(entity->endPoint());
}

// Every line of model space, sorted: what a pass leaves in the drawing.
inline std::vector<std::string> DrawingBits(AcDbDatabase& db) {
    std::vector<std::string> all;
    AcDbObjectPointer<AcDbBlockTableRecord> block(acdbSymUtil()->blockModelSpaceId(&db),
                                                  AcDb::kForRead);
    AcDbBlockTableRecordIterator* raw = nullptr;
    Check(block->newIterator(raw));
    const std::unique_ptr<AcDbBlockTableRecordIterator> it(raw);
    for (; !it->done(); it->step()) {
        AcDbObjectId id;
        Check(it->getEntityId(id));
        AcDbObjectPointer<AcDbLine> line(id, AcDb::kForRead);
        AcString layer;
        Check(line->layer(layer));
        all.push_back(Bits(line->startPoint()) + " " + Bits(line->endPoint()) + " " +
                      Narrow(layer));
    }
    std::sort(all.begin(), all.end());
    return all;
}

// Random drawings. The same seed gives the same drawing everywhere: the generator's numbers are
// fixed by the standard, and they are turned into doubles here.
class LineMaker {
public:
    explicit LineMaker(std::uint64_t seed) : m_random(seed) {}

    std::uint64_t Next(std::uint64_t below) { return m_random() % below; }
    double Unit() { return static_cast<double>(m_random() >> 11) / 9007199254740992.0; }
    double Real(double from, double to) { return from + (to - from) * Unit(); }

    using Segments = std::vector<std::pair<AcGePoint3d, AcGePoint3d>>;

    // One of the kinds below, up to count segments.
    Segments Make(size_t count) {
        Segments segments;
        switch (Next(8)) {
            case 0:
                segments = Soup(count, 0.0, 60.0);
                break;
            case 1:
                segments = Soup(count, 1.0, 12.0);
                break;
            case 2:
                segments = Soup(count, 0.00025, 0.01);
                break;
            case 3:
                segments = Profile(count, 0.0);
                break;
            case 4:
                segments = Profile(count, 0.5);
                break;
            case 5:
                segments = Grid(count);
                break;
            case 6:
                segments = Soup(count, 0.5, 8.0);
                Jitter(segments, Next(2) == 0 ? 3e-4 : 1e-9);
                break;
            default:
                segments = Profile(count, 1.0);
                Jitter(segments, 6e-4);
                break;
        }
        if (Next(8) == 0) Move(segments);
        return segments;
    }

    // Any segments in a square; step 0: any coordinates, else multiples of it.
    Segments Soup(size_t count, double step, double size) {
        Segments segments;
        const double reach = Next(2) == 0 ? size : size / 4;
        while (segments.size() < count) {
            const AcGePoint3d p(Real(0, size), Real(0, size), 0);
            const AcGePoint3d q(p.x + Real(-reach, reach), p.y + Real(-reach, reach), 0);
            segments.emplace_back(Snap(p, step), Snap(q, step));
        }
        return segments;
    }

    // A tool's upper half with steps, chamfers and stubs that cross the contour.
    Segments Profile(size_t count, double step) {
        Segments segments;
        AcGePoint3d at(Real(-20, 20), Real(2, 12), 0);
        while (segments.size() < count) {
            AcGePoint3d to = at;
            const std::uint64_t kind = Next(4);
            if (kind != 1) to.x += Real(0, 4);
            if (kind != 0) to.y = kind == 1 ? Real(0, 14) : to.y + Real(-2, 2);
            to = Snap(to, step);
            segments.emplace_back(at, to);
            if (Next(3) == 0) {
                const AcGePoint3d stub(to.x + Real(-3, 3), to.y + Real(-3, 3), 0);
                segments.emplace_back(Snap(AcGePoint3d(at.x, at.y + Real(-1, 1), 0), step),
                                      Snap(stub, step));
            }
            at = to;
        }
        return segments;
    }

    // Horizontals, verticals and diagonals on a coarse grid, some drawn twice, some reversed.
    Segments Grid(size_t count) {
        Segments segments;
        while (segments.size() < count) {
            const AcGePoint3d p(double(Next(7)), double(Next(7)), 0);
            const double length = double(1 + Next(5));
            const std::uint64_t kind = Next(4);
            const AcGePoint3d q(p.x + (kind == 1 ? 0 : length),
                                p.y + (kind == 0   ? 0
                                       : kind == 3 ? -length
                                                   : length),
                                0);
            segments.emplace_back(p, q);
            if (Next(4) == 0) segments.emplace_back(q, p);
        }
        return segments;
    }

    // Moves every end a little, so that places differ by less than the tolerances.
    void Jitter(Segments& segments, double size) {
        for (auto& segment : segments) {
            for (AcGePoint3d* pt : {&segment.first, &segment.second}) {
                if (Next(2) == 0) continue;
                pt->x += Real(-size, size);
                pt->y += Real(-size, size);
            }
        }
    }

    // Takes the drawing far off, or makes it huge or tiny.
    void Move(Segments& segments) {
        const double scales[] = {1e-9, 1e-3, 1.0, 1e4, 1e9};
        const double scale = scales[Next(5)];
        const double offset = Next(2) == 0 ? 0.0 : scale * Real(-1e5, 1e5);
        for (auto& segment : segments) {
            for (AcGePoint3d* pt : {&segment.first, &segment.second}) {
                pt->set(pt->x * scale + offset, pt->y * scale - offset, 0);
            }
        }
    }

private:
    static AcGePoint3d Snap(const AcGePoint3d& pt, double step) {
        if (step == 0.0) return pt;
        return {std::round(pt.x / step) * step, std::round(pt.y / step) * step, 0};
    }

    std::mt19937_64 m_random;
};

}  // namespace test
