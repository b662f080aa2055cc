#pragma once

#include <maya/MStatus.h>
#include <maya/MTypes.h>

#include <memory>

namespace host::script {
struct SyntaxData;
}

/// Describes the flags and arguments of a command. A copy refers to the same description.
///
/// Short flag names have up to three letters, long ones four or more. The leading dash may be left
/// out; a flag is called with it. enableQuery reserves -q/-query, enableEdit -e/-edit; in query
/// mode flags take no arguments, unless makeFlagQueryWithFullArgs says so.
class MSyntax {
public:
    enum MArgType {
        kInvalidArgType = 0,
        kNoArg,
        kBoolean,
        kLong,
        kDouble,
        kString,
        kUnsigned,
        kDistance,
        kAngle,
        kTime,
        kSelectionItem,
        kLastArgType
    };
    enum MObjectFormat {
        kInvalidObjectFormat = 0,
        kNone,
        kStringObjects,
        kSelectionList,
        kLastObjectFormat
    };

    MSyntax();
    MSyntax(const MSyntax& other);
    virtual ~MSyntax();
    MSyntax& operator=(const MSyntax& rhs);

    /// kFailure for a name of the wrong length, a name already used, or a reserved one.
    MStatus addFlag(const char* shortName, const char* longName, MArgType argType1 = kNoArg,
                    MArgType argType2 = kNoArg, MArgType argType3 = kNoArg,
                    MArgType argType4 = kNoArg, MArgType argType5 = kNoArg,
                    MArgType argType6 = kNoArg);
    MStatus makeFlagMultiUse(const char* flag);
    MStatus makeFlagQueryWithFullArgs(const char* flag, bool queryArgsAreOptional);
    MStatus addArg(MArgType arg);

    MStatus setObjectType(MObjectFormat objectFormat, unsigned int minimumObjects = 0);
    MStatus setObjectType(MObjectFormat objectFormat, unsigned int minimumObjects,
                          unsigned int maximumObjects);
    MStatus setMinObjects(unsigned int minimumObjectCount);
    MStatus setMaxObjects(unsigned int maximumObjectCount);
    unsigned int minObjects() const;
    unsigned int maxObjects() const;
    void useSelectionAsDefault(bool useSelectionAsDefault);

    void enableQuery(bool supportsQuery = true);
    void enableEdit(bool supportsEdit = true);
    bool canQuery() const;
    bool canEdit() const;

    static const char* className();

private:
    friend struct host::script::SyntaxData;
    std::shared_ptr<host::script::SyntaxData> data_;
};
