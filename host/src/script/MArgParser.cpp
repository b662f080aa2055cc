#include "foundation/Report.h"
#include "script/CommandLine.h"

#include <maya/MAngle.h>
#include <maya/MArgDatabase.h>
#include <maya/MDistance.h>
#include <maya/MGlobal.h>
#include <maya/MSelectionList.h>
#include <maya/MStringArray.h>
#include <maya/MSyntax.h>
#include <maya/MTime.h>

using host::script::ArgKind;
using host::script::FlagUse;
using host::script::ObjectFormat;
using host::script::ParsedCommandLine;
using host::script::SyntaxData;
using host::script::Value;

namespace host::script {

const FlagUse* ParsedCommandLine::use(const char* flag, unsigned wanted) const {
    const int index = flag ? syntax.find(flag) : -1;
    for (const FlagUse& candidate : parsed.uses)
        if (static_cast<int>(candidate.flagIndex) == index && wanted-- == 0)
            return &candidate;
    return nullptr;
}

unsigned ParsedCommandLine::uses(const char* flag) const {
    unsigned count = 0;
    while (use(flag, count))
        ++count;
    return count;
}

MArgList argumentList(const std::vector<Value>& arguments) {
    MArgList list;
    for (const Value& argument : arguments) {
        switch (argument.type()) {
        case Type::Int:
            list.addArg(argument.get<int>());
            break;
        case Type::Float:
            list.addArg(argument.get<double>());
            break;
        case Type::Vector: {
            const Vec3& v = argument.get<Vec3>();
            for (const double part : {v.x, v.y, v.z})
                list.addArg(part);
            break;
        }
        case Type::None:
        case Type::Matrix:
            break;
        default:
            list.addArg(MString(argument.toString().c_str()));
        }
    }
    return list;
}

std::vector<Value> argumentValues(const MArgList& list) {
    std::vector<Value> values;
    for (unsigned i = 0; i < list.length(); ++i)
        values.emplace_back(std::string(list.asString(i).asUTF8()));
    return values;
}

} // namespace host::script

namespace {

void set(MStatus* status, MStatus value) {
    if (status)
        *status = value;
}

template <class T, class Read>
MStatus flagArgument(const ParsedCommandLine* line, const char* flag, unsigned index, T& result,
                     Read read) {
    if (!line || !flag || line->syntax.find(flag) < 0)
        return MS::kInvalidParameter;
    const FlagUse* use = line->use(flag);
    if (!use || index >= use->positions.size())
        return MS::kFailure;
    return read(*line, static_cast<unsigned>(use->positions[index]), use->arguments[index], result);
}

template <class T, class Read>
MStatus commandArgument(const ParsedCommandLine* line, unsigned index, T& result, Read read) {
    if (!line)
        return MS::kInvalidParameter;
    if (index >= line->parsed.arguments.size())
        return MS::kFailure;
    return read(*line, static_cast<unsigned>(line->parsed.argumentPositions[index]),
                line->parsed.arguments[index], result);
}

// Numbers: the argument must be one; an integer asked of a double drops the fraction.
MStatus number(const ParsedCommandLine&, unsigned, const Value& value, double& result) {
    double v = 0;
    if (!value.isNumber() &&
        !(value.isString() && host::script::parseNumber(value.get<std::string>(), &v)))
        return MS::kFailure;
    if (value.isNumber())
        v = value.toFloat();
    result = v;
    return MS::kSuccess;
}

// The list's own number, which no printing has rounded.
MStatus real(const ParsedCommandLine& line, unsigned position, const Value& value, double& result) {
    double v = 0;
    if (number(line, position, value, v) != MS::kSuccess)
        return MS::kFailure;
    MStatus status;
    const double exact = line.list.asDouble(position, &status);
    result = status == MS::kSuccess ? exact : v;
    return MS::kSuccess;
}

MStatus integer(const ParsedCommandLine& line, unsigned position, const Value& value, int& result) {
    double v = 0;
    if (number(line, position, value, v) != MS::kSuccess)
        return MS::kFailure;
    result = Value(v).toInt();
    return MS::kSuccess;
}

MStatus unsignedInteger(const ParsedCommandLine& line, unsigned position, const Value& value,
                        unsigned& result) {
    double v = 0;
    if (number(line, position, value, v) != MS::kSuccess || v < 0 || v > 4294967295.0)
        return MS::kFailure;
    result = static_cast<unsigned>(v);
    return MS::kSuccess;
}

MStatus boolean(const ParsedCommandLine& line, unsigned position, const Value& value,
                bool& result) {
    double v = 0;
    if (value.isString() &&
        (value.get<std::string>() == "on" || value.get<std::string>() == "true" ||
         value.get<std::string>() == "yes"))
        v = 1;
    else if (value.isString() &&
             (value.get<std::string>() == "off" || value.get<std::string>() == "false" ||
              value.get<std::string>() == "no"))
        v = 0;
    else if (number(line, position, value, v) != MS::kSuccess)
        return MS::kFailure;
    result = v != 0;
    return MS::kSuccess;
}

// Texts are taken as they were given, not as a number may have been read and printed again.
MStatus text(const ParsedCommandLine& line, unsigned position, const Value&, MString& result) {
    MStatus status;
    const MString given = line.list.asString(position, &status);
    if (status == MS::kSuccess)
        result = given;
    return status;
}

template <class T, T (MArgList::*get)(unsigned int, MStatus*) const>
MStatus measure(const ParsedCommandLine& line, unsigned position, const Value&, T& result) {
    MStatus status;
    const T given = (line.list.*get)(position, &status);
    if (status == MS::kSuccess)
        result = given;
    return status;
}

constexpr auto kAsDistance = measure<MDistance, &MArgList::asDistance>;
constexpr auto kAsAngle = measure<MAngle, &MArgList::asAngle>;
constexpr auto kAsTime = measure<MTime, &MArgList::asTime>;

} // namespace

MArgParser::MArgParser() = default;
MArgParser::~MArgParser() = default;

MArgParser::MArgParser(const MSyntax& syntax, const MArgList& argList, MStatus* ReturnStatus) {
    auto line = std::make_shared<ParsedCommandLine>();
    line->syntax = SyntaxData::of(syntax);
    line->list = argList;
    try {
        line->parsed =
            host::script::parseArguments(line->syntax, host::script::argumentValues(argList));
        parsed_ = std::move(line);
        set(ReturnStatus, MS::kSuccess);
    } catch (const host::script::ScriptError& error) {
        host::report::error(error.what());
        set(ReturnStatus, MS::kInvalidParameter);
    }
}

bool MArgParser::isFlagSet(const char* flag, MStatus* ReturnStatus) const {
    const bool known = parsed_ && flag && parsed_->syntax.find(flag) >= 0;
    set(ReturnStatus, known ? MS::kSuccess : MS::kInvalidParameter);
    return known && parsed_->use(flag);
}

bool MArgParser::isEdit(MStatus* ReturnStatus) const {
    set(ReturnStatus, parsed_ ? MS::kSuccess : MS::kFailure);
    return parsed_ && parsed_->parsed.edit;
}

bool MArgParser::isQuery(MStatus* ReturnStatus) const {
    set(ReturnStatus, parsed_ ? MS::kSuccess : MS::kFailure);
    return parsed_ && parsed_->parsed.query;
}

unsigned int MArgParser::numberOfFlagsUsed() const {
    return parsed_ ? static_cast<unsigned>(parsed_->parsed.uses.size()) : 0;
}

unsigned int MArgParser::numberOfFlagUses(const char* flag) const {
    return parsed_ ? parsed_->uses(flag) : 0;
}

MStatus MArgParser::getFlagArgument(const char* flag, unsigned int index, bool& result) const {
    return flagArgument(parsed_.get(), flag, index, result, boolean);
}
MStatus MArgParser::getFlagArgument(const char* flag, unsigned int index, int& result) const {
    return flagArgument(parsed_.get(), flag, index, result, integer);
}
MStatus MArgParser::getFlagArgument(const char* flag, unsigned int index, double& result) const {
    return flagArgument(parsed_.get(), flag, index, result, real);
}
MStatus MArgParser::getFlagArgument(const char* flag, unsigned int index, MString& result) const {
    return flagArgument(parsed_.get(), flag, index, result, text);
}
MStatus MArgParser::getFlagArgument(const char* flag, unsigned int index,
                                    unsigned int& result) const {
    return flagArgument(parsed_.get(), flag, index, result, unsignedInteger);
}
MStatus MArgParser::getFlagArgument(const char* flag, unsigned int index, MDistance& result) const {
    return flagArgument(parsed_.get(), flag, index, result, kAsDistance);
}
MStatus MArgParser::getFlagArgument(const char* flag, unsigned int index, MAngle& result) const {
    return flagArgument(parsed_.get(), flag, index, result, kAsAngle);
}
MStatus MArgParser::getFlagArgument(const char* flag, unsigned int index, MTime& result) const {
    return flagArgument(parsed_.get(), flag, index, result, kAsTime);
}

bool MArgParser::flagArgumentBool(const char* flag, unsigned int index, MStatus* status) const {
    bool result = false;
    set(status, getFlagArgument(flag, index, result));
    return result;
}
int MArgParser::flagArgumentInt(const char* flag, unsigned int index, MStatus* status) const {
    int result = 0;
    set(status, getFlagArgument(flag, index, result));
    return result;
}
double MArgParser::flagArgumentDouble(const char* flag, unsigned int index, MStatus* status) const {
    double result = 0;
    set(status, getFlagArgument(flag, index, result));
    return result;
}
MString MArgParser::flagArgumentString(const char* flag, unsigned int index,
                                       MStatus* status) const {
    MString result;
    set(status, getFlagArgument(flag, index, result));
    return result;
}

MStatus MArgParser::getFlagArgumentList(const char* flag, unsigned int index,
                                        MArgList& args) const {
    const FlagUse* use = parsed_ ? parsed_->use(flag, index) : nullptr;
    if (!use)
        return MS::kFailure;
    args = host::script::argumentList(use->arguments);
    return MS::kSuccess;
}

MStatus MArgParser::getFlagArgumentPosition(const char* flag, unsigned int index,
                                            unsigned int& position) const {
    const FlagUse* use = parsed_ ? parsed_->use(flag, index) : nullptr;
    if (!use)
        return MS::kFailure;
    position = static_cast<unsigned>(use->position + 1);
    return MS::kSuccess;
}

MStatus MArgParser::getCommandArgument(unsigned int index, bool& result) const {
    return commandArgument(parsed_.get(), index, result, boolean);
}
MStatus MArgParser::getCommandArgument(unsigned int index, int& result) const {
    return commandArgument(parsed_.get(), index, result, integer);
}
MStatus MArgParser::getCommandArgument(unsigned int index, double& result) const {
    return commandArgument(parsed_.get(), index, result, real);
}
MStatus MArgParser::getCommandArgument(unsigned int index, MString& result) const {
    return commandArgument(parsed_.get(), index, result, text);
}
MStatus MArgParser::getCommandArgument(unsigned int index, MDistance& result) const {
    return commandArgument(parsed_.get(), index, result, kAsDistance);
}
MStatus MArgParser::getCommandArgument(unsigned int index, MAngle& result) const {
    return commandArgument(parsed_.get(), index, result, kAsAngle);
}
MStatus MArgParser::getCommandArgument(unsigned int index, MTime& result) const {
    return commandArgument(parsed_.get(), index, result, kAsTime);
}

bool MArgParser::commandArgumentBool(unsigned int index, MStatus* status) const {
    bool result = false;
    set(status, getCommandArgument(index, result));
    return result;
}
int MArgParser::commandArgumentInt(unsigned int index, MStatus* status) const {
    int result = 0;
    set(status, getCommandArgument(index, result));
    return result;
}
double MArgParser::commandArgumentDouble(unsigned int index, MStatus* status) const {
    double result = 0;
    set(status, getCommandArgument(index, result));
    return result;
}
MString MArgParser::commandArgumentString(unsigned int index, MStatus* status) const {
    MString result;
    set(status, getCommandArgument(index, result));
    return result;
}

MStatus MArgParser::getObjects(MStringArray& result) const {
    if (!parsed_)
        return MS::kFailure;
    result.clear();
    for (const Value& object : parsed_->parsed.objects)
        result.append(MString(object.toString().c_str()));
    return MS::kSuccess;
}

const char* MArgParser::className() {
    return "MArgParser";
}

MArgDatabase::MArgDatabase() = default;
MArgDatabase::~MArgDatabase() = default;

MArgDatabase::MArgDatabase(const MSyntax& syntax, const MArgList& argList, MStatus* ReturnStatus)
    : MArgParser(syntax, argList, ReturnStatus) {
    if (!parsed_ || parsed_->syntax.objectFormat != ObjectFormat::SelectionList)
        return;
    MSelectionList objects;
    if (getObjects(objects) != MS::kSuccess) {
        parsed_.reset();
        set(ReturnStatus, MS::kInvalidParameter);
    }
}

MStatus MArgDatabase::getFlagArgument(const char* flag, unsigned int index,
                                      MSelectionList& result) const {
    MString name;
    const MStatus status = getFlagArgument(flag, index, name);
    return status == MS::kSuccess ? result.add(name) : status;
}

MStatus MArgDatabase::getCommandArgument(unsigned int index, MSelectionList& result) const {
    MString name;
    const MStatus status = getCommandArgument(index, name);
    return status == MS::kSuccess ? result.add(name) : status;
}

MStatus MArgDatabase::getObjects(MSelectionList& result) const {
    if (!parsed_)
        return MS::kFailure;
    if (parsed_->parsed.objects.empty() && parsed_->syntax.selectionIsDefault) {
        MGlobal::getActiveSelectionList(result);
        if (result.length() >= parsed_->syntax.minimumObjects)
            return MS::kSuccess;
        host::report::error("Not enough objects or values.");
        return MS::kFailure;
    }
    result.clear();
    for (const Value& object : parsed_->parsed.objects) {
        if (result.add(MString(object.toString().c_str())) != MS::kSuccess) {
            host::report::error("No object matches name: " + object.toString());
            return MS::kFailure;
        }
    }
    return MS::kSuccess;
}

const char* MArgDatabase::className() {
    return "MArgDatabase";
}
