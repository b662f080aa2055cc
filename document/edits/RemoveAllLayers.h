// Removes all layers of a camera and keeps them for undo.
#pragma once

#include "document/edits/LayerEdit.h"

namespace vellum {

class RemoveAllLayers : public LayerEdit {
public:
    explicit RemoveAllLayers(QString camera);
    ~RemoveAllLayers() override;

private:
    bool change(LayerManager& document) override;
    bool takeBack(LayerManager& document) override;

    QString camera_;
    std::vector<std::unique_ptr<Layer>> layers_; ///< while done, bottom first
    ActiveLayers before_;
};

} // namespace vellum
