// The pictures of a document's cameras: each made anew only where it changed since it was last
// asked for, and told apart by versions. Knows what is still to be shown; the layers and the stroke
// are the document's. Main thread only.
#pragma once

#include "document/CameraComposite.h"
#include "document/Layer.h"

#include <QImage>
#include <QRect>
#include <QString>
#include <QStringList>

#include <map>
#include <set>

namespace vellum {

class StrokeInProgress;
class StrokeSession;

class CameraPictures {
public:
    void markModified(const QString& camera) { modified_.insert(camera); }
    QStringList modified() const { return {modified_.begin(), modified_.end()}; }

    /// The camera has no layers any more.
    void drop(const QString& camera) { pictures_.erase(camera); }

    /// The stroke drawn for this camera is over; its picture may still show it.
    void endStroke(const QString& camera);
    void discardStroke(const QString& camera);

    /// Brings the ghosts up to date at once. While a stroke is drawn they stand still.
    void updateGhosts(const QString& camera, const LayerStack& layers, const GhostOptions& options);

    /// Whether redraw() would change the picture.
    bool needsRedraw(const QString& camera, const LayerStack& layers,
                     const StrokeInProgress& stroke) const;

    /// Brings the picture up to date: ghosts of the active layer, then the layers from the bottom
    /// up, the stroke on the active one.
    void redraw(const QString& camera, const LayerStack& layers, const StrokeInProgress& stroke,
                const GhostOptions& options);

    /// The picture as last made; null before.
    const QImage* image(const QString& camera) const;

    /// See LayerManager.
    quint64 version(const QString& camera) const;
    QRect changedSince(const QString& camera, quint64 version) const;

private:
    const CameraComposite* find(const QString& camera) const;
    QRect takeChanges(const QString& camera, const LayerStack& layers, StrokeSession* stroke,
                      const GhostOptions& options);
    void paint(CameraComposite& picture, const QRect& changed, const LayerStack& layers,
               const StrokeSession* stroke);
    void noteDisplayed(const QString& camera);

    std::map<QString, CameraComposite> pictures_;
    std::set<QString> modified_;
    std::set<QString> showDiscarded_; ///< their pictures still show a stroke that was discarded
    QStringList recent_;              ///< taken to be on display, latest first
};

} // namespace vellum
