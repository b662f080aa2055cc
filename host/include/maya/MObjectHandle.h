#pragma once

#include <maya/MObject.h>
#include <maya/MTypes.h>

#include <memory>

/// Tells whether an object is still there without keeping it.
class MObjectHandle {
public:
    MObjectHandle();
    MObjectHandle(const MObject& object);
    MObjectHandle(const MObjectHandle& other);
    ~MObjectHandle();

    MObject object() const; ///< a null object when it is not alive
    const MObject& objectRef() const;
    bool isValid() const; ///< in the scene
    bool isAlive() const; ///< in memory, maybe only in the undo queue
    unsigned int hashCode() const;

    bool operator==(const MObjectHandle& other) const;
    bool operator==(const MObject& object) const;
    bool operator!=(const MObjectHandle& other) const;
    bool operator!=(const MObject& object) const;
    MObjectHandle& operator=(const MObjectHandle& other);
    MObjectHandle& operator=(const MObject& object);

    static unsigned int objectHashCode(const MObject& object);

private:
    std::weak_ptr<host::Object> object_;
    unsigned int hash_ = 0;
    mutable MObject reference_;
};
