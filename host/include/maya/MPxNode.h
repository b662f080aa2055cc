#pragma once

#include <maya/MObject.h>
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MTypeId.h>
#include <maya/MTypes.h>

class MDataBlock;
class MPlug;

namespace host {
class Node;
struct NodeAccess;
} // namespace host

/// Base of nodes that a plug-in adds. thisMObject() is usable from postConstructor() on.
class MPxNode {
public:
    enum Type {
        kDependNode,
        kLocatorNode,
        kDeformerNode,
        kManipContainer,
        kSurfaceShape,
        kFieldNode,
        kEmitterNode,
        kSpringNode,
        kIkSolverNode,
        kHardwareShader,
        kHwShaderNode,
        kTransformNode,
        kObjectSet,
        kFluidEmitterNode,
        kImagePlaneNode,
        kParticleAttributeMapperNode,
        kCameraSetNode,
        kConstraintNode,
        kManipulatorNode,
        kClientDeviceNode,
        kThreadedDeviceNode,
        kAssembly,
        kSkinCluster,
        kGeometryFilter,
        kBlendShape,
        kMotionPathNode,
        kLast
    };

    MPxNode();
    virtual ~MPxNode();

    virtual void postConstructor();
    virtual MStatus compute(const MPlug& plug, MDataBlock& dataBlock);

    virtual MPxNode::Type type() const;
    MTypeId typeId() const;
    MString typeName() const;
    MString name() const;
    MObject thisMObject() const;

    /// To be called by the initialise function of the class that is being registered.
    static MStatus addAttribute(const MObject& attribute);
    static MStatus attributeAffects(const MObject& whenChanges, const MObject& isAffected);

private:
    friend struct host::NodeAccess;
    host::Node* node_ = nullptr;
};
