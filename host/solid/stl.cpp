#include "host/solid/stl.h"

#include <cstdint>
#include <cstring>

namespace host::solid {

namespace {

struct StoredPoint {
    float x, y, z;
    bool operator==(const StoredPoint& o) const { return x == o.x && y == o.y && z == o.z; }
};

StoredPoint Rounded(const AcGePoint3d& p) {
    return {static_cast<float>(p.x), static_cast<float>(p.y), static_cast<float>(p.z)};
}

void PutWord(std::string& out, std::uint32_t word) {
    for (int shift = 0; shift < 32; shift += 8) out += static_cast<char>(word >> shift & 0xFFu);
}

void PutCorner(std::string& out, const StoredPoint& c) {
    for (const float f : {c.x, c.y, c.z}) {
        std::uint32_t word;
        std::memcpy(&word, &f, sizeof word);
        PutWord(out, word);
    }
}

}  // namespace

std::string StlBytes(const Mesh& mesh) {
    std::string body;
    body.reserve(50 * mesh.triangles.size());
    std::uint32_t count = 0;
    for (const std::array<int, 3>& t : mesh.triangles) {
        const AcGePoint3d& a = mesh.points[static_cast<std::size_t>(t[0])];
        const AcGePoint3d& b = mesh.points[static_cast<std::size_t>(t[1])];
        const AcGePoint3d& c = mesh.points[static_cast<std::size_t>(t[2])];
        const StoredPoint corners[] = {Rounded(a), Rounded(b), Rounded(c)};
        if (corners[0] == corners[1] || corners[1] == corners[2] || corners[2] == corners[0])
            continue;
        const AcGeVector3d n = (b - a).crossProduct(c - a).normal();
        PutCorner(body, Rounded(n.asPoint()));
        for (const StoredPoint& corner : corners) PutCorner(body, corner);
        body.append(2, '\0');
        ++count;
    }
    std::string out = "QZEncircleLine binary STL";
    out.resize(80, ' ');
    PutWord(out, count);
    return out + body;
}

}  // namespace host::solid
