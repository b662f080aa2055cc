#include "script/Syntax.h"

#include <maya/MSyntax.h>

using host::script::ArgKind;
using host::script::FlagSyntax;
using host::script::ObjectFormat;
using host::script::SyntaxData;
using host::script::withDash;

namespace host::script {

SyntaxData& SyntaxData::of(const MSyntax& syntax) {
    return *syntax.data_;
}

} // namespace host::script

namespace {

constexpr std::size_t kLongestShortName = 3;

bool isReserved(const SyntaxData& data, const std::string& name) {
    return (data.canQuery && (name == "-q" || name == "-query")) ||
           (data.canEdit && (name == "-e" || name == "-edit"));
}

bool isArgument(MSyntax::MArgType type) {
    return type > MSyntax::kNoArg && type < MSyntax::kLastArgType;
}

} // namespace

MSyntax::MSyntax() : data_(std::make_shared<SyntaxData>()) {
}
MSyntax::MSyntax(const MSyntax& other) = default;
MSyntax::~MSyntax() = default;
MSyntax& MSyntax::operator=(const MSyntax& rhs) = default;

MStatus MSyntax::addFlag(const char* shortName, const char* longName, MArgType argType1,
                         MArgType argType2, MArgType argType3, MArgType argType4, MArgType argType5,
                         MArgType argType6) {
    if (!shortName || !longName)
        return MS::kInvalidParameter;
    FlagSyntax flag;
    flag.shortName = withDash(shortName);
    flag.longName = withDash(longName);
    const std::size_t shortLetters = flag.shortName.size() - 1;
    if (shortLetters < 1 || shortLetters > kLongestShortName ||
        flag.longName.size() - 1 <= kLongestShortName)
        return MS::kFailure;
    if (data_->find(flag.shortName) >= 0 || data_->find(flag.longName) >= 0 ||
        isReserved(*data_, flag.shortName) || isReserved(*data_, flag.longName))
        return MS::kFailure;
    for (const MArgType type : {argType1, argType2, argType3, argType4, argType5, argType6}) {
        if (type == kNoArg)
            break;
        if (!isArgument(type))
            return MS::kInvalidParameter;
        flag.arguments.push_back(static_cast<ArgKind>(type));
    }
    data_->flags.push_back(std::move(flag));
    return MS::kSuccess;
}

MStatus MSyntax::makeFlagMultiUse(const char* flag) {
    const int index = flag ? data_->find(flag) : -1;
    if (index < 0)
        return MS::kFailure;
    data_->flags[static_cast<std::size_t>(index)].multiUse = true;
    return MS::kSuccess;
}

MStatus MSyntax::makeFlagQueryWithFullArgs(const char* flag, bool queryArgsAreOptional) {
    const int index = flag ? data_->find(flag) : -1;
    if (index < 0)
        return MS::kFailure;
    FlagSyntax& found = data_->flags[static_cast<std::size_t>(index)];
    found.queryWithArguments = true;
    found.queryArgumentsOptional = queryArgsAreOptional;
    return MS::kSuccess;
}

MStatus MSyntax::addArg(MArgType arg) {
    if (!isArgument(arg))
        return MS::kInvalidParameter;
    data_->arguments.push_back(static_cast<ArgKind>(arg));
    return MS::kSuccess;
}

MStatus MSyntax::setObjectType(MObjectFormat objectFormat, unsigned int minimumObjects) {
    if (objectFormat <= kInvalidObjectFormat || objectFormat >= kLastObjectFormat)
        return MS::kInvalidParameter;
    data_->objectFormat = static_cast<ObjectFormat>(objectFormat);
    data_->minimumObjects = minimumObjects;
    data_->objectsBounded = false;
    return MS::kSuccess;
}

MStatus MSyntax::setObjectType(MObjectFormat objectFormat, unsigned int minimumObjects,
                               unsigned int maximumObjects) {
    const MStatus status = setObjectType(objectFormat, minimumObjects);
    return status == MS::kSuccess ? setMaxObjects(maximumObjects) : status;
}

MStatus MSyntax::setMinObjects(unsigned int minimumObjectCount) {
    data_->minimumObjects = minimumObjectCount;
    return MS::kSuccess;
}

MStatus MSyntax::setMaxObjects(unsigned int maximumObjectCount) {
    data_->maximumObjects = maximumObjectCount;
    data_->objectsBounded = true;
    return MS::kSuccess;
}

unsigned int MSyntax::minObjects() const {
    return data_->minimumObjects;
}
unsigned int MSyntax::maxObjects() const {
    return data_->objectsBounded ? data_->maximumObjects : 0;
}

void MSyntax::useSelectionAsDefault(bool useSelection) {
    data_->selectionIsDefault = useSelection;
}

void MSyntax::enableQuery(bool supportsQuery) {
    data_->canQuery = supportsQuery;
}
void MSyntax::enableEdit(bool supportsEdit) {
    data_->canEdit = supportsEdit;
}
bool MSyntax::canQuery() const {
    return data_->canQuery;
}
bool MSyntax::canEdit() const {
    return data_->canEdit;
}

const char* MSyntax::className() {
    return "MSyntax";
}
