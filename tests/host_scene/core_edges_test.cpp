// Where the scene core meets what is half gone, cyclic, driven or wrong.
#include "foundation/UndoQueue.h"
#include "scene/core/Node.h"
#include "scene/core/Scene.h"
#include "scene/core/TimeState.h"
#include "scene/core/TypeRegistry.h"

#include <maya/MAnimControl.h>
#include <maya/MDagModifier.h>
#include <maya/MDagPath.h>
#include <maya/MFnAnimCurve.h>
#include <maya/MFnDagNode.h>
#include <maya/MFnNumericAttribute.h>
#include <maya/MFnPluginData.h>
#include <maya/MFnTypedAttribute.h>
#include <maya/MObjectHandle.h>
#include <maya/MPlug.h>
#include <maya/MPxData.h>
#include <maya/MPxLocatorNode.h>
#include <maya/MSelectionList.h>

#include <gtest/gtest.h>
#include <memory>
#include <stdexcept>

namespace {

// Data that count how many of them there are and remember where they were copied from.
class NoteData : public MPxData {
public:
    static inline int alive = 0;
    static const MTypeId id;
    int note = 0;
    int copies = 0;

    NoteData() { ++alive; }
    ~NoteData() override { --alive; }
    static void* creator() { return new NoteData; }
    void copy(const MPxData& source) override {
        const auto& other = static_cast<const NoteData&>(source);
        note = other.note;
        copies = other.copies + 1;
    }
    MTypeId typeId() const override { return id; }
    MString name() const override { return "edgeNote"; }
};
const MTypeId NoteData::id(0x7f001);

// A locator that looks at itself at every moment of its life.
class EdgeNode : public MPxLocatorNode {
public:
    static inline MObject note;
    static inline bool selfInConstructor = false, selfInPost = false, selfInDestructor = false;

    EdgeNode() { selfInConstructor = !thisMObject().isNull(); }
    ~EdgeNode() override { selfInDestructor = !thisMObject().isNull(); }
    void postConstructor() override { selfInPost = !thisMObject().isNull(); }
    static void* creator() { return new EdgeNode; }
    static MStatus initialize() {
        note = MFnTypedAttribute().create("note", "nt", NoteData::id);
        return addAttribute(note);
    }
};

class CoreEdgesTest : public ::testing::Test {
protected:
    void SetUp() override {
        host::scene().reset();
        host::DataType data;
        data.name = "edgeNote";
        data.id = NoteData::id.id();
        data.plugin = "edges";
        data.creator = NoteData::creator;
        ASSERT_TRUE(host::typeRegistry().addData(data));
        host::NodeType node;
        node.name = "edgeNode";
        node.id = 0x7f002;
        node.plugin = "edges";
        node.creator = EdgeNode::creator;
        ASSERT_TRUE(
            host::typeRegistry().addPluginNode(node, MPxNode::kLocatorNode, EdgeNode::initialize));
    }
    void TearDown() override {
        host::scene().reset();
        host::typeRegistry().removeNode("edgeNode");
        host::typeRegistry().removeData("edgeNote");
        EXPECT_EQ(0, NoteData::alive); // plugs own what they were given
    }

    static MObject make(const char* type, const char* name,
                        const MObject& parent = MObject::kNullObj) {
        return MFnDagNode().create(type, name, parent);
    }
    static MPlug plugOf(const MObject& node, const char* name) {
        return MFnDependencyNode(node).findPlug(name, true);
    }
    static MStatus connect(const MPlug& from, const MPlug& to) {
        MDGModifier modifier;
        const MStatus status = modifier.connect(from, to);
        return status ? modifier.doIt() : status;
    }
    static NoteData* noteOf(const MObject& node) {
        return static_cast<NoteData*>(MFnPluginData(plugOf(node, "note").asMObject()).data());
    }
    static bool exists(const char* name) { return MSelectionList().add(name); }
};

TEST_F(CoreEdgesTest, NodesKnowThemselvesFromPostConstructorOn) {
    {
        const MObject node = make("edgeNode", "n", make("transform", "t"));
        EXPECT_FALSE(EdgeNode::selfInConstructor);
        EXPECT_TRUE(EdgeNode::selfInPost);
        host::scene().reset();
        EXPECT_FALSE(MObjectHandle(node).isValid());
    }
    EXPECT_FALSE(EdgeNode::selfInDestructor);
}

TEST_F(CoreEdgesTest, PlugsOwnDataAndTakeOnlyTheirType) {
    const MObject node = make("edgeNode", "n", make("transform", "t"));
    auto* data = new NoteData;
    data->note = 5;
    host::scene().setModified(false);
    const std::size_t steps = host::undoQueue().undoCount();
    EXPECT_TRUE(plugOf(node, "note").setMPxData(data));
    EXPECT_TRUE(host::scene().isModified());
    EXPECT_EQ(steps, host::undoQueue().undoCount());
    host::scene().setModified(false);
    noteOf(node)->note = 6; // behind the plug's back
    EXPECT_FALSE(host::scene().isModified());
    EXPECT_TRUE(plugOf(node, "note").setMPxData(new NoteData));
    EXPECT_EQ(1, NoteData::alive); // the former ones are gone
    EXPECT_FALSE(plugOf(node, "localPositionX").setMPxData(new NoteData));
    EXPECT_EQ(1, NoteData::alive);
}

TEST_F(CoreEdgesTest, DuplicatesCopyDataOwnAttributesAndTheMoment) {
    const MObject transform = make("transform", "t");
    const MObject node = make("edgeNode", "n", transform);
    auto* data = new NoteData;
    data->note = 7;
    plugOf(node, "note").setMPxData(data);
    MFnDependencyNode(transform).addAttribute(
        MFnNumericAttribute().create("extra", "ex", MFnNumericData::kInt, 1));
    plugOf(transform, "extra").setInt(4);
    MFnAnimCurve curve;
    curve.create(plugOf(transform, "tx"));
    curve.addKey(MTime(1, MTime::kFilm), 3.0);

    const MObject copy = MFnDagNode(transform).duplicate();
    ASSERT_FALSE(copy.isNull());
    const MObject below = MFnDagNode(copy).child(0);
    EXPECT_NE(noteOf(node), noteOf(below));
    EXPECT_EQ(7, noteOf(below)->note);
    EXPECT_EQ(1, noteOf(below)->copies);
    EXPECT_EQ(4, plugOf(copy, "extra").asInt());
    plugOf(copy, "extra").setInt(9);
    EXPECT_EQ(4, plugOf(transform, "extra").asInt());
    EXPECT_EQ(3.0, plugOf(copy, "tx").asDouble());
    EXPECT_TRUE(plugOf(copy, "tx").setDouble(1.0)); // not driven
}

TEST_F(CoreEdgesTest, CompoundConnectionsDriveTheirParts) {
    const MObject a = make("transform", "a");
    const MObject b = make("transform", "b");
    ASSERT_TRUE(connect(plugOf(a, "translate"), plugOf(b, "scale")));
    plugOf(a, "translateY").setDouble(4.0);
    EXPECT_EQ(4.0, plugOf(b, "scaleY").asDouble());
    EXPECT_FALSE(plugOf(b, "scaleY").setDouble(1.0));
    EXPECT_EQ(4.0, MFnDagNode(b).transformationMatrix()(1, 1));
}

TEST_F(CoreEdgesTest, CyclesEndAndMisfitsAreRefused) {
    const MObject a = make("transform", "a");
    const MObject b = make("transform", "b");
    plugOf(a, "tx").setDouble(2.0);
    ASSERT_TRUE(connect(plugOf(a, "tx"), plugOf(b, "tx")));
    ASSERT_TRUE(connect(plugOf(b, "tx"), plugOf(a, "tx")));
    EXPECT_EQ(2.0, plugOf(a, "tx").asDouble());
    EXPECT_EQ(0.0, plugOf(b, "tx").asDouble()); // each ends at its own stored value

    const MObject note = make("edgeNode", "n", a);
    EXPECT_FALSE(connect(plugOf(a, "ty"), plugOf(note, "note")));
    EXPECT_FALSE(connect(plugOf(a, "translate"), plugOf(a, "ry")));
    EXPECT_FALSE(connect(plugOf(a, "ty"), plugOf(a, "message")));
    EXPECT_TRUE(connect(plugOf(a, "ty"), plugOf(a, "visibility"))); // numbers among each other
}

TEST_F(CoreEdgesTest, HistoryGoesWithWhatItFedAndComesBack) {
    const MObject ball = make("transform", "ball");
    MFnAnimCurve curve;
    const MObject own = curve.create(plugOf(ball, "tx"));
    curve.addKey(MTime(1, MTime::kFilm), 3.0);
    const MObject shared = MFnAnimCurve().create(plugOf(ball, "ty"));
    const MObject other = make("transform", "other");
    connect(plugOf(shared, "output"), plugOf(other, "ty"));
    const MObject mesh = make("mesh", "ballShape", ball);
    const MObject sphere = MFnDependencyNode().create("polySphere", "maker");
    connect(plugOf(sphere, "output"), plugOf(mesh, "inMesh"));

    MDagModifier modifier;
    modifier.deleteNode(ball);
    ASSERT_TRUE(modifier.doIt());
    EXPECT_FALSE(MObjectHandle(own).isValid());
    EXPECT_FALSE(MObjectHandle(sphere).isValid());
    EXPECT_TRUE(MObjectHandle(shared).isValid());
    ASSERT_TRUE(modifier.undoIt());
    EXPECT_EQ(3.0, plugOf(ball, "tx").asDouble());
    EXPECT_TRUE(plugOf(mesh, "inMesh").source() == plugOf(sphere, "output"));
    EXPECT_TRUE(plugOf(ball, "ty").isDestination());

    MDagModifier both; // the maker is gone already when its turn comes
    both.deleteNode(ball);
    both.deleteNode(sphere);
    ASSERT_TRUE(both.doIt());
    EXPECT_FALSE(exists("maker"));
    both.undoIt();
    EXPECT_TRUE(exists("maker") && exists("ball"));
    MDGModifier stale;
    both.doIt();
    stale.deleteNode(ball);
    EXPECT_FALSE(stale.doIt()); // another modifier finds nothing to delete
}

TEST_F(CoreEdgesTest, RemovedAttributesComeBackWithValueFlagsAndConnections) {
    const MObject a = make("transform", "a");
    const MObject b = make("transform", "b");
    const MObject extra = MFnNumericAttribute().create("extra", "ex", MFnNumericData::kDouble);
    MFnDependencyNode(a).addAttribute(extra);
    plugOf(a, "extra").setDouble(2.5);
    plugOf(a, "extra").setKeyable(true);
    connect(plugOf(a, "extra"), plugOf(b, "tx"));
    MDGModifier modifier;
    modifier.removeAttribute(a, extra);
    for (int round = 0; round < 2; ++round) {
        SCOPED_TRACE("round " + std::to_string(round));
        ASSERT_TRUE(modifier.doIt());
        EXPECT_FALSE(MFnDependencyNode(a).hasAttribute("extra"));
        EXPECT_FALSE(plugOf(b, "tx").isDestination());
        modifier.undoIt();
        EXPECT_EQ(2.5, plugOf(b, "tx").asDouble());
        EXPECT_TRUE(plugOf(a, "extra").isKeyable());
        plugOf(a, "extra").setDouble(2.5);
    }
    MStatus status = MFnDependencyNode(a).removeAttribute(MFnDependencyNode(a).attribute("tx"));
    EXPECT_FALSE(status); // the type's own
}

TEST_F(CoreEdgesTest, LockedNodesStay) {
    const MObject node = make("transform", "n");
    MFnDependencyNode(node).setLocked(true);
    EXPECT_FALSE(MDGModifier().deleteNode(node));
    EXPECT_FALSE(MDGModifier().renameNode(node, "m"));
    EXPECT_FALSE(plugOf(node, "tx").setDouble(1.0));
}

TEST_F(CoreEdgesTest, StepsOfAFormerSceneDoNoHarm) {
    MDGModifier connected;
    MDagModifier deleted;
    {
        const MObject a = make("transform", "a");
        const MObject b = make("transform", "b");
        connected.connect(plugOf(a, "tx"), plugOf(b, "tx"));
        connected.doIt();
        deleted.deleteNode(a);
        deleted.doIt();
    }
    host::scene().reset();
    deleted.undoIt();
    connected.undoIt();
    EXPECT_TRUE(exists("|a"));
}

TEST_F(CoreEdgesTest, TheTimeNodeShowsTheCurrentTime) {
    MSelectionList list;
    ASSERT_TRUE(list.add("time1.outTime"));
    MPlug plug;
    list.getPlug(0, plug);
    MAnimControl::setCurrentTime(MTime(17, MTime::kFilm));
    EXPECT_TRUE(plug.asMTime() == MTime(17, MTime::kFilm));
}

TEST_F(CoreEdgesTest, RangesStayNested) {
    const auto expect = [](double outer, double inner, double innerEnd, double outerEnd) {
        EXPECT_EQ(outer, MAnimControl::animationStartTime().value());
        EXPECT_EQ(inner, MAnimControl::minTime().value());
        EXPECT_EQ(innerEnd, MAnimControl::maxTime().value());
        EXPECT_EQ(outerEnd, MAnimControl::animationEndTime().value());
    };
    const auto at = [](double frame) { return MTime(frame, MTime::kFilm); };
    MAnimControl::setAnimationStartEndTime(at(10), at(50));
    expect(10, 10, 50, 50);
    MAnimControl::setMinMaxTime(at(5), at(60));
    expect(5, 5, 60, 60);
    MAnimControl::setAnimationEndTime(at(20));
    expect(5, 5, 20, 20);
    MAnimControl::setAnimationStartEndTime(at(100), at(200));
    expect(100, 100, 100, 200);
}

TEST_F(CoreEdgesTest, PathsThatNameNothing) {
    make("transform", "ns:cup");
    make("transform", "cup");
    MSelectionList list;
    EXPECT_TRUE(list.add("c*"));
    EXPECT_TRUE(list.add("*:cup"));
    EXPECT_EQ(2u, list.length()); // a star stays within its namespace
    for (const char* bad : {"cup.worldMatrix[-1]", "cup.worldMatrix[0", "cup.worldMatrix[x]",
                            "cup.worldMatrix[0]1", "cup.translate[0]", "cup.", "|", "cup|", ""})
        EXPECT_FALSE(exists(bad)) << bad;
    EXPECT_TRUE(exists("cup.worldMatrix[0]"));
}

TEST_F(CoreEdgesTest, AStepThatThrowsLeavesTheQueueWorking) {
    struct Thrower : host::UndoStep {
        bool undo() override { throw std::runtime_error("no"); }
        bool redo() override { return true; }
    };
    host::UndoQueue queue;
    queue.record(std::make_unique<Thrower>());
    EXPECT_THROW(queue.undo(), std::runtime_error);
    EXPECT_FALSE(queue.isUndoing());
    queue.record(std::make_unique<Thrower>());
    EXPECT_TRUE(queue.canUndo());
}

} // namespace
