#pragma once

#include <maya/MFnData.h>
#include <maya/MStringArray.h>

class MFnStringArrayData : public MFnData {
public:
    MFnStringArrayData();
    MFnStringArrayData(MObject& object, MStatus* ReturnStatus = nullptr);
    MFnStringArrayData(const MObject& object, MStatus* ReturnStatus = nullptr);

    MFn::Type type() const override;
    MObject create(MStatus* ReturnStatus = nullptr);
    MObject create(const MStringArray& array, MStatus* ReturnStatus = nullptr);
    unsigned int length(MStatus* ReturnStatus = nullptr) const;
    MString operator[](unsigned int index) const;
    MStringArray array(MStatus* ReturnStatus = nullptr);
    MStatus set(const MStringArray& array);
};
