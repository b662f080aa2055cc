#pragma once

#include <maya/MFnBase.h>

class MFnData : public MFnBase {
public:
    enum Type {
        kInvalid = 0,
        kNumeric,
        kPlugin,
        kPluginGeometry,
        kString,
        kMatrix,
        kStringArray,
        kDoubleArray,
        kFloatArray,
        kIntArray,
        kPointArray,
        kVectorArray,
        kMatrixArray,
        kComponentList,
        kMesh,
        kLattice,
        kNurbsCurve,
        kNurbsSurface,
        kSphere,
        kDynArrayAttrs,
        kDynSweptGeometry,
        kSubdSurface,
        kNObject,
        kNId,
        kAny,
        kFalloffFunction,
        kLast
    };

    MFn::Type type() const override;
};
