#pragma once

#include <maya/MFnData.h>
#include <maya/MMatrix.h>

class MFnMatrixData : public MFnData {
public:
    MFnMatrixData();
    MFnMatrixData(MObject& object, MStatus* ReturnStatus = nullptr);
    MFnMatrixData(const MObject& object, MStatus* ReturnStatus = nullptr);

    MFn::Type type() const override;
    MObject create(MStatus* ReturnStatus = nullptr);
    MObject create(const MMatrix& matrix, MStatus* ReturnStatus = nullptr);
    const MMatrix& matrix(MStatus* ReturnStatus = nullptr) const;
    MStatus set(const MMatrix& matrix);
};
