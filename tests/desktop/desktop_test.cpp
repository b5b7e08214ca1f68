// The desktop as a person uses it: mouse and keys on the real widgets, on Qt's offscreen platform.
#include <gmock/gmock.h>

#include <QApplication>
#include <QCheckBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <deque>
#include <functional>

#include "apps/qzhost/Desktop.h"
#include "apps/qzhost/HostProgram.h"
#include "arxHeaders.h"
#include "host/ed/session.h"
#include "host/base/format.h"
#include "host/mfc/dialog_probe.h"
#include "host/mfc/host_frame.h"

#if defined(__SANITIZE_ADDRESS__)
// The font library keeps a few records to the end of the process.
extern "C" const char* __lsan_default_suppressions();
extern "C" const char* __lsan_default_suppressions() { return "leak:libfontconfig"; }
#endif

namespace {

QApplication& Application() {
    static QApplication* const application = [] {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        static int count = 1;
        static char name[] = "desktop_tests";
        static char* arguments[] = {name, nullptr};
        return new QApplication(count, arguments);
    }();
    return *application;
}

// One desktop a test, with the end mill open and the module loaded into it.
class DesktopTest : public testing::Test {
protected:
    DesktopTest() {
        Application();
        host::MakeHostWindows();
        desktop = std::make_unique<app::Desktop>();
        desktop->show();
        QObject::connect(&m_person, &QTimer::timeout, [this] { NextStep(); });
        EXPECT_NE(nullptr, host::Session::Get().Open(L"examples/end-mill.dxf"));
        EXPECT_TRUE(app::LoadModule(app::UsualModule()));
        Wait();
    }
    ~DesktopTest() override {
        EXPECT_EQ(app::Lines{L"none"}, app::DumpLeftovers());
        EXPECT_EQ(app::Lines(), app::EndHost());
        Wait();
    }

    static void Wait() { QTest::qWait(60); }

    // What a person does while a prompt waits, one after the other.
    void Later(std::vector<std::function<void()>> steps) {
        m_steps.assign(steps.begin(), steps.end());
        m_person.start(20);
    }
    // Until all of it is done and nothing is asked any more.
    void WaitForPerson() {
        for (int i = 0; i < 500 && (!m_steps.empty() || desktop->Input().IsAsking()); ++i) Wait();
        EXPECT_TRUE(m_steps.empty());
    }

    void Click(double x, double y, Qt::MouseButton button = Qt::LeftButton) {
        const QPoint at = desktop->View().ToPixel(AcGePoint3d(x, y, 0)).toPoint();
        QTest::mouseMove(&desktop->View(), at);
        QTest::mouseClick(&desktop->View(), button, Qt::NoModifier, at);
    }
    void Drag(const QPointF& from, const QPointF& to) {
        const QPoint end = desktop->View().ToPixel(AcGePoint3d(to.x(), to.y(), 0)).toPoint();
        QTest::mousePress(&desktop->View(), Qt::LeftButton, Qt::NoModifier,
                          desktop->View().ToPixel(AcGePoint3d(from.x(), from.y(), 0)).toPoint());
        QTest::mouseMove(&desktop->View(), end);
        QTest::mouseRelease(&desktop->View(), Qt::LeftButton, Qt::NoModifier, end);
    }
    void Type(const char* text) {
        QTest::keyClicks(&desktop->Line().Edit(), text);
        QTest::keyClick(&desktop->Line().Edit(), Qt::Key_Return);
    }
    void Press(const QString& label) {
        for (QWidget* const widget : QApplication::allWidgets()) {
            auto* const button = qobject_cast<QPushButton*>(widget);
            if (button == nullptr || button->text() != label || !button->isVisible()) continue;
            QTest::mouseClick(button, Qt::LeftButton);
            return;
        }
        ADD_FAILURE() << "no button " << label.toStdString();
    }
    size_t CountEntities() const { return app::DumpEntities(*curDoc()->database()).size(); }
    std::string Dialogs() const { return host::Narrow(app::DumpDialogs().front()); }

    std::unique_ptr<app::Desktop> desktop;

private:
    void NextStep() {
        if (m_steps.empty() || !desktop->Input().IsAsking()) return;
        const std::function<void()> step = m_steps.front();
        m_steps.pop_front();
        step();
    }

    std::deque<std::function<void()>> m_steps;
    QTimer m_person;
};

TEST_F(DesktopTest, AnEnvelopeByMouseAlone) {
    Type("qztooldesignprofileauto3d");
    Wait();
    ASSERT_EQ("186 包络线计算", Dialogs());
    const size_t before = CountEntities();
    std::string duringPrompt;
    Later({[&] { duringPrompt = Dialogs(); },
           // A window from left to right, by two clicks where nothing lies.
           [&] { Click(45, 95); }, [&] { Click(192, 155); },
           [&] { Click(100, 60, Qt::RightButton); }, [&] { Click(100, 125); }});
    Press("选择刀具图");
    WaitForPerson();
    Wait();
    EXPECT_EQ("186 包络线计算 hidden", duringPrompt);
    EXPECT_EQ("186 包络线计算", Dialogs());
    const app::Lines entities = app::DumpEntities(*curDoc()->database());
    ASSERT_EQ(before + 1, entities.size());
    // The axis lies where the pointer was, to a pixel.
    const std::string made = host::Narrow(entities.back());
    EXPECT_THAT(made, testing::ContainsRegex("on TempEncircleLine closed .* 70,12[45].* 181,150"));
    Type("u");
    EXPECT_EQ(before, CountEntities());
    EXPECT_TRUE(desktop->Line().History().contains("undone"));
}

TEST_F(DesktopTest, EscapeLeavesAPrompt) {
    Type("QZTOOLDESIGNProfileAuto3D");
    Wait();
    const size_t before = CountEntities();
    Later({[&] { Click(62, 125); },  // picks the centre line
           [&] { QTest::keyClick(&desktop->Line().Edit(), Qt::Key_Escape); }});
    Press("选择刀具图");
    WaitForPerson();
    EXPECT_FALSE(desktop->Input().IsAsking());
    EXPECT_TRUE(desktop->Line().History().contains("1 found, 1 in all"));
    EXPECT_EQ("186 包络线计算", Dialogs());
    EXPECT_EQ(before, CountEntities());
}

TEST_F(DesktopTest, PickingAndTypingAnswerTheHost) {
    Later({[&] { Click(189, 125); }, [&] { Type(""); }});
    Type("ERASE");
    EXPECT_TRUE(desktop->Line().History().contains("1 erased."));
    // From right to left what is touched counts too; in one go as well as by two clicks.
    Later({[&] {
               Drag({150, 180}, {65, 158});
           },
           [&] { Click(40, 170); }, [&] { Click(250, 185); }, [&] { Type("nowhere"); },
           [&] { Type("all"); }});
    Type("ERASE");
    EXPECT_TRUE(desktop->Line().History().contains("1 found, 1 in all"));
    EXPECT_TRUE(desktop->Line().History().contains("0 found, 1 in all"));
    EXPECT_TRUE(desktop->Line().History().contains("Neither a point"));
    EXPECT_EQ(0u, CountEntities());
    // Enter alone does it again: the last command.
    Type("U");
    Type("");
    EXPECT_EQ(11u, CountEntities());
    Later({[&] { Type("DIM"); }, [&] { Type(""); }});
    Type("LAYER OFF");
    Wait();
    EXPECT_EQ(Qt::Unchecked, desktop->Layers().item(6)->checkState());
}

TEST_F(DesktopTest, TheLineRemembersWhatWasTyped) {
    QLineEdit& edit = desktop->Line().Edit();
    Type("FIRST");
    Type("SECOND");
    QTest::keyClick(&edit, Qt::Key_Up);
    EXPECT_EQ("SECOND", edit.text());
    QTest::keyClick(&edit, Qt::Key_Up);
    QTest::keyClick(&edit, Qt::Key_Up);
    EXPECT_EQ("FIRST", edit.text());
    QTest::keyClick(&edit, Qt::Key_Down);
    QTest::keyClick(&edit, Qt::Key_Down);
    EXPECT_EQ("", edit.text());
    // Keys that reach the window go to the line.
    QTest::keyClicks(desktop.get(), "NEW");
    EXPECT_EQ("NEW", edit.text());
    QTest::keyClick(&edit, Qt::Key_Return);
    EXPECT_EQ(2, acDocManager->documentCount());
}

TEST_F(DesktopTest, WheelAndMiddleButtonMoveTheView) {
    app::DrawingView& view = desktop->View();
    const QPointF at(200, 150);
    const AcGePoint3d under = view.ToWorld(at);
    const double aperture = view.PickAperture();
    QWheelEvent wheel(at, view.mapToGlobal(at), QPoint(), QPoint(0, 240), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&view, &wheel);
    EXPECT_NEAR(aperture / 1.5625, view.PickAperture(), 1e-9);
    EXPECT_TRUE(under.isEqualTo(view.ToWorld(at), AcGeTol()));
    QTest::mousePress(&view, Qt::MiddleButton, Qt::NoModifier, at.toPoint());
    QTest::mouseMove(&view, at.toPoint() + QPoint(50, 20));
    QTest::mouseRelease(&view, Qt::MiddleButton, Qt::NoModifier, at.toPoint() + QPoint(50, 20));
    EXPECT_NEAR(0.0, under.distanceTo(view.ToWorld(at + QPointF(50, 20))), 1e-9);
    QTest::mouseDClick(&view, Qt::MiddleButton);
    EXPECT_NEAR(aperture, view.PickAperture(), 1e-9);
}

TEST_F(DesktopTest, TheLayerBoxSwitchesAndUndoSwitchesBack) {
    QListWidgetItem* const frame = desktop->Layers().item(7);
    ASSERT_EQ("FRAME", frame->text());
    const QImage shown = desktop->View().grab().toImage();
    frame->setCheckState(Qt::Unchecked);
    Wait();
    EXPECT_EQ(L"FRAME off thawed unlocked Continuous", app::DumpLayers(*curDoc()->database())[7]);
    EXPECT_NE(shown, desktop->View().grab().toImage());
    Type("U");
    Wait();
    EXPECT_EQ(Qt::Checked, desktop->Layers().item(7)->checkState());
}

TEST_F(DesktopTest, TabsShowTheDrawings) {
    host::Session::Get().Open(L"examples/ball-nose.dxf");
    Wait();
    auto* const tabs = desktop->findChild<QTabBar*>();
    ASSERT_NE(nullptr, tabs);
    EXPECT_EQ(2, tabs->count());
    EXPECT_EQ("ball-nose.dxf", tabs->tabText(tabs->currentIndex()));
    const QImage second = desktop->View().grab().toImage();
    tabs->setCurrentIndex(0);
    EXPECT_STREQ(L"end-mill.dxf", curDoc()->docTitle());
    EXPECT_TRUE(desktop->windowTitle().startsWith("end-mill.dxf"));
    EXPECT_NE(second, desktop->View().grab().toImage());
    Type("CLOSE");
    EXPECT_EQ(second, desktop->View().grab().toImage());
    Type("CLOSE");
    EXPECT_EQ(0, tabs->count());
    EXPECT_EQ("QZHost", desktop->windowTitle());
}

TEST_F(DesktopTest, ClosingTheWindowEndsAPromptFirst) {
    Type("QZTOOLDESIGNProfileAuto3D");
    Wait();
    Later({[&] { desktop->close(); }});
    Press("选择刀具图");
    for (int i = 0; i < 500 && desktop->isVisible(); ++i) Wait();
    EXPECT_FALSE(desktop->isVisible());
    EXPECT_EQ(0, acDocManager->documentCount());
    EXPECT_TRUE(host::LiveDialogs().empty());
}

}  // namespace
