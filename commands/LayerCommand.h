// rvVellumLayer: queries and edits the layers of one camera.
#pragma once

#include "document/edits/LayerEdits.h"

#include <QString>
#include <maya/MPxCommand.h>
#include <maya/MSyntax.h>
#include <memory>

class MArgDatabase;

namespace vellum {

class BaseNode;
class LayerManager;

class LayerCommand : public MPxCommand {
public:
    static void* creator();
    static MSyntax newSyntax();

    MStatus doIt(const MArgList& args) override;
    MStatus undoIt() override;
    MStatus redoIt() override;
    bool isUndoable() const override;

private:
    MStatus run(const MArgDatabase& args);

    QString camera_;
    std::unique_ptr<LayerEdit> edit_;      ///< null: a query
    std::weak_ptr<LayerManager> document_; ///< the drawing it is about
};

} // namespace vellum
