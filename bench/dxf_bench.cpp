// Reading and writing text DXF, and how the time grows with the size of the file.
#include <benchmark/benchmark.h>

#include <memory>
#include <string>

#include "arxHeaders.h"
#include "bench/dxf_peers.h"
#include "host/dxf/dxf_file.h"

namespace {

// A drawing of lines, arcs and light polylines on a few layers, as CAD programs write it.
std::string MakeDrawing(std::size_t bytes) {
    std::string text =
        "  0\nSECTION\n  2\nHEADER\n  9\n$ACADVER\n  1\nAC1015\n  9\n$DWGCODEPAGE\n  3\nANSI_1252\n"
        "  9\n$HANDSEED\n  5\nFFFFFF\n  0\nENDSEC\n  0\nSECTION\n  2\nTABLES\n  0\nTABLE\n  "
        "2\nLAYER\n"
        "  5\n2\n330\n0\n100\nAcDbSymbolTable\n 70\n     1\n";
    for (int i = 0; i < 8; ++i)
        text += "  0\nLAYER\n  5\n" + std::to_string(10 + i) +
                "\n330\n2\n100\nAcDbSymbolTableRecord\n100\nAcDbLayerTableRecord\n  2\nLAYER" +
                std::to_string(i) + "\n 70\n     0\n 62\n     7\n  6\nContinuous\n";
    text += "  0\nENDTAB\n  0\nENDSEC\n  0\nSECTION\n  2\nENTITIES\n";
    unsigned handle = 0x100;
    char buffer[600];
    while (text.size() < bytes) {
        const double x = handle * 0.37, y = handle * 1.13;
        std::snprintf(
            buffer, sizeof buffer,
            "  0\nLINE\n  5\n%X\n330\n1F\n100\nAcDbEntity\n  8\nLAYER%u\n100\nAcDbLine\n 10\n"
            "%.10f\n 20\n%.10f\n 30\n0.0\n 11\n%.10f\n 21\n%.10f\n 31\n0.0\n",
            handle, handle % 8, x, y, x + 10, y);
        ++handle;
        text += buffer;
        std::snprintf(
            buffer, sizeof buffer,
            "  0\nARC\n  5\n%X\n330\n1F\n100\nAcDbEntity\n  8\nLAYER%u\n 62\n     3\n100\n"
            "AcDbCircle\n 10\n%.10f\n 20\n%.10f\n 30\n0.0\n 40\n2.5\n100\nAcDbArc\n 50\n"
            "30.0\n 51\n120.0\n",
            handle, handle % 8, x, y);
        ++handle;
        text += buffer;
        std::snprintf(
            buffer, sizeof buffer,
            "  0\nLWPOLYLINE\n  5\n%X\n330\n1F\n100\nAcDbEntity\n  8\nLAYER%u\n100\n"
            "AcDbPolyline\n 90\n        3\n 70\n     1\n 43\n0.0\n 10\n%.8f\n 20\n%.8f\n 42\n"
            "0.5\n 10\n%.8f\n 20\n%.8f\n 10\n%.8f\n 20\n%.8f\n",
            handle, handle % 8, x, y, x + 1, y, x + 1, y + 1);
        ++handle;
        text += buffer;
    }
    return text + "  0\nENDSEC\n  0\nEOF\n";
}

std::unique_ptr<AcDbDatabase> Read(const std::string& text) {
    auto db = std::make_unique<AcDbDatabase>(false, true);
    host::dxf::Report report;
    if (!host::dxf::ReadBytes(*db, text, "bench", report).ok()) return nullptr;
    return db;
}

void Finish(benchmark::State& state, const std::string& text) {
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) *
                            static_cast<int64_t>(text.size()));
    state.SetComplexityN(static_cast<int64_t>(text.size()));
}

// From bytes to a database whose entities are made when they are opened.
void DxfRead(benchmark::State& state) {
    const std::string text = MakeDrawing(static_cast<std::size_t>(state.range(0)) << 20);
    for (auto _ : state) {
        auto db = Read(text);
        if (db == nullptr) state.SkipWithError("the drawing cannot be read");
        state.PauseTiming();
        db.reset();
        state.ResumeTiming();
    }
    Finish(state, text);
}

// The same and every entity made.
void DxfReadEverything(benchmark::State& state) {
    const std::string text = MakeDrawing(static_cast<std::size_t>(state.range(0)) << 20);
    for (auto _ : state) {
        auto db = Read(text);
        if (db == nullptr || db->closeInput(true) != Acad::eOk)
            state.SkipWithError("the drawing cannot be read");
        state.PauseTiming();
        db.reset();
        state.ResumeTiming();
    }
    Finish(state, text);
}

void DxfWriteUnchanged(benchmark::State& state) {
    const std::string text = MakeDrawing(static_cast<std::size_t>(state.range(0)) << 20);
    auto db = Read(text);
    for (auto _ : state) {
        std::string out;
        host::dxf::Report report;
        if (!host::dxf::WriteToString(*db, out, report).ok()) state.SkipWithError("not written");
        benchmark::DoNotOptimize(out);
    }
    Finish(state, text);
}

// Every entity was moved: its record is read again, compared and written.
void DxfWriteChanged(benchmark::State& state) {
    const std::string text = MakeDrawing(static_cast<std::size_t>(state.range(0)) << 20);
    auto db = Read(text);
    const AcGeMatrix3d move = AcGeMatrix3d::translation(AcGeVector3d(0.123456789, -7.7, 0.0));
    AcDbBlockTable* table = nullptr;
    AcDbBlockTableRecord* space = nullptr;
    AcDbBlockTableRecordIterator* made = nullptr;
    if (db == nullptr || db->getBlockTable(table, AcDb::kForRead) != Acad::eOk ||
        table->getAt(ACDB_MODEL_SPACE, space, AcDb::kForRead) != Acad::eOk ||
        table->close() != Acad::eOk || space->newIterator(made) != Acad::eOk ||
        space->close() != Acad::eOk) {
        state.SkipWithError("the drawing cannot be read");
        return;
    }
    const std::unique_ptr<AcDbBlockTableRecordIterator> it(made);
    std::int64_t entities = 0;
    for (; !it->done(); it->step(), ++entities) {
        AcDbEntity* entity = nullptr;
        if (it->getEntity(entity, AcDb::kForWrite) != Acad::eOk ||
            entity->transformBy(move) != Acad::eOk || entity->close() != Acad::eOk)
            state.SkipWithError("an entity cannot be moved");
    }
    for (auto _ : state) {
        std::string out;
        host::dxf::Report report;
        if (!host::dxf::WriteToString(*db, out, report).ok()) state.SkipWithError("not written");
        benchmark::DoNotOptimize(out);
    }
    Finish(state, text);
    state.counters["us/entity"] = benchmark::Counter(
        static_cast<double>(entities) * 1e-6,
        benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

// dxflib on the text of DxfRead.
void DxfReadPeer(benchmark::State& state) {
    const std::string text = MakeDrawing(static_cast<std::size_t>(state.range(0)) << 20);
    for (auto _ : state)
        if (bench::ReadByPeer(text) == 0) state.SkipWithError("dxflib cannot read the drawing");
    Finish(state, text);
}

// dxflib on as many entities of the same three kinds as DxfWriteChanged writes.
void DxfWritePeer(benchmark::State& state) {
    const std::string text = MakeDrawing(static_cast<std::size_t>(state.range(0)) << 20);
    const std::size_t entities = bench::ReadByPeer(text);
    for (auto _ : state)
        if (bench::WriteByPeer(entities) != entities) state.SkipWithError("dxflib cannot write");
    Finish(state, text);
    state.counters["us/entity"] = benchmark::Counter(
        static_cast<double>(entities) * 1e-6,
        benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

BENCHMARK(DxfReadPeer)->Arg(1)->Arg(5)->Arg(50)->Unit(benchmark::kMillisecond)->Complexity();
BENCHMARK(DxfWritePeer)->Arg(1)->Arg(5)->Arg(50)->Unit(benchmark::kMillisecond)->Complexity();
BENCHMARK(DxfRead)->Arg(1)->Arg(5)->Arg(50)->Unit(benchmark::kMillisecond)->Complexity();
BENCHMARK(DxfReadEverything)->Arg(1)->Arg(5)->Arg(50)->Unit(benchmark::kMillisecond)->Complexity();
BENCHMARK(DxfWriteUnchanged)->Arg(1)->Arg(5)->Arg(50)->Unit(benchmark::kMillisecond)->Complexity();
BENCHMARK(DxfWriteChanged)->Arg(1)->Arg(5)->Arg(50)->Unit(benchmark::kMillisecond)->Complexity();

}  // namespace

BENCHMARK_MAIN();
