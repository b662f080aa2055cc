// Nodes, names, plugs, hierarchy, modifiers, handles, selection and events.
#include "foundation/Events.h"
#include "foundation/UndoQueue.h"
#include "scene/core/Scene.h"
#include "scene/core/Selection.h"
#include "scene/core/TimeState.h"

#include <maya/MAnimControl.h>
#include <maya/MDGMessage.h>
#include <maya/MDagModifier.h>
#include <maya/MDagPath.h>
#include <maya/MEventMessage.h>
#include <maya/MFnAnimCurve.h>
#include <maya/MFnCamera.h>
#include <maya/MFnDagNode.h>
#include <maya/MFnNumericAttribute.h>
#include <maya/MFnStringData.h>
#include <maya/MFnTransform.h>
#include <maya/MFnTypedAttribute.h>
#include <maya/MItDag.h>
#include <maya/MItDependencyNodes.h>
#include <maya/MObjectHandle.h>
#include <maya/MPlug.h>
#include <maya/MPlugArray.h>
#include <maya/MPoint.h>
#include <maya/MSelectionList.h>
#include <maya/MStringArray.h>
#include <maya/MVector.h>

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace {

class CoreTest : public ::testing::Test {
protected:
    void SetUp() override { host::scene().reset(); }
    void TearDown() override { host::scene().reset(); }

    static MObject make(const char* type, const char* name,
                        const MObject& parent = MObject::kNullObj) {
        return MFnDagNode().create(type, name, parent);
    }
    static std::string nameOf(const MObject& node) {
        return MFnDependencyNode(node).name().asChar();
    }
    static MPlug plugOf(const MObject& node, const char* name) {
        return MFnDependencyNode(node).findPlug(name, true);
    }
    static std::string pathOf(const MObject& node) {
        return MFnDagNode(node).fullPathName().asChar();
    }
    // Every node with its path, as one text.
    static std::string sceneText() {
        std::string text;
        for (MItDag it; !it.isDone(); it.next())
            text += std::string(it.fullPathName().asChar()) + "\n";
        return text;
    }
};

TEST_F(CoreTest, NamesAreUniqueAmongSiblingsAndNumberedOn) {
    const MObject a = make("transform", "cup");
    const MObject b = make("transform", "cup");
    const MObject c = make("transform", "cup9");
    const MObject d = make("transform", "cup9");
    EXPECT_EQ("cup", nameOf(a));
    EXPECT_EQ("cup1", nameOf(b));
    EXPECT_EQ("cup9", nameOf(c));
    EXPECT_EQ("cup10", nameOf(d));
    const MObject below = make("transform", "cup", a); // another level
    EXPECT_EQ("cup", nameOf(below));
    EXPECT_STREQ("cup|cup", MFnDagNode(below).partialPathName().asChar());
    EXPECT_STREQ("|cup", MFnDagNode(a).partialPathName().asChar());
    EXPECT_FALSE(MFnDependencyNode(a).hasUniqueName());
    EXPECT_STREQ("space_name_", MFnDependencyNode(b).setName("space name\"").asChar());
    EXPECT_STREQ("ns:тень", MFnDependencyNode(b).setName("ns:тень").asChar());
    EXPECT_STREQ("_1st", MFnDependencyNode(b).setName("1st").asChar());
    EXPECT_EQ("transform1", nameOf(make("transform", "")));
}

TEST_F(CoreTest, ShapesWithoutParentGetATransform) {
    const MObject camera = make("camera", "shotCam");
    EXPECT_TRUE(camera.hasFn(MFn::kTransform));
    EXPECT_EQ("shotCam", nameOf(camera));
    MDagPath path;
    MDagPath::getAPathTo(camera, path);
    EXPECT_TRUE(path.hasFn(MFn::kCamera)); // a transform answers for its shape
    ASSERT_TRUE(path.extendToShape());
    EXPECT_STREQ("|shotCam|shotCamShape", path.fullPathName().asChar());
    EXPECT_TRUE(path.transform() == camera);
    EXPECT_TRUE(MFnDagNode().create("noSuchType", "x").isNull());
}

TEST_F(CoreTest, WorldMatricesMultiplyDownTheHierarchy) {
    const MObject parent = make("transform", "p");
    const MObject child = make("transform", "c", parent);
    plugOf(parent, "ry").setDouble(std::acos(-1.0) / 2);
    plugOf(parent, "sx").setDouble(2.0);
    plugOf(child, "tx").setDouble(3.0);
    const MMatrix world = MFnDagNode(child).dagPath().inclusiveMatrix();
    // Scaled to 6 along x, then a quarter turn about y takes x to -z.
    EXPECT_TRUE((MPoint() * world).isEquivalent(MPoint(0, 0, -6), 1e-9));
    MFnTransform(child).setTranslation(MVector(1, 2, 3), MSpace::kWorld);
    EXPECT_TRUE((MPoint() * MFnDagNode(child).dagPath().inclusiveMatrix())
                    .isEquivalent(MPoint(1, 2, 3), 1e-9));
}

TEST_F(CoreTest, PlugsRefuseWhatTheyMust) {
    const MObject node = make("transform", "n");
    MPlug visibility = plugOf(node, "visibility");
    host::scene().setModified(false);
    EXPECT_TRUE(visibility.setBool(true));
    EXPECT_TRUE(host::scene().isModified()); // even the same value
    MPlug x = plugOf(node, "translateX");
    plugOf(node, "translate").setLocked(true);
    EXPECT_TRUE(x.isLocked()); // by its compound
    EXPECT_FALSE(x.setDouble(4.0));
    EXPECT_EQ(0.0, x.asDouble());
    plugOf(node, "translate").setLocked(false);
    EXPECT_TRUE(x.setDouble(4.0));
    EXPECT_FALSE(x.setDouble(std::numeric_limits<double>::quiet_NaN()));
    EXPECT_FALSE(plugOf(node, "worldMatrix").setDouble(1.0));
    EXPECT_EQ(4.0, x.asDouble());
    MStatus status;
    EXPECT_TRUE(MFnDependencyNode(node).findPlug("nothing", true, &status).isNull());
    EXPECT_FALSE(status);

    MFnNumericAttribute numeric;
    MObject limited = numeric.create("limited", "lim", MFnNumericData::kFloat, 0.25);
    numeric.setMin(0.0);
    numeric.setMax(1.0);
    ASSERT_TRUE(MFnDependencyNode(node).addAttribute(limited));
    EXPECT_FALSE(MFnDependencyNode(node).addAttribute(limited)); // taken
    MPlug plug = plugOf(node, "lim");
    EXPECT_TRUE(plug.isDynamic() && plug.isDefaultValue());
    EXPECT_FALSE(plug.setFloat(1.001f));
    EXPECT_FALSE(plug.setFloat(-0.001f));
    EXPECT_EQ(0.25f, plug.asFloat());
    EXPECT_TRUE(plug.setFloat(1.0f));
    EXPECT_FALSE(plug.setString("text"));
}

TEST_F(CoreTest, PlugNamesAsScriptsWriteThem) {
    const MObject node = make("transform", "n");
    EXPECT_STREQ("n.translateX", plugOf(node, "tx").name().asChar());
    EXPECT_STREQ("tx", plugOf(node, "translateX").partialName().asChar());
    EXPECT_STREQ("n.worldMatrix[0]", plugOf(node, "wm").elementByLogicalIndex(0).name().asChar());
    EXPECT_TRUE(plugOf(node, "t").isCompound());
    EXPECT_EQ(3u, plugOf(node, "t").numChildren());
    EXPECT_TRUE(plugOf(node, "tx").parent() == plugOf(node, "translate"));
    MSelectionList list;
    EXPECT_TRUE(list.add("n.translate.tx"));
    MPlug found;
    EXPECT_TRUE(list.getPlug(0, found) && found == plugOf(node, "tx"));
    EXPECT_FALSE(list.add("n.bad"));
    EXPECT_FALSE(list.add("missing"));
}

TEST_F(CoreTest, DeletedNodesComeBackWithEverythingAboutThem) {
    const MObject parent = make("transform", "p");
    const MObject first = make("transform", "a", parent);
    const MObject second = make("transform", "b", parent);
    const MObject driver = make("transform", "driver");
    host::scene().connect(host::PlugAccess::slot(plugOf(driver, "tx")),
                          host::PlugAccess::slot(plugOf(second, "ty")));
    plugOf(driver, "tx").setDouble(7.0);
    const std::string before = sceneText();
    const MObjectHandle handle(second);

    MDagModifier modifier;
    modifier.deleteNode(parent);
    MSelectionList selected;
    selected.add(second);
    host::setActiveSelection(selected);
    for (int round = 0; round < 3; ++round) {
        SCOPED_TRACE("round " + std::to_string(round));
        ASSERT_TRUE(modifier.doIt());
        EXPECT_TRUE(handle.isAlive());
        EXPECT_FALSE(handle.isValid());
        EXPECT_EQ(0u, host::activeSelection().length());
        MDagPath path;
        EXPECT_FALSE(MDagPath::getAPathTo(second, path));
        EXPECT_FALSE(plugOf(driver, "tx").isSource());
        ASSERT_TRUE(modifier.undoIt());
        EXPECT_EQ(before, sceneText());
        EXPECT_TRUE(handle.isValid());
        EXPECT_EQ(7.0, plugOf(second, "ty").asDouble());
    }
    EXPECT_EQ("|p|a", pathOf(first));
}

TEST_F(CoreTest, DefaultCamerasStay) {
    MSelectionList list;
    ASSERT_TRUE(list.add("persp"));
    MObject persp;
    list.getDependNode(0, persp);
    EXPECT_TRUE(MFnDependencyNode(persp).isDefaultNode());
    MDGModifier modifier;
    EXPECT_FALSE(modifier.deleteNode(persp));
    EXPECT_STREQ("", MFnDependencyNode(persp).setName("other").asChar());
    unsigned int cameras = 0;
    for (MItDependencyNodes it(MFn::kCamera); !it.isDone(); it.next())
        ++cameras;
    EXPECT_EQ(4u, cameras);
}

TEST_F(CoreTest, ModifiersMakeRenameAndMoveAnyNumberOfTimes) {
    const std::string before = sceneText();
    MDagModifier modifier;
    const MObject group = modifier.createNode("transform");
    modifier.renameNode(group, "group");
    const MObject shape = modifier.createNode("locator", group);
    modifier.renameNode(shape, "groupShape");
    EXPECT_EQ(before, sceneText()); // nothing before doIt
    ASSERT_TRUE(modifier.doIt());
    EXPECT_EQ("|group|groupShape", pathOf(shape));
    plugOf(group, "tx").setDouble(5.0);
    for (int round = 0; round < 3; ++round) {
        SCOPED_TRACE("round " + std::to_string(round));
        modifier.undoIt();
        EXPECT_EQ(before, sceneText());
        modifier.doIt();
        EXPECT_EQ("|group|groupShape", pathOf(shape));
        EXPECT_EQ(5.0, plugOf(group, "tx").asDouble());
    }
    MDagModifier failing; // the second step cannot be done: the first is taken back
    failing.renameNode(group, "renamed");
    failing.reparentNode(group, shape);
    EXPECT_FALSE(failing.doIt());
    EXPECT_EQ("group", nameOf(group));
}

TEST_F(CoreTest, RandomEditsUndoToTheSameScene) {
    std::mt19937 random(20);
    std::vector<std::string> states = {sceneText()};
    std::vector<std::unique_ptr<MDagModifier>> done;
    std::vector<MObject> nodes = {MObject::kNullObj};
    for (int step = 0; step < 120; ++step) {
        auto modifier = std::make_unique<MDagModifier>();
        const MObject node = nodes[random() % nodes.size()];
        const MObject other = nodes[random() % nodes.size()];
        const bool alive = !node.isNull() && MObjectHandle(node).isValid();
        const bool fits = other.isNull() || MObjectHandle(other).isValid();
        switch (random() % 4) {
        case 0:
            if (fits)
                nodes.push_back(modifier->createNode("transform", other));
            break;
        case 1:
            if (alive)
                modifier->deleteNode(node);
            break;
        case 2:
            if (alive)
                modifier->renameNode(node, "same");
            break;
        default:
            if (alive && fits)
                modifier->reparentNode(node, other);
            break;
        }
        if (!modifier->doIt()) {
            EXPECT_EQ(states.back(), sceneText()) << "seed 20 step " << step;
            continue;
        }
        done.push_back(std::move(modifier));
        states.push_back(sceneText());
    }
    for (std::size_t i = done.size(); i-- > 0;) {
        done[i]->undoIt();
        ASSERT_EQ(states[i], sceneText()) << "seed 20 undo of " << i;
    }
    for (std::size_t i = 0; i < done.size(); ++i) {
        ASSERT_TRUE(done[i]->doIt()) << "seed 20 redo of " << i;
        ASSERT_EQ(states[i + 1], sceneText()) << "seed 20 redo of " << i;
    }
}

TEST_F(CoreTest, CurvesDrivePlugsAtTheCurrentTime) {
    const MObject ball = make("transform", "ball");
    MFnAnimCurve curve;
    ASSERT_FALSE(curve.create(plugOf(ball, "ty")).isNull());
    curve.addKey(MTime(1, MTime::kFilm), 0.0, MFnAnimCurve::kTangentLinear,
                 MFnAnimCurve::kTangentLinear);
    curve.addKey(MTime(11, MTime::kFilm), 10.0, MFnAnimCurve::kTangentLinear,
                 MFnAnimCurve::kTangentLinear);
    EXPECT_EQ(1u, curve.addKey(MTime(11, MTime::kFilm), 20.0)); // overwrites
    EXPECT_EQ(2u, curve.numKeys());
    MAnimControl::setCurrentTime(MTime(6, MTime::kFilm));
    EXPECT_NEAR(10.0, plugOf(ball, "translateY").asDouble(), 1e-9);
    EXPECT_FALSE(plugOf(ball, "translateY").setDouble(1.0)); // driven
    MAnimControl::setCurrentTime(MTime(99, MTime::kFilm));
    EXPECT_NEAR(20.0, plugOf(ball, "translateY").asDouble(), 1e-9);
    curve.setPostInfinityType(MFnAnimCurve::kOscillate);
    MAnimControl::setCurrentTime(MTime(16, MTime::kFilm)); // half way back
    EXPECT_NEAR(10.0, plugOf(ball, "translateY").asDouble(), 1e-9);
    // Auto tangents do not overshoot.
    MFnAnimCurve hill;
    hill.create(plugOf(ball, "tx"));
    for (int key = 0; key < 4; ++key)
        hill.addKey(MTime(key * 10, MTime::kFilm), key == 0 ? 0.0 : 1.0);
    for (int frame = 0; frame <= 30; ++frame) {
        const double value = hill.evaluate(MTime(frame, MTime::kFilm));
        EXPECT_GE(value, -1e-9) << "frame " << frame;
        EXPECT_LE(value, 1.0 + 1e-9) << "frame " << frame;
    }
}

TEST_F(CoreTest, CameraFunctions) {
    const MObject transform = make("camera", "cam");
    MFnCamera camera(MFnDagNode(transform).dagPath()); // by its transform
    EXPECT_NEAR(1.5, camera.aspectRatio(), 1e-4);
    EXPECT_NEAR(54.43, camera.horizontalFieldOfView() * 180.0 / std::acos(-1.0), 0.01);
    EXPECT_TRUE(camera.setFilmFit(MFnCamera::kOverscanFilmFit));
    EXPECT_EQ(MFnCamera::kOverscanFilmFit, camera.filmFit());
    EXPECT_TRUE(camera.setZoom(0.5) && camera.setPanZoomEnabled(true));
    EXPECT_EQ(0.5, camera.zoom());
    EXPECT_TRUE(camera.panZoomEnabled());
}

TEST_F(CoreTest, EventsByTheirExactNames) {
    int calls = 0;
    MStatus status;
    EXPECT_EQ(0u, MEventMessage::addEventCallback(
                      "TimeChanged", [](void*) {}, nullptr, &status));
    EXPECT_FALSE(status);
    const MCallbackId id = MEventMessage::addEventCallback(
        "timeChanged", [](void* data) { ++*static_cast<int*>(data); }, &calls, &status);
    ASSERT_TRUE(status);
    MAnimControl::setCurrentTime(MTime(5, MTime::kFilm));
    MAnimControl::setCurrentTime(MTime(5, MTime::kFilm)); // the same moment
    EXPECT_EQ(1, calls);
    MCallbackIdArray ids;
    ids.append(id);
    EXPECT_TRUE(MMessage::removeCallbacks(ids));
    EXPECT_FALSE(MMessage::removeCallback(id));
    MAnimControl::setCurrentTime(MTime(6, MTime::kFilm));
    EXPECT_EQ(1, calls);
}

TEST_F(CoreTest, NodesThatComeAndGoAreTold) {
    using Names = std::vector<std::string>;
    Names came;
    Names went;
    const auto note = [](MObject& node, void* names) {
        static_cast<Names*>(names)->emplace_back(MFnDependencyNode(node).name().asChar());
    };
    MCallbackIdArray ids;
    ids.append(MDGMessage::addNodeAddedCallback(note, "camera", &came));
    ids.append(MDGMessage::addNodeRemovedCallback(note, kDefaultNodeType, &went));
    MStatus status;
    MDGMessage::addNodeAddedCallback(note, "noSuchType", &came, &status);
    EXPECT_EQ(status, MS::kInvalidParameter);

    const MObject transform = make("camera", "cam"); // a transform, and the camera below it
    EXPECT_EQ(came, (Names{"camShape"}));
    MDGModifier deletion;
    deletion.deleteNode(transform);
    ASSERT_TRUE(deletion.doIt());
    EXPECT_EQ(went, (Names{"cam", "camShape"}));
    ASSERT_TRUE(deletion.undoIt());
    ASSERT_TRUE(deletion.doIt());
    EXPECT_EQ(came.size(), 2U);
    EXPECT_EQ(went.size(), 4U);
    EXPECT_TRUE(MMessage::removeCallbacks(ids));
    ASSERT_TRUE(deletion.undoIt());
    EXPECT_EQ(came.size(), 2U);
}

TEST_F(CoreTest, UnitChangeKeepsTheMoment) {
    MAnimControl::setCurrentTime(MTime(24, MTime::kFilm));
    host::timeline::setUnit(MTime::kPALFrame);
    EXPECT_DOUBLE_EQ(25.0, MAnimControl::currentTime().value());
    EXPECT_EQ(MTime::kPALFrame, MAnimControl::currentTime().unit());
}

TEST_F(CoreTest, SelectionChangedOnlyWhenItDoes) {
    int changes = 0;
    const int listener = host::events::listen("SelectionChanged", [&] { ++changes; });
    const MObject node = make("transform", "n");
    MSelectionList list;
    list.add(node);
    host::setActiveSelection(list);
    host::setActiveSelection(list);
    EXPECT_EQ(1, changes);
    host::setActiveSelection(MSelectionList());
    EXPECT_EQ(2, changes);
    host::events::removeListener(listener);
}

class Step : public host::UndoStep {
public:
    Step(std::string& log, char name) : log_(log), name_(name) {}
    ~Step() override { log_ += '~'; }
    bool undo() override {
        log_ += name_;
        return true;
    }
    bool redo() override {
        log_ += static_cast<char>(name_ - 'a' + 'A');
        return true;
    }

private:
    std::string& log_;
    char name_;
};

TEST_F(CoreTest, UndoQueueOrderChunksAndFlush) {
    std::string log;
    host::UndoQueue queue;
    queue.record(std::make_unique<Step>(log, 'a'));
    queue.openChunk("two");
    queue.openChunk("inner");
    queue.record(std::make_unique<Step>(log, 'b'));
    queue.closeChunk();
    queue.record(std::make_unique<Step>(log, 'c'));
    queue.closeChunk();
    queue.openChunk("empty");
    queue.closeChunk();
    EXPECT_EQ(2u, queue.undoCount());
    EXPECT_TRUE(queue.undo());
    EXPECT_TRUE(queue.redo());
    EXPECT_EQ("cbBC", log);
    queue.undo();
    log.clear();
    queue.record(std::make_unique<Step>(log, 'd')); // what was undone cannot be redone any more
    EXPECT_EQ("~~", log);
    EXPECT_FALSE(queue.redo());
    queue.setEnabled(false);
    queue.record(std::make_unique<Step>(log, 'e'));
    EXPECT_EQ(2u, queue.undoCount());
    queue.flush();
    EXPECT_FALSE(queue.canUndo());
    EXPECT_EQ("~~~~~", log);
}

} // namespace
