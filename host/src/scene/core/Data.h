// Values that are more than a number.
#pragma once

#include "scene/core/Object.h"

#include <maya/MDoubleArray.h>
#include <maya/MIntArray.h>
#include <maya/MMatrix.h>
#include <maya/MPxData.h>
#include <maya/MString.h>
#include <maya/MStringArray.h>

#include <memory>

namespace host {

template <class T, MFn::Type kType> class ValueData : public Object {
public:
    explicit ValueData(T initial = T()) : value(std::move(initial)) {}
    MFn::Type apiType() const override { return kType; }
    bool hasFn(MFn::Type type) const override {
        return type == kType || type == MFn::kData || type == MFn::kBase;
    }
    T value;
};

using MatrixData = ValueData<MMatrix, MFn::kMatrixData>;
using StringData = ValueData<MString, MFn::kStringData>;
using StringArrayData = ValueData<MStringArray, MFn::kStringArrayData>;
using DoubleArrayData = ValueData<MDoubleArray, MFn::kDoubleArrayData>;
using IntArrayData = ValueData<MIntArray, MFn::kIntArrayData>;

/// Data of a plug-in's type; owns what the plug-in made.
class PluginData : public Object {
public:
    explicit PluginData(MPxData* made) : data(made) {}
    MFn::Type apiType() const override { return MFn::kPluginData; }
    bool hasFn(MFn::Type type) const override {
        return type == MFn::kPluginData || type == MFn::kData || type == MFn::kBase;
    }
    std::unique_ptr<MPxData> data;
};

} // namespace host
