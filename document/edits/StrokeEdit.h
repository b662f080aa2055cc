// Merges the stroke in progress into the current frame of a camera. Undo and redo exchange the
// picture of the frame that is current then with the one kept here.
#pragma once

#include "document/edits/Edit.h"
#include "document/edits/TargetAdditions.h"

#include <QByteArray>
#include <QString>

namespace vellum {

class StrokeEdit : public Edit {
public:
    /// addedLayer: index of a first layer made for the stroke, -1: none. frameAdded: the frame was
    /// made for it.
    StrokeEdit(const QString& camera, int addedLayer, bool frameAdded);

private:
    bool doExecute(LayerManager& document) override;
    bool doUndo(LayerManager& document) override;
    bool doRedo(LayerManager& document) override;
    void takeAdditionsBack(LayerManager& document);

    QString camera_;
    int addedLayer_;
    bool frameAdded_;
    TargetAdditions added_;
    QByteArray png_;              ///< picture on the other side of the exchange
    QString previousCamera_;      ///< active before a first layer made camera_ active
    int previousLayerIndex_ = -1; ///< its active layer, -1: none to give back
};

} // namespace vellum
