#pragma once
#include "scene/files/KeptStatements.h"
#include "scene/files/SceneBuilder.h"
#include "scene/files/SceneWalk.h"

#include <maya/MObject.h>
#include <maya/MObjectHandle.h>

#include <algorithm>
#include <map>
#include <optional>
#include <set>

namespace host {

constexpr const char* kSettingsNode = "sceneConfigurationScriptNode";
constexpr int kMostMessages = 200; // a badly damaged file would otherwise give one for each line

struct SceneBuilder::State {
    State(SceneMemory& sceneMemory, std::string fileName, bool isImport)
        : memory(sceneMemory), place{std::move(fileName), 0, true}, importing(isImport) {}

    SceneMemory& memory;
    FilePlace place;
    const bool importing;
    ReadResult result;
    int shown = 0;
    std::set<std::string> shownOnce;

    MObject current;
    bool inSettings = false; // the current node is the one that only carries playback settings
    bool orphaned = false;   // what follows belongs to a statement that is kept, not to a node
    MObjectHandle lastMade;
    StatementPlace where = StatementPlace::Head;
    // Nodes the file made and their whole paths in the file, by their last name; several may share
    // it under different parents.
    std::multimap<std::string, std::pair<std::string, MObjectHandle>> made;
    std::map<std::string, double> playback;
    std::optional<double> currentFrame;
    std::vector<MObjectHandle> locked; // to be locked when everything about them is read
    std::set<std::string> uuids;       // of the scene before an import
    std::optional<Units> sceneUnits;   // to put back after an import

    bool unknown() const {
        const KeptNode* kept = keptStatements().find(current);
        return kept && !kept->originalType.empty();
    }
    void keep(KeptStatement statement) {
        keptStatements().of(current).statements.push_back(std::move(statement));
    }
    // The reading has come at least as far as this part of the file.
    void reach(StatementPlace part) { where = std::max(where, part); }
    MObject resolve(const std::string& path) const;
    std::string pathInFile(const MObject& node, const std::string& path) const;
    std::string currentPath() const { return nodePath(current); }
};

// The node of a path, as the scene knows it now.
MObject nodeInScene(const std::string& path);

} // namespace host
