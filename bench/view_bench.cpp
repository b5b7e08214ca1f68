// The desktop's view of large drawings: a frame while panning, a sharp picture, an entity changed,
// a pick. Without a screen.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QThread>
#include <cmath>

#include "apps/qzhost/view/DrawingView.h"
#include "arxHeaders.h"
#include "host/ed/session.h"

namespace {

// Short lines and circles on a square grid, as a full sheet has them.
AcApDocument* DrawingOf(int count) {
    static std::map<int, AcApDocument*> drawings;
    AcApDocument*& document = drawings[count];
    if (document != nullptr) return document;
    document = host::Session::Get().New();
    static_cast<void>(acDocManager->lockDocument(document));
    {
        AcDbDatabase& database = *document->database();
        AcDbBlockTableRecordPointer space(acdbSymUtil()->blockModelSpaceId(&database),
                                          AcDb::kForWrite);
        const int side = static_cast<int>(std::ceil(std::sqrt(count)));
        for (int i = 0; i < count; ++i) {
            const AcGePoint3d at(i % side, i / side, 0.0);
            AcDbEntity* entity = nullptr;
            if (i % 4 == 0)
                entity = new AcDbCircle(at, AcGeVector3d::kZAxis, 0.4);
            else
                entity = new AcDbLine(at, at + AcGeVector3d(0.9, 0.1 * (i % 7), 0.0));
            if (space->appendAcDbEntity(entity) == Acad::eOk) static_cast<void>(entity->close());
        }
    }
    static_cast<void>(acDocManager->unlockDocument(document));
    return document;
}

class View {
public:
    explicit View(int count) : m_document(DrawingOf(count)) {
        m_view.resize(1280, 800);
        m_view.SetDocument(m_document);
        m_view.ZoomExtents();
        m_view.grab();
        for (int i = 0; i < 2000 && !m_view.IsSharp(); ++i) {
            QThread::msleep(5);
            QCoreApplication::processEvents();
            m_view.grab();
        }
    }
    app::DrawingView& operator*() { return m_view; }
    AcApDocument* Document() { return m_document; }

private:
    AcApDocument* m_document;
    app::DrawingView m_view;
};

// What a step of the wheel or of a pan costs before it is on the screen.
void Frame(benchmark::State& state) {
    View view(static_cast<int>(state.range(0)));
    QImage screen(1280, 800, QImage::Format_RGB32);
    double factor = 1.01;
    for (auto _ : state) {
        (*view).ZoomBy(factor);
        (*view).render(&screen);
        factor = 1.0 / factor;
    }
}
// The sharp picture that follows, in the other thread.
void Picture(benchmark::State& state) {
    View view(static_cast<int>(state.range(0)));
    const app::Scene& scene = *(*view).CurrentScene();
    const QRectF all = scene.Extents();
    app::ScenePicture picture{scene.Chunks(), scene.Patterns(), {}, {}};
    picture.view = {all.center(), 1200.0 / all.height(), QSize(1920, 1200)};
    picture.look.isSmooth = scene.Weight() <= 300000;
    for (auto _ : state) benchmark::DoNotOptimize(app::SceneRenderer::Render(picture));
}
void Opening(benchmark::State& state) {
    AcApDocument* const document = DrawingOf(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        app::Scene scene(*document->database());
        scene.Update();
        benchmark::DoNotOptimize(scene.Weight());
    }
}
void OneChange(benchmark::State& state) {
    View view(static_cast<int>(state.range(0)));
    app::Scene& scene = *(*view).CurrentScene();
    const AcDbObjectId id = scene.Chunks().front()->items.front().id;
    static_cast<void>(acDocManager->lockDocument(view.Document()));
    for (auto _ : state) {
        AcDbEntityPointer entity(id, AcDb::kForWrite);
        static_cast<void>(
            entity->setColorIndex(static_cast<Adesk::UInt16>(state.iterations() % 7)));
        static_cast<void>(entity->close());
        scene.Update();
    }
    static_cast<void>(acDocManager->unlockDocument(view.Document()));
}
void Pick(benchmark::State& state) {
    View view(static_cast<int>(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize((*view).SourcesNear(AcGePoint3d(50.2, 50.1, 0), 0.5));
}

BENCHMARK(Frame)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(Picture)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(Opening)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(OneChange)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(Pick)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    host::Session::Get().CloseAll();
    return 0;
}
