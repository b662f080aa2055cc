#pragma once

#include <maya/MFn.h>
#include <maya/MTypes.h>

#include <memory>

namespace host {
class Object;
struct Access;
} // namespace host

/// A handle to something internal. Here it keeps the thing in memory, but a node that left the
/// scene is treated as gone all the same: hold an MObjectHandle beside it.
class MObject {
public:
    MObject();
    MObject(const MObject& other);
    ~MObject();

    bool hasFn(MFn::Type type) const;
    bool isNull() const;
    MFn::Type apiType() const;
    const char* apiTypeStr() const;
    bool operator==(const MObject& other) const;
    bool operator!=(const MObject& other) const;
    MObject& operator=(const MObject& other);

    static MObject kNullObj;

private:
    friend struct host::Access;
    std::shared_ptr<host::Object> object_;
};
