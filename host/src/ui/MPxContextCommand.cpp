#include "ui/ContextState.h"

#include <maya/MPxContextCommand.h>

namespace {

MStatus setCallResult(const std::shared_ptr<host::ContextCall>& call, host::script::Value value) {
    if (!call)
        return MStatus::kFailure;
    call->result = std::move(value);
    return MStatus::kSuccess;
}

} // namespace

MPxContextCommand::MPxContextCommand() = default;
MPxContextCommand::~MPxContextCommand() = default;

MStatus MPxContextCommand::doEditFlags() {
    return MStatus::kSuccess;
}

MStatus MPxContextCommand::doQueryFlags() {
    return MStatus::kSuccess;
}

MPxContext* MPxContextCommand::makeObj() {
    return nullptr;
}

MStatus MPxContextCommand::appendSyntax() {
    return MStatus::kSuccess;
}

MStatus MPxContextCommand::setResult(bool result) {
    return setCallResult(call_, host::script::Value(result));
}

MStatus MPxContextCommand::setResult(int result) {
    return setCallResult(call_, host::script::Value(result));
}

MStatus MPxContextCommand::setResult(double result) {
    return setCallResult(call_, host::script::Value(result));
}

MStatus MPxContextCommand::setResult(const MString& result) {
    return setCallResult(call_, host::script::Value(std::string(result.asUTF8())));
}

const char* MPxContextCommand::className() {
    return "MPxContextCommand";
}

MArgParser MPxContextCommand::parser(MStatus* ReturnStatus) const {
    if (ReturnStatus)
        *ReturnStatus = call_ ? MStatus::kSuccess : MStatus::kFailure;
    return call_ ? call_->parser : MArgParser();
}

MSyntax MPxContextCommand::syntax(MStatus* ReturnStatus) const {
    if (ReturnStatus)
        *ReturnStatus = call_ ? MStatus::kSuccess : MStatus::kFailure;
    return call_ ? call_->syntax : MSyntax();
}
