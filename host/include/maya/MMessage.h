#pragma once

#include <maya/MCallbackIdArray.h>
#include <maya/MStatus.h>
#include <maya/MTypes.h>

class MObject;
class MString;

class MMessage {
public:
    typedef void (*MBasicFunction)(void* clientData);
    typedef void (*MCheckFunction)(bool* retCode, void* clientData);
    typedef void (*MNodeFunction)(MObject& node, void* clientData);
    typedef void (*MNodeStringFunction)(MObject& node, const MString& str, void* clientData);
    typedef void (*MTwoStringFunction)(const MString& str1, const MString& str2, void* clientData);

    static MStatus removeCallback(MCallbackId id);
    static MStatus removeCallbacks(const MCallbackIdArray& ids);
    static MCallbackId currentCallbackId(MStatus* ReturnStatus = nullptr);
};
