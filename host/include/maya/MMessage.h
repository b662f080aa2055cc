#pragma once

#include <maya/MCallbackIdArray.h>
#include <maya/MStatus.h>
#include <maya/MTypes.h>

class MMessage {
public:
    typedef void (*MBasicFunction)(void* clientData);

    static MStatus removeCallback(MCallbackId id);
    static MStatus removeCallbacks(const MCallbackIdArray& ids);
    static MCallbackId currentCallbackId(MStatus* ReturnStatus = nullptr);
};
