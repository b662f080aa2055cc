#pragma once

#include <maya/MFn.h>
#include <maya/MObject.h>
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MTypes.h>

#include <memory>

class MAngle;
class MDGContext;
class MDataHandle;
class MDistance;
class MIntArray;
class MPlugArray;
class MPxData;
class MTime;

namespace host {
class Node;
class Slot;
struct PlugAccess;
} // namespace host

/// A place on a node that holds a value. Setting marks the scene as modified and records nothing
/// for undo.
class MPlug {
public:
    enum MValueSelector { kAll, kNonDefault, kChanged, kLastAttrSelector };

    MPlug();
    MPlug(const MPlug& other);
    MPlug(const MObject& node, const MObject& attribute);
    ~MPlug();
    MPlug& operator=(const MPlug& other);
    bool operator==(const MPlug& other) const;
    bool operator!=(const MPlug& other) const;

    MString name(MStatus* ReturnStatus = nullptr) const; ///< "node.attribute", as scripts write it
    MString info(MStatus* ReturnStatus = nullptr) const;
    MString partialName(bool includeNodeName = false, bool includeNonMandatoryIndices = false,
                        bool includeInstancedIndices = false, bool useAlias = false,
                        bool useFullAttributePath = false, bool useLongNames = false,
                        MStatus* ReturnStatus = nullptr) const;
    bool isNull(MStatus* ReturnStatus = nullptr) const;
    MObject node(MStatus* ReturnStatus = nullptr) const;
    MObject attribute(MStatus* ReturnStatus = nullptr) const;

    bool isArray(MStatus* ReturnStatus = nullptr) const;
    bool isElement(MStatus* ReturnStatus = nullptr) const;
    bool isCompound(MStatus* ReturnStatus = nullptr) const;
    bool isChild(MStatus* ReturnStatus = nullptr) const;
    bool isDynamic(MStatus* ReturnStatus = nullptr) const;
    MPlug parent(MStatus* ReturnStatus = nullptr) const;
    MPlug array(MStatus* ReturnStatus = nullptr) const;
    unsigned int numElements(MStatus* ReturnStatus = nullptr) const;
    unsigned int evaluateNumElements(MStatus* ReturnStatus = nullptr);
    unsigned int numChildren(MStatus* ReturnStatus = nullptr) const;
    MPlug child(unsigned int index, MStatus* ReturnStatus = nullptr) const;
    MPlug child(const MObject& attribute, MStatus* ReturnStatus = nullptr) const;
    MPlug elementByLogicalIndex(unsigned int logicalIndex, MStatus* ReturnStatus = nullptr) const;
    MPlug elementByPhysicalIndex(unsigned int physicalIndex, MStatus* ReturnStatus = nullptr) const;
    unsigned int logicalIndex(MStatus* ReturnStatus = nullptr) const;
    unsigned int getExistingArrayAttributeIndices(MIntArray& indices,
                                                  MStatus* ReturnStatus = nullptr);
    MPlug operator[](int logicalIndex) const;

    bool isKeyable(MStatus* ReturnStatus = nullptr) const;
    MStatus setKeyable(bool keyable);
    bool isLocked(MStatus* ReturnStatus = nullptr) const;
    MStatus setLocked(bool locked);
    bool isChannelBoxFlagSet(MStatus* ReturnStatus = nullptr) const;
    MStatus setChannelBox(bool inChannelBox);
    bool isDefaultValue(bool forceEval = true, MStatus* ReturnStatus = nullptr) const;

    bool isConnected(MStatus* ReturnStatus = nullptr) const;
    bool isSource(MStatus* ReturnStatus = nullptr) const;
    bool isDestination(MStatus* ReturnStatus = nullptr) const;
    MPlug source(MStatus* ReturnStatus = nullptr) const;
    bool destinations(MPlugArray& array, MStatus* ReturnStatus = nullptr) const;
    bool connectedTo(MPlugArray& array, bool asDst, bool asSrc,
                     MStatus* ReturnStatus = nullptr) const;

    MStatus getValue(MObject& value) const;
    MStatus getValue(double& value) const;
    MStatus getValue(float& value) const;
    MStatus getValue(int& value) const;
    MStatus getValue(short& value) const;
    MStatus getValue(char& value) const;
    MStatus getValue(bool& value) const;
    MStatus getValue(MString& value) const;
    MStatus getValue(MTime& value) const;
    MStatus getValue(MAngle& value) const;
    MStatus getValue(MDistance& value) const;

    MObject asMObject(MStatus* ReturnStatus = nullptr) const;
    MObject asMObject(const MDGContext& context, MStatus* ReturnStatus = nullptr) const;
    double asDouble(MStatus* ReturnStatus = nullptr) const;
    double asDouble(const MDGContext& context, MStatus* ReturnStatus = nullptr) const;
    float asFloat(MStatus* ReturnStatus = nullptr) const;
    float asFloat(const MDGContext& context, MStatus* ReturnStatus = nullptr) const;
    int asInt(MStatus* ReturnStatus = nullptr) const;
    short asShort(MStatus* ReturnStatus = nullptr) const;
    char asChar(MStatus* ReturnStatus = nullptr) const;
    bool asBool(MStatus* ReturnStatus = nullptr) const;
    bool asBool(const MDGContext& context, MStatus* ReturnStatus = nullptr) const;
    MString asString(MStatus* ReturnStatus = nullptr) const;
    MTime asMTime(MStatus* ReturnStatus = nullptr) const;
    MAngle asMAngle(MStatus* ReturnStatus = nullptr) const;
    MDistance asMDistance(MStatus* ReturnStatus = nullptr) const;

    MStatus setValue(const MObject& value);
    MStatus setValue(double value);
    MStatus setValue(float value);
    MStatus setValue(int value);
    MStatus setValue(short value);
    MStatus setValue(char value);
    MStatus setValue(bool value);
    MStatus setValue(const MString& value);
    MStatus setValue(const char* value);
    MStatus setValue(const MTime& value);
    MStatus setValue(const MAngle& value);
    MStatus setValue(const MDistance& value);
    MStatus setMObject(const MObject& value);
    MStatus setMPxData(MPxData* value); ///< the plug owns and deletes it, also on failure
    MStatus setDouble(double value);
    MStatus setFloat(float value);
    MStatus setInt(int value);
    MStatus setShort(short value);
    MStatus setChar(char value);
    MStatus setBool(bool value);
    MStatus setString(const MString& value);
    MStatus setMTime(const MTime& value);
    MStatus setMAngle(const MAngle& value);
    MStatus setMDistance(const MDistance& value);

private:
    friend struct host::PlugAccess;
    std::shared_ptr<host::Node> node_;
    std::shared_ptr<host::Slot> slot_;
};
