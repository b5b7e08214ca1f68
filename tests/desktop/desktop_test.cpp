// The desktop as a person uses it: mouse and keys on the real widgets, on Qt's offscreen platform.
#include <gmock/gmock.h>

#include <QApplication>
#include <QCheckBox>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <deque>
#include <functional>

#include "apps/qzhost/desktop/Desktop.h"
#include "apps/qzhost/session/HostProgram.h"
#include "arxHeaders.h"
#include "host/ed/prompts.h"
#include "host/ed/session.h"
#include "host/base/format.h"
#include "host/mfc/dialog_probe.h"
#include "host/mfc/host_frame.h"
#include "support/offscreen_application.h"

namespace {

using test::Application;

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
    // For what a busy machine may take longer over.
    static bool Until(const std::function<bool()>& isSo) { return QTest::qWaitFor(isSo, 20000); }
    Qt::CheckState BoxOf(int layer) const {
        const QTreeWidgetItem* const item = desktop->Layers().List().topLevelItem(layer);
        return item == nullptr ? Qt::PartiallyChecked : item->checkState(app::LayerPanel::kOn);
    }

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
    // The centre was asked for near the centre line, so the axis is exactly there, and that is
    // said.
    const std::string made = host::Narrow(entities.back());
    EXPECT_THAT(made, testing::ContainsRegex("on TempEncircleLine closed .* 70,125 181,150"));
    EXPECT_TRUE(desktop->Line().History().contains("125 (Centre line)"));
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
    EXPECT_TRUE(desktop->Line().History().contains("1 found"));
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
           [&] { Type("all"); }, [&] { Type(""); }});
    Type("ERASE");
    EXPECT_TRUE(desktop->Line().History().contains("1 found\n"));
    EXPECT_TRUE(desktop->Line().History().contains("0 found, 1 total"));
    EXPECT_TRUE(desktop->Line().History().contains("10 found (1 duplicate), 10 total"));
    EXPECT_TRUE(desktop->Line().History().contains("Not a way to select"));
    EXPECT_EQ(0u, CountEntities());
    // Enter alone does it again: the last command.
    Type("U");
    Type("");
    EXPECT_EQ(11u, CountEntities());
    // A blank is Enter where names have none.
    Later({[&] { QTest::keyClicks(&desktop->Line().Edit(), "OFF "); }, [&] { Type("DIM"); },
           [&] { Type(""); }});
    QTest::keyClicks(&desktop->Line().Edit(), "LAYER ");
    EXPECT_TRUE(Until([&] { return BoxOf(6) == Qt::Unchecked; }));
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

// Typed faster than the last command ends, a blank behind the word has already ended the line.
TEST_F(DesktopTest, NothingBehindAnUnknownWordIsStarted) {
    desktop->Type(L"nosuch", true);
    desktop->Type(L"e", true);
    desktop->Type(L"all");
    EXPECT_FALSE(desktop->Input().IsAsking());
    EXPECT_FALSE(desktop->Line().History().contains("> e"));
    Type("CLOSE");
    EXPECT_EQ(0, acDocManager->documentCount()) << "the next line counts again";
}

// A line editor of its own takes Ctrl+E and Ctrl+K on X11.
TEST_F(DesktopTest, ShortcutsReachTheDesktopFromTheLine) {
    QLineEdit& edit = desktop->Line().Edit();
    const auto isLeft = [&](int key, const char* typed) {
        edit.setText(typed);
        QKeyEvent event(QEvent::ShortcutOverride, key, Qt::ControlModifier);
        event.ignore();
        QCoreApplication::sendEvent(&edit, &event);
        return !event.isAccepted();
    };
    for (const int key : {Qt::Key_E, Qt::Key_K, Qt::Key_Z, Qt::Key_A, Qt::Key_W})
        EXPECT_TRUE(isLeft(key, "")) << key;
    EXPECT_TRUE(isLeft(Qt::Key_E, "typed"));
    EXPECT_FALSE(isLeft(Qt::Key_Z, "typed")) << "takes back what was typed";
    EXPECT_FALSE(isLeft(Qt::Key_V, "typed"));
}

TEST_F(DesktopTest, ADrawingThatIsOpenIsNotOpenedAgain) {
    const QString path = QString::fromWCharArray(curDoc()->fileName());
    Type("NEW");
    ASSERT_EQ(2, acDocManager->documentCount());
    desktop->OpenFiles({path.section('/', 0, -2) + "/./" + path.section('/', -1)});
    EXPECT_EQ(2, acDocManager->documentCount());
    EXPECT_EQ(path, QString::fromWCharArray(curDoc()->fileName()));
    EXPECT_TRUE(desktop->Line().History().contains("is open already."));
}

// Every key with every modifier, on the window, the drawing and the line: nothing may be handed
// back and forth, whoever has the focus.
TEST_F(DesktopTest, KeysThatMeanNothingDoNothing) {
    std::vector<int> keys;
    for (int key = Qt::Key_Escape; key <= Qt::Key_F35; ++key) keys.push_back(key);
    for (int key = Qt::Key_Menu; key <= Qt::Key_Direction_R; ++key) keys.push_back(key);
    for (int key = Qt::Key_Space; key <= Qt::Key_ydiaeresis; ++key) keys.push_back(key);
    QTimer closer;  // of dialogs and menus that a shortcut opens
    QObject::connect(&closer, &QTimer::timeout, [] {
        if (QWidget* const open = QApplication::activePopupWidget()) open->close();
        if (auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget()))
            dialog->reject();
    });
    closer.start(5);
    const size_t before = CountEntities();
    for (QWidget* const target :
         {static_cast<QWidget*>(desktop.get()), static_cast<QWidget*>(&desktop->View()),
          static_cast<QWidget*>(&desktop->Line().Edit())})
        for (const int modifiers : {0, 1, 2, 4, 8, 6, 7}) {
            for (const int key : keys) {
                const Qt::KeyboardModifiers with(modifiers << 25);
                const bool isControl = with.testFlag(Qt::ControlModifier);
                // These save the drawing, close it or leave, which is another test.
                if (isControl && (key == Qt::Key_S || key == Qt::Key_W || key == Qt::Key_F4 ||
                                  key == Qt::Key_Q || key == Qt::Key_N))
                    continue;
                QKeyEvent press(QEvent::KeyPress, key, with);
                QApplication::sendEvent(target, &press);
            }
            desktop->Line().Edit().clear();
        }
    QTest::qWait(50);
    EXPECT_TRUE(desktop->isVisible());
    EXPECT_EQ(before, CountEntities());
    // And what can be typed arrives once.
    desktop->View().setFocus();
    QTest::keyClicks(&desktop->View(), "Line");
    EXPECT_EQ("Line", desktop->Line().Edit().text());
}

TEST_F(DesktopTest, ChangesAreShownAndAskedFor) {
    auto* const tabs = desktop->findChild<QTabBar*>("documents");
    EXPECT_EQ("end-mill.dxf", tabs->tabText(0));
    EXPECT_FALSE(desktop->isWindowModified());
    Later({[&] { Type("all"); }, [&] { Type(""); }});
    Type("ERASE");
    EXPECT_TRUE(Until([&] { return tabs->tabText(0) == "end-mill.dxf*"; }));
    EXPECT_TRUE(desktop->isWindowModified());
    // The command, the window: the answer is given to the box that is in front.
    int asked = 0;
    QMessageBox::StandardButton answer = QMessageBox::Cancel;
    QTimer person;
    QObject::connect(&person, &QTimer::timeout, [&] {
        auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (box == nullptr) return;
        ++asked;
        EXPECT_TRUE(box->text().contains("end-mill.dxf"));
        box->button(answer)->click();
    });
    person.start(10);
    Type("CLOSE");
    EXPECT_EQ(1, asked);
    EXPECT_EQ(1, acDocManager->documentCount());
    desktop->close();
    EXPECT_EQ(2, asked);
    EXPECT_TRUE(desktop->isVisible());
    answer = QMessageBox::Discard;
    desktop->close();
    EXPECT_EQ(3, asked);
    EXPECT_FALSE(desktop->isVisible());
    EXPECT_EQ(0, acDocManager->documentCount());
}

TEST_F(DesktopTest, APointIsSnappedTypedOrTracked) {
    const struct {
        std::function<void()> answer;
        AcGePoint3d point;
    } rows[] = {
        {[&] { Click(71.7, 141.2); }, {71.5, 141, 0}},
        {[&] { Type("@10,5"); }, {81.5, 146, 0}},
        {[&] { Type("10<90"); }, {0, 10, 0}},
        // No snap for the next point only.
        {[&] {
             Type("non");
             Click(70.3, 141.2);
         },
         {70.3, 141.2, 0}},
    };
    for (const auto& row : rows) {
        host::Answer answer;
        Later({row.answer});
        answer = host::AskPoint(L"\nPoint: ");
        EXPECT_EQ(host::Answer::kGiven, answer.kind);
        EXPECT_LT(answer.point.distanceTo(row.point), row.point.y == 141.2 ? 0.3 : 1e-12);
    }
    // From a base: ortho keeps one coordinate, a number goes along it.
    const AcGePoint3d base(40, 185, 0);
    host::PointRequest request;
    request.base = &base;
    desktop->Input().Aid().isOrtho = true;
    Later({[&] { Click(53, 187); }});
    host::Answer answer = host::AskPoint(L"\nPoint: ", request);
    EXPECT_EQ(185, answer.point.y);
    EXPECT_NEAR(53, answer.point.x, 0.3);
    Later({[&] {
        const QPoint at = desktop->View().ToPixel(AcGePoint3d(41, 195, 0)).toPoint();
        QTest::mouseMove(&desktop->View(), at);
        Type("7.5");
    }});
    answer = host::AskPoint(L"\nPoint: ", request);
    EXPECT_EQ(AcGePoint3d(40, 192.5, 0), answer.point);
    // Tab takes the next of several points at one place.
    Later({[&] {
        const QPoint at = desktop->View().ToPixel(AcGePoint3d(70, 141, 0)).toPoint();
        QTest::mouseMove(&desktop->View(), at);
        QTest::keyClick(desktop.get(), Qt::Key_Tab);
        QTest::keyClick(&desktop->Line().Edit(), Qt::Key_Escape);
    }});
    EXPECT_EQ(host::Answer::kEscape, host::AskPoint(L"\nPoint: ").kind);
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
    ASSERT_TRUE(Until([&] { return BoxOf(7) == Qt::Checked; }));
    QTreeWidgetItem* const frame = desktop->Layers().List().topLevelItem(7);
    ASSERT_EQ("FRAME", frame->text(app::LayerPanel::kName));
    const QImage shown = desktop->View().grab().toImage();
    frame->setCheckState(app::LayerPanel::kOn, Qt::Unchecked);
    EXPECT_EQ(L"FRAME off thawed unlocked Continuous", app::DumpLayers(*curDoc()->database())[7]);
    EXPECT_TRUE(Until([&] { return desktop->View().grab().toImage() != shown; }));
    Type("U");
    EXPECT_TRUE(Until([&] { return BoxOf(7) == Qt::Checked; }))
        << desktop->Line().History().toStdString();
    EXPECT_TRUE(Until([&] { return desktop->View().grab().toImage() == shown; }));
}

TEST_F(DesktopTest, TabsShowTheDrawings) {
    host::Session::Get().Open(L"examples/ball-nose.dxf");
    Wait();
    auto* const tabs = desktop->findChild<QTabBar*>("documents");
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
