#pragma once

#include <maya/MStatus.h>
#include <maya/MString.h>
#include <maya/MTypes.h>

#include <memory>

class MAngle;
class MArgList;
class MDistance;
class MStringArray;
class MSyntax;
class MTime;

namespace host::script {
struct ParsedCommandLine;
}

/// A command's arguments, read against a syntax. Flags are asked for by short or long name, with
/// or without the dash. Arguments are counted from 0. A flag that may be used several times
/// answers with its first use here; getFlagArgumentList reaches the others.
class MArgParser {
public:
    MArgParser();
    MArgParser(const MSyntax& syntax, const MArgList& argList, MStatus* ReturnStatus = nullptr);
    virtual ~MArgParser();

    bool isFlagSet(const char* flag, MStatus* ReturnStatus = nullptr) const;
    bool isEdit(MStatus* ReturnStatus = nullptr) const;
    bool isQuery(MStatus* ReturnStatus = nullptr) const;
    unsigned int numberOfFlagsUsed() const;
    unsigned int numberOfFlagUses(const char* flag) const;

    MStatus getFlagArgument(const char* flag, unsigned int index, bool& result) const;
    MStatus getFlagArgument(const char* flag, unsigned int index, int& result) const;
    MStatus getFlagArgument(const char* flag, unsigned int index, double& result) const;
    MStatus getFlagArgument(const char* flag, unsigned int index, MString& result) const;
    MStatus getFlagArgument(const char* flag, unsigned int index, unsigned int& result) const;
    MStatus getFlagArgument(const char* flag, unsigned int index, MDistance& result) const;
    MStatus getFlagArgument(const char* flag, unsigned int index, MAngle& result) const;
    MStatus getFlagArgument(const char* flag, unsigned int index, MTime& result) const;

    bool flagArgumentBool(const char* flag, unsigned int index,
                          MStatus* ReturnStatus = nullptr) const;
    int flagArgumentInt(const char* flag, unsigned int index,
                        MStatus* ReturnStatus = nullptr) const;
    double flagArgumentDouble(const char* flag, unsigned int index,
                              MStatus* ReturnStatus = nullptr) const;
    MString flagArgumentString(const char* flag, unsigned int index,
                               MStatus* ReturnStatus = nullptr) const;

    /// Arguments of the `index`-th use of a flag.
    MStatus getFlagArgumentList(const char* flag, unsigned int index, MArgList& args) const;
    /// Where in the argument list the first argument of the `index`-th use stands.
    MStatus getFlagArgumentPosition(const char* flag, unsigned int index,
                                    unsigned int& position) const;

    MStatus getCommandArgument(unsigned int index, bool& result) const;
    MStatus getCommandArgument(unsigned int index, int& result) const;
    MStatus getCommandArgument(unsigned int index, double& result) const;
    MStatus getCommandArgument(unsigned int index, MString& result) const;
    MStatus getCommandArgument(unsigned int index, MDistance& result) const;
    MStatus getCommandArgument(unsigned int index, MAngle& result) const;
    MStatus getCommandArgument(unsigned int index, MTime& result) const;

    bool commandArgumentBool(unsigned int index, MStatus* ReturnStatus = nullptr) const;
    int commandArgumentInt(unsigned int index, MStatus* ReturnStatus = nullptr) const;
    double commandArgumentDouble(unsigned int index, MStatus* ReturnStatus = nullptr) const;
    MString commandArgumentString(unsigned int index, MStatus* ReturnStatus = nullptr) const;

    /// Names as they were given.
    MStatus getObjects(MStringArray& result) const;

    static const char* className();

protected:
    std::shared_ptr<host::script::ParsedCommandLine> parsed_;
};
