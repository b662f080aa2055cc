#include <maya/MStatus.h>
#include <maya/MString.h>

#include <iostream>

MString MStatus::errorString() const {
    switch (code_) {
    case kSuccess:
        return "(kSuccess): No errors";
    case kFailure:
        return "(kFailure): Unexpected Internal Failure";
    case kInsufficientMemory:
        return "(kInsufficientMemory): Insufficient memory to complete this method";
    case kInvalidParameter:
        return "(kInvalidParameter): Object is incompatible with this method";
    case kLicenseFailure:
        return "(kLicenseFailure): Application is not licensed for the attempted operation";
    case kUnknownParameter:
        return "(kUnknownParameter): Unrecognized parameter";
    case kNotImplemented:
        return "(kNotImplemented): Not yet implemented";
    case kNotFound:
        return "(kNotFound): Object was not found";
    case kEndOfFile:
        return "(kEndOfFile): End of file reached";
    }
    return "";
}

void MStatus::perror(const char* text) const {
    if (code_ != kSuccess)
        std::cerr << text << ": " << errorString() << std::endl;
}

void MStatus::perror(const MString& text) const {
    perror(text.asChar());
}

std::ostream& operator<<(std::ostream& out, const MStatus& status) {
    return out << status.errorString();
}
