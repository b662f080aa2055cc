#pragma once
#include "scene/SceneRecords.h"

#include <maya/MObject.h>

#include <string>
#include <vector>

// Keys of animation curves as setAttr statements: ".tan", ".ktv", ".kit", ".kot", and the tangent
// directions ".kix", ".kiy", ".kox", ".koy" of fixed tangents.
namespace host {

bool isCurve(const MObject& node);
std::vector<AttrRecord> curveToText(const MObject& curve);
// Whether the statement is one of the above; then it has been taken, or `error` says what is
// wrong with it.
bool textToCurve(const MObject& curve, const AttrRecord& record, std::string& error);

} // namespace host
