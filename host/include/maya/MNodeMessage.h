#pragma once

#include <maya/MMessage.h>

/// Callbacks for what happens to nodes.
class MNodeMessage : public MMessage {
public:
    /// The string is the name before, empty when the node gets its first. A null object: all nodes.
    static MCallbackId addNameChangedCallback(MObject& node, MNodeStringFunction func,
                                              void* clientData = nullptr,
                                              MStatus* ReturnStatus = nullptr);
};
