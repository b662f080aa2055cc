#include "commands/SceneCommandSupport.h"
#include "commands/SceneCommands.h"
#include "plugins/PluginLoader.h"
#include "scene/core/SceneState.h"
#include "scene/core/TimeState.h"
#include "scene/files/FileIO.h"
#include "scene/text/UnitNames.h"

#include <QFileInfo>

#include <algorithm>

namespace host {

using script::ArgKind;
using script::CommandCall;
using script::Flags;
using script::ParsedFlags;
using script::ScriptError;
using script::Strings;
using script::Value;

namespace {

const Flags& fileFlags() {
    static const Flags flags = Flags()
                                   .flag("-new", "-newFile")
                                   .flag("-o", "-open")
                                   .flag("-s", "-save")
                                   .flag("-i", "-import")
                                   .flag("-ea", "-exportAll")
                                   .flag("-rn", "-rename", {ArgKind::String})
                                   .flag("-typ", "-type", {ArgKind::String})
                                   .flag("-f", "-force")
                                   .flag("-mf", "-modified", {ArgKind::Boolean})
                                   .flag("-sn", "-sceneName")
                                   .flag("-shn", "-shortName")
                                   .flag("-ex", "-exists")
                                   .flag("-loc", "-location")
                                   .flag("-err", "-errorStatus")
                                   .flag("-iv", "-ignoreVersion")
                                   .flag("-pmt", "-prompt", {ArgKind::Boolean})
                                   .flag("-op", "-options", {ArgKind::String})
                                   .query()
                                   .objects(0, 1);
    return flags;
}

Value queryFile(const ParsedFlags& parsed) {
    const FileIO& files = fileIO();
    const QString path = QString::fromStdString(files.sceneName());
    if (parsed.isSet("-modified"))
        return sceneModified();
    if (parsed.isSet("-shortName") || (parsed.isSet("-sceneName") && parsed.isSet("-shortName")))
        return QFileInfo(path).fileName().toStdString();
    if (parsed.isSet("-sceneName"))
        return files.sceneName();
    if (parsed.isSet("-type"))
        return Strings{formatName(files.format())};
    if (parsed.isSet("-exists"))
        return QFileInfo(QString::fromStdString(parsed.object())).exists();
    if (parsed.isSet("-location"))
        return files.sceneName().empty() ? "unknown" : files.sceneName();
    if (parsed.isSet("-errorStatus"))
        return files.readErrors() > 0;
    throw ScriptError("No query flag of 'file' was specified.");
}

FileFormat requestedFormat(const ParsedFlags& parsed, FileFormat fallback) {
    FileFormat format = fallback;
    if (parsed.isSet("-type") && !formatFromName(parsed.getString("-type"), format))
        throw ScriptError("Unknown file type: " + parsed.getString("-type"));
    return format;
}

FileFormat formatByName(const std::string& path, FileFormat fallback) {
    const QString name = QString::fromStdString(path);
    if (name.endsWith(QLatin1String(".ma")))
        return FileFormat::MayaAscii;
    return name.endsWith(QLatin1String(".mb")) ? FileFormat::MayaBinary : fallback;
}

void requireSaved(const ParsedFlags& parsed) {
    if (sceneModified() && !parsed.isSet("-force"))
        throw ScriptError("Unsaved changes.");
}

std::string requirePath(const ParsedFlags& parsed) {
    if (parsed.object().empty())
        throw ScriptError("A file name must be specified.");
    return parsed.object();
}

// Problems inside the file have been reported one by one; the command fails at the end, with
// what could be read in the scene.
void requireWhole(const ReadResult& result) {
    if (result.errors > 0)
        throw ScriptError("Error reading file.");
}

Value doFile(const ParsedFlags& parsed) {
    FileIO& files = fileIO();
    const bool force = parsed.isSet("-force");
    if (parsed.isSet("-modified"))
        setSceneModified(parsed.getBool("-modified"));
    if (parsed.isSet("-newFile")) {
        requireSaved(parsed);
        files.newScene();
        files.setFormat(requestedFormat(parsed, files.format()));
        return files.sceneName();
    }
    if (parsed.isSet("-open")) {
        requireSaved(parsed);
        requireWhole(files.open(requirePath(parsed)));
        return files.sceneName();
    }
    if (parsed.isSet("-import")) {
        requireWhole(files.import(requirePath(parsed)));
        return requirePath(parsed);
    }
    if (parsed.isSet("-exportAll")) {
        const std::string path = requirePath(parsed);
        files.exportAll(path, requestedFormat(parsed, formatByName(path, files.format())), force);
        return path;
    }
    if (parsed.isSet("-rename"))
        files.setSceneName(parsed.getString("-rename"));
    if (parsed.isSet("-type"))
        files.setFormat(requestedFormat(parsed, files.format()));
    if (parsed.isSet("-save"))
        files.save(force);
    return files.sceneName();
}

Value file(const CommandCall& call) {
    const ParsedFlags parsed = fileFlags().parse(call);
    try {
        return parsed.isQuery() ? queryFile(parsed) : doFile(parsed);
    } catch (const FileError& error) {
        throw ScriptError(error.what());
    }
}

Value fileInfo(const CommandCall& call) {
    static const Flags flags =
        Flags().flag("-rm", "-remove", {ArgKind::String}).query().objects(0, 2);
    const ParsedFlags parsed = flags.parse(call);
    const Strings names = parsed.objectNames();
    auto& list = fileIO().memory().fileInfo;
    const auto find = [&list](const std::string& key) {
        return std::find_if(list.begin(), list.end(),
                            [&](const auto& each) { return each.first == key; });
    };
    if (parsed.isQuery()) {
        Strings result;
        for (const auto& [key, value] : list) {
            if (names.empty())
                result.push_back(key);
            if (names.empty() || names[0] == key)
                result.push_back(value);
        }
        return result;
    }
    if (parsed.isSet("-remove")) {
        const auto known = find(parsed.getString("-remove"));
        if (known != list.end())
            list.erase(known);
        setSceneModified(true);
        return Value();
    }
    if (names.size() != 2)
        throw ScriptError("fileInfo needs a keyword and a value.");
    const auto known = find(names[0]);
    if (known == list.end())
        list.emplace_back(names[0], names[1]);
    else
        known->second = names[1];
    setSceneModified(true);
    return Value();
}

Value requiresCommand(const CommandCall& call) {
    static const Flags flags = Flags()
                                   .flag("-nt", "-nodeType", {ArgKind::String})
                                   .flag("-dt", "-dataType", {ArgKind::String})
                                   .multiUse("-nt")
                                   .multiUse("-dt")
                                   .objects(2, 2);
    const std::string product = flags.parse(call).objectNames().front();
    if (product == "maya" || pluginLoader().find(product))
        return Value();
    std::string error;
    if (pluginLoader().load(product, error, true).empty())
        throw ScriptError(error);
    return Value();
}

/// Time tells who shows it, by "timeUnitChanged", in undo and redo as well.
struct TimeScale {
    static void setUIUnit(MTime::Unit unit) { timeline::setUnit(unit); }
};

template <class Scale, class Unit>
void changeUnit(const ParsedFlags& parsed, const char* flag, Unit before,
                bool (*fromName)(const std::string&, Unit&)) {
    if (!parsed.isSet(flag))
        return;
    Unit after = before;
    if (!fromName(parsed.getString(flag), after))
        throw ScriptError("Invalid unit: " + parsed.getString(flag));
    Scale::setUIUnit(after);
    recordStep(
        "currentUnit", [before] { Scale::setUIUnit(before); },
        [after] { Scale::setUIUnit(after); });
}

Value currentUnit(const CommandCall& call) {
    static const Flags flags = Flags()
                                   .flag("-l", "-linear", {ArgKind::String})
                                   .flag("-a", "-angle", {ArgKind::String})
                                   .flag("-t", "-time", {ArgKind::String})
                                   .flag("-f", "-fullName")
                                   .flag("-ua", "-updateAnimation", {ArgKind::Boolean})
                                   .query();
    const ParsedFlags parsed = flags.parse(call);
    if (!parsed.isQuery()) {
        changeUnit<MDistance>(parsed, "-linear", MDistance::uiUnit(), linearFromName);
        changeUnit<MAngle>(parsed, "-angle", MAngle::uiUnit(), angleFromName);
        changeUnit<TimeScale>(parsed, "-time", MTime::uiUnit(), timeFromName);
        return Value();
    }
    const bool full = parsed.isSet("-fullName");
    if (parsed.isSet("-linear"))
        return full ? linearName(MDistance::uiUnit()) : linearShortName(MDistance::uiUnit());
    if (parsed.isSet("-angle"))
        return full ? angleName(MAngle::uiUnit()) : angleShortName(MAngle::uiUnit());
    return timeName(MTime::uiUnit());
}

} // namespace

void registerFileCommands() {
    script::registerCommand("file", file);
    script::registerCommand("fileInfo", fileInfo);
    script::registerCommand("requires", requiresCommand);
    script::registerCommand("currentUnit", currentUnit);
}

} // namespace host
