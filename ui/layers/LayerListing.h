// What the layer manager shows, as a value: it is made from the document by a function without
// widgets, compared with what is shown, and only the difference reaches the screen. Main thread
// only.
#pragma once

#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace vellum {

class LayerManager;

/// Where a layer is now.
struct LayerPlace {
    QString camera;
    int index = -1;

    friend bool operator==(const LayerPlace& a, const LayerPlace& b) {
        return a.index == b.index && a.camera == b.camera;
    }
};

struct LayerRow {
    quint64 id = 0; ///< Layer::id(): the row stays the same layer's wherever that is moved
    int index = -1;
    QString name;
    bool visible = true;
    int state = 0; ///< numberOf(LayerState)

    friend bool operator==(const LayerRow& a, const LayerRow& b) {
        return a.id == b.id && a.index == b.index && a.visible == b.visible && a.state == b.state &&
               a.name == b.name;
    }
};

struct CameraSection {
    QString camera;
    bool isInScene = true;      ///< a drawing keeps the layers of a camera that was deleted
    std::vector<LayerRow> rows; ///< the highest index first

    friend bool operator==(const CameraSection& a, const CameraSection& b) {
        return a.isInScene == b.isInScene && a.camera == b.camera && a.rows == b.rows;
    }
};

struct LayerListing {
    std::vector<CameraSection> sections;
    LayerPlace selected; ///< the layer that is drawn on; index -1 when there is none

    friend bool operator==(const LayerListing& a, const LayerListing& b) {
        return a.selected == b.selected && a.sections == b.sections;
    }
};

/// `cameras`: those of the scene.
LayerListing listLayers(const LayerManager& document, const QStringList& cameras);

/// Where the layer with that id is in the document; empty when it is not in it.
std::optional<LayerPlace> findLayer(const LayerManager& document, quint64 id);

/// The same in the scene's active drawing; empty after telling the user.
std::optional<LayerPlace> requireLayer(quint64 id);

/// Whether that layer is the one drawn on: making it so again would be refused.
bool isDrawnOn(const LayerPlace& place);

} // namespace vellum
