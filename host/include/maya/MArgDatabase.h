#pragma once

#include <maya/MArgParser.h>

class MSelectionList;

/// MArgParser that also gives arguments and objects as selection lists.
class MArgDatabase : public MArgParser {
public:
    MArgDatabase();
    MArgDatabase(const MSyntax& syntax, const MArgList& argList, MStatus* ReturnStatus = nullptr);
    ~MArgDatabase() override;

    using MArgParser::getCommandArgument;
    using MArgParser::getFlagArgument;
    using MArgParser::getObjects;

    MStatus getFlagArgument(const char* flag, unsigned int index, MSelectionList& result) const;
    MStatus getCommandArgument(unsigned int index, MSelectionList& result) const;
    /// The objects named, or the active selection when none is and the syntax says so.
    MStatus getObjects(MSelectionList& result) const;

    static const char* className();
};
