// What a user sets on a layer, one row a property. Commands, their queries and their edits read it
// from here.
#pragma once

#include <QString>

#include <variant>

namespace vellum {

class Layer;
class LayerManager;

/// Name, visibility, opacity, or the number of a state.
using LayerValue = std::variant<QString, bool, float, unsigned>;

struct LayerProperty {
    LayerValue (*get)(const Layer& layer);
    /// What the document makes of the value is what get() answers then.
    void (*set)(LayerManager& document, const QString& camera, int index, const LayerValue& value);
    /// Brings back what get() had answered.
    void (*restore)(LayerManager& document, const QString& camera, int index,
                    const LayerValue& value);
    unsigned largest;    ///< of a number
    const char* refusal; ///< of a number above it, which stands in the place of %1
};

namespace layer_property {
extern const LayerProperty kName; ///< another one when a layer has it already
extern const LayerProperty kVisible;
extern const LayerProperty kOpacity; ///< pulled into 0..1
extern const LayerProperty kState;
} // namespace layer_property

} // namespace vellum
