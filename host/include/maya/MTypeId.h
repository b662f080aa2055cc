#pragma once

#include <maya/MStatus.h>
#include <maya/MTypes.h>

#include <iosfwd>

class MString;

/// Identifies a node or data type in files.
class MTypeId {
public:
    MTypeId();
    MTypeId(unsigned int id);
    MTypeId(unsigned int prefix, unsigned int id);
    MTypeId(const MTypeId& other);
    ~MTypeId();

    MTypeId& operator=(const MTypeId& other);
    bool operator==(const MTypeId& other) const;
    bool operator!=(const MTypeId& other) const;
    unsigned int id() const;
    MString toHexString(bool upperCase = true) const;

    friend std::ostream& operator<<(std::ostream& out, const MTypeId& id);

private:
    unsigned int id_;
};
