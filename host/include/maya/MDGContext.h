#pragma once

#include <maya/MStatus.h>
#include <maya/MTime.h>

/// The moment at which a plug is evaluated: the scene's (normal) or a given one.
class MDGContext {
public:
    MDGContext();
    MDGContext(const MTime& when);
    MDGContext(const MDGContext& other);
    ~MDGContext();
    MDGContext& operator=(const MDGContext& other);

    bool isNormal(MStatus* ReturnStatus = nullptr) const;
    MStatus getTime(MTime& time) const;

    static const MDGContext fsNormal;

private:
    bool normal_;
    MTime time_;
};
