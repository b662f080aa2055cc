#pragma once

#include <maya/MMessage.h>
#include <maya/MString.h>

/// The type that all types of nodes inherit from.
#define kDefaultNodeType "dependNode"

/// Callbacks for what happens to the dependency graph.
class MDGMessage : public MMessage {
public:
    /// Of nodes of a type, and of those that inherit from it.
    static MCallbackId addNodeAddedCallback(MNodeFunction func,
                                            const MString& nodeType = kDefaultNodeType,
                                            void* clientData = nullptr,
                                            MStatus* ReturnStatus = nullptr);
    static MCallbackId addNodeRemovedCallback(MNodeFunction func,
                                              const MString& nodeType = kDefaultNodeType,
                                              void* clientData = nullptr,
                                              MStatus* ReturnStatus = nullptr);
};
