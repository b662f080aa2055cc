#pragma once
#include "scene/files/FileIO.h"
#include "scene/files/SceneSink.h"

#include <maya/MObject.h>

#include <set>
#include <string>
#include <vector>

// Goes through the scene and writes it to a sink.
namespace host {

// `fileName` is for the head of the file; `without` names plugs (as the return value does) whose
// plug-in data are left out. Returns "NODE.PLUG" of the first plug-in data that failed to write
// themselves, after which the sink's file is not usable, or "". Throws FileError.
std::string writeScene(SceneSink& sink, const std::string& fileName, const SceneMemory& memory,
                       const std::set<std::string>& without);

// Only the nodes of exactly these types, with what they are connected to. Data that fail to write
// themselves are left out.
void writeNodes(SceneSink& sink, const std::vector<std::string>& types);

// The shortest path that names the node alone.
std::string nodePath(const MObject& node);

} // namespace host
