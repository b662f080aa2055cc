#include "script/MayaValues.h"

#include <maya/MDoubleArray.h>
#include <maya/MIntArray.h>
#include <maya/MString.h>
#include <maya/MStringArray.h>
#include <maya/MVector.h>

namespace host::script {

namespace {

template <class T, class Out> bool copy(const Value& value, Out& out) {
    const T* held = value.getIf<T>();
    if (held)
        out = *held;
    return held;
}

template <class List, class Array> bool copyArray(const Value& value, Array& out) {
    const List* held = value.getIf<List>();
    if (!held)
        return false;
    out.setLength(static_cast<unsigned>(held->size()));
    for (unsigned i = 0; i < held->size(); ++i)
        out[i] = (*held)[i];
    return true;
}

MString mayaString(const std::string& text) {
    MString out;
    out.setUTF8(text.c_str());
    return out;
}

template <class List, class Array> List listOf(const Array& array) {
    List list;
    for (unsigned i = 0; i < array.length(); ++i)
        list.push_back(array[i]);
    return list;
}

} // namespace

bool toMaya(const Value& value, int& out) {
    return copy<int>(value, out);
}
bool toMaya(const Value& value, double& out) {
    return copy<double>(value, out);
}

bool toMaya(const Value& value, MString& out) {
    const auto* text = value.getIf<std::string>();
    if (text)
        out = mayaString(*text);
    return text;
}

bool toMaya(const Value& value, MIntArray& out) {
    return copyArray<Ints>(value, out);
}
bool toMaya(const Value& value, MDoubleArray& out) {
    return copyArray<Floats>(value, out);
}

bool toMaya(const Value& value, MStringArray& out) {
    const auto* list = value.getIf<Strings>();
    if (!list)
        return false;
    out.clear();
    for (const std::string& item : *list)
        out.append(mayaString(item));
    return true;
}

bool toMaya(const Value& value, MVector& out) {
    const auto* v = value.getIf<Vec3>();
    if (v)
        out = MVector(v->x, v->y, v->z);
    return v;
}

Value fromMaya(const MString& value) {
    return std::string(value.asUTF8());
}
Value fromMaya(const MIntArray& value) {
    return listOf<Ints>(value);
}
Value fromMaya(const MDoubleArray& value) {
    return listOf<Floats>(value);
}

Value fromMaya(const MStringArray& value) {
    Strings list;
    for (unsigned i = 0; i < value.length(); ++i)
        list.emplace_back(value[i].asUTF8());
    return list;
}

} // namespace host::script
