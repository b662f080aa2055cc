// The menu script where people and other scripts have been at its menu, windows and nodes.
#include "foundation/Idle.h"
#include "foundation/UndoQueue.h"
#include "support/Session.h"
#include "ui/MainWindow.h"

#include <QMenuBar>

namespace vellum::test {
namespace {

class MenuScript : public Session {
protected:
    int menusCalled(const QString& label) {
        int count = 0;
        for (const QAction* action : window->menuBar()->actions())
            count += action->text() == label;
        return count;
    }
    int layers(const char* camera) {
        return number(QStringLiteral("rvVellumLayer -count ") + QLatin1String(camera));
    }
};

TEST_F(MenuScript, TakesAwayItsOwnMenuOnly) {
    ASSERT_TRUE(run(QStringLiteral("deleteUI -m $gRvVlMainMenu")));
    EXPECT_EQ(menusCalled(QStringLiteral("VL2")), 0);
    errors.clear();
    ASSERT_TRUE(run(QStringLiteral("menu -parent $gMainWindow -label Mine; menuItem -label a;"
                                   "rvVellumUtil -eraserTool; rvVellumUtil -e -ghostNext -1")))
        << "without a menu to bring up to date";
    EXPECT_TRUE(errors.isEmpty()) << allErrors().toStdString();
    ASSERT_TRUE(run(QStringLiteral("file -f -new")));
    unloadPlugin();
    EXPECT_EQ(menusCalled(QStringLiteral("Mine")), 1);
    loadPlugin();
    EXPECT_EQ(menusCalled(QStringLiteral("VL2")), 1);
}

TEST_F(MenuScript, ClearsAllDrawingsHoweverTheyStand) {
    ASSERT_TRUE(run(QStringLiteral("rvVellumNode -layer -camera persp; group -em -name keeper;"
                                   "for ($vlTarget in {\"vellum\", \"keeper\"}) {"
                                   "    string $vlMade = `createNode rvVellum`;"
                                   "    string $vlParents[] = `listRelatives -parent $vlMade`;"
                                   "    parent $vlParents[0] $vlTarget; }")));
    EXPECT_EQ(number(QStringLiteral("size(`ls -type rvVellum`)")), 3);
    errors.clear();
    EXPECT_TRUE(run(QStringLiteral("rvVlDeleteAllNodes()")));
    EXPECT_TRUE(errors.isEmpty()) << allErrors().toStdString();
    EXPECT_EQ(number(QStringLiteral("size(`ls -type rvVellum`)")), 0);
    EXPECT_EQ(number(QStringLiteral("objExists keeper")), 1);
    ASSERT_TRUE(run(QStringLiteral("undo")));
    EXPECT_EQ(number(QStringLiteral("size(`ls -type rvVellum`)")), 3);
}

TEST_F(MenuScript, MovingLayersToTheFloatingViewIsUndone) {
    ASSERT_TRUE(run(QStringLiteral(
        "rvVellumNode -layer -camera persp -layerName a; rvVellumLayer -add -n b persp")));
    ASSERT_TRUE(run(QStringLiteral("rvVellumUtil -fvm persp")));
    EXPECT_EQ(layers("vellumCam"), 2);
    ASSERT_TRUE(run(QStringLiteral("undo")));
    EXPECT_EQ(layers("persp"), 2);
    EXPECT_EQ(number(QStringLiteral("objExists vellumCam")), 0);
    ASSERT_TRUE(run(QStringLiteral("redo")));
    EXPECT_EQ(layers("vellumCam"), 2);
    EXPECT_EQ(layers("persp"), 0);
    ASSERT_TRUE(run(QStringLiteral("undo; undo")));
    EXPECT_EQ(layers("persp"), 1);
    EXPECT_TRUE(errors.isEmpty()) << allErrors().toStdString();
    ASSERT_TRUE(run(QStringLiteral("deleteUI -window rvVlFloatingWindow")));
}

// Whatever the view that is shown looks through: what it gets is seen in it.
TEST_F(MenuScript, AFloatingViewThatIsShownTakesLayersToo) {
    ASSERT_TRUE(run(QStringLiteral("rvVellumNode -layer -camera persp -layerName a;"
                                   "rvVellumLayer -add -n b persp; rvVellumLayer -add -n c top;"
                                   "rvVellumUtil -fv; move -absolute 1 2 3 vellumCam")));
    const auto names = [this] {
        QStringList all;
        for (int i = 0; i < layers("vellumCam"); ++i)
            all << text(QStringLiteral("rvVellumLayer -qn %1 vellumCam").arg(i));
        return all.join(QLatin1Char(' ')).toStdString();
    };
    ASSERT_TRUE(run(QStringLiteral("rvVellumUtil -fvm top")));
    EXPECT_EQ(names(), "c");
    ASSERT_TRUE(run(QStringLiteral("lookThroughModelPanel side rvVellumFloatingModelPanel")));
    const std::size_t before = host::undoQueue().undoCount();
    ASSERT_TRUE(run(QStringLiteral("rvVellumUtil -fvm persp")));
    EXPECT_EQ(names(), "c a b") << "above those it has";
    EXPECT_EQ(layers("persp"), 0);
    EXPECT_EQ(host::undoQueue().undoCount(), before + 1);
    EXPECT_EQ(text(QStringLiteral("modelPanel -q -camera rvVellumFloatingModelPanel")),
              QStringLiteral("vellumCam"));
    EXPECT_EQ(number(QStringLiteral("int(`getAttr vellumCam.translateY`)")), 2);
    ASSERT_TRUE(run(QStringLiteral("rvVellumUtil -fvm vellumCam")));
    EXPECT_EQ(names(), "c a b") << "its own stay";
    ASSERT_TRUE(run(QStringLiteral("undo")));
    EXPECT_EQ(names(), "c");
    EXPECT_EQ(layers("persp"), 2);
    EXPECT_TRUE(errors.isEmpty()) << allErrors().toStdString();
    ASSERT_TRUE(run(QStringLiteral("deleteUI -window rvVlFloatingWindow")));
}

TEST_F(MenuScript, FloatingViewComesBackAfterItsPartsWereDeleted) {
    const auto camera = [this] {
        return text(QStringLiteral("modelPanel -q -camera rvVellumFloatingModelPanel"));
    };
    ASSERT_TRUE(run(QStringLiteral("rvVellumUtil -fv; deleteUI -window rvVlFloatingWindow;"
                                   "rvVellumUtil -fv")));
    EXPECT_EQ(camera(), QStringLiteral("vellumCam"));
    // A panel outlives its window where scripts have taken it elsewhere.
    ASSERT_TRUE(run(QStringLiteral(
        "deleteUI -window rvVlFloatingWindow; window vlOther; paneLayout vlOtherPane;"
        "modelPanel -parent vlOtherPane rvVellumFloatingModelPanel; rvVellumUtil -fv")));
    EXPECT_EQ(camera(), QStringLiteral("vellumCam"));
    EXPECT_EQ(number(QStringLiteral("window -q -visible rvVlFloatingWindow")), 1);
    const auto* pane = window->findChild<QWidget*>(QStringLiteral("rvVellumFloatingPaneLayout"));
    ASSERT_NE(pane, nullptr);
    EXPECT_NE(pane->findChild<QWidget*>(QStringLiteral("rvVellumFloatingModelPanel")), nullptr);
    // Its camera goes while the window is closed.
    ASSERT_TRUE(run(QStringLiteral("window -e -visible false rvVlFloatingWindow; delete vellumCam;"
                                   "rvVellumUtil -fv")));
    EXPECT_EQ(camera(), QStringLiteral("vellumCam"));
    EXPECT_TRUE(errors.isEmpty()) << allErrors().toStdString();
    ASSERT_TRUE(run(QStringLiteral("deleteUI -window rvVlFloatingWindow vlOther")));
}

TEST_F(MenuScript, FloatingViewThatIsShownStaysAsItIs) {
    const auto steps = [] { return host::undoQueue().undoCount(); };
    ASSERT_TRUE(run(QStringLiteral("rvVellumUtil -fvm persp"))) << "without a drawing: just a view";
    EXPECT_TRUE(errors.isEmpty()) << allErrors().toStdString();
    EXPECT_EQ(number(QStringLiteral("window -q -visible rvVlFloatingWindow")), 1);
    ASSERT_TRUE(run(QStringLiteral("move -absolute 1 2 3 vellumCam; file -modified false")));
    const std::size_t before = steps();
    ASSERT_TRUE(run(QStringLiteral("rvVellumUtil -fv")));
    EXPECT_EQ(steps(), before);
    EXPECT_EQ(number(QStringLiteral("int(`getAttr vellumCam.translateY`)")), 2);
    EXPECT_EQ(number(QStringLiteral("file -q -modified")), 0);
    ASSERT_TRUE(run(QStringLiteral("delete vellumCam; rvVellumUtil -fv")));
    EXPECT_EQ(number(QStringLiteral("int(`getAttr vellumCam.translateY`)")), 1000);
    ASSERT_TRUE(run(QStringLiteral("deleteUI -window rvVlFloatingWindow")));
}

} // namespace
} // namespace vellum::test
