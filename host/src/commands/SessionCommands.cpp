#include "commands/CoreCommands.h"
#include "script/CallHelpers.h"
#include "script/Flags.h"
#include "script/Interpreter.h"

#include <QDate>
#include <QSysInfo>
#include <QTime>

#include <maya/MTypes.h>

#include <cstdlib>
#include <filesystem>
#include <map>

namespace host::script {

namespace {

constexpr const char* kVersion = "2024";

Value about(const CommandCall& call) {
    static const Flags flags = Flags()
                                   .flag("-b", "-batch")
                                   .flag("-v", "-version")
                                   .flag("-api", "-apiVersion")
                                   .flag("-iv", "-installedVersion")
                                   .flag("-mjv", "-majorVersion")
                                   .flag("-mnv", "-minorVersion")
                                   .flag("-p", "-product")
                                   .flag("-a", "-application")
                                   .flag("-c", "-cutIdentifier")
                                   .flag("-os", "-operatingSystem")
                                   .flag("-osv", "-operatingSystemVersion")
                                   .flag("-li", "-linux")
                                   .flag("-win", "-windows")
                                   .flag("-nt", "-ntOS")
                                   .flag("-mac", "-macOS")
                                   .flag("-x64", "-is64")
                                   .flag("-qt", "-qtVersion")
                                   .flag("-cd", "-currentDate")
                                   .flag("-ct", "-currentTime")
                                   .query();
    const ParsedFlags parsed = flags.parse(call);
    if (parsed.isSet("-batch"))
        return batchMode();
    if (parsed.isSet("-version"))
        return kVersion;
    if (parsed.isSet("-apiVersion"))
        return MAYA_API_VERSION;
    if (parsed.isSet("-installedVersion") || parsed.isSet("-product"))
        return std::string("Maya ") + kVersion + " (embedded host)";
    if (parsed.isSet("-majorVersion"))
        return MAYA_API_VERSION / 10000;
    if (parsed.isSet("-minorVersion"))
        return MAYA_API_VERSION / 100 % 100;
    if (parsed.isSet("-application"))
        return "maya";
    if (parsed.isSet("-cutIdentifier"))
        return std::to_string(MAYA_API_VERSION);
    if (parsed.isSet("-operatingSystem"))
        return "linux64";
    if (parsed.isSet("-operatingSystemVersion"))
        return QSysInfo::prettyProductName().toStdString();
    if (parsed.isSet("-linux") || parsed.isSet("-is64"))
        return 1;
    if (parsed.isSet("-windows") || parsed.isSet("-ntOS") || parsed.isSet("-macOS"))
        return 0;
    if (parsed.isSet("-qtVersion"))
        return qVersion();
    if (parsed.isSet("-currentDate"))
        return QDate::currentDate().toString(Qt::ISODate).toStdString();
    if (parsed.isSet("-currentTime"))
        return QTime::currentTime().toString(Qt::ISODate).toStdString();
    throw ScriptError("about needs one flag.");
}

std::string environment(const char* name) {
    const char* value = std::getenv(name);
    return value ? value : "";
}

// Every directory ends with a slash and exists once it was asked for.
std::string directory(const std::filesystem::path& path) {
    std::error_code error;
    std::filesystem::create_directories(path, error);
    if (error)
        throw ScriptError("Cannot create directory \"" + path.string() + "\": " + error.message());
    std::string text = path.string();
    if (text.empty() || text.back() != '/')
        text += '/';
    return text;
}

Value internalVar(const CommandCall& call) {
    static const Flags flags = Flags()
                                   .flag("-upd", "-userPrefDir")
                                   .flag("-usd", "-userScriptDir")
                                   .flag("-utd", "-userTmpDir")
                                   .flag("-uad", "-userAppDir")
                                   .flag("-ubd", "-userBitmapsDir")
                                   .flag("-ush", "-userShelfDir")
                                   .flag("-uwd", "-userWorkspaceDir");
    const ParsedFlags parsed = flags.parse(call);
    if (parsed.isSet("-userTmpDir")) {
        const std::string tmp = environment("TMPDIR");
        return directory(tmp.empty() ? "/tmp" : tmp);
    }
    const std::string own = environment("MAYA_APP_DIR");
    std::filesystem::path base = own;
    if (own.empty())
        base = std::filesystem::path(environment("HOME")) / "maya";
    const std::filesystem::path version = base / kVersion;
    if (parsed.isSet("-userPrefDir"))
        return directory(version / "prefs");
    if (parsed.isSet("-userScriptDir"))
        return directory(version / "scripts");
    if (parsed.isSet("-userBitmapsDir"))
        return directory(version / "prefs" / "icons");
    if (parsed.isSet("-userShelfDir"))
        return directory(version / "prefs" / "shelves");
    if (parsed.isSet("-userWorkspaceDir"))
        return directory(base / "projects");
    if (parsed.isSet("-userAppDir"))
        return directory(base);
    throw ScriptError("internalVar needs one flag.");
}

Value getEnvironment(const CommandCall& call) {
    requireArguments(call, 1);
    return environment(call.arguments[0].toString().c_str());
}

Value putEnvironment(const CommandCall& call) {
    requireArguments(call, 2);
    const std::string name = call.arguments[0].toString();
    const std::string value = call.arguments[1].toString();
    if (name.empty() || name.find('=') != std::string::npos)
        throw ScriptError("\"" + name + "\" cannot name an environment variable.");
    setenv(name.c_str(), value.c_str(), 1);
    return value;
}

// Kept for the session only.
std::map<std::string, Value>& optionVariables() {
    static std::map<std::string, Value> variables;
    return variables;
}

template <class List, class Item> void append(Value& variable, Item item) {
    if (!variable.getIf<List>())
        variable = List{};
    variable.get<List>().push_back(std::move(item));
}

Value queryOptionVar(const std::string& name) {
    const auto it = optionVariables().find(name);
    return it == optionVariables().end() ? Value(0) : it->second;
}

Value optionVar(const CommandCall& call) {
    using K = ArgKind;
    static const Flags flags = Flags()
                                   .flag("-ex", "-exists", {K::String})
                                   .flag("-iv", "-intValue", {K::String, K::Int})
                                   .flag("-fv", "-floatValue", {K::String, K::Float})
                                   .flag("-sv", "-stringValue", {K::String, K::String})
                                   .flag("-iva", "-intValueAppend", {K::String, K::Int})
                                   .flag("-fva", "-floatValueAppend", {K::String, K::Float})
                                   .flag("-sva", "-stringValueAppend", {K::String, K::String})
                                   .flag("-as", "-arraySize", {K::String})
                                   .flag("-ca", "-clearArray", {K::String})
                                   .flag("-rm", "-remove", {K::String})
                                   .flag("-l", "-list")
                                   .multiUse("-iv")
                                   .multiUse("-fv")
                                   .multiUse("-sv")
                                   .multiUse("-iva")
                                   .multiUse("-fva")
                                   .multiUse("-sva")
                                   .multiUse("-rm")
                                   .objects(0, 1)
                                   .query();
    const ParsedFlags parsed = flags.parse(call);
    auto& variables = optionVariables();
    if (parsed.isQuery())
        return queryOptionVar(parsed.object());
    if (parsed.isSet("-exists"))
        return variables.count(parsed.getString("-exists")) > 0;
    if (parsed.isSet("-arraySize"))
        return static_cast<int>(queryOptionVar(parsed.getString("-arraySize")).size());
    if (parsed.isSet("-list")) {
        Strings names;
        for (const auto& [name, value] : variables)
            names.push_back(name);
        return names;
    }
    for (int i = 0; i < parsed.uses("-iv"); ++i)
        variables[parsed.getString("-iv", "", 0, i)] = parsed.getInt("-iv", 0, 1, i);
    for (int i = 0; i < parsed.uses("-fv"); ++i)
        variables[parsed.getString("-fv", "", 0, i)] = parsed.getFloat("-fv", 0, 1, i);
    for (int i = 0; i < parsed.uses("-sv"); ++i)
        variables[parsed.getString("-sv", "", 0, i)] = parsed.getString("-sv", "", 1, i);
    for (int i = 0; i < parsed.uses("-iva"); ++i)
        append<Ints>(variables[parsed.getString("-iva", "", 0, i)], parsed.getInt("-iva", 0, 1, i));
    for (int i = 0; i < parsed.uses("-fva"); ++i)
        append<Floats>(variables[parsed.getString("-fva", "", 0, i)],
                       parsed.getFloat("-fva", 0, 1, i));
    for (int i = 0; i < parsed.uses("-sva"); ++i)
        append<Strings>(variables[parsed.getString("-sva", "", 0, i)],
                        parsed.getString("-sva", "", 1, i));
    if (parsed.isSet("-clearArray")) {
        const auto it = variables.find(parsed.getString("-clearArray"));
        if (it != variables.end() && it->second.isArray())
            it->second = Value::ofType(it->second.type());
    }
    for (const std::string& name : parsed.allStrings("-rm"))
        variables.erase(name);
    return {};
}

Value quit(const CommandCall& call) {
    static const Flags flags =
        Flags().flag("-f", "-force").flag("-a", "-abort").flag("-ec", "-exitCode", {ArgKind::Int});
    const ParsedFlags parsed = flags.parse(call);
    requestQuit(parsed.getInt("-exitCode"), parsed.isSet("-force"), parsed.isSet("-abort"));
    return {};
}

} // namespace

void registerSessionCommands() {
    registerCommand("about", about);
    registerCommand("internalVar", internalVar);
    registerCommand("getenv", getEnvironment);
    registerCommand("putenv", putEnvironment);
    registerCommand("optionVar", optionVar);
    registerCommand("quit", quit);
}

} // namespace host::script
