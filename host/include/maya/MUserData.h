#pragma once

namespace host {
class DrawOverrides;
} // namespace host

/// Base of the data an override hands from prepareForDraw to its drawing calls.
/// The renderer owns what prepareForDraw returned; see MPxDrawOverride.
class MUserData {
public:
    [[deprecated("use MUserData()")]] explicit MUserData(bool deleteAfterUse)
        : deleteAfterUse_(deleteAfterUse) {}
    MUserData() = default;
    virtual ~MUserData();

    [[deprecated]] bool deleteAfterUse() { return deleteAfterUse_; }
    [[deprecated]] void setDeleteAfterUse(bool shouldDelete) { deleteAfterUse_ = shouldDelete; }

    static const char* className();

private:
    bool deleteAfterUse_ = false;
    friend class host::DrawOverrides;
};
