// Adds a layer, blank at first; the layer itself is kept while undone, so that redo brings the very
// same back.
#pragma once

#include "document/Layer.h"
#include "document/edits/LayerEdit.h"

namespace vellum {

class AddLayer : public LayerEdit {
public:
    enum class Then { Nothing, MakeItActive };

    /// Index < 0: on top. No state: that of new layers.
    AddLayer(const QString& camera, int index, QString name, std::optional<LayerState> state,
             Then then);
    ~AddLayer() override;

private:
    bool change(LayerManager& document) override;
    bool changeAgain(LayerManager& document) override;
    bool takeBack(LayerManager& document) override;
    void finish(LayerManager& document);

    LayerAddress address_;
    QString name_;
    int index_;
    std::optional<LayerState> state_;
    Then then_;
    std::unique_ptr<Layer> layer_; ///< while undone
    ActiveLayers before_;
};

} // namespace vellum
