// What the document asks of, and tells, the rooms above it. The entry connects one implementation
// at load and disconnects it at unload. Main thread only.
#pragma once

#include <QString>

namespace vellum {

class LayerManager;

/// Every verb has a default that does without a user interface, so that the document works alone.
class DocumentObserver {
public:
    virtual ~DocumentObserver();

    /// The change step: layers were added, removed, moved, renamed or (de)activated, or the current
    /// camera changed. Timeline markers, panels and views are to be refreshed. Once for a group of
    /// changes made together. The document may be read, not changed, from within.
    virtual void documentChanged(LayerManager& manager);

    /// The active layer of the current camera got this opacity, 0..1.
    virtual void activeLayerOpacityChanged(float opacity);

    /// The node class initialises: the overlay of the time slider is to be built when interactive.
    virtual void timelineOverlayWanted();

    /// Whether the scene has a camera whose transform has this name. Default: yes.
    virtual bool cameraExists(const QString& camera) const;

    /// Transform name of the active 3D view's camera. Default: none.
    virtual QString currentCamera() const;

    /// Whether the scene plays back. Default: asks Maya.
    virtual bool isPlaying() const;
};

/// The connected observer, or one with the default verbs.
DocumentObserver& documentObserver();

/// Connects an observer, which must live until another (or null) is connected. Not owned.
void setDocumentObserver(DocumentObserver* observer);

} // namespace vellum
