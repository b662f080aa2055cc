#pragma once

#include "script/Value.h"

class MDoubleArray;
class MIntArray;
class MString;
class MStringArray;
class MVector;

/// Between script values and the API's types. toMaya gives false, and leaves its argument alone,
/// when the value is of another type; nothing is converted, not even an integer to a float.
namespace host::script {

bool toMaya(const Value& value, int& out);
bool toMaya(const Value& value, double& out);
bool toMaya(const Value& value, MString& out);
bool toMaya(const Value& value, MIntArray& out);
bool toMaya(const Value& value, MDoubleArray& out);
bool toMaya(const Value& value, MStringArray& out);
bool toMaya(const Value& value, MVector& out);

Value fromMaya(const MString& value);
Value fromMaya(const MIntArray& value);
Value fromMaya(const MDoubleArray& value);
Value fromMaya(const MStringArray& value);

} // namespace host::script
