#pragma once
#include "scene/text/SceneRecords.h"

#include <maya/MObject.h>

#include <string>
#include <vector>

// Keys of animation curves as setAttr statements: ".ktv", ".kit", ".kot", ".pre", ".pst".
namespace host {

bool isCurve(const MObject& node);
// Attributes of keys that curves of this host have not: directions and weights of tangents.
bool isTangentDetail(const std::string& plug);
std::vector<AttrRecord> curveToText(const MObject& curve);
// The same as one text, which tells two states of a curve apart.
std::string keysText(const MObject& curve);
// Whether the statement is one of the above; then it has been taken, or `error` says what is
// wrong with it.
bool textToCurve(const MObject& curve, const AttrRecord& record, std::string& error);

} // namespace host
