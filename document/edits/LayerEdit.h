// What the edits of a camera's layers share.
#pragma once

#include "document/LayerAddress.h"
#include "document/edits/Edit.h"

#include <QString>

#include <initializer_list>
#include <memory>
#include <vector>

namespace vellum {

class Layer;

/// Undo and redo that find the layers changed say so.
class LayerEdit : public Edit {
private:
    bool doExecute(LayerManager& document) final { return change(document); }
    bool doUndo(LayerManager& document) final;
    bool doRedo(LayerManager& document) final;

    /// False, changing nothing, when it is refused.
    virtual bool change(LayerManager& document) = 0;
    virtual bool changeAgain(LayerManager& document) { return change(document); }
    virtual bool takeBack(LayerManager& document) = 0;
};

/// A change of one layer that is there before and after it.
class OneLayerEdit : public LayerEdit {
protected:
    OneLayerEdit(const QString& camera, int index) : layer_(camera), index_(index) {}

    const QString& camera() const { return layer_.camera(); }
    int firstIndex() const { return index_; }
    int indexNow(const LayerManager& document) const { return layer_.index(document); }

    bool change(LayerManager& document) override;
    bool changeAgain(LayerManager& document) override;

    virtual bool changeLayer(LayerManager& document, int index) = 0;

private:
    LayerAddress layer_;
    int index_; ///< the first time
};

/// Which camera was current and which layers were active, to be brought back.
class ActiveLayers {
public:
    /// Of the current camera and of `cameras`.
    void remember(const LayerManager& document, std::initializer_list<QString> cameras);
    void restore(LayerManager& document) const;

private:
    QString currentCamera_;
    QString previousCamera_;
    std::vector<LayerAddress> layers_;
};

/// Puts a layer that was taken out in again, without making it the active one.
int putBack(LayerManager& document, const QString& camera, int index, std::unique_ptr<Layer> layer);

} // namespace vellum
