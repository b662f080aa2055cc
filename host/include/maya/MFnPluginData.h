#pragma once

#include <maya/MFnData.h>
#include <maya/MTypeId.h>

class MPxData;

class MFnPluginData : public MFnData {
public:
    MFnPluginData();
    MFnPluginData(MObject& object, MStatus* ReturnStatus = nullptr);
    MFnPluginData(const MObject& object, MStatus* ReturnStatus = nullptr);

    MFn::Type type() const override;
    MObject create(const MTypeId& typeId, MStatus* ReturnStatus = nullptr);
    MTypeId typeId(MStatus* ReturnStatus = nullptr) const;
    MPxData* data(MStatus* ReturnStatus = nullptr);
    const MPxData* constData(MStatus* ReturnStatus = nullptr) const;
};
