// rvVellumFrame: edits the frames of a camera's active layer. One operation a call.
#pragma once

#include "document/FrameRange.h"

#include <QString>

#include <maya/MPxCommand.h>
#include <maya/MSyntax.h>

#include <memory>

class MArgDatabase;

namespace vellum {

class BaseNode;
class Edit;
class LayerManager;

class FrameCommand : public MPxCommand {
public:
    FrameCommand();
    ~FrameCommand() override;

    static void* creator();
    static MSyntax newSyntax();

    MStatus doIt(const MArgList& args) override;
    MStatus undoIt() override;
    MStatus redoIt() override;
    bool isUndoable() const override;

private:
    MStatus findCamera(const MArgDatabase& args);
    MStatus run(bool (Edit::*verb)(LayerManager&));

    QString camera_;
    bool named_ = false; ///< the call names the camera; else it is the active view's
    std::unique_ptr<Edit> edit_;
    /// The drawing it was done on: after a deleted node came back, another may be the active one.
    std::weak_ptr<LayerManager> document_;
};

} // namespace vellum
