// A small plug-in for the tests of plug-in loading and of scene files: a node with plug-in data,
// a locator, commands to fill and show the data, and a command and a tool that run scripts. It sees
// nothing but the public interface.
#include <maya/MArgDatabase.h>
#include <maya/MArgList.h>
#include <maya/MFileIO.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MFnNumericAttribute.h>
#include <maya/MFnPlugin.h>
#include <maya/MFnPluginData.h>
#include <maya/MFnTypedAttribute.h>
#include <maya/MGlobal.h>
#include <maya/MPlug.h>
#include <maya/MPxCommand.h>
#include <maya/MPxContext.h>
#include <maya/MPxContextCommand.h>
#include <maya/MPxData.h>
#include <maya/MPxLocatorNode.h>
#include <maya/MPxNode.h>
#include <maya/MQtUtil.h>
#include <maya/MSelectionList.h>
#include <maya/MSyntax.h>

#include <cstdint>
#include <cstdlib>
#include <istream>
#include <ostream>
#include <string>

namespace {

const MTypeId dataId(0x70002);

std::string escaped(const std::string& text) {
    std::string result;
    for (const char c : text) {
        if (c == '"' || c == '\\')
            result += '\\';
        if (c == '\n')
            result += "\\n";
        else
            result += c;
    }
    return result;
}

// A text and a run of numbers. Some texts make it misbehave:
// FAIL does not write itself, LAZY reads only the first bytes, GREEDY tries to read on for ever.
class TestData : public MPxData {
public:
    static void* creator() { return new TestData; }

    MStatus readASCII(const MArgList& args, unsigned int& last) override {
        MStatus status;
        text = args.asString(last, &status).asChar();
        if (!status)
            return status;
        const int count = args.asInt(++last, &status);
        if (!status || count < 0)
            return MS::kFailure;
        sum = 0;
        for (int i = 0; i < count; ++i) {
            sum += args.asInt(++last, &status);
            if (!status)
                return status;
        }
        numbers = count;
        ++last;
        return MS::kSuccess;
    }
    MStatus readBinary(std::istream& in, unsigned int length) override {
        std::int32_t size = 0;
        in.read(reinterpret_cast<char*>(&size), 4);
        if (!in || size < 0 || std::uint32_t(size) > length - 4)
            return MS::kFailure;
        text.resize(std::size_t(size));
        in.read(text.data(), size);
        if (text == "LAZY")
            return MS::kSuccess;
        in.read(reinterpret_cast<char*>(&numbers), 4);
        sum = 0;
        for (int i = 0; i < numbers && in; ++i) {
            std::int32_t number = 0;
            in.read(reinterpret_cast<char*>(&number), 4);
            sum += number;
        }
        long long beyond = 0;
        while (text == "GREEDY" && in.get() != std::istream::traits_type::eof())
            ++beyond;
        return in.fail() && text != "GREEDY" ? MS::kFailure : MS::kSuccess;
    }
    MStatus writeASCII(std::ostream& out) override {
        if (text == "FAIL") {
            out << "-1";
            return MS::kFailure;
        }
        out << std::hex << '"' << escaped(text) << "\" " << std::dec << numbers;
        for (int i = 0; i < numbers; ++i)
            out << (i % 16 ? " " : "\n\t\t") << i - 1;
        return MS::kSuccess;
    }
    MStatus writeBinary(std::ostream& out) override {
        if (text == "FAIL")
            return MS::kFailure;
        const auto size = std::int32_t(text.size());
        out.write(reinterpret_cast<const char*>(&size), 4);
        out.write(text.data(), size);
        out.write(reinterpret_cast<const char*>(&numbers), 4);
        for (std::int32_t i = -1; i < numbers - 1; ++i)
            out.write(reinterpret_cast<const char*>(&i), 4);
        return out ? MS::kSuccess : MS::kFailure;
    }
    void copy(const MPxData& other) override {
        if (const auto* data = dynamic_cast<const TestData*>(&other)) {
            text = data->text;
            numbers = data->numbers;
            sum = data->sum;
        }
    }
    MTypeId typeId() const override { return dataId; }
    MString name() const override { return "hostTestData"; }

    std::string text;
    std::int32_t numbers = 0;
    long long sum = 0;
};

MStatus addAttributes(MObject& data, MObject& amount) {
    MFnTypedAttribute typed;
    data = typed.create("payload", "pay", dataId);
    typed.setStorable(true);
    MFnNumericAttribute numeric;
    amount = numeric.create("amount", "amt", MFnNumericData::kDouble, 1.5);
    numeric.setKeyable(true);
    const MStatus status = MPxNode::addAttribute(data);
    return status ? MPxNode::addAttribute(amount) : status;
}

class TestNode : public MPxNode {
public:
    static void* creator() { return new TestNode; }
    static MStatus initialize() { return addAttributes(data, amount); }
    static MObject data, amount;
};
MObject TestNode::data, TestNode::amount;

// Notes whether it was made while a file was read.
class TestLocator : public MPxLocatorNode {
public:
    static void* creator() { return new TestLocator; }
    static MStatus initialize() { return addAttributes(data, amount); }
    void postConstructor() override {
        if (MFileIO::isOpeningFile() || MFileIO::isImportingFile())
            return;
        MFnDependencyNode node(thisMObject());
        node.findPlug(amount, true).setDouble(7.0);
    }
    static MObject data, amount;
};
MObject TestLocator::data, TestLocator::amount;

TestData* dataOf(const MString& node, MPlug& plug) {
    MSelectionList list;
    if (!list.add(node))
        return nullptr;
    MObject object;
    list.getDependNode(0, object);
    MStatus status;
    plug = MFnDependencyNode(object).findPlug("payload", true, &status);
    if (!status)
        return nullptr;
    MFnPluginData function(plug.asMObject(), &status);
    return status ? static_cast<TestData*>(function.data()) : nullptr;
}

// hostTestData NODE            its text, or "(none)"
// hostTestData -total NODE       sum of its numbers
// hostTestData -text T -numbers N NODE     fills it, not undoable
class DataCommand : public MPxCommand {
public:
    static void* creator() { return new DataCommand; }
    static MSyntax syntax() {
        MSyntax result;
        result.addFlag("-t", "-text", MSyntax::kString);
        result.addFlag("-n", "-numbers", MSyntax::kLong);
        result.addFlag("-s", "-total");
        result.addArg(MSyntax::kString);
        return result;
    }
    MStatus doIt(const MArgList& args) override {
        MArgDatabase database(syntax(), args);
        MString node;
        if (!database.getCommandArgument(0, node))
            return MS::kFailure;
        MPlug plug;
        TestData* data = dataOf(node, plug);
        if (database.isFlagSet("-text")) {
            auto* fresh = new TestData;
            MString text;
            database.getFlagArgument("-text", 0, text);
            fresh->text = text.asChar();
            database.getFlagArgument("-numbers", 0, fresh->numbers);
            for (int i = 0; i < fresh->numbers; ++i)
                fresh->sum += i - 1;
            return plug.setMPxData(fresh);
        }
        if (database.isFlagSet("-total"))
            setResult(data ? double(data->sum) : -1.0);
        else
            setResult(data ? MString(data->text.c_str()) : MString("(none)"));
        return MS::kSuccess;
    }
};

// hostTestRun SCRIPT       runs it before the command returns, and answers as it does
// hostTestRun -scale N     N as the screen wants it
class RunCommand : public MPxCommand {
public:
    static void* creator() { return new RunCommand; }
    MStatus doIt(const MArgList& args) override {
        if (args.asString(0) == "-scale") {
            setResult(MQtUtil::dpiScale(args.asInt(1)));
            return MS::kSuccess;
        }
        return MGlobal::executeCommand(args.asString(0));
    }
};

// Its press calls the procedure hostTestPress.
class RunContext : public MPxContext {
public:
    MStatus doPress(MEvent&) override { return MGlobal::executeCommand("hostTestPress"); }
};

class RunContextCommand : public MPxContextCommand {
public:
    static void* creator() { return new RunContextCommand; }
    MPxContext* makeObj() override { return new RunContext; }
};

} // namespace

MStatus initializePlugin(MObject object) {
    MFnPlugin plugin(object, "Tests", "3.1", "Any");
    if (std::getenv("HOSTTESTPLUGIN_REFUSE")) {
        plugin.registerCommand("hostTestData", DataCommand::creator, DataCommand::syntax);
        return MS::kFailure;
    }
    MStatus status =
        plugin.registerCommand("hostTestData", DataCommand::creator, DataCommand::syntax);
    if (status)
        status = plugin.registerCommand("hostTestRun", RunCommand::creator);
    if (status)
        status = plugin.registerContextCommand("hostTestCtx", RunContextCommand::creator);
    if (status)
        status = plugin.registerData("hostTestData", dataId, TestData::creator);
    if (status)
        status = plugin.registerNode("hostTestNode", MTypeId(0x70001), TestNode::creator,
                                     TestNode::initialize);
    const MString classification("drawdb/geometry/hostTestLocator");
    if (status)
        status =
            plugin.registerNode("hostTestLocator", MTypeId(0x70003), TestLocator::creator,
                                TestLocator::initialize, MPxNode::kLocatorNode, &classification);
    return status;
}

MStatus uninitializePlugin(MObject object) {
    MFnPlugin plugin(object);
    MStatus status = plugin.deregisterNode(MTypeId(0x70003));
    if (status)
        status = plugin.deregisterNode(MTypeId(0x70001));
    if (status)
        status = plugin.deregisterData(dataId);
    if (status)
        status = plugin.deregisterContextCommand("hostTestCtx");
    if (status)
        status = plugin.deregisterCommand("hostTestRun");
    if (status)
        status = plugin.deregisterCommand("hostTestData");
    return status;
}
