#pragma once

#include <maya/MFnData.h>
#include <maya/MString.h>

class MFnStringData : public MFnData {
public:
    MFnStringData();
    MFnStringData(MObject& object, MStatus* ReturnStatus = nullptr);
    MFnStringData(const MObject& object, MStatus* ReturnStatus = nullptr);

    MFn::Type type() const override;
    MObject create(MStatus* ReturnStatus = nullptr);
    MObject create(const MString& text, MStatus* ReturnStatus = nullptr);
    MString string(MStatus* ReturnStatus = nullptr) const;
    MStatus set(const MString& text);
};
