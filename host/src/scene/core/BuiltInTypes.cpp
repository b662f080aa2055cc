#include "scene/core/BuiltInTypes.h"

#include "scene/core/AnimCurve.h"
#include "scene/core/Node.h"
#include "scene/core/TimeState.h"

namespace host {
namespace {

using Kind = Attribute::Kind;

// Small makers; each gives an attribute with the flags most of its kind have.
AttributePtr attribute(const char* name, const char* shortName, Kind kind) {
    auto made = std::make_shared<Attribute>();
    made->name = name;
    made->shortName = shortName;
    made->kind = kind;
    return made;
}

AttributePtr number(const char* name, const char* shortName, MFnNumericData::Type type,
                    double initial = 0.0) {
    AttributePtr made = attribute(name, shortName, Kind::Numeric);
    made->numeric = type;
    made->defaultNumber = initial;
    return made;
}

AttributePtr real(const char* name, const char* shortName, double initial = 0.0) {
    return number(name, shortName, MFnNumericData::kDouble, initial);
}

AttributePtr flag(const char* name, const char* shortName, bool initial = false) {
    return number(name, shortName, MFnNumericData::kBoolean, initial ? 1.0 : 0.0);
}

AttributePtr unit(const char* name, const char* shortName, MFnUnitAttribute::Type type,
                  double initial = 0.0) {
    AttributePtr made = attribute(name, shortName, Kind::Unit);
    made->unit = type;
    made->defaultNumber = initial;
    return made;
}

AttributePtr text(const char* name, const char* shortName) {
    AttributePtr made = attribute(name, shortName, Kind::Typed);
    made->data = MFnData::kString;
    return made;
}

AttributePtr choice(const char* name, const char* shortName, std::vector<const char*> fields,
                    short initial = 0) {
    AttributePtr made = attribute(name, shortName, Kind::Enum);
    for (std::size_t i = 0; i < fields.size(); ++i)
        made->fields.emplace_back(fields[i], static_cast<short>(i));
    made->min = 0.0;
    made->max = static_cast<double>(fields.size() - 1);
    made->defaultNumber = initial;
    return made;
}

AttributePtr matrixOutput(const char* name, const char* shortName, bool array) {
    AttributePtr made = attribute(name, shortName, Kind::Matrix);
    made->array = array;
    made->writable = false;
    made->storable = false;
    made->hidden = true;
    return made;
}

AttributePtr compound(const char* name, const char* shortName, MFnNumericData::Type type,
                      std::vector<AttributePtr> children) {
    AttributePtr made = attribute(name, shortName, Kind::Compound);
    made->numeric = type;
    made->children = std::move(children);
    for (const AttributePtr& child : made->children)
        child->parent = made;
    return made;
}

AttributePtr keyable(AttributePtr made) {
    made->keyable = true;
    for (const AttributePtr& child : made->children)
        child->keyable = true;
    return made;
}

AttributePtr limited(AttributePtr made, double min, double max) {
    made->min = min;
    made->max = max;
    return made;
}

AttributePtr atLeast(AttributePtr made, double min) {
    made->min = min;
    return made;
}

AttributePtr unsaved(AttributePtr made) {
    made->storable = false;
    return made;
}

AttributePtr hidden(AttributePtr made) {
    made->hidden = true;
    return made;
}

// name + X, Y, Z of one unit, keyable.
AttributePtr axes(const std::string& name, const std::string& shortName,
                  MFnUnitAttribute::Type type, double initial = 0.0) {
    std::vector<AttributePtr> children;
    for (const char* axis : {"X", "Y", "Z"}) {
        const std::string childName = name + axis;
        const std::string childShort = shortName + static_cast<char>(axis[0] - 'A' + 'a');
        children.push_back(type == MFnUnitAttribute::kInvalid
                               ? real(childName.c_str(), childShort.c_str(), initial)
                               : unit(childName.c_str(), childShort.c_str(), type, initial));
    }
    return keyable(compound(name.c_str(), shortName.c_str(), MFnNumericData::k3Double, children));
}

template <class T> NodePtr makeNode(const NodeType& type) {
    return std::make_shared<T>(type);
}

// Kept beside other types in one table: name, type id as it stands in binary files elsewhere is
// of no meaning here, so ids are the host's own small numbers.
unsigned nextId() {
    static unsigned last = 0;
    return ++last;
}

void add(TypeRegistry& registry, const char* name, const char* base, MFn::Type apiType,
         std::vector<AttributePtr> attributes, bool abstractType = false,
         const char* classification = "") {
    NodeType type;
    type.name = name;
    type.id = nextId();
    type.base = base;
    type.apiType = apiType;
    type.abstractType = abstractType;
    type.classification = classification;
    type.attributes = std::move(attributes);
    registry.addBuiltIn(std::move(type));
}

void addBases(TypeRegistry& registry) {
    NodeType node;
    node.name = "node";
    node.apiType = MFn::kDependencyNode;
    node.abstractType = true;
    node.make = makeNode<Node>;
    node.attributes = {hidden(unsaved(attribute("message", "msg", Kind::Message))),
                       choice("nodeState", "nds", {"Normal", "HasNoEffect", "Blocking"})};
    registry.addBuiltIn(std::move(node));

    NodeType dag;
    dag.name = "dagNode";
    dag.base = "node";
    dag.apiType = MFn::kDagNode;
    dag.abstractType = true;
    dag.make = makeNode<DagNode>;
    dag.attributes = {keyable(flag("visibility", "v", true)),
                      flag("intermediateObject", "io"),
                      flag("template", "tmp"),
                      flag("lodVisibility", "lodv", true),
                      flag("overrideEnabled", "ove"),
                      compound("objectColorRGB", "obcc", MFnNumericData::k3Float,
                               {number("objectColorR", "obcr", MFnNumericData::kFloat),
                                number("objectColorG", "obcg", MFnNumericData::kFloat),
                                number("objectColorB", "obcb", MFnNumericData::kFloat)}),
                      choice("useObjectColor", "uoc", {"Default", "Index Color", "RGB Color"}),
                      matrixOutput("matrix", "m", false),
                      matrixOutput("inverseMatrix", "im", false),
                      matrixOutput("worldMatrix", "wm", true),
                      matrixOutput("worldInverseMatrix", "wim", true),
                      matrixOutput("parentMatrix", "pm", true),
                      matrixOutput("parentInverseMatrix", "pim", true)};
    registry.addBuiltIn(std::move(dag));

    add(registry, "transform", "dagNode", MFn::kTransform,
        {axes("translate", "t", MFnUnitAttribute::kDistance),
         axes("rotate", "r", MFnUnitAttribute::kAngle),
         axes("scale", "s", MFnUnitAttribute::kInvalid, 1.0),
         choice("rotateOrder", "ro", {"xyz", "yzx", "zxy", "xzy", "yxz", "zyx"})});
    add(registry, "shape", "dagNode", MFn::kShape, {}, true);
}

void addCamera(TypeRegistry& registry) {
    add(registry, "camera", "shape", MFn::kCamera,
        {flag("renderable", "rnd", true),
         // In inches: 36 x 24 mm.
         compound("cameraAperture", "cap", MFnNumericData::k2Double,
                  {keyable(real("horizontalFilmAperture", "hfa", 1.41732)),
                   keyable(real("verticalFilmAperture", "vfa", 0.94488))}),
         choice("filmFit", "ff", {"Fill", "Horizontal", "Vertical", "Overscan"}),
         real("filmFitOffset", "ffo"), keyable(real("horizontalFilmOffset", "hfo")),
         keyable(real("verticalFilmOffset", "vfo")),
         keyable(atLeast(real("lensSqueezeRatio", "lsr", 1.0), 0.0001)),
         keyable(atLeast(real("cameraScale", "cs", 1.0), 0.0001)), real("preScale", "psc", 1.0),
         real("postScale", "ptsc", 1.0), atLeast(real("overscan", "ovr", 1.0), 0.0001),
         flag("panZoomEnabled", "pze"), flag("renderPanZoom", "rpz"),
         keyable(real("horizontalPan", "hpn")), keyable(real("verticalPan", "vpn")),
         keyable(real("zoom", "zom", 1.0)),
         keyable(limited(real("focalLength", "fl", 35.0), 2.5, 100000.0)),
         keyable(unit("nearClipPlane", "ncp", MFnUnitAttribute::kDistance, 0.1)),
         keyable(unit("farClipPlane", "fcp", MFnUnitAttribute::kDistance, 10000.0)),
         keyable(unit("centerOfInterest", "coi", MFnUnitAttribute::kDistance, 5.0)),
         flag("orthographic", "o"),
         keyable(unit("orthographicWidth", "ow", MFnUnitAttribute::kDistance, 10.0)),
         flag("displayFilmGate", "dfg"), flag("displayResolution", "dr"), text("imageName", "imn"),
         text("depthName", "den"), text("maskName", "man"), text("homeCommand", "hc")});
}

void addShapes(TypeRegistry& registry) {
    add(registry, "geometryShape", "shape", MFn::kShape, {}, true);
    add(registry, "surfaceShape", "geometryShape", MFn::kShape, {}, true);
    AttributePtr inMesh = hidden(attribute("inMesh", "i", Kind::Typed));
    inMesh->data = MFnData::kMesh;
    AttributePtr outMesh = hidden(unsaved(attribute("outMesh", "o", Kind::Typed)));
    outMesh->data = MFnData::kMesh;
    outMesh->writable = false;
    add(registry, "mesh", "surfaceShape", MFn::kMesh, {inMesh, outMesh});
    add(registry, "locator", "geometryShape", MFn::kLocator,
        {axes("localPosition", "lp", MFnUnitAttribute::kDistance),
         axes("localScale", "ls", MFnUnitAttribute::kInvalid, 1.0)},
        false, "drawdb/geometry/locator");

    const auto output = [] {
        AttributePtr made = hidden(unsaved(attribute("output", "out", Kind::Typed)));
        made->data = MFnData::kMesh;
        made->writable = false;
        return made;
    };
    const auto length = [](const char* name, const char* shortName, double initial) {
        return keyable(atLeast(unit(name, shortName, MFnUnitAttribute::kDistance, initial), 0.0));
    };
    const auto count = [](const char* name, const char* shortName, int initial, int least) {
        return keyable(atLeast(number(name, shortName, MFnNumericData::kInt, initial), least));
    };
    add(registry, "polyCreator", "node", MFn::kPolyCreator, {output()}, true);
    add(registry, "polySphere", "polyCreator", MFn::kPolySphere,
        {length("radius", "r", 1.0), count("subdivisionsAxis", "sa", 20, 3),
         count("subdivisionsHeight", "sh", 20, 3)});
    add(registry, "polyCube", "polyCreator", MFn::kPolyCube,
        {length("width", "w", 1.0), length("height", "h", 1.0), length("depth", "d", 1.0),
         count("subdivisionsWidth", "sw", 1, 1), count("subdivisionsHeight", "sh", 1, 1),
         count("subdivisionsDepth", "sd", 1, 1)});
    add(registry, "polyPlane", "polyCreator", MFn::kPolyMesh,
        {length("width", "w", 1.0), length("height", "h", 1.0),
         count("subdivisionsWidth", "sw", 10, 1), count("subdivisionsHeight", "sh", 10, 1)});
}

void addCurve(TypeRegistry& registry, const char* name, MFn::Type type, AttributePtr output) {
    NodeType curve;
    curve.name = name;
    curve.id = nextId();
    curve.base = "animCurve";
    curve.apiType = type;
    curve.make = makeNode<AnimCurve>;
    output->writable = false;
    output->storable = false;
    curve.attributes = {output};
    registry.addBuiltIn(std::move(curve));
}

// Its output is the current time, whatever is stored.
class TimeNode : public Node {
public:
    using Node::Node;

protected:
    bool compute(Slot& slot, const MTime& when, PlugValue& value) override {
        if (slot.attribute->name != "outTime")
            return false;
        value = (when.unit() == MTime::kInvalid ? timeline::current() : when).as(MTime::kFilm);
        return true;
    }
};

void addOthers(TypeRegistry& registry) {
    add(registry, "animCurve", "node", MFn::kAnimCurve,
        {choice("preInfinity", "pre",
                {"Constant", "Linear", "Constant", "Cycle", "Cycle with Offset", "Oscillate"}),
         choice("postInfinity", "pst",
                {"Constant", "Linear", "Constant", "Cycle", "Cycle with Offset", "Oscillate"}),
         flag("weightedTangents", "wgt")},
        true);
    addCurve(registry, "animCurveTL", MFn::kAnimCurveTimeToDistance,
             unit("output", "o", MFnUnitAttribute::kDistance));
    addCurve(registry, "animCurveTA", MFn::kAnimCurveTimeToAngular,
             unit("output", "o", MFnUnitAttribute::kAngle));
    addCurve(registry, "animCurveTT", MFn::kAnimCurveTimeToTime,
             unit("output", "o", MFnUnitAttribute::kTime));
    addCurve(registry, "animCurveTU", MFn::kAnimCurveTimeToUnitless, real("output", "o"));

    NodeType time;
    time.name = "time";
    time.id = nextId();
    time.base = "node";
    time.apiType = MFn::kTime;
    time.make = makeNode<TimeNode>;
    time.attributes = {unsaved(unit("outTime", "o", MFnUnitAttribute::kTime))};
    registry.addBuiltIn(std::move(time));
    add(registry, "resolution", "node", MFn::kResolution,
        {number("width", "w", MFnNumericData::kInt, 960.0),
         number("height", "h", MFnNumericData::kInt, 540.0),
         number("pixelAspect", "pa", MFnNumericData::kFloat, 1.0), flag("aspectLock", "al", true),
         number("deviceAspectRatio", "dar", MFnNumericData::kFloat, 1.777777),
         flag("lockDeviceAspectRatio", "ldar"),
         number("dotsPerInch", "dpi", MFnNumericData::kFloat, 72.0)});
    add(registry, "script", "node", MFn::kScript,
        {text("before", "b"), text("after", "a"),
         choice("scriptType", "st",
                {"Demand", "Open/Close", "GUI Open/Close", "UI Configuration", "Software Render",
                 "Software Frame Render", "Scene Configuration", "Time Changed"})});
    add(registry, "unknown", "node", MFn::kUnknown, {});
    add(registry, "unknownDag", "dagNode", MFn::kUnknownDag, {});
    add(registry, "unknownTransform", "transform", MFn::kUnknownTransform, {});
}

} // namespace

void addBuiltInTypes(TypeRegistry& registry) {
    addBases(registry);
    addCamera(registry);
    addShapes(registry);
    addOthers(registry);
}

} // namespace host
