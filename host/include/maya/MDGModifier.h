#pragma once

#include <maya/MObject.h>
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MTypeId.h>

#include <memory>

class MPlug;

namespace host {
class ModifierSteps;
} // namespace host

/// A list of changes that doIt() carries out and undoIt() takes back, any number of times. Nodes
/// are made at once but join the scene with doIt().
class MDGModifier {
public:
    MDGModifier();
    virtual ~MDGModifier();

    MObject createNode(const MString& type, MStatus* ReturnStatus = nullptr);
    MObject createNode(const MTypeId& typeId, MStatus* ReturnStatus = nullptr);
    MStatus deleteNode(const MObject& node);
    MStatus renameNode(const MObject& node, const MString& newName);
    MStatus connect(const MPlug& source, const MPlug& dest);
    MStatus connect(const MObject& sourceNode, const MObject& sourceAttr, const MObject& destNode,
                    const MObject& destAttr);
    MStatus disconnect(const MPlug& source, const MPlug& dest);
    MStatus addAttribute(const MObject& node, const MObject& attribute);
    MStatus removeAttribute(const MObject& node, const MObject& attribute);
    MStatus commandToExecute(const MString& command);
    virtual MStatus doIt();
    virtual MStatus undoIt();

private:
    MDGModifier(const MDGModifier&) = delete;
    MDGModifier& operator=(const MDGModifier&) = delete;

protected:
    std::unique_ptr<host::ModifierSteps> steps_;
};
