// What is worked out beside the drawing: reviews, solids and their measures, pages, copies, words.
#include <gmock/gmock.h>

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>

#include "apps/qzhost/output/PlotDialog.h"
#include "apps/qzhost/review/EnvelopeReview.h"
#include "apps/qzhost/session/HostProgram.h"
#include "apps/qzhost/settings/Autosave.h"
#include "apps/qzhost/settings/Icons.h"
#include "apps/qzhost/solid/SolidMeasure.h"
#include "apps/qzhost/tools/ToolTask.h"
#include "apps/qzhost/words/HostWords.h"
#include "apps/qzhost/words/Words.h"
#include "arxHeaders.h"
#include "host/db/build.h"
#include "host/ed/entity_query.h"
#include "host/ed/session.h"

namespace {

class ReviewTest : public testing::Test {
protected:
    ~ReviewTest() override { EXPECT_EQ(app::Lines(), app::EndHost()); }

    static AcApDocument* Open(const wchar_t* path) { return host::Session::Get().Open(path); }
    static app::ToolPick PickOf(AcApDocument& document, double x, double y) {
        return {host::QueryEntities(*document.database(), host::QueryRules::Displayed()),
                AcGePoint3d(x, y, 0)};
    }
    static app::SolidBody Pin() {
        // 60 long, 20 thick up to the middle, 10 thick beyond.
        const std::vector<product::Vertex> ring = {{0, 0, 0},  {0, 10, 0}, {30, 10, 0},
                                                   {30, 5, 0}, {60, 5, 0}, {60, 0, 0}};
        const product::Axis axis = product::Axis::Level({0, 0});
        return app::MakeBody(product::RevolveRing(ring, true, axis), Qt::gray);
    }
};

TEST_F(ReviewTest, BothEnvelopesAreFoundAndTheDrawingStays) {
    AcApDocument* const document = Open(L"examples/end-mill.dxf");
    ASSERT_NE(nullptr, document);
    const app::Lines before = app::DumpEntities(*document->database());
    app::DrawingCopy copy(*document->database());
    ASSERT_TRUE(copy.IsGood()) << copy.Reason();
    std::string reason;
    const std::vector<app::ListedTool> tools = app::ListTools(*document->database(), reason);
    ASSERT_FALSE(tools.empty()) << reason;
    const app::ToolPick pick{tools[0].ids, tools[0].centre};
    product::ToolParameters parameters;
    const app::EnvelopeReview fine = app::ReviewTool(*document->database(), copy, pick, parameters);
    EXPECT_EQ("", fine.reason.toStdString());
    EXPECT_GT(fine.steps.size(), 3u);
    EXPECT_GT(fine.exact.size(), 3u);
    EXPECT_TRUE(fine.solid.profile.has_value());
    EXPECT_FALSE(fine.rows.empty());
    // Coarser chords lie farther from the exact envelope; the copy serves again.
    parameters.arcPrecision = 5.0;
    const app::EnvelopeReview coarse =
        app::ReviewTool(*document->database(), copy, pick, parameters);
    ASSERT_TRUE(coarse.greatest.has_value());
    EXPECT_NE(fine.difference, coarse.difference);
    EXPECT_EQ(before, app::DumpEntities(*document->database()));
    EXPECT_FALSE(host::IsModified(*document->database()));
    EXPECT_EQ(document->database(), acdbHostApplicationServices()->workingDatabase());
    // Nothing picked is told.
    const app::EnvelopeReview none =
        app::ReviewTool(*document->database(), copy, {{}, tools[0].centre}, parameters);
    EXPECT_TRUE(none.steps.empty());
    EXPECT_NE("", none.reason.toStdString());
}

TEST_F(ReviewTest, ToolsAreListedCheckedAndExported) {
    AcApDocument* const document = Open(L"examples/tool-sheet.dxf");
    ASSERT_NE(nullptr, document);
    const app::Lines before = app::DumpEntities(*document->database());
    std::string reason;
    const size_t count = app::ListTools(*document->database(), reason).size();
    ASSERT_GT(count, 1u) << reason;
    const QTemporaryDir folder;
    const std::string path = folder.path().toStdString();
    const product::BatchResult all = app::CheckTools(*document->database(), "sheet.dxf", path, {});
    ASSERT_EQ(count, all.ToolCount());
    EXPECT_EQ(0u, all.FailedTools()) << all.drawings.front().reason;
    for (const product::ToolResult& tool : all.drawings.front().tools) {
        EXPECT_FALSE(tool.png.empty()) << tool.name;
        ASSERT_FALSE(tool.files.empty()) << tool.name;
        EXPECT_TRUE(QFile::exists(QString::fromStdString(tool.files[0]))) << tool.files[0];
    }
    EXPECT_EQ(before, app::DumpEntities(*document->database()));
    EXPECT_EQ(document->database(), acdbHostApplicationServices()->workingDatabase());
    // Stopped before the second tool: the first one is told.
    const product::BatchResult one = app::CheckTools(*document->database(), "sheet.dxf", path,
                                                     [](size_t done, size_t) { return done < 1; });
    EXPECT_EQ(1u, one.ToolCount());
    EXPECT_EQ("stopped", one.drawings.front().reason);
    EXPECT_EQ(document->database(), acdbHostApplicationServices()->workingDatabase());
}

TEST_F(ReviewTest, PlacesOnASolidAreMeasured) {
    const app::SolidBody pin = Pin();
    ASSERT_TRUE(pin.HasShape());
    app::Camera camera;
    camera.size = QSize(800, 600);
    camera.origin.set(30, 0, 0);
    camera.Fit(35);
    const auto at = [&](double x, double y) {
        return app::PlaceAt(pin, camera, camera.ToPixel(AcGePoint3d(x, y, 0)), false);
    };
    const auto thick = at(15, 2), slim = at(45, 2);
    ASSERT_TRUE(thick && slim);
    EXPECT_NEAR(15, thick->along, 0.2);
    EXPECT_DOUBLE_EQ(10, thick->radius) << "of the surface, not of its triangles";
    EXPECT_DOUBLE_EQ(5, slim->radius);
    EXPECT_GT(thick->at.z, 9.0) << "the side towards the eye";
    EXPECT_FALSE(at(15, 12));
    // Near an edge it is the edge, digit for digit.
    const auto edge = at(30.2, 9.9);
    const auto corner = at(29.8, 9.9);
    ASSERT_TRUE(corner);
    EXPECT_TRUE(corner->isCorner);
    EXPECT_EQ(30.0, corner->along);
    EXPECT_EQ(10.0, corner->radius);
    EXPECT_FALSE(edge) << "beyond the step there is nothing so high";
    EXPECT_EQ("x 30   \u2300 20", app::TextOf(*corner).toStdString());
    EXPECT_THAT(app::TextBetween(*corner, *slim).toStdString(), testing::HasSubstr("\u0394x"));
    // Cut open, the ray goes on to the plane of the profile.
    const auto cut = app::PlaceAt(pin, camera, camera.ToPixel(AcGePoint3d(15, 2, 0)), true);
    ASSERT_TRUE(cut);
    EXPECT_NEAR(0.0, cut->at.z, 1e-6);
    // From the end the axis is a point.
    camera.turn = QQuaternion::fromAxisAndAngle(0, 1, 0, -90);
    const auto end =
        app::PlaceAt(pin, camera, camera.ToPixel(AcGePoint3d(60, 0, 0)) + QPointF(0, -20), false);
    ASSERT_TRUE(end);
    EXPECT_NEAR(60, end->along, 1e-3);
    // Zooming keeps what is under the pointer.
    const QPointF pointer(300, 200);
    AcGePoint3d before, after;
    AcGeVector3d along;
    camera.RayOf(pointer, before, along);
    camera.ZoomAt(pointer, 1.7);
    camera.RayOf(pointer, after, along);
    EXPECT_LT(before.distanceTo(after), 1e-3);
}

TEST_F(ReviewTest, PagesAreToScale) {
    AcApDocument* const document = host::Session::Get().New();
    ASSERT_EQ(Acad::eOk, acDocManager->lockDocument(document));
    {
        AcDbBlockTableRecordPointer space(acdbSymUtil()->blockModelSpaceId(document->database()),
                                          AcDb::kForWrite);
        auto line = std::make_unique<AcDbLine>(AcGePoint3d(0, 0, 0), AcGePoint3d(100, 0, 0));
        ASSERT_EQ(Acad::eOk, space->appendAcDbEntity(line.get()));
        ASSERT_EQ(Acad::eOk, line.release()->close());
    }
    ASSERT_EQ(Acad::eOk, acDocManager->unlockDocument(document));
    app::Scene scene(*document->database());
    scene.Update();
    app::PlotSetup setup;
    setup.area = scene.Extents();
    setup.page = QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Landscape,
                             QMarginsF(10, 10, 10, 10), QPageLayout::Millimeter);
    setup.dotsPerInch = 254;  // ten dots a millimetre
    const QTemporaryDir folder;
    const QString png = folder.filePath("page.png");
    for (const double scale : {1.0, 0.5, 2.0}) {
        setup.scale = scale;
        ASSERT_EQ("", app::PlotToFile(scene, setup, png).toStdString());
        const QImage page(png);
        EXPECT_EQ(QSize(2970, 2100), page.size());
        int first = -1, last = -1;
        for (int x = 0; x < page.width(); ++x)
            for (int y = 1040; y < 1060; ++y)
                if (qGray(page.pixel(x, y)) < 128) {
                    if (first < 0) first = x;
                    last = x;
                }
        EXPECT_NEAR(1000 * scale, last - first, 5) << scale;
        EXPECT_NEAR(1485, (first + last) / 2, 5) << "in the middle";
    }
    EXPECT_TRUE(app::Fits(setup));
    setup.scale = 3.0;
    EXPECT_FALSE(app::Fits(setup));
    EXPECT_NEAR(2.77, app::FittingScale(setup), 1e-9);
    for (const char* const name : {"page.pdf", "page.svg"}) {
        ASSERT_EQ("", app::PlotToFile(scene, setup, folder.filePath(name)).toStdString());
        QFile file(folder.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        EXPECT_GT(file.size(), 300);
    }
    EXPECT_NE("", app::PlotToFile(scene, setup, folder.filePath("page.doc")).toStdString());
    EXPECT_NE("", app::PlotToFile(scene, setup, "/nosuch/page.pdf").toStdString());
    EXPECT_EQ(0.5, app::ParseScale("1:2"));
    EXPECT_EQ(2.5, app::ParseScale(" 2.5 "));
    for (const char* const bad : {"", "fit", "1:0", "-1", "1:2:3", "nan"})
        EXPECT_EQ(0.0, app::ParseScale(bad)) << bad;
}

TEST_F(ReviewTest, CopiesSurviveACrashAndNothingElse) {
    const QTemporaryDir folder;
    AcApDocument* const document = Open(L"examples/end-mill.dxf");
    ASSERT_NE(nullptr, document);
    {
        app::Autosave running(folder.path());
        EXPECT_EQ("", running.Write().toStdString());
        EXPECT_TRUE(QDir(folder.path()).entryList({"*.dxf"}).isEmpty()) << "nothing has changed";
        ASSERT_EQ(Acad::eOk, acDocManager->lockDocument(document));
        {
            const auto ids =
                host::QueryEntities(*document->database(), host::QueryRules::Displayed());
            AcDbObjectPointer<AcDbEntity> entity(ids.front(), AcDb::kForWrite);
            ASSERT_EQ(Acad::eOk, entity->erase());
        }
        ASSERT_EQ(Acad::eOk, acDocManager->unlockDocument(document));
        running.Note(document);
        EXPECT_EQ("", running.Write().toStdString());
        EXPECT_TRUE(host::IsModified(*document->database())) << "a copy is no save";
        EXPECT_TRUE(running.Left().empty()) << "its own are not offered";
        EXPECT_LE(running.Pause(), 10 * 1000) << "soon, for a small drawing";
        // As if the program had been killed: the copies stay, the lock does not hold.
        for (const QString& name : QDir(folder.path()).entryList({"1-1.*"}))
            QFile::copy(folder.filePath(name), folder.filePath("9-" + name.section('-', 1)));
    }
    EXPECT_TRUE(QDir(folder.path()).entryList({"1-*"}).isEmpty()) << "a good end takes them away";
    const app::Autosave next(folder.path());
    const std::vector<app::Rescued> left = next.Left();
    ASSERT_EQ(1u, left.size());
    EXPECT_TRUE(left[0].original.endsWith("end-mill.dxf"));
    host::Session::Get().CloseAll();
    AcApDocument* const rescued =
        host::Session::Get().OpenCopy(left[0].copy.toStdWString(), left[0].original.toStdWString());
    ASSERT_NE(nullptr, rescued);
    EXPECT_STREQ(L"end-mill.dxf", rescued->docTitle());
    EXPECT_TRUE(host::IsModified(*rescued->database()));
    app::Autosave::Drop(left[0]);
    EXPECT_TRUE(next.Left().empty());
}

TEST_F(ReviewTest, WordsOfTheHostKeepTheirValues) {
    // Catalogues belong to an application.
    static int count = 0;
    std::unique_ptr<QCoreApplication> application;
    if (QCoreApplication::instance() == nullptr)
        application = std::make_unique<QCoreApplication>(count, nullptr);
    app::UseLanguage("zh");
    const struct {
        const char *said, *shown;
    } rows[] = {
        {"\nSpecify first point: ", "\n指定第一点: "},
        {"3 found, 5 total", "找到 3 个，总计 5 个"},
        {"MIRROR undone.", "已放弃 MIRROR。"},
        {"Saved /tmp/Saved x.dxf", "已保存 /tmp/Saved x.dxf"},
        {"\n包络线：长 60", "\n包络线：长 60"},
        {"1 found of what nobody knows", "1 found of what nobody knows"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(row.shown, app::InLanguage(QString(row.said)).toStdString());
    EXPECT_EQ("图层", app::Tr("Layers").toStdString());
    app::UseLanguage("en");
    EXPECT_EQ("Layers", app::Tr("Layers").toStdString());
    EXPECT_EQ("3 found", app::InLanguage("3 found").toStdString());
}

}  // namespace
