// rvVellumNode: makes the drawing node, tells whether there is one, refreshes it.
#pragma once

#include "document/Layer.h"

#include <QString>

#include <maya/MDagModifier.h>
#include <maya/MObject.h>
#include <maya/MPxCommand.h>
#include <maya/MSelectionList.h>
#include <maya/MSyntax.h>

#include <optional>

class MArgDatabase;

namespace vellum {

class NodeCommand : public MPxCommand {
public:
    static void* creator();
    static MSyntax newSyntax();

    MStatus doIt(const MArgList& args) override;
    MStatus undoIt() override;
    MStatus redoIt() override;
    bool isUndoable() const override;

private:
    void parse(const MArgDatabase& args);
    MStatus create();
    MStatus buildNodes();
    void addFirstLayer();
    void refreshListeners();

    MDagModifier modifier_;
    MObject transform_;
    MSelectionList selectionBefore_;

    bool edit_ = false;
    bool query_ = false;
    bool doneOnce_ = false; ///< redo runs the modifier only
    bool undoable_ = false;

    // From the flags.
    MStatus (*action_)() = nullptr; ///< null: makes the node
    bool layer_ = false;
    bool frame_ = false;
    QString layerName_;
    QString camera_;
    std::optional<LayerState> layerState_; ///< as far as given
};

} // namespace vellum
