// Gives a property of a layer another value. What the document made of the value the first time is
// what redo brings back.
#pragma once

#include "document/edits/LayerEdit.h"
#include "document/edits/LayerProperty.h"

namespace vellum {

class SetLayerProperty : public OneLayerEdit {
public:
    /// The layer must be there, and the property one of the table.
    SetLayerProperty(const QString& camera, int index, const LayerProperty& property,
                     LayerValue value);

private:
    bool changeLayer(LayerManager& document, int index) override;
    bool changeAgain(LayerManager& document) override;
    bool takeBack(LayerManager& document) override;

    const LayerProperty& property_;
    LayerValue value_;
    LayerValue before_;
};

} // namespace vellum
