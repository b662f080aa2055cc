#include "document/edits/LayerEdits.h"

#include "document/Layer.h"
#include "document/LayerAddress.h"
#include "document/LayerManager.h"
#include "document/SceneCamera.h"
#include "plugin/base/Report.h"

#include <deque>
#include <initializer_list>
#include <utility>
#include <vector>

namespace vellum {

bool LayerEdit::apply(LayerManager& document) {
    if (!done_)
        return done_ = doFirst(document);
    if (doAgain(document))
        return true;
    report::error(QStringLiteral("The layers of the camera have changed since."));
    return false;
}

bool LayerEdit::revert(LayerManager& document) {
    if (takeBack(document))
        return true;
    report::error(QStringLiteral("The layers of the camera have changed since."));
    return false;
}

namespace {

/// Which camera was current and which layers were active, to be brought back.
class ActiveLayers {
public:
    /// The current camera and `cameras`.
    void remember(const LayerManager& document, std::initializer_list<QString> cameras) {
        currentCamera_ = document.currentCamera();
        previousCamera_ = document.previousCamera();
        layers_.clear();
        layers_.push_back(address(document, currentCamera_));
        for (const QString& camera : cameras)
            layers_.push_back(address(document, camera));
    }

    void restore(LayerManager& document) const {
        for (const LayerAddress& layer : layers_) {
            const int index = layer.index(document);
            if (index >= 0)
                document.setActiveLayer(layer.camera(), index, false);
        }
        if (document.currentCamera() != currentCamera_)
            document.restoreCurrentCamera(currentCamera_, previousCamera_);
    }

private:
    static LayerAddress address(const LayerManager& document, const QString& camera) {
        LayerAddress active(camera);
        active.bindToActive(document);
        return active;
    }

    QString currentCamera_;
    QString previousCamera_;
    std::vector<LayerAddress> layers_;
};

int putBack(LayerManager& document, const QString& camera, int index,
            std::unique_ptr<Layer> layer) {
    layer->setActive(false);
    return document.insertLayer(camera, index, std::move(layer));
}

/// A change of one layer that is there before and after it.
class OneLayerEdit : public LayerEdit {
public:
    OneLayerEdit(const QString& camera, int index) : layer_(camera), index_(index) {}

protected:
    const QString& camera() const { return layer_.camera(); }
    int firstIndex() const { return index_; }
    int indexNow(const LayerManager& document) const { return layer_.index(document); }

    bool doFirst(LayerManager& document) override {
        layer_.bind(document, index_);
        return change(document, index_);
    }

    bool doAgain(LayerManager& document) override {
        const int index = indexNow(document);
        return index >= 0 && change(document, index);
    }

    virtual bool change(LayerManager& document, int index) = 0;

private:
    LayerAddress layer_;
    int index_; ///< the first time
};

/// Adds a layer; the object itself is kept while undone, so that redo brings the very same back.
class AddEdit : public LayerEdit {
public:
    AddEdit(const QString& camera, int index, QString name, int state, bool makeActive)
        : address_(camera), name_(std::move(name)), index_(index), state_(state),
          makeActive_(makeActive) {}

private:
    bool doFirst(LayerManager& document) override {
        before_.remember(document, {address_.camera()});
        const LayerManager::ChangeGroup group(document);
        result_ = document.addLayer(address_.camera(), index_, name_);
        if (result_ < 0)
            return false;
        if (state_ >= 0)
            document.setLayerState(address_.camera(), result_, state_);
        return finish(document);
    }

    bool doAgain(LayerManager& document) override {
        before_.remember(document, {address_.camera()});
        const LayerManager::ChangeGroup group(document);
        result_ = putBack(document, address_.camera(), result_, std::move(layer_));
        return finish(document);
    }

    bool finish(LayerManager& document) {
        address_.bind(document, result_);
        if (makeActive_)
            document.setActiveLayer(address_.camera(), result_, true);
        return true;
    }

    bool takeBack(LayerManager& document) override {
        const LayerManager::ChangeGroup group(document);
        layer_ = document.takeLayer(address_.camera(), address_.index(document));
        if (!layer_)
            return false;
        before_.restore(document);
        return true;
    }

    LayerAddress address_;
    QString name_;
    int index_;
    int state_;
    bool makeActive_;
    std::unique_ptr<Layer> layer_;
    ActiveLayers before_;
};

class RemoveEdit : public OneLayerEdit {
public:
    using OneLayerEdit::OneLayerEdit;

private:
    bool change(LayerManager& document, int index) override {
        before_.remember(document, {camera()});
        layer_ = document.takeLayer(camera(), index);
        from_ = index;
        if (!layer_)
            report::error(
                QStringLiteral("Invalid layer: %1 (%2)").arg(camera(), QString::number(index)));
        return layer_ != nullptr;
    }

    bool takeBack(LayerManager& document) override {
        const LayerManager::ChangeGroup group(document);
        putBack(document, camera(), from_, std::move(layer_));
        before_.restore(document);
        return true;
    }

    int from_ = -1;
    std::unique_ptr<Layer> layer_;
    ActiveLayers before_;
};

class RemoveAllEdit : public LayerEdit {
public:
    explicit RemoveAllEdit(QString camera) : camera_(std::move(camera)) {}

private:
    bool doFirst(LayerManager& document) override {
        before_.remember(document, {camera_});
        document.deleteAllLayers(camera_, layers_);
        return true;
    }

    bool doAgain(LayerManager& document) override { return doFirst(document); }

    bool takeBack(LayerManager& document) override {
        const LayerManager::ChangeGroup group(document);
        for (auto& layer : layers_)
            putBack(document, camera_, -1, std::move(layer));
        layers_.clear();
        before_.restore(document);
        return true;
    }

    QString camera_;
    std::vector<std::unique_ptr<Layer>> layers_;
    ActiveLayers before_;
};

class MoveEdit : public OneLayerEdit {
public:
    MoveEdit(const QString& camera, int from, int to) : OneLayerEdit(camera, from), to_(to) {}

private:
    bool change(LayerManager& document, int index) override {
        from_ = index;
        result_ = document.moveLayer(camera(), index, to_);
        return result_ >= 0;
    }

    bool takeBack(LayerManager& document) override {
        const int index = indexNow(document);
        return index >= 0 && document.moveLayer(camera(), index, from_) >= 0;
    }

    int from_ = -1;
    int to_;
};

class MoveToCameraEdit : public OneLayerEdit {
public:
    MoveToCameraEdit(const QString& camera, int from, const QString& target, int to)
        : OneLayerEdit(camera, from), moved_(target), to_(to) {}

private:
    bool change(LayerManager& document, int index) override {
        before_.remember(document, {camera(), moved_.camera()});
        result_ = document.moveLayerToCamera(camera(), index, moved_.camera(), to_);
        if (result_ < 0)
            return false;
        moved_.bind(document, result_);
        from_ = index;
        return true;
    }

    bool takeBack(LayerManager& document) override {
        const LayerManager::ChangeGroup group(document);
        auto layer = document.takeLayer(moved_.camera(), moved_.index(document));
        if (!layer)
            return false;
        putBack(document, camera(), from_, std::move(layer));
        before_.restore(document);
        return true;
    }

    LayerAddress moved_; ///< in the other camera
    int to_;
    int from_ = -1;
    ActiveLayers before_;
};

class MoveAllEdit : public LayerEdit {
public:
    MoveAllEdit(QString camera, QString target)
        : camera_(std::move(camera)), target_(std::move(target)) {}

private:
    bool doFirst(LayerManager& document) override {
        if (!requireSceneCamera(target_))
            return false;
        before_.remember(document, {camera_, target_});
        moved_.clear();
        const LayerManager::ChangeGroup group(document);
        const int active = document.activeLayerIndex(camera_);
        // On its own camera every layer is where it shall be.
        const bool stay = camera_ == target_;
        const int first = stay ? 0 : document.cameraLayerCount(target_);
        for (int i = stay ? -1 : document.cameraLayerCount(camera_) - 1; i >= 0; --i) {
            if (document.moveLayerToCamera(camera_, i, target_, first) < 0) {
                putAllBack(document);
                return false;
            }
            moved_.emplace_front(target_);
            moved_.front().bind(document, first);
        }
        if (active >= 0)
            document.setActiveLayer(target_, first + active, true);
        return true;
    }

    bool doAgain(LayerManager& document) override { return doFirst(document); }

    bool takeBack(LayerManager& document) override {
        for (const LayerAddress& layer : moved_) {
            if (layer.index(document) < 0)
                return false;
        }
        const LayerManager::ChangeGroup group(document);
        putAllBack(document);
        return true;
    }

    /// On top of those that did not move: the top ones went first.
    void putAllBack(LayerManager& document) {
        for (const LayerAddress& layer : moved_)
            putBack(document, camera_, -1, document.takeLayer(target_, layer.index(document)));
        before_.restore(document);
    }

    QString camera_;
    QString target_;
    std::deque<LayerAddress> moved_; ///< bottom first
    ActiveLayers before_;
};

class ActivateEdit : public OneLayerEdit {
public:
    using OneLayerEdit::OneLayerEdit;

private:
    bool doFirst(LayerManager& document) override {
        const bool isTarget = document.currentCamera() == camera() &&
                              document.activeLayerIndex(camera()) == firstIndex();
        return !isTarget && OneLayerEdit::doFirst(document);
    }

    bool change(LayerManager& document, int index) override {
        before_.remember(document, {camera()});
        if (!document.setActiveLayer(camera(), index, true))
            return false;
        result_ = index;
        return true;
    }

    bool takeBack(LayerManager& document) override {
        before_.restore(document);
        return true;
    }

    ActiveLayers before_;
};

/// The name the document made of the wanted one is kept, and names come back as they were, whatever
/// has taken them meanwhile.
class RenameEdit : public OneLayerEdit {
public:
    RenameEdit(const QString& camera, int index, QString name)
        : OneLayerEdit(camera, index), name_(std::move(name)) {}

private:
    bool change(LayerManager& document, int index) override {
        before_ = document.layerName(camera(), index);
        if (first_)
            document.renameLayer(camera(), index, name_);
        else
            document.restoreLayerName(camera(), index, name_);
        first_ = false;
        name_ = document.layerName(camera(), index);
        return true;
    }

    bool takeBack(LayerManager& document) override {
        const int index = indexNow(document);
        if (index >= 0)
            document.restoreLayerName(camera(), index, before_);
        return index >= 0;
    }

    QString name_;
    QString before_;
    bool first_ = true;
};

/// Exchanges one property of a layer with a value.
template <typename Value, typename Argument> class PropertyEdit : public OneLayerEdit {
public:
    using Get = Value (LayerManager::*)(const QString&, int) const;
    using Set = void (LayerManager::*)(const QString&, int, Argument);

    PropertyEdit(const QString& camera, int index, Get get, Set set, Value value)
        : OneLayerEdit(camera, index), get_(get), set_(set), value_(std::move(value)) {}

private:
    bool change(LayerManager& document, int index) override {
        before_ = (document.*get_)(camera(), index);
        (document.*set_)(camera(), index, value_);
        return true;
    }

    bool takeBack(LayerManager& document) override {
        const int index = indexNow(document);
        if (index >= 0)
            (document.*set_)(camera(), index, before_);
        return index >= 0;
    }

    Get get_;
    Set set_;
    Value value_;
    Value before_{};
};

template <typename Value, typename Argument>
std::unique_ptr<LayerEdit>
property(const QString& camera, int index, Value (LayerManager::*get)(const QString&, int) const,
         void (LayerManager::*set)(const QString&, int, Argument), Value value) {
    return std::make_unique<PropertyEdit<Value, Argument>>(camera, index, get, set,
                                                           std::move(value));
}

} // namespace

namespace layer_edit {

std::unique_ptr<LayerEdit> add(const QString& camera, const QString& name, int state) {
    return std::make_unique<AddEdit>(camera, -1, name, state, true);
}

std::unique_ptr<LayerEdit> insert(const QString& camera, int index, const QString& name,
                                  int state) {
    return std::make_unique<AddEdit>(camera, index, name, state, false);
}

std::unique_ptr<LayerEdit> remove(const QString& camera, int index) {
    return std::make_unique<RemoveEdit>(camera, index);
}

std::unique_ptr<LayerEdit> removeAll(const QString& camera) {
    return std::make_unique<RemoveAllEdit>(camera);
}

std::unique_ptr<LayerEdit> move(const QString& camera, int from, int to) {
    return std::make_unique<MoveEdit>(camera, from, to);
}

std::unique_ptr<LayerEdit> moveToCamera(const QString& camera, int from, const QString& target,
                                        int to) {
    return std::make_unique<MoveToCameraEdit>(camera, from, target, to);
}

std::unique_ptr<LayerEdit> moveAll(const QString& camera, const QString& target) {
    return std::make_unique<MoveAllEdit>(camera, target);
}

std::unique_ptr<LayerEdit> activate(const QString& camera, int index) {
    return std::make_unique<ActivateEdit>(camera, index);
}

std::unique_ptr<LayerEdit> rename(const QString& camera, int index, const QString& name) {
    return std::make_unique<RenameEdit>(camera, index, name);
}

std::unique_ptr<LayerEdit> setVisible(const QString& camera, int index, bool visible) {
    return property(camera, index, &LayerManager::layerVisible, &LayerManager::setLayerVisible,
                    visible);
}

std::unique_ptr<LayerEdit> setOpacity(const QString& camera, int index, float opacity) {
    return property(camera, index, &LayerManager::layerOpacity, &LayerManager::setLayerOpacity,
                    opacity);
}

std::unique_ptr<LayerEdit> setState(const QString& camera, int index, int state) {
    return property(camera, index, &LayerManager::layerState, &LayerManager::setLayerState, state);
}

} // namespace layer_edit

} // namespace vellum
