#pragma once
#include "scene/text/SceneRecords.h"

#include <maya/MObject.h>
#include <maya/MPlug.h>

#include <string>
#include <vector>

// Values of plugs as the words of setAttr: for scene files, the setAttr and getAttr commands and
// their undo.
//
// Linear values are written in the current linear unit, angles and times likewise; they are read
// in those too.
namespace host {

enum class PlugKind {
    None, // message and others without a value
    Boolean,
    Integer, // also enum
    Real,
    Linear,
    Angle,
    Time,
    Text,
    Matrix,   // 16 numbers, row after row
    Numbers,  // an array of doubles
    Integers, // an array of integers
    Texts,    // an array of texts
    Plugin,   // data of a plug-in
    Compound,
};

PlugKind plugKind(const MPlug& plug);
// A compound of two to four plain numbers, set as one: ".t" -type "double3" 1 2 3.
bool isTuple(const MPlug& plug);
// "double3", "float2", "long3"; "" when the plug is no tuple.
std::string tupleType(const MPlug& plug);

// The value with its -type, where there is one to write. False for kinds without text.
bool valueToText(const MPlug& plug, AttrRecord& record);

// Sets one plug, a tuple, or a row of array elements from words. On failure `error` says why and
// elements before the failing one may have been set.
bool textToValue(const std::vector<MPlug>& plugs, const AttrRecord& record, std::string& error);

// Hands plug-in data over to a plug. A lock set earlier is no reason to lose what a file holds.
void placeData(MPlug plug, const MObject& data);

// A path below a node, with or without the leading dot: "t", "translateX", "translate.tx",
// "ktv[0:3]", "worldMatrix[0]". A range gives every element of it. Empty when there is none such.
std::vector<MPlug> findPlugs(const MObject& node, const std::string& path);

} // namespace host
