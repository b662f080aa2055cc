#pragma once
#include <maya/MFnBase.h>
#include <maya/MObject.h>
#include <maya/MPxData.h>
#include <maya/MPxNode.h>
#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MSyntax.h>
#include <maya/MTypeId.h>
#include <maya/MTypes.h>

// Registers and deregisters what a plug-in adds.
//
// Exactly one source of a plug-in includes this header plainly; it then declares the two entry
// points for export and defines the exported version string the loader checks. Every other source
// defines MNoPluginEntry and MNoVersionString before the include.

#if defined(_WIN32)
#define MAYA_PLUGIN_EXPORT __declspec(dllexport)
#else
#define MAYA_PLUGIN_EXPORT __attribute__((visibility("default")))
#endif

typedef void* (*MCreatorFunction)();
typedef MStatus (*MInitializeFunction)();
typedef MSyntax (*MCreateSyntaxFunction)();

class MFnPlugin : public MFnBase {
public:
    MFnPlugin();
    // Sets vendor, version and required API version on the plug-in object. "Any" as the required
    // version accepts every host.
    MFnPlugin(MObject& object, const char* vendor = "Unknown", const char* version = "Unknown",
              const char* requiredApiVersion = "Any", MStatus* ReturnStatus = nullptr);
    ~MFnPlugin() override;
    MFn::Type type() const override;

    MString vendor(MStatus* ReturnStatus = nullptr) const;
    MString version(MStatus* ReturnStatus = nullptr) const;
    MString apiVersion(MStatus* ReturnStatus = nullptr) const;
    MString name(MStatus* ReturnStatus = nullptr) const;
    // The directory the plug-in was loaded from, without a trailing slash.
    MString loadPath(MStatus* ReturnStatus = nullptr) const;
    MStatus setName(const MString& newName, bool allowRename = true);
    MStatus setVersion(const MString& newVersion);

    // Each fails with kInvalidParameter or kFailure when the name or id is taken, respectively
    // when what is to be deregistered is not this plug-in's or still in use.
    MStatus registerCommand(const MString& commandName, MCreatorFunction creatorFunction,
                            MCreateSyntaxFunction createSyntaxFunction = nullptr);
    MStatus deregisterCommand(const MString& commandName);

    MStatus registerContextCommand(const MString& commandName, MCreatorFunction creatorFunction);
    MStatus registerContextCommand(const MString& commandName, MCreatorFunction creatorFunction,
                                   const MString& toolCmdName, MCreatorFunction toolCmdCreator,
                                   MCreateSyntaxFunction toolCmdSyntax = nullptr);
    MStatus deregisterContextCommand(const MString& commandName);
    MStatus deregisterContextCommand(const MString& commandName, const MString& toolCmdName);

    MStatus registerNode(const MString& typeName, const MTypeId& typeId,
                         MCreatorFunction creatorFunction, MInitializeFunction initFunction,
                         MPxNode::Type type = MPxNode::kDependNode,
                         const MString* classification = nullptr);
    MStatus deregisterNode(const MTypeId& typeId);

    MStatus registerData(const MString& typeName, const MTypeId& typeId,
                         MCreatorFunction creatorFunction, MPxData::Type type = MPxData::kData);
    MStatus deregisterData(const MTypeId& typeId);

    // The null object when no plug-in of that name is loaded.
    static MObject findPlugin(const MString& pluginName);
    static bool isNodeRegistered(const MString& typeName);
};

#if !defined(MNoPluginEntry)
MAYA_PLUGIN_EXPORT MStatus initializePlugin(MObject obj);
MAYA_PLUGIN_EXPORT MStatus uninitializePlugin(MObject obj);
#endif

#if !defined(MNoVersionString)
#define MAYA_VERSION_TEXT_(x) #x
#define MAYA_VERSION_TEXT(x) MAYA_VERSION_TEXT_(x)
MAYA_PLUGIN_EXPORT extern const char MApiVersion[];
const char MApiVersion[] = MAYA_VERSION_TEXT(MAYA_API_VERSION);
#undef MAYA_VERSION_TEXT
#undef MAYA_VERSION_TEXT_
#endif
