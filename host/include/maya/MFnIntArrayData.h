#pragma once

#include <maya/MFnData.h>
#include <maya/MIntArray.h>

class MFnIntArrayData : public MFnData {
public:
    MFnIntArrayData();
    MFnIntArrayData(MObject& object, MStatus* ReturnStatus = nullptr);
    MFnIntArrayData(const MObject& object, MStatus* ReturnStatus = nullptr);

    MFn::Type type() const override;
    MObject create(MStatus* ReturnStatus = nullptr);
    MObject create(const MIntArray& array, MStatus* ReturnStatus = nullptr);
    unsigned int length(MStatus* ReturnStatus = nullptr) const;
    int operator[](unsigned int index) const;
    MIntArray array(MStatus* ReturnStatus = nullptr);
    MStatus set(const MIntArray& array);
};
