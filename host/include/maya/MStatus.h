#pragma once

#include <maya/MTypes.h>

#include <iosfwd>

class MString;

/// Result of an API call. Converts to true on success.
class MStatus {
public:
    enum MStatusCode {
        kSuccess = 0,
        kFailure,
        kInsufficientMemory,
        kInvalidParameter,
        kLicenseFailure,
        kUnknownParameter,
        kNotImplemented,
        kNotFound,
        kEndOfFile
    };

    MStatus() : code_(kSuccess) {}
    MStatus(MStatusCode code) : code_(code) {}

    operator bool() const { return code_ == kSuccess; }
    bool operator==(const MStatus& other) const { return code_ == other.code_; }
    bool operator==(const MStatusCode code) const { return code_ == code; }
    bool operator!=(const MStatus& other) const { return code_ != other.code_; }
    bool operator!=(const MStatusCode code) const { return code_ != code; }

    bool error() const { return code_ != kSuccess; }
    void clear() { code_ = kSuccess; }
    MStatusCode statusCode() const { return code_; }
    MString errorString() const;
    void perror(const char* text) const;
    void perror(const MString& text) const;

    friend bool operator==(const MStatusCode code, const MStatus& status) {
        return status.code_ == code;
    }
    friend bool operator!=(const MStatusCode code, const MStatus& status) {
        return status.code_ != code;
    }

private:
    MStatusCode code_;
};

typedef MStatus MS;

std::ostream& operator<<(std::ostream& out, const MStatus& status);

/// The two checks that plug-ins write after almost every call.
#define CHECK_MSTATUS(status)                                                                      \
    {                                                                                              \
        MStatus maya_check_status = (status);                                                      \
        if (MStatus::kSuccess != maya_check_status)                                                \
            maya_check_status.perror("API error detected in " __FILE__);                           \
    }
#define CHECK_MSTATUS_AND_RETURN_IT(status)                                                        \
    if (MStatus::kSuccess != (status)) {                                                           \
        (status).perror("API error detected in " __FILE__);                                        \
        return (status);                                                                           \
    }
