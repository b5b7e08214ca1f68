// The same drawings by dxflib: read into the calls of an adapter that counts, and written entity by
// entity from plain numbers, which is less than what is asked of a database.
#include "bench/dxf_peers.h"

#include <dxflib/dl_creationadapter.h>
#include <dxflib/dl_dxf.h>

#include <memory>
#include <sstream>

namespace bench {

namespace {

class Counter : public DL_CreationAdapter {
public:
    void addLine(const DL_LineData&) override { ++count; }
    void addArc(const DL_ArcData&) override { ++count; }
    void addPolyline(const DL_PolylineData&) override { ++count; }

    std::size_t count = 0;
};

}  // namespace

std::size_t ReadByPeer(const std::string& text) {
    Counter counter;
    std::istringstream stream(text);
    DL_Dxf dxf;
    if (!dxf.in(stream, &counter)) return 0;
    return counter.count;
}

std::size_t WriteByPeer(std::size_t entities) {
    DL_Dxf dxf;
    const std::unique_ptr<DL_WriterA> file(dxf.out("/dev/null", DL_VERSION_2000));
    if (file == nullptr) return 0;
    std::size_t written = 0;
    for (; written < entities; ++written) {
        const double x = static_cast<double>(written) * 0.37 + 0.123456789;
        const double y = static_cast<double>(written) * 1.13 - 7.7;
        const DL_Attributes attributes("LAYER" + std::to_string(written % 8), 256, -1, "BYLAYER",
                                       1.0);
        if (written % 3 == 0) {
            dxf.writeLine(*file, DL_LineData(x, y, 0.0, x + 10, y, 0.0), attributes);
        } else if (written % 3 == 1) {
            dxf.writeArc(*file, DL_ArcData(x, y, 0.0, 2.5, 30.0, 120.0), attributes);
        } else {
            dxf.writePolyline(*file, DL_PolylineData(3, 0, 0, 1), attributes);
            dxf.writeVertex(*file, DL_VertexData(x, y, 0.0, 0.5));
            dxf.writeVertex(*file, DL_VertexData(x + 1, y, 0.0, 0.0));
            dxf.writeVertex(*file, DL_VertexData(x + 1, y + 1, 0.0, 0.0));
            dxf.writePolylineEnd(*file);
        }
    }
    file->close();
    return written;
}

}  // namespace bench
