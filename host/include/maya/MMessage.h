#pragma once

#include <maya/MCallbackIdArray.h>
#include <maya/MStatus.h>
#include <maya/MTypes.h>

class MMessage {
public:
    typedef void (*MBasicFunction)(void* clientData);
    typedef void (*MCheckFunction)(bool* retCode, void* clientData);

    static MStatus removeCallback(MCallbackId id);
    static MStatus removeCallbacks(const MCallbackIdArray& ids);
    static MCallbackId currentCallbackId(MStatus* ReturnStatus = nullptr);
};
