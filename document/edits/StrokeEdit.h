// Merges the stroke in progress into the current frame of a camera. Undo and redo exchange the
// picture of a frame with the one kept here: of the frame that is current then, or, as the user may
// wish, of the frame drawn on, after the scene's time has been brought there.
//
// Pictures only ever change places, and what was made for the stroke is kept while it is taken
// away: however the time moved between the steps, an undo and a redo at the same time leave
// everything as it was.
#pragma once

#include "document/LayerAddress.h"
#include "document/edits/Edit.h"
#include "document/edits/TargetAdditions.h"

#include <QByteArray>
#include <QString>

#include <maya/MTime.h>

namespace vellum {

class StrokeEdit : public Edit {
public:
    /// addedLayer: index of a first layer made for the stroke, -1: none. frameAdded: the frame it
    /// was begun on was made for it.
    StrokeEdit(const QString& camera, int addedLayer, bool frameAdded);

private:
    bool doExecute(LayerManager& document) override;
    bool doUndo(LayerManager& document) override;
    bool doRedo(LayerManager& document) override;

    void adoptAdditions(const LayerManager& document);
    bool commit(LayerManager& document);
    bool exchange(LayerManager& document);
    bool exchangeDrawn(LayerManager& document);

    /// The frame that got the stroke, and the scene's time at which it was seen.
    struct Drawn {
        LayerAddress layer;
        MTime frame;
        MTime seenAt;
        bool unseen = false; ///< a text, merged when the layer showed nothing
    };

    QString camera_;
    int addedLayer_;
    bool frameAdded_;
    TargetAdditions added_;
    Drawn drawn_;
    QByteArray png_;              ///< picture on the other side of the exchange
    QString previousCamera_;      ///< active before a first layer made camera_ active
    int previousLayerIndex_ = -1; ///< its active layer, -1: none to give back
};

} // namespace vellum
