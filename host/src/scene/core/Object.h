// What an MObject stands for.
#pragma once

#include <maya/MFn.h>
#include <maya/MObject.h>

#include <memory>

namespace host {

class Object : public std::enable_shared_from_this<Object> {
public:
    Object() = default;
    virtual ~Object() = default;
    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;

    virtual MFn::Type apiType() const = 0;
    virtual bool hasFn(MFn::Type type) const { return type == apiType() || type == MFn::kBase; }

    /// False for a node that is not in the scene (deleted, maybe kept for undo).
    virtual bool inScene() const { return true; }
};

using ObjectPtr = std::shared_ptr<Object>;

/// The way from API objects to the host's and back.
struct Access {
    static const ObjectPtr& object(const MObject& object) { return object.object_; }
    static MObject make(ObjectPtr object) {
        MObject out;
        out.object_ = std::move(object);
        return out;
    }
    template <class T> static std::shared_ptr<T> as(const MObject& object) {
        return std::dynamic_pointer_cast<T>(object.object_);
    }
};

} // namespace host
