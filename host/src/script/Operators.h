#pragma once

#include "script/Ast.h"

/// Arithmetic, comparison and element access of the language's values.
namespace host::script {

/// Applies a binary operator by the language's conversion rules: a string makes + concatenate, a
/// float makes integers floats, vectors multiply to their dot product. ScriptError otherwise.
Value applyOperator(Operator op, const Value& left, const Value& right);

Value negated(const Value& value);

/// Equality as == and `case` see it.
bool equal(const Value& left, const Value& right);

/// Sets an element, growing the array with defaults. ScriptError for a negative or absurd index.
void setElement(Value& array, int index, const Value& value);

/// Reads an element: of an array, or the component 0 to 2 of a vector.
Value elementAt(const Value& array, int index);

/// Makes a declared array as long as its declaration says.
void resizeArray(Value& array, int size);

/// Strings and arrays may not grow beyond this.
constexpr std::size_t kMaximumElements = 8'000'000;
constexpr std::size_t kMaximumStringBytes = 32u << 20;

} // namespace host::script
