// Moves all layers of a camera above those of another, in their order; the other becomes current.
// All of them or none.
#pragma once

#include "document/edits/LayerEdit.h"

#include <deque>

namespace vellum {

class MoveAllLayers : public LayerEdit {
public:
    MoveAllLayers(QString camera, QString target);

private:
    bool change(LayerManager& document) override;
    bool takeBack(LayerManager& document) override;
    void putAllBack(LayerManager& document);

    QString camera_;
    QString target_;
    std::deque<LayerAddress> moved_; ///< bottom first
    ActiveLayers before_;
};

} // namespace vellum
