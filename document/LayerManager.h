// The document: for every camera an ordered list of layers. It holds the stroke in progress and the
// pictures that the layers make together, and is where those are asked for. Owned by the node's
// data and shared by everyone who works on it (std::shared_ptr). Main thread only.
//
// Cameras are named by their transform. A layer is addressed by camera and index, 0 at the bottom.
// Queries and setters of a layer that does not exist are silent and neutral; moving it reports
// "Invalid layer: CAMERA (INDEX)", activating it "Invalid layer index: INDEX", and changes nothing.
#pragma once

#include "document/CameraPictures.h"
#include "document/Layer.h"
#include "document/StrokeInProgress.h"

#include <QColor>
#include <QImage>
#include <QObject>
#include <QRect>
#include <QString>
#include <QStringList>

#include <maya/MObjectHandle.h>

#include <map>
#include <memory>
#include <optional>
#include <vector>

namespace vellum {

class LayerManager : public QObject {
    Q_OBJECT

public:
    LayerManager();
    ~LayerManager() override;

    /// The node that holds the document, as far as it has introduced itself.
    const MObjectHandle& holder() const { return holder_; }
    void setHolder(const MObjectHandle& node) { holder_ = node; }

    /// The mark of the scene's main drawing: the first node that carries it is the active one.
    bool isMaster() const { return master_; }
    void setMaster(bool master) { master_ = master; }

    // --- Layers -------------------------------------------------------------------------------

    QStringList cameras() const; ///< those with layers, ascending
    int cameraLayerCount(const QString& camera) const;
    int totalLayerCount() const;
    bool isValidLayer(const QString& camera, int index) const;
    const Layer* layer(const QString& camera, int index) const; ///< null when there is none
    int activeLayerIndex(const QString& camera) const;          ///< -1 when there is none
    const Layer* activeLayer(const QString& camera) const;

    /// Makes a layer with a unique name and the state of new layers; its index or -1.
    int addLayer(const QString& camera, int index, const QString& name);

    /// Takes a layer over, its name unchanged. An index outside the list appends. The first layer
    /// of a camera becomes active; the first of the document makes its camera current. -1 for null.
    int insertLayer(const QString& camera, int index, std::unique_ptr<Layer> layer);

    /// Removes a layer and hands it over. When it was the active one, the one below becomes active.
    std::unique_ptr<Layer> takeLayer(const QString& camera, int index);

    /// Hands all layers of a camera over, bottom first, appended to `out`.
    void deleteAllLayers(const QString& camera, std::vector<std::unique_ptr<Layer>>& out);

    int moveLayer(const QString& camera, int from, int to); ///< final index or -1
    int moveLayerToCamera(const QString& camera, int index, const QString& newCamera,
                          int newIndex); ///< index in the new camera or -1

    void renameLayer(const QString& camera, int index, const QString& name);
    void restoreLayerName(const QString& camera, int index, const QString& name); ///< for undo
    void setLayerOpacity(const QString& camera, int index, float opacity);
    void setLayerState(const QString& camera, int index, LayerState state);
    void setLayerVisible(const QString& camera, int index, bool visible);
    QString layerName(const QString& camera, int index) const;
    float layerOpacity(const QString& camera, int index) const;
    LayerState layerState(const QString& camera, int index) const;
    bool layerVisible(const QString& camera, int index) const;

    /// The name itself when no layer of any camera has it, else "Layer 1", "Layer 2", ...
    QString uniqueLayerName(const QString& name) const;

    /// Makes a layer the drawing target of its camera. A negative index is accepted for a camera
    /// without layers. False after reporting "Invalid layer index: INDEX".
    bool setActiveLayer(const QString& camera, int index, bool makeCurrentCamera);

    const QString& currentCamera() const { return currentCamera_; }
    const QString& previousCamera() const { return previousCamera_; }
    void setCurrentCamera(const QString& camera);
    void restoreCurrentCamera(const QString& current, const QString& previous); ///< for undo

    /// Layers that are to go from one camera to another since names of cameras have changed.
    struct CameraMove {
        QString from;
        QString to;
        std::vector<quint64> layers; ///< by Layer::id()
        quint64 active = 0;          ///< the one to be active again where none of them is; 0: none
        bool isRename = false;       ///< what is said of `from` is true of `to` now
    };
    /// All at once, so that names may be exchanged. Each camera's layers stay in their order, above
    /// those that are there.
    void moveLayers(const std::vector<CameraMove>& moves);

    // --- Frames of the active layer of a camera; neutral without one ----------------------------

    int addFrameAt(const QString& camera, const MTime& time);
    int addFrameAt(const QString& camera, int intTime);
    int addFrameAtCurrentTime(const QString& camera);
    bool hasFrameAtCurrentTime(const QString& camera) const;
    std::unique_ptr<Frame> takeFrameAt(const QString& camera, const MTime& time);
    std::unique_ptr<Frame> takeFrameAt(const QString& camera, int intTime);
    std::unique_ptr<Frame> copyFrameAt(const QString& camera, int intTime) const;
    const Frame* nextFrame(const QString& camera, bool wrap) const;
    const Frame* previousFrame(const QString& camera, bool wrap) const;
    void setFrameTimes(const QString& camera, const QList<int>& times);

    /// Also brings the layer's current frame up to date with the scene's time, so that a following
    /// timeChanged() may skip it.
    void collectFrameTimes(const QString& camera, QList<int>& times);

    /// The frame shown now, null when there is none.
    const Frame* currentFrame(const QString& camera) const;

    /// Exchange used by undo and redo of strokes: the current frame gets the picture of the bytes,
    /// the bytes become the picture it had. Bytes that do not load give a blank picture. False,
    /// changing nothing, without a layer or current frame, and when the picture cannot be packed.
    bool replaceActiveImage(const QString& camera, QByteArray& png);
    bool replaceImage(const QString& camera, int index, QByteArray& png);

    // --- Frames of any layer, by moment, for edits; see Layer. False, changing nothing, without it

    bool exchangeFrames(const QString& camera, int index, const std::vector<MTime>& leaving,
                        std::vector<std::unique_ptr<Frame>>& frames);
    bool shiftFrames(const QString& camera, int index, const std::vector<Layer::Shift>& shifts);

    // --- Stroke in progress: at most one --------------------------------------------------------

    /// Begins a stroke on the current frame of the camera's active layer and prepares the stroke
    /// image for the tool. A stroke still in progress is discarded.
    /// Null when the layer is missing or locked or has no frame to draw on now.
    Stroke* beginStroke(const QString& camera, Tool tool, const QColor& color);

    /// Begins a region transform there in the same way: a stroke of Tool::Transform whose
    /// `region` the caller changes from then on, marking the stroke dirty. With `state.copy` the
    /// clipboard gets the region's pixels, with `state.paste` they float. The drawing shown may be
    /// one that is held from an earlier time.
    Stroke* beginTransform(const QString& camera, const RegionTransform& state);

    /// The pixels last copied or cut by a region transform; null before.
    const QImage& clipboardImage() const { return stroke_.clipboard(); }

    Stroke* currentStroke() { return stroke_.stroke(); }
    const QString& strokeCamera() const { return stroke_.camera(); }

    /// Where the frame that the stroke of this camera was begun on lies now; empty when it has
    /// gone or there is no such stroke.
    struct FramePlace {
        int layer;
        const Frame* frame;
    };
    std::optional<FramePlace> strokePlace(const QString& camera) const;

    /// Merges the stroke into the current frame and ends it. `undoBytes` gets the PNG of the
    /// picture before. False, changing nothing, without a stroke on that camera or without a
    /// current frame.
    bool commitStroke(const QString& camera, QByteArray& undoBytes);
    void discardStroke();

    // --- The picture ----------------------------------------------------------------------------

    /// Whether compositeCamera() would change the picture.
    bool needsRedraw(const QString& camera) const;
    void markCameraModified(const QString& camera) { pictures_.markModified(camera); }
    QStringList modifiedCameras() const { return pictures_.modified(); }

    /// The picture of a camera at the current time: ghosts of the active layer, then the layers
    /// from the bottom up, the stroke in progress on the active one. 1024 x 1024, Format_RGBA8888,
    /// straight alpha. Only what changed since the last call is made anew. Null for a camera
    /// without layers. Owned by the document; the pixels change with the next call.
    const QImage* compositeCamera(const QString& camera);

    /// Version of a camera's picture, another one after every change; 0 before the first. With it
    /// several textures can each fetch what they miss: changes since a version that was never this
    /// picture's, or too long ago, are the whole canvas.
    quint64 compositeVersion(const QString& camera) const { return pictures_.version(camera); }
    QRect compositeChangedSince(const QString& camera, quint64 version) const {
        return pictures_.changedSince(camera, version);
    }

    /// The scene's time changed: every layer finds its current frame. `skipActive` says that the
    /// active layer of the current camera has just been brought up to date by collectFrameTimes();
    /// it is left alone then, if that was so.
    void timeChanged(int intTime, bool skipActive = false);

    /// Sets the colour of every pixel that is not fully transparent, keeping its alpha. `image`:
    /// Format_RGBA8888.
    static void tintImage(QImage& image, const QColor& color);

public Q_SLOTS:
    /// The camera of the active 3D view becomes the current camera.
    void RefreshActiveCamera();

private:
    // Null when there are none. The layers found may be changed, by the document itself.
    LayerStack* find(const QString& camera);
    const LayerStack* find(const QString& camera) const;
    Layer* find(const QString& camera, int index) const;
    Layer* findActive(const QString& camera) const;

    LayerStack takeLayers(const QString& camera, const std::vector<quint64>& ids);
    bool adoptCamera(const QString& camera);
    void changeStep();
    bool framesChanged(bool done);
    bool reportInvalidLayer(const QString& camera, int index) const;
    const Frame* frameForStroke(const QString& camera);

    std::map<QString, LayerStack> cameras_; ///< those with layers
    StrokeInProgress stroke_;
    CameraPictures pictures_;
    QString currentCamera_;
    QString previousCamera_;
    MObjectHandle holder_;
    bool master_ = false;
    bool wasPlaying_ = false;
    const Layer* collectedLayer_ = nullptr; ///< only compared; by the last collectFrameTimes()
    int collectedTime_ = 0;
};

} // namespace vellum
