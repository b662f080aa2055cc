// rvVellumStroke: makes a finished stroke an undoable step.
#pragma once

#include <QString>

#include <maya/MPxCommand.h>
#include <maya/MSyntax.h>

#include <memory>

namespace vellum {

class Edit;
class LayerManager;

class StrokeCommand : public MPxCommand {
public:
    StrokeCommand();
    ~StrokeCommand() override;

    static void* creator();
    static MSyntax newSyntax();

    MStatus doIt(const MArgList& args) override;
    MStatus undoIt() override;
    MStatus redoIt() override;
    bool isUndoable() const override;

private:
    MStatus parse(const MArgList& args);
    MStatus run(bool (Edit::*verb)(LayerManager&));

    QString camera_;
    std::unique_ptr<Edit> edit_;
    std::weak_ptr<LayerManager> document_; ///< the drawing it is about
};

} // namespace vellum
