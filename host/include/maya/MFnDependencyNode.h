#pragma once

#include <maya/MFnBase.h>
#include <maya/MTypeId.h>

class MPlug;
class MPlugArray;
class MPxNode;

class MFnDependencyNode : public MFnBase {
public:
    enum MAttrClass { kLocalDynamicAttr = 1, kNormalAttr, kExtensionAttr, kInvalidAttr };

    MFnDependencyNode();
    MFnDependencyNode(MObject& object, MStatus* ReturnStatus = nullptr);
    MFnDependencyNode(const MObject& object, MStatus* ReturnStatus = nullptr);

    MFn::Type type() const override;

    MObject create(const MTypeId& typeId, MStatus* ReturnStatus = nullptr);
    MObject create(const MTypeId& typeId, const MString& name, MStatus* ReturnStatus = nullptr);
    MObject create(const MString& type, MStatus* ReturnStatus = nullptr);
    MObject create(const MString& type, const MString& name, MStatus* ReturnStatus = nullptr);

    MTypeId typeId(MStatus* ReturnStatus = nullptr) const;
    MString typeName(MStatus* ReturnStatus = nullptr) const;
    MString name(MStatus* ReturnStatus = nullptr) const;
    MString absoluteName(MStatus* ReturnStatus = nullptr) const;
    MString uniqueName(MStatus* ReturnStatus = nullptr) const;
    /// The name it got, made unique.
    MString setName(const MString& name, bool createNamespace = false,
                    MStatus* ReturnStatus = nullptr);
    bool hasUniqueName(MStatus* ReturnStatus = nullptr) const;
    bool isDefaultNode(MStatus* ReturnStatus = nullptr) const;
    bool isFromReferencedFile(MStatus* ReturnStatus = nullptr) const;
    bool isLocked(MStatus* ReturnStatus = nullptr) const;
    MStatus setLocked(bool locked);
    MPxNode* userNode(MStatus* ReturnStatus = nullptr) const;
    MString pluginName(MStatus* ReturnStatus = nullptr) const;

    unsigned int attributeCount(MStatus* ReturnStatus = nullptr) const;
    MObject attribute(unsigned int index, MStatus* ReturnStatus = nullptr) const;
    MObject attribute(const MString& attrName, MStatus* ReturnStatus = nullptr) const;
    bool hasAttribute(const MString& name, MStatus* ReturnStatus = nullptr) const;
    MStatus addAttribute(const MObject& attribute);
    MStatus removeAttribute(const MObject& attribute);

    MPlug findPlug(const MString& attrName, bool wantNetworkedPlug,
                   MStatus* ReturnStatus = nullptr) const;
    MPlug findPlug(const MObject& attribute, bool wantNetworkedPlug,
                   MStatus* ReturnStatus = nullptr) const;
    MStatus getConnections(MPlugArray& array) const;

    static MString classification(const MString& nodeTypeName);
};
