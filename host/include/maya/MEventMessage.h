#pragma once

#include <maya/MMessage.h>

class MString;
class MStringArray;

/// Callbacks for named scene events. A name that does not exist is a failure.
class MEventMessage : public MMessage {
public:
    static MCallbackId addEventCallback(const MString& event, MBasicFunction func,
                                        void* clientData = nullptr,
                                        MStatus* ReturnStatus = nullptr);
    static MStatus getEventNames(MStringArray& names);
};
