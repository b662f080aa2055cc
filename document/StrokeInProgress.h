// The stroke in progress of a document: at most one, with the camera it is drawn for. Between
// strokes it keeps what the next one uses: a canvas, and the pixels a region transform copied.
// Main thread only.
#pragma once

#include "document/StrokeSession.h"

#include <QByteArray>
#include <QColor>
#include <QImage>
#include <QString>

#include <memory>

namespace vellum {

class Layer;

class StrokeInProgress {
public:
    /// Begin a stroke on the frame; the one before has ended.
    Stroke& begin(const QString& camera, const Frame& frame, Tool tool, const QColor& color);
    Stroke& beginTransform(const QString& camera, const Frame& frame, const RegionTransform& state);

    /// Merges the stroke into the layer's current frame and ends it. `undoBytes` gets the PNG of
    /// the picture before. False, changing nothing, without a stroke on that camera or without a
    /// frame that it can go into.
    bool mergeInto(const QString& camera, Layer& layer, QByteArray& undoBytes);
    void end();

    Stroke* stroke() { return session_ ? &session_->stroke() : nullptr; }
    const QString& camera() const { return camera_; } ///< of the last one when there is none
    void setCamera(const QString& camera) { camera_ = camera; } ///< it has another name now

    /// The stroke drawn for that camera, or null.
    StrokeSession* on(const QString& camera) const;

    /// The pixels last copied or cut by a region transform; null before.
    const QImage& clipboard() const { return clipboard_; }

private:
    std::unique_ptr<StrokeSession> session_;
    QString camera_;
    QImage clipboard_;
    QImage canvas_; ///< reused from stroke to stroke
};

} // namespace vellum
