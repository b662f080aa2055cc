#pragma once

#include <maya/MDoubleArray.h>
#include <maya/MFnData.h>

class MFnDoubleArrayData : public MFnData {
public:
    MFnDoubleArrayData();
    MFnDoubleArrayData(MObject& object, MStatus* ReturnStatus = nullptr);
    MFnDoubleArrayData(const MObject& object, MStatus* ReturnStatus = nullptr);

    MFn::Type type() const override;
    MObject create(MStatus* ReturnStatus = nullptr);
    MObject create(const MDoubleArray& array, MStatus* ReturnStatus = nullptr);
    unsigned int length(MStatus* ReturnStatus = nullptr) const;
    double operator[](unsigned int index) const;
    MDoubleArray array(MStatus* ReturnStatus = nullptr);
    MStatus set(const MDoubleArray& array);
};
