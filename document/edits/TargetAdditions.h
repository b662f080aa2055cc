// What was made so that there is something to draw on: a camera's first layer, a frame, or both.
// Whoever made it keeps the value, which can take itself back and put itself again. Main thread
// only.
#pragma once

#include "document/LayerAddress.h"

#include <QString>

#include <maya/MTime.h>

#include <memory>
#include <optional>
#include <vector>

namespace vellum {

class Frame;
class Layer;
class LayerManager;

class TargetAdditions {
public:
    TargetAdditions();
    explicit TargetAdditions(const QString& camera);
    ~TargetAdditions();
    TargetAdditions(TargetAdditions&& other) noexcept;
    TargetAdditions& operator=(TargetAdditions&& other) noexcept;

    /// The camera has another name now.
    void setCamera(const QString& camera);

    // Made now. False, adding nothing, when the document refuses.
    bool addLayer(LayerManager& document, int index);
    bool addFrame(LayerManager& document, const MTime& time); ///< to the active layer

    // Made before by another value, as the stroke command is told. The camera that was current
    // before is not known then, and stays to whoever adopts.
    void adoptLayer(const LayerManager& document, int index);
    void adoptFrame(const LayerManager& document, int layer, const MTime& time);

    bool hasLayer() const { return layerAdded_; }
    bool hasFrame() const { return frame_.has_value(); }
    bool isEmpty() const { return !hasLayer() && !hasFrame(); }

    /// Where the added layer is now; -1 when there is none.
    int layerIndex(const LayerManager& document) const;

    /// Whether takeBack() finds what was added.
    bool isThere(const LayerManager& document) const;

    /// Takes the frame out of its layer, or the layer with all it holds out of the document, and
    /// keeps it. A camera that became current by getting the layer stops being it. False, changing
    /// nothing, when it is not there.
    bool takeBack(LayerManager& document);

    /// After takeBack(): the very layer, active, or the very frame, with the picture it had then.
    /// False, changing nothing and keeping it, when the frame's place is taken or its layer gone.
    bool putAgain(LayerManager& document);

    /// Takes back, for good, only what nobody has touched since: the frame while it is blank, the
    /// layer without frames.
    void takeBackUntouched(LayerManager& document);

private:
    struct AddedFrame {
        MTime time;
        quint64 revision; ///< of the blank picture; 0: not known
    };
    struct CurrentCamera {
        QString current;
        QString previous;
    };

    void rememberCamera(const LayerManager& document);
    bool putLayer(LayerManager& document);
    bool takeLayer(LayerManager& document);

    LayerAddress layer_; ///< the one added, or the one that got the frame
    bool layerAdded_ = false;
    int index_ = -1; ///< of the added layer
    std::optional<AddedFrame> frame_;
    std::optional<CurrentCamera> before_; ///< before the layer was added
    // While taken back. The frame of an added layer goes and comes with it.
    std::unique_ptr<Layer> kept_;
    std::vector<std::unique_ptr<Frame>> keptFrame_;
};

} // namespace vellum
