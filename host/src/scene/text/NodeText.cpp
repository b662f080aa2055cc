#include "scene/text/NodeText.h"

#include "scene/text/CurveText.h"
#include "scene/text/PlugText.h"
#include "scene/text/Words.h"

#include <maya/MFnAttribute.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MFnEnumAttribute.h>
#include <maya/MFnNumericAttribute.h>
#include <maya/MFnPluginData.h>
#include <maya/MFnTypedAttribute.h>
#include <maya/MIntArray.h>
#include <maya/MPxData.h>

namespace host {

namespace {

std::string plugText(const MPlug& plug) {
    return std::string(".") + plug.partialName().asChar();
}

// The switches of a plug that differ from what its attribute says.
void addSwitches(const MPlug& plug, AttrRecord& record) {
    const MFnAttribute attribute(plug.attribute());
    if (plug.isLocked() && !(plug.isChild() && plug.parent().isLocked()))
        record.locked = true;
    if (plug.isKeyable() != attribute.isKeyable())
        record.keyable = plug.isKeyable();
    if (plug.isChannelBoxFlagSet() != attribute.isChannelBoxFlagSet())
        record.channelBox = plug.isChannelBoxFlagSet();
}

bool hasSwitches(const AttrRecord& record) {
    return record.locked || record.keyable || record.channelBox;
}

class Collector {
public:
    explicit Collector(NodeText& text) : text_(text) {}

    void visit(MPlug plug) {
        const MFnAttribute attribute(plug.attribute());
        if (plug.isArray()) {
            MIntArray indices;
            plug.getExistingArrayAttributeIndices(indices);
            for (unsigned i = 0; i < indices.length(); ++i)
                visit(plug.elementByLogicalIndex(unsigned(indices[i])));
        } else if (isTuple(plug)) {
            visitTuple(plug);
        } else if (plug.isCompound()) {
            for (unsigned i = 0; i < plug.numChildren(); ++i)
                visit(plug.child(i));
        } else {
            visitLeaf(plug, attribute.isStorable());
        }
    }

private:
    // One statement for the whole where nothing of it stands out, else one for each part.
    void visitTuple(const MPlug& plug) {
        bool changed = false;
        bool whole = MFnAttribute(plug.attribute()).isStorable();
        for (unsigned i = 0; i < plug.numChildren(); ++i) {
            const MPlug child = plug.child(i);
            AttrRecord switches;
            addSwitches(child, switches);
            changed = changed || !child.isDefaultValue();
            whole = whole && !child.isDestination() && !hasSwitches(switches);
        }
        if (!whole) {
            for (unsigned i = 0; i < plug.numChildren(); ++i)
                visit(plug.child(i));
            AttrRecord own;
            own.plug = plugText(plug);
            addSwitches(plug, own);
            if (hasSwitches(own))
                text_.values.push_back(std::move(own));
            return;
        }
        AttrRecord record;
        record.plug = plugText(plug);
        addSwitches(plug, record);
        if (changed && !plug.isDestination())
            valueToText(plug, record);
        if (record.hasValue || hasSwitches(record))
            text_.values.push_back(std::move(record));
    }

    void visitLeaf(const MPlug& plug, bool storable) {
        AttrRecord record;
        record.plug = plugText(plug);
        addSwitches(plug, record);
        if (storable && !plug.isDestination()) {
            if (plugKind(plug) == PlugKind::Plugin)
                visitData(plug);
            else if (plugKind(plug) != PlugKind::None && !plug.isDefaultValue())
                valueToText(plug, record);
        }
        if (record.hasValue || hasSwitches(record))
            text_.values.push_back(std::move(record));
    }

    void visitData(const MPlug& plug) {
        MStatus status;
        const MObject object = plug.asMObject(&status);
        if (!status || object.isNull())
            return;
        MFnPluginData data(object, &status);
        const MPxData* const content = status ? data.constData() : nullptr;
        if (content)
            text_.data.push_back({plugText(plug), content->name().asChar(), plug});
    }

    NodeText& text_;
};

const char* numericName(MFnNumericData::Type type) {
    switch (type) {
    case MFnNumericData::kBoolean:
        return "bool";
    case MFnNumericData::kByte:
        return "byte";
    case MFnNumericData::kShort:
        return "short";
    case MFnNumericData::kInt:
        return "long";
    case MFnNumericData::kFloat:
        return "float";
    case MFnNumericData::kDouble:
        return "double";
    default:
        return nullptr;
    }
}

void addFlag(AddAttrRecord& record, const char* flag, Token value) {
    record.arguments.push_back(word(flag));
    record.arguments.push_back(std::move(value));
}

void describeEnum(const MObject& object, AddAttrRecord& record) {
    const MFnEnumAttribute attribute(object);
    short low = 0;
    short high = -1;
    attribute.getMin(low);
    attribute.getMax(high);
    std::string fields;
    for (short i = low; i <= high; ++i) {
        const std::string name = attribute.fieldName(i).asChar();
        if (name.empty())
            continue;
        fields += fields.empty() ? "" : ":";
        fields += name + "=" + std::to_string(i);
    }
    addFlag(record, "-en", quoted(fields));
    addFlag(record, "-at", quoted("enum"));
}

void describeNumeric(const MObject& object, AddAttrRecord& record) {
    const MFnNumericAttribute attribute(object);
    double value = 0;
    if (attribute.hasMin() && attribute.getMin(value))
        addFlag(record, "-min", word(formatNumber(value)));
    if (attribute.hasMax() && attribute.getMax(value))
        addFlag(record, "-max", word(formatNumber(value)));
    if (attribute.getDefault(value) && value != 0)
        addFlag(record, "-dv", word(formatNumber(value)));
    addFlag(record, "-at", quoted(numericName(attribute.unitType())));
}

// The addAttr that makes a dynamic attribute again. Kinds it cannot say are left out.
bool describeAdded(const MObject& object, AddAttrRecord& record) {
    const MFnAttribute attribute(object);
    addFlag(record, "-ci", word("true"));
    addFlag(record, "-k", word(attribute.isKeyable() ? "true" : "false"));
    addFlag(record, "-sn", quoted(attribute.shortName().asChar()));
    addFlag(record, "-ln", quoted(attribute.name().asChar()));
    if (object.hasFn(MFn::kEnumAttribute)) {
        describeEnum(object, record);
        return true;
    }
    if (object.hasFn(MFn::kTypedAttribute)) {
        addFlag(record, "-dt", quoted("string"));
        return MFnTypedAttribute(object).attrType() == MFnData::kString;
    }
    if (!object.hasFn(MFn::kNumericAttribute) ||
        !numericName(MFnNumericAttribute(object).unitType()))
        return false;
    describeNumeric(object, record);
    return true;
}

MFnNumericData::Type numericType(const std::string& name) {
    if (name == "bool")
        return MFnNumericData::kBoolean;
    if (name == "byte")
        return MFnNumericData::kByte;
    if (name == "short")
        return MFnNumericData::kShort;
    if (name == "long" || name == "int")
        return MFnNumericData::kInt;
    if (name == "float")
        return MFnNumericData::kFloat;
    if (name == "double" || name == "doubleLinear" || name == "doubleAngle")
        return MFnNumericData::kDouble;
    return MFnNumericData::kInvalid;
}

struct AddAttrFlags {
    std::string shortName, longName, type, dataType, fields;
    double defaultValue = 0;
    std::optional<double> minimum, maximum;
    bool keyable = false, hidden = false;
};

bool parseAddAttr(const std::vector<Token>& tokens, AddAttrFlags& flags, std::string& error) {
    for (std::size_t i = 0; i < tokens.size(); ++i) {
        const std::string& name = tokens[i].text;
        const std::string value = i + 1 < tokens.size() ? tokens[i + 1].text : std::string();
        double number = 0;
        if (tokens[i].quoted || name.compare(0, 1, "-") != 0)
            continue;
        ++i;
        if (name == "-sn" || name == "-shortName")
            flags.shortName = value;
        else if (name == "-ln" || name == "-longName")
            flags.longName = value;
        else if (name == "-at" || name == "-attributeType")
            flags.type = value;
        else if (name == "-dt" || name == "-dataType")
            flags.dataType = value;
        else if (name == "-en" || name == "-enumName")
            flags.fields = value;
        else if (name == "-nn" || name == "-niceName")
            continue; // only the interface of others shows it
        else if (!parseNumber(value, number)) {
            error = "Bad argument of addAttr " + name;
            return false;
        } else if (name == "-dv" || name == "-defaultValue")
            flags.defaultValue = number;
        else if (name == "-min" || name == "-minValue")
            flags.minimum = number;
        else if (name == "-max" || name == "-maxValue")
            flags.maximum = number;
        else if (name == "-k" || name == "-keyable")
            flags.keyable = number != 0;
        else if (name == "-h" || name == "-hidden")
            flags.hidden = number != 0;
        else if (name != "-ci" && name != "-cachedInternally" && name != "-s" &&
                 name != "-storable" && name != "-r" && name != "-readable" && name != "-w" &&
                 name != "-writable" && name != "-dcb" && name != "-disconnectBehaviour" &&
                 name != "-smn" && name != "-softMinValue" && name != "-smx" &&
                 name != "-softMaxValue" && name != "-is" && name != "-internalSet") {
            error = "addAttr " + name + " is not supported";
            return false;
        }
    }
    if (flags.longName.empty())
        flags.longName = flags.shortName;
    if (flags.shortName.empty())
        flags.shortName = flags.longName;
    if (flags.longName.empty())
        error = "New attribute needs either a long (-ln) or short (-sn) attribute name.";
    return !flags.longName.empty();
}

MObject makeEnum(const AddAttrFlags& flags) {
    MFnEnumAttribute attribute;
    const MObject object = attribute.create(flags.longName.c_str(), flags.shortName.c_str(),
                                            short(flags.defaultValue));
    short next = 0;
    std::size_t from = 0;
    while (from < flags.fields.size()) {
        const std::size_t end = std::min(flags.fields.find(':', from), flags.fields.size());
        std::string field = flags.fields.substr(from, end - from);
        const std::size_t equals = field.find('=');
        if (equals != std::string::npos) {
            next = short(std::atoi(field.c_str() + equals + 1));
            field.resize(equals);
        }
        attribute.addField(field.c_str(), next++);
        from = end + 1;
    }
    return object;
}

} // namespace

NodeText describeNode(const MObject& node) {
    NodeText text;
    if (isCurve(node)) {
        text.values = curveToText(node);
        return text;
    }
    const MFnDependencyNode function(node);
    Collector collector(text);
    for (unsigned i = 0; i < function.attributeCount(); ++i) {
        const MObject object = function.attribute(i);
        const MFnAttribute attribute(object);
        if (!attribute.parent().isNull())
            continue;
        if (attribute.isDynamic()) {
            AddAttrRecord record;
            if (!describeAdded(object, record))
                continue;
            text.added.push_back(std::move(record));
        }
        MStatus status;
        const MPlug plug = function.findPlug(object, false, &status);
        if (status)
            collector.visit(plug);
    }
    return text;
}

MObject makeAttribute(const std::vector<Token>& arguments, const MObject& node,
                      std::string& error) {
    AddAttrFlags flags;
    if (!parseAddAttr(arguments, flags, error))
        return MObject::kNullObj;
    const MFnDependencyNode function(node);
    if (function.hasAttribute(flags.longName.c_str()) ||
        function.hasAttribute(flags.shortName.c_str())) {
        error = "Found an attribute with the same name: " + flags.longName;
        return MObject::kNullObj;
    }
    MObject object;
    if (flags.dataType == "string") {
        object = MFnTypedAttribute().create(flags.longName.c_str(), flags.shortName.c_str(),
                                            MFnData::kString);
    } else if (flags.type == "enum") {
        object = makeEnum(flags);
    } else if (numericType(flags.type) != MFnNumericData::kInvalid) {
        MFnNumericAttribute numeric;
        object = numeric.create(flags.longName.c_str(), flags.shortName.c_str(),
                                numericType(flags.type), flags.defaultValue);
        if (flags.minimum)
            numeric.setMin(*flags.minimum);
        if (flags.maximum)
            numeric.setMax(*flags.maximum);
    } else {
        error = "Type specified for new attribute is unknown: " +
                (flags.type.empty() ? flags.dataType : flags.type);
        return MObject::kNullObj;
    }
    MFnAttribute attribute(object);
    attribute.setKeyable(flags.keyable);
    attribute.setHidden(flags.hidden);
    attribute.setStorable(true);
    return object;
}

} // namespace host
