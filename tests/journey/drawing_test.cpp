// A session of drawing from the first stroke to the closed window.
#include "foundation/Events.h"
#include "foundation/UndoQueue.h"
#include "journey/Desk.h"
#include "journey/LayerData.h"
#include "plugin/base/ToolTable.h"
#include "support/Paths.h"
#include "support/Sure.h"
#include "ui/MainWindow.h"
#include "ui/ViewWidget.h"

#include <QFileInfo>

using support::firstOf;

namespace vellum::test {
namespace {

const std::vector<QPoint> kUpper = {{150, 100}, {190, 110}, {230, 100}, {270, 110}, {310, 100}};
const std::vector<QPoint> kLower = {{150, 220}, {190, 210}, {230, 220}, {270, 210}, {310, 220}};
// Along the right part of the lower stroke.
const std::vector<QPoint> kRubbed = {{230, 220}, {250, 215}, {270, 210}, {290, 215}};

class Drawing : public Desk {
protected:
    /// The view at a frame before anything is drawn.
    const QImage& blank(int frame) { return blanks_.at(frame); }
    void look(std::initializer_list<int> frames) {
        for (const int frame : frames) {
            scrub(frame);
            blanks_[frame] = picture();
        }
        scrub(1);
    }

private:
    std::map<int, QImage> blanks_;
};

} // namespace

TEST_F(Drawing, EveryFrameKeepsItsOwn) {
    look({1, 4, 7});
    take("pencil");
    stroke(kUpper);
    const QImage one = picture();
    for (const QPoint place : {kUpper.front(), kUpper[2], kUpper[3]})
        EXPECT_TRUE(differAt(one, blank(1), place)) << place.x();
    hand.type({Qt::Key_Control, Qt::Key_Z});
    EXPECT_TRUE(shows(blank(1)));
    hand.type({Qt::Key_Shift, Qt::Key_Z});
    EXPECT_TRUE(shows(one));

    scrub(7);
    take("brush");
    stroke(kLower);
    const QImage sevenDrawn = picture();
    EXPECT_FALSE(differAt(sevenDrawn, blank(7), kUpper[2])) << "frame 7 starts empty";
    EXPECT_TRUE(differAt(sevenDrawn, blank(7), kLower[2]));
    take("eraser");
    stroke(kRubbed);
    const QImage seven = picture();
    EXPECT_FALSE(differAt(seven, blank(7), kLower[2])) << "erased where the eraser went";
    EXPECT_TRUE(differAt(seven, blank(7), kLower.front()));
    chooseFromMenu(QStringLiteral("Edit"), QStringLiteral("Undo"));
    EXPECT_TRUE(shows(sevenDrawn));
    chooseFromMenu(QStringLiteral("Edit"), QStringLiteral("Redo"));
    EXPECT_TRUE(shows(seven));

    scrub(4);
    const QImage four = picture();
    EXPECT_TRUE(differAt(four, blank(4), kUpper[2])) << "a drawing holds until the next";
    EXPECT_FALSE(differAt(four, blank(4), kLower.front()));
    scrub(1);
    EXPECT_TRUE(shows(one));

    hand.type({Qt::Key_Alt, Qt::Key_V});
    EXPECT_TRUE(support::waitFor([&] { return now() > 8; })) << "it plays";
    hand.type({Qt::Key_Alt, Qt::Key_V});
    EXPECT_EQ(number(QStringLiteral("play -q -state")), 0);
    scrub(7);
    EXPECT_TRUE(shows(seven));
    scrub(1);
    EXPECT_TRUE(shows(one));
    EXPECT_TRUE(errors.isEmpty()) << allErrors().toStdString();
}

TEST_F(Drawing, AChangeOfToolIsNoStepAndWhatItCommitsIsOne) {
    ASSERT_TRUE(run(QStringLiteral("rvVellumUtil -textTool")));
    stroke({{150, 100}});
    hand.type({Qt::Key_W});
    std::vector<bool> recorded;
    const int listener = host::events::listen(
        "ToolChanged", [&] { recorded.push_back(host::undoQueue().enabled()); });
    const std::size_t steps = host::undoQueue().undoCount();
    for (const char* tool : {"-transform", "-draw", "-pencilTool"}) {
        ASSERT_TRUE(run(QStringLiteral("rvVellumUtil ") + QLatin1String(tool)));
        EXPECT_EQ(host::undoQueue().undoCount(), steps + 1) << tool;
    }
    host::events::removeListener(listener);
    EXPECT_EQ(recorded, std::vector<bool>(3, false));
    EXPECT_EQ(number(QStringLiteral("rvVellumLayer -count shotCam")), 1);
    ASSERT_TRUE(run(QStringLiteral("undo")));
    EXPECT_EQ(number(QStringLiteral("rvVellumLayer -count shotCam")), 0) << "with what it needed";
}

TEST_F(Drawing, ChangesShowWhereTheVisibilityIsLocked) {
    look({1});
    take("brush");
    stroke(kUpper);
    const QImage drawn = picture();
    ASSERT_TRUE(run(QStringLiteral("setAttr -lock true vellum.visibility")));
    ASSERT_TRUE(run(QStringLiteral("rvVellumLayer -editVis off 0 shotCam")));
    EXPECT_TRUE(shows(blank(1)));
    ASSERT_TRUE(run(QStringLiteral("undo")));
    EXPECT_TRUE(shows(drawn));
    ASSERT_TRUE(run(QStringLiteral("rvVellumFrame -clear")));
    EXPECT_TRUE(shows(blank(1)));
    stroke(kUpper);
    EXPECT_TRUE(shows(drawn));
    EXPECT_TRUE(errors.isEmpty()) << allErrors().toStdString();
}

TEST_F(Drawing, CamerasHaveTheirOwnAndKeepItAcrossRenaming) {
    look({1});
    lookThrough("persp");
    const QImage emptyPersp = picture();
    lookThrough("shotCam");
    take("brush");
    stroke(kUpper);
    const QImage shot = picture();
    lookThrough("persp");
    EXPECT_TRUE(shows(emptyPersp)) << "another camera's drawing is not shown";
    stroke(kLower);
    const QImage persp = picture();
    EXPECT_TRUE(differAt(persp, emptyPersp, kLower[2]));
    lookThrough("shotCam");
    EXPECT_TRUE(shows(shot));

    // A drawing goes along with its camera's name.
    ASSERT_TRUE(run(QStringLiteral("rename shotCam heroCam")));
    EXPECT_TRUE(shows(shot));
    for (const char* name : {"cameras.ma", "cameras.mb"}) {
        SCOPED_TRACE(name);
        save(file(name));
        ASSERT_TRUE(run(QStringLiteral("file -force -new")));
        open(file(name));
        lookThrough("heroCam");
        EXPECT_TRUE(shows(shot)) << name;
        ASSERT_TRUE(run(QStringLiteral("rename heroCam shotCam")));
        EXPECT_TRUE(shows(shot)) << name;
        lookThrough("persp");
        EXPECT_TRUE(shows(persp)) << name;
        ASSERT_TRUE(run(QStringLiteral("rename shotCam heroCam")));
    }
    EXPECT_TRUE(errors.isEmpty()) << allErrors().toStdString();
}

TEST_F(Drawing, ThePluginGoesInTheMiddleOfAStroke) {
    look({1});
    take("brush");
    stroke(kUpper);
    const QImage drawn = picture();
    save(file("before.ma"));
    drag(kLower);
    EXPECT_FALSE(run(QStringLiteral("unloadPlugin vellum2"))) << "the scene uses it";
    hand.moveTo(view(), {350, 260});
    errors.clear();
    ASSERT_TRUE(run(QStringLiteral("unloadPlugin -force vellum2")));
    hand.moveTo(view(), {370, 280});
    hand.release();
    EXPECT_TRUE(shows(blank(1)));
    for (const Qt::Key key : {Qt::Key_B, Qt::Key_M})
        hand.type({key}); // reaches nobody who is gone
    support::settle();
    EXPECT_TRUE(errors.isEmpty()) << allErrors().toStdString();

    loadPlugin();
    open(file("before.ma"));
    lookThrough("shotCam");
    EXPECT_TRUE(shows(drawn));
    take("brush");
    stroke(kLower);
    hand.type({Qt::Key_Control, Qt::Key_Z});
    EXPECT_TRUE(shows(drawn));
    EXPECT_TRUE(errors.isEmpty()) << allErrors().toStdString();
}

// Whatever the tool and whatever is under way: the plug-in can go, and come again.
TEST_F(Drawing, ThePluginGoesFromUnderEveryTool) {
    std::vector<std::pair<const char*, std::vector<Qt::Key>>> moments{{"-brushTool", {Qt::Key_B}},
                                                                      {"-pencilTool", {Qt::Key_M}}};
    for (const ToolInfo& info : kTools)
        moments.push_back({info.toolFlag.longName, {}});
    for (const auto& [tool, keys] : moments) {
        for (const bool released : {false, true}) {
            SCOPED_TRACE(testing::Message() << tool << keys.size() << released);
            ASSERT_TRUE(run(QStringLiteral("rvVellumUtil ") + QLatin1String(tool)));
            for (const Qt::Key key : keys)
                hand.key(key, true);
            hand.moveTo(view(), kUpper.front());
            hand.press();
            hand.moveTo(view(), kUpper.back());
            if (released) // a text is typed then
                hand.release();
            ASSERT_TRUE(run(QStringLiteral("unloadPlugin -force vellum2")));
            hand.moveTo(view(), kLower.back());
            if (!released)
                hand.release();
            for (const Qt::Key key : keys)
                hand.key(key, false);
            hand.type({Qt::Key_B});
            support::settle();
            ASSERT_TRUE(run(QStringLiteral("file -force -new")));
            loadPlugin();
        }
    }
    look({1});
    take("brush");
    stroke(kUpper);
    EXPECT_TRUE(differAt(picture(), blank(1), kUpper[2]));
    EXPECT_TRUE(errors.isEmpty()) << allErrors().toStdString();
}

TEST_F(Drawing, ClosingAsksAsLongAsSomethingIsUnsaved) {
    take("pencil");
    save(file("shot.ma"));
    EXPECT_FALSE(isModified());
    scrub(5);
    EXPECT_FALSE(isModified()) << "looking around is no change";
    stroke(kUpper);
    const QImage drawn = picture();
    EXPECT_TRUE(support::waitFor([&] { return window->windowTitle().contains('*'); }));
    EXPECT_TRUE(closeAsks(QMessageBox::Cancel));
    EXPECT_TRUE(window->isVisible());
    EXPECT_TRUE(shows(drawn));
    hand.type({Qt::Key_Control, Qt::Key_S});
    EXPECT_FALSE(isModified());
    hand.type({Qt::Key_Control, Qt::Key_Z});
    EXPECT_TRUE(isModified()) << "undoing changes what was saved";
    EXPECT_TRUE(closeAsks(QMessageBox::Yes));
    EXPECT_FALSE(window->isVisible());
    ASSERT_EQ(layerData(file("shot.ma")).size(), 1);
    EXPECT_FALSE(firstOf(layerData(file("shot.ma"))).contains(QStringLiteral("89504e47")))
        << "the undone drawing was not saved";
}

TEST_F(Drawing, ImportedDrawingsStandBesideThoseOfTheScene) {
    look({1});
    take("brush");
    stroke(kUpper);
    const QImage upper = picture();
    save(file("upper.ma"));
    ASSERT_TRUE(
        run(QStringLiteral("source \"%1\"").arg(support::sourcePath("resources/demo/shot.mel"))));
    take("brush");
    stroke(kLower);
    const QImage lower = picture();
    save(file("lower.ma"));

    ASSERT_TRUE(run(QStringLiteral("file -import \"%1\"").arg(file("upper.ma"))));
    EXPECT_EQ(number(QStringLiteral("size(`ls -type rvVellum`)")), 2);
    lookThrough("shotCam1"); // the name that the camera of the file took here
    EXPECT_TRUE(support::waitFor([&] { return differAt(onScreen(), lower, kUpper[2]); }))
        << "the imported drawing follows its camera";
    EXPECT_FALSE(differAt(picture(), upper, kUpper[2]));
    lookThrough("shotCam");
    const QImage own = picture();
    EXPECT_FALSE(differAt(own, lower, kLower[2]));
    EXPECT_FALSE(differAt(own, lower, kUpper[2]));
    // Drawing goes on in the scene's own.
    take("eraser");
    stroke(kRubbed);
    EXPECT_TRUE(support::waitFor([&] { return !differAt(onScreen(), upper, kLower[2]); }));
    hand.type({Qt::Key_Control, Qt::Key_Z});
    EXPECT_TRUE(shows(own));

    save(file("both.ma"));
    const QStringList saved = layerData(file("both.ma"));
    ASSERT_EQ(saved.size(), 2);
    EXPECT_TRUE(saved.contains(firstOf(layerData(file("lower.ma")))));
    open(file("both.ma"));
    lookThrough("shotCam");
    EXPECT_TRUE(shows(own));
    EXPECT_TRUE(errors.isEmpty()) << allErrors().toStdString();
}

TEST_F(Drawing, WhatComesBackComesBackAtTheTimeThatIsNow) {
    // No marker on the slider looks at a frame before the view does.
    ASSERT_TRUE(run(QStringLiteral("rvVellumUtil -e -timelineFrameDisplay 2")));
    look({1, 7});
    take("brush");
    stroke(kUpper);
    const QImage one = picture();
    scrub(7);
    stroke(kLower);
    const QImage seven = picture();
    ASSERT_TRUE(run(QStringLiteral("delete vellum")));
    scrub(1);
    EXPECT_TRUE(shows(blank(1)));
    hand.type({Qt::Key_Control, Qt::Key_Z});
    EXPECT_EQ(now(), 1);
    EXPECT_TRUE(shows(one));
    hand.type({Qt::Key_Shift, Qt::Key_Z});
    EXPECT_TRUE(shows(blank(1)));
    scrub(7);
    hand.type({Qt::Key_Control, Qt::Key_Z});
    EXPECT_TRUE(shows(seven));
    EXPECT_TRUE(errors.isEmpty()) << allErrors().toStdString();
}

} // namespace vellum::test
