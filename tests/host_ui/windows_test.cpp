// Windows, panels, and the main window's questions about unsaved changes.
#include "host_ui/UiTest.h"
#include "render/Views.h"
#include "scene/files/FileIO.h"
#include "support/Sure.h"

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QTemporaryDir>
#include <QTimer>
#include <QWindow>

#include <maya/M3dView.h>
#include <maya/MQtUtil.h>

#include <gmock/gmock.h>

using support::sure;
using testing::HasSubstr;

class Windows : public uitest::UiTest {
protected:
    /// Presses a button of the next message box; what it asks is in `question` afterwards.
    void answer(QMessageBox::StandardButton button) {
        QTimer::singleShot(0, window.get(), [this, button] {
            auto* box = window->findChild<QMessageBox*>();
            if (!box) {
                answer(button);
                return;
            }
            question = box->text().toStdString();
            box->button(button)->click();
        });
    }
    void modify() { run("createNode transform -name \"changed\""); }
    std::string question;
};

TEST_F(Windows, AFloatingViewOfItsOwn) {
    const unsigned views = M3dView::numberOf3dViews();
    run("window -retain -title \"Float\" -widthHeight 300 280 floatWin;"
        "paneLayout -configuration \"single\" -parent floatWin floatPane;"
        "modelPanel -parent floatPane floatPanel; lookThroughModelPanel top floatPanel");
    EXPECT_EQ(runInt("window -q -visible floatWin"), 0);
    run("showWindow floatWin");
    EXPECT_EQ(runInt("window -q -visible floatWin"), 1);
    EXPECT_EQ(runInt("paneLayout -exists floatPane"), 1);
    EXPECT_EQ(runInt("modelPanel -exists floatPanel"), 1);
    EXPECT_EQ(M3dView::numberOf3dViews(), views + 1);
    M3dView view;
    ASSERT_TRUE(M3dView::getM3dViewFromModelPanel("floatPanel", view));
    EXPECT_EQ(runString("modelPanel -q -camera floatPanel"), "top");
    EXPECT_EQ(runString("modelPanel -q -camera modelPanel4"), "persp");
    EXPECT_THAT(errorOf("lookThroughModelPanel nobody floatPanel"), HasSubstr("nobody"));
    EXPECT_EQ(runString("modelPanel -q -camera floatPanel"), "top");
    run("setFocus floatPanel");
    EXPECT_EQ(runString("getPanel -withFocus"), "floatPanel");
    EXPECT_EQ(sure(MQtUtil::findWindow("floatWin")).windowTitle(), "Float");

    sure(MQtUtil::findWindow("floatWin")).close();
    uitest::settle();
    EXPECT_EQ(runInt("window -exists floatWin"), 1) << "it is retained";
    run("deleteUI floatWin");
    EXPECT_EQ(M3dView::numberOf3dViews(), views);
    EXPECT_FALSE(view.portWidth() > 0 && M3dView::getM3dViewFromModelPanel("floatPanel", view));
    EXPECT_EQ(runInt("modelPanel -exists floatPanel"), 0);
    EXPECT_EQ(runString("getPanel -withFocus"), "modelPanel4");
}

TEST_F(Windows, FloatingWindowsStayAboveAndComeToTheFront) {
    run("window -widthHeight 200 150 lower; showWindow lower;"
        "window -widthHeight 200 150 upper; showWindow upper");
    QWidget* lower = MQtUtil::findWindow("lower");
    QWidget* upper = MQtUtil::findWindow("upper");
    for (QWidget* floating : {lower, upper}) {
        floating->move(300, 300);
        ASSERT_TRUE(QTest::qWaitForWindowExposed(floating));
    }
    const auto inFront = [](const QWidget* expected) {
        return uitest::waitFor([&] { return QApplication::topLevelAt(360, 360) == expected; });
    };
    EXPECT_TRUE(inFront(upper));
    run("showWindow lower");
    EXPECT_TRUE(inFront(lower));
    EXPECT_TRUE(QTest::qWaitForWindowActive(lower));
    // The window manager keeps what is a dialog of the main window above it.
    for (const char* edit : {"", "window -e -toolbox true lower", "window -e -toolbox false lower",
                             "window -e -titleBar false lower"}) {
        SCOPED_TRACE(edit);
        run(edit);
        ASSERT_TRUE(lower->isWindow() && lower->isVisible());
        EXPECT_EQ(lower->windowHandle()->transientParent(), window->windowHandle());
        EXPECT_NE(lower->windowType(), Qt::Window);
    }
    run("deleteUI lower upper");
}

TEST_F(Windows, AReopenedSceneShowsTheCamerasItWasSavedWith) {
    const QTemporaryDir directory;
    const auto shown = [this] { return runString("modelPanel -q -camera modelPanel4"); };
    for (const char* name : {"shot.ma", "shot.mb"}) {
        SCOPED_TRACE(name);
        const std::string path = directory.filePath(name).toStdString();
        run("file -force -new; createNode transform -n rig; string $shot[] = `camera`;"
            "rename $shot[0] shotCam; parent shotCam rig; flushUndo;"
            "lookThroughModelPanel shotCam modelPanel4");
        run("file -rename \"" + path + "\"; file -save");
        EXPECT_EQ(runInt("undoInfo -q -undoQueueEmpty"), 1) << "saving is no step to undo";
        EXPECT_EQ(runInt("file -q -modified"), 0);
        run("file -force -new");
        EXPECT_EQ(shown(), "persp");
        run("file -open \"" + path + "\"");
        EXPECT_EQ(shown(), "shotCam");
        EXPECT_EQ(runInt("file -q -modified"), 0);
        // The panel is not there everywhere, and a camera can go.
        run("modelPanel -parent $gMainPane second; lookThroughModelPanel side second;"
            "lookThroughModelPanel persp modelPanel4; file -save;"
            "deleteUI second; file -open \"" +
            path + "\"");
        EXPECT_EQ(shown(), "persp");
        EXPECT_EQ(runInt("file -q -modified"), 0);
    }
    // What another program keeps in the same script stays, and nothing of it is run.
    const std::string path = directory.filePath("other.ma").toStdString();
    run("file -force -new; createNode script -n uiConfigurationScriptNode;"
        "setAttr -type \"string\" uiConfigurationScriptNode.b \"createNode transform -n ran\";"
        "lookThroughModelPanel top modelPanel4; file -rename \"" +
        path + "\"; file -save; lookThroughModelPanel side modelPanel4; file -save");
    run("file -force -new; file -open \"" + path + "\"");
    EXPECT_EQ(shown(), "side");
    EXPECT_EQ(runInt("objExists ran"), 0);
    EXPECT_EQ(runString("getAttr uiConfigurationScriptNode.b"),
              "createNode transform -n ran\n"
              "if (`modelPanel -exists \"modelPanel4\"`) lookThroughModelPanel \"side\" "
              "\"modelPanel4\";\n");
}

TEST_F(Windows, ComingToTheFrontLeavesTheActiveViewItHas) {
    run("modelPanel -parent $gMainPane second; setFocus modelPanel4;"
        "modelEditor -e -activeView true second");
    QFocusEvent front(QEvent::FocusIn, Qt::ActiveWindowFocusReason);
    QCoreApplication::sendEvent(&view(), &front);
    EXPECT_EQ(runString("getPanel -withFocus"), "second");
    run("window elsewhere; paneLayout -parent elsewhere pane; modelPanel -parent pane third;"
        "showWindow elsewhere; modelEditor -e -activeView true third");
    QCoreApplication::sendEvent(&view(), &front);
    EXPECT_EQ(runString("getPanel -withFocus"), "modelPanel4") << "it comes from another window";
    run("deleteUI elsewhere; deleteUI second");
}

TEST_F(Windows, StandWhereScriptsPutThemAndTellWhenTheyClose) {
    run("global int $closed; $closed = 0; window -widthHeight 200 100 -closeCommand"
        " \"$closed = 1\" middle; showWindow middle");
    const QWidget* middle = MQtUtil::findWindow("middle");
    ASSERT_NE(middle, nullptr);
    uitest::settle();
    EXPECT_TRUE(window->geometry().contains(middle->geometry())) << "over the main window";
    EXPECT_LT((middle->geometry().center() - window->geometry().center()).manhattanLength(), 4);
    run("window -e -topLeftCorner 40 60 -sizeable false middle");
    EXPECT_EQ(middle->pos(), QPoint(60, 40));
    EXPECT_EQ(runInt("window -q -topEdge middle"), 40);
    EXPECT_EQ(runInt("window -q -leftEdge middle"), 60);
    EXPECT_EQ(runInt("window -q -sizeable middle"), 0);
    EXPECT_EQ(middle->maximumSize(), QSize(200, 100));
    run("window -e -visible false middle; window -e -sizeable true -visible true middle");
    EXPECT_EQ(middle->pos(), QPoint(60, 40)) << "shown again, it stays";
    EXPECT_EQ(runInt("window -q -sizeable middle"), 1);
    sure(MQtUtil::findWindow("middle")).close();
    uitest::settle();
    EXPECT_EQ(runInt("$closed"), 1);
    EXPECT_EQ(runInt("window -exists middle"), 0);
    EXPECT_THAT(errorOf("window -shiny 1"), HasSubstr("Invalid flag '-shiny'."));
    EXPECT_THAT(errorOf("window -e -title x middle"), HasSubstr("Object 'middle' not found."));
}

TEST_F(Windows, WrongCallsSayWhatIsWrong) {
    EXPECT_THAT(errorOf("window -shiny"), HasSubstr("-shiny"));
    EXPECT_THAT(errorOf("paneLayout -configuration \"quad\" -parent MayaWindow x"),
                HasSubstr("quad"));
    EXPECT_THAT(errorOf("modelEditor -e -rendererName \"none\" modelPanel4"), HasSubstr("none"));
    EXPECT_THAT(errorOf("showWindow nobody"), HasSubstr("nobody"));
    EXPECT_THAT(errorOf("deleteUI MayaWindow"), HasSubstr("main window"));
    window.reset();
    EXPECT_THAT(errorOf("window x"), HasSubstr("no user interface"));
    EXPECT_THAT(errorOf("play"), HasSubstr("no user interface"));
}

TEST_F(Windows, ClosingAsksAboutChanges) {
    EXPECT_FALSE(window->windowTitle().contains('*'));
    modify();
    window->updateTitle();
    EXPECT_TRUE(window->windowTitle().contains('*'));
    answer(QMessageBox::Cancel);
    EXPECT_FALSE(window->close());
    EXPECT_THAT(question, HasSubstr("untitled"));
    EXPECT_TRUE(window->isVisible());
    answer(QMessageBox::No);
    EXPECT_TRUE(window->close());
}

TEST_F(Windows, SavingOverADamagedFileIsAsked) {
    QTemporaryDir directory;
    const QString path = directory.filePath("damaged.ma");
    const QByteArray damaged = "//Maya ASCII 2024 scene\ncreateNode transform -n \"left\";\n";
    const auto content = [&path] {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    };
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(damaged) > 0);
    file.close();
    ASSERT_TRUE(window->openScene(path));
    EXPECT_EQ(runInt("objExists left"), 1);
    answer(QMessageBox::No);
    type({Qt::Key_Control, Qt::Key_S});
    EXPECT_THAT(question, HasSubstr("damaged.ma"));
    EXPECT_EQ(content(), damaged);
    answer(QMessageBox::Yes);
    type({Qt::Key_Control, Qt::Key_S});
    EXPECT_TRUE(content().contains("// End of"));
}

TEST_F(Windows, YesSavesFirst) {
    QTemporaryDir directory;
    const QString path = directory.filePath("shot \"1\".ma");
    host::fileIO().setSceneName(path.toStdString());
    modify();
    answer(QMessageBox::Yes);
    EXPECT_TRUE(window->newScene());
    EXPECT_THAT(question, HasSubstr("shot \"1\".ma"));
    EXPECT_TRUE(QFile::exists(path));
    EXPECT_EQ(runInt("objExists changed"), 0);
    EXPECT_TRUE(window->windowTitle().contains("untitled"));
    ASSERT_TRUE(window->openScene(path));
    EXPECT_EQ(runInt("objExists changed"), 1);
    EXPECT_TRUE(window->windowTitle().contains(path));
    EXPECT_FALSE(window->windowTitle().contains('*'));
    modify();
    type({Qt::Key_Control, Qt::Key_S});
    EXPECT_FALSE(window->windowTitle().contains('*'));
    EXPECT_FALSE(window->openScene(directory.filePath("missing.ma")));
    EXPECT_TRUE(window->windowTitle().contains(path)) << "a failed open keeps the scene";
}
