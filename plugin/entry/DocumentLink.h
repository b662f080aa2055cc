// Answers the document's questions and passes its changes on to the scene and the interface.
#pragma once

#include "document/DocumentObserver.h"

namespace vellum {

class DocumentLink : public DocumentObserver {
public:
    void documentChanged(LayerManager& manager) override;
    void activeLayerOpacityChanged(float opacity) override;
    void timelineOverlayWanted() override;
    bool cameraExists(const QString& camera) const override;
    QString currentCamera() const override;
    bool isPlaying() const override;
};

/// What a document shows anywhere outside the views: time slider and layer manager.
void refreshInterface(LayerManager& manager);

} // namespace vellum
