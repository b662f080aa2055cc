// rvVellumStroke: makes a finished stroke an undoable step. Undo and redo exchange the picture of
// the camera's current frame with the one kept here.
#pragma once

#include <QByteArray>
#include <QString>
#include <maya/MPxCommand.h>
#include <maya/MSyntax.h>
#include <maya/MTime.h>
#include <memory>

namespace vellum {

class Layer;
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
    bool recordFrameTime(const LayerManager& document);
    bool swap(LayerManager& document);
    bool putLayerBack(LayerManager& document);
    void takeAdditionsBack(LayerManager& document, bool frame);

    QByteArray png_; ///< picture on the other side of the swap; empty: nothing was committed
    std::weak_ptr<LayerManager> document_;
    QString camera_;
    QString previousCamera_;       ///< active before a first layer made camera_ active
    int previousLayerIndex_ = -1;  ///< its active layer, -1: none to give back
    int addedLayer_ = -1;          ///< made for this stroke, -1: none
    std::unique_ptr<Layer> layer_; ///< that layer, while undone
    bool frameAdded_ = false;
    MTime frameTime_; ///< where the added frame lies
};

} // namespace vellum
