// rvVellumLayer: queries and edits the layers of one camera.
#pragma once

#include <QString>

#include <maya/MPxCommand.h>
#include <maya/MSyntax.h>

#include <memory>

class MArgDatabase;

namespace vellum {

class BaseNode;
class Edit;
class LayerManager;

class LayerCommand : public MPxCommand {
public:
    LayerCommand();
    ~LayerCommand() override;

    static void* creator();
    static MSyntax newSyntax();

    MStatus doIt(const MArgList& args) override;
    MStatus undoIt() override;
    MStatus redoIt() override;
    bool isUndoable() const override;

private:
    MStatus parse(const MArgDatabase& args);
    MStatus run(bool (Edit::*verb)(LayerManager&));

    QString camera_;
    std::unique_ptr<Edit> edit_;           ///< null: a query
    std::weak_ptr<LayerManager> document_; ///< the drawing it is about
};

} // namespace vellum
