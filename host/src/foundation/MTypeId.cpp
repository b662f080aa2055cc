#include <maya/MString.h>
#include <maya/MTypeId.h>

#include <cstdio>
#include <ostream>

MTypeId::MTypeId() : id_(0) {
}
MTypeId::MTypeId(unsigned int id) : id_(id) {
}
// The registered block prefix fills the upper 24 bits, the developer's own number the lower 8.
MTypeId::MTypeId(unsigned int prefix, unsigned int id) : id_((prefix << 8) | (id & 0xFF)) {
}
MTypeId::MTypeId(const MTypeId& other) = default;
MTypeId::~MTypeId() = default;
MTypeId& MTypeId::operator=(const MTypeId& other) = default;
bool MTypeId::operator==(const MTypeId& other) const {
    return id_ == other.id_;
}
bool MTypeId::operator!=(const MTypeId& other) const {
    return id_ != other.id_;
}
unsigned int MTypeId::id() const {
    return id_;
}

MString MTypeId::toHexString(bool upperCase) const {
    char text[16];
    std::snprintf(text, sizeof text, upperCase ? "0x%08X" : "0x%08x", id_);
    return text;
}

std::ostream& operator<<(std::ostream& out, const MTypeId& id) {
    return out << id.id_;
}
