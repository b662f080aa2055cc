// The parts of MGlobal and of argument parsing that reach into the scene.
#include "ScriptFixture.h"
#include "foundation/Events.h"
#include "scene/core/SceneState.h"
#include "script/PluginCommands.h"

#include <maya/MAnimControl.h>
#include <maya/MArgDatabase.h>
#include <maya/MArgList.h>
#include <maya/MDagModifier.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MGlobal.h>
#include <maya/MObject.h>
#include <maya/MObjectHandle.h>
#include <maya/MPxCommand.h>
#include <maya/MSelectionList.h>
#include <maya/MStringArray.h>
#include <maya/MSyntax.h>
#include <maya/MTime.h>

namespace {

class GlobalSelection : public ScriptTest {
protected:
    void SetUp() override {
        ScriptTest::SetUp();
        host::resetScene();
        for (const char* name : {"one", "two", "three"}) {
            MDagModifier modifier;
            MObject node = modifier.createNode("transform");
            modifier.renameNode(node, name);
            ASSERT_EQ(modifier.doIt(), MS::kSuccess);
            nodes.push_back(node);
        }
        MGlobal::clearSelectionList();
        listener_ = host::events::listen("SelectionChanged", [this] { ++changes; });
    }
    void TearDown() override {
        host::events::removeListener(listener_);
        host::resetScene();
        ScriptTest::TearDown();
    }

    static std::string names(const MSelectionList& list) {
        MStringArray strings;
        list.getSelectionStrings(strings);
        std::string text;
        for (unsigned i = 0; i < strings.length(); ++i)
            text += (i ? " " : "") + std::string(strings[i].asUTF8());
        return text;
    }
    static std::string selected() {
        MSelectionList list;
        MGlobal::getActiveSelectionList(list);
        return names(list);
    }

    std::vector<MObject> nodes;
    int changes = 0;

private:
    int listener_ = 0;
};

TEST_F(GlobalSelection, ListsAreCombinedInEveryWay) {
    EXPECT_EQ(selected(), "");
    MSelectionList two, twoThree;
    two.add("two");
    twoThree.add("two");
    twoThree.add("three");
    EXPECT_EQ(MGlobal::setActiveSelectionList(two), MS::kSuccess);
    EXPECT_EQ(selected(), "two");
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(MGlobal::selectByName("one"), MS::kSuccess);
    EXPECT_EQ(selected(), "two one");
    MGlobal::setActiveSelectionList(twoThree, MGlobal::kAddToList);
    EXPECT_EQ(selected(), "two one three");
    MGlobal::setActiveSelectionList(twoThree, MGlobal::kRemoveFromList);
    EXPECT_EQ(selected(), "one");
    MGlobal::setActiveSelectionList(twoThree, MGlobal::kAddToHeadOfList);
    EXPECT_EQ(selected(), "two three one");
    MGlobal::setActiveSelectionList(two, MGlobal::kXORWithList);
    EXPECT_EQ(selected(), "three one");
    MGlobal::setActiveSelectionList(twoThree);
    EXPECT_EQ(selected(), "two three");

    EXPECT_EQ(MGlobal::select(nodes[0]), MS::kSuccess);
    EXPECT_TRUE(MGlobal::isSelected(nodes[0]) && MGlobal::isSelected(nodes[1]));
    EXPECT_EQ(MGlobal::unselect(nodes[1]), MS::kSuccess);
    EXPECT_EQ(MGlobal::unselectByName("three"), MS::kSuccess);
    EXPECT_EQ(selected(), "one");
    EXPECT_FALSE(MGlobal::isSelected(nodes[1]));

    // An unknown name changes nothing.
    const int before = changes;
    EXPECT_NE(MGlobal::selectByName("nobody", MGlobal::kReplaceList), MS::kSuccess);
    EXPECT_EQ(selected(), "one");
    MSelectionList found;
    EXPECT_NE(MGlobal::getSelectionListByName("nobody", found), MS::kSuccess);
    EXPECT_EQ(MGlobal::getSelectionListByName("t*o", found), MS::kSuccess);
    EXPECT_EQ(names(found), "two");
    EXPECT_EQ(changes, before);
    EXPECT_EQ(MGlobal::clearSelectionList(), MS::kSuccess);
    EXPECT_EQ(selected(), "");
    EXPECT_EQ(changes, before + 1);
}

TEST_F(GlobalSelection, DeletedNodesLeaveAndTimeMoves) {
    MGlobal::selectByName("one");
    MGlobal::selectByName("two");
    const MObjectHandle handle(nodes[0]);
    EXPECT_EQ(MGlobal::deleteNode(nodes[0]), MS::kSuccess);
    EXPECT_FALSE(handle.isValid());
    EXPECT_EQ(selected(), "two");

    EXPECT_EQ(MGlobal::viewFrame(12.0), MS::kSuccess);
    EXPECT_EQ(MAnimControl::currentTime().asUnits(MTime::uiUnit()), 12.0);
    EXPECT_EQ(MGlobal::viewFrame(MTime(7.0, MTime::uiUnit())), MS::kSuccess);
    EXPECT_EQ(MAnimControl::currentTime().asUnits(MTime::uiUnit()), 7.0);
}

/// Returns the names of the objects it was given.
class ShowObjects : public MPxCommand {
public:
    static void* creator() { return new ShowObjects; }
    static MSyntax newSyntax() {
        MSyntax syntax;
        syntax.addFlag("-n", "-node", MSyntax::kSelectionItem);
        syntax.setObjectType(MSyntax::kSelectionList, 1, 2);
        syntax.useSelectionAsDefault(true);
        return syntax;
    }
    MStatus doIt(const MArgList& args) override {
        MStatus status;
        const MArgDatabase database(syntax(), args, &status);
        if (!status)
            return status;
        MSelectionList list;
        if (database.isFlagSet("-n") && !database.getFlagArgument("-n", 0, list))
            return MS::kInvalidParameter;
        MSelectionList objects;
        database.getObjects(objects);
        MStringArray strings;
        list.merge(objects);
        list.getSelectionStrings(strings);
        setResult(strings);
        return MS::kSuccess;
    }
};

TEST_F(GlobalSelection, CommandsGetObjectsOrTheSelection) {
    host::script::registerPluginCommand("showObjects", ShowObjects::creator, ShowObjects::newSyntax,
                                        "test");
    EXPECT_EQ(resultOf("showObjects two one"), "string[]: two one");
    EXPECT_EQ(resultOf("showObjects -n three one"), "string[]: three one");
    EXPECT_EQ(resultOf("showObjects one two three"), "error: line 1: Too many objects or values.");
    EXPECT_NE(resultOf("showObjects").find("Not enough objects or values."), std::string::npos);
    EXPECT_NE(resultOf("showObjects nobody").find("No object matches name: nobody"),
              std::string::npos);
    EXPECT_EQ(resultOf("showObjects -n nobody one").substr(0, 6), "error:");
    MGlobal::selectByName("three");
    EXPECT_EQ(resultOf("showObjects"), "string[]: three");
    EXPECT_EQ(resultOf("showObjects one"), "string[]: one");
    host::script::unregisterPluginCommand("showObjects");
}

} // namespace
