#include "commands/LayerEdits.h"

#include "document/Layer.h"
#include "document/LayerManager.h"

#include <functional>
#include <utility>
#include <vector>

namespace vellum {

void ActiveLayers::remember(const LayerManager& document, std::initializer_list<QString> cameras) {
    currentCamera_ = document.currentCamera();
    indexes_.clear();
    indexes_[currentCamera_] = document.activeLayerIndex(currentCamera_);
    for (const QString& camera : cameras)
        indexes_[camera] = document.activeLayerIndex(camera);
}

void ActiveLayers::restore(LayerManager& document) const {
    for (const auto& [camera, index] : indexes_) {
        if (document.isValidLayer(camera, index))
            document.setActiveLayer(camera, index, false);
    }
    if (document.currentCamera() != currentCamera_)
        document.setCurrentCamera(currentCamera_);
}

namespace {

/// Adds a layer; the object itself is kept while undone, so that redo brings the very same back.
class AddEdit : public LayerEdit {
public:
    AddEdit(QString camera, int index, QString name, int state, bool makeActive)
        : camera_(std::move(camera)), name_(std::move(name)), index_(index), state_(state),
          makeActive_(makeActive) {}

    bool apply(LayerManager& document) override {
        before_.remember(document, {camera_});
        const LayerManager::ChangeGroup group(document);
        if (layer_) {
            result_ = document.insertLayer(camera_, result_, std::move(layer_));
        } else {
            result_ = document.addLayer(camera_, index_, name_);
            if (result_ >= 0 && state_ >= 0)
                document.setLayerState(camera_, result_, state_);
        }
        if (result_ >= 0 && makeActive_)
            document.setActiveLayer(camera_, result_, true);
        return result_ >= 0;
    }

    bool revert(LayerManager& document) override {
        const LayerManager::ChangeGroup group(document);
        layer_ = document.takeLayer(camera_, result_);
        if (!layer_)
            return false;
        layer_->setActive(false);
        before_.restore(document);
        return true;
    }

private:
    QString camera_;
    QString name_;
    int index_;
    int state_;
    bool makeActive_;
    std::unique_ptr<Layer> layer_;
    ActiveLayers before_;
};

class RemoveEdit : public LayerEdit {
public:
    RemoveEdit(QString camera, int index) : camera_(std::move(camera)), index_(index) {}

    bool apply(LayerManager& document) override {
        before_.remember(document, {camera_});
        layer_ = document.takeLayer(camera_, index_);
        return layer_ != nullptr;
    }

    bool revert(LayerManager& document) override {
        const LayerManager::ChangeGroup group(document);
        layer_->setActive(false);
        document.insertLayer(camera_, index_, std::move(layer_));
        before_.restore(document);
        return true;
    }

private:
    QString camera_;
    int index_;
    std::unique_ptr<Layer> layer_;
    ActiveLayers before_;
};

class RemoveAllEdit : public LayerEdit {
public:
    explicit RemoveAllEdit(QString camera) : camera_(std::move(camera)) {}

    bool apply(LayerManager& document) override {
        before_.remember(document, {camera_});
        layers_.clear();
        document.deleteAllLayers(camera_, layers_);
        return true;
    }

    bool revert(LayerManager& document) override {
        const LayerManager::ChangeGroup group(document);
        for (auto& layer : layers_) {
            layer->setActive(false);
            document.insertLayer(camera_, -1, std::move(layer));
        }
        layers_.clear();
        before_.restore(document);
        return true;
    }

private:
    QString camera_;
    std::vector<std::unique_ptr<Layer>> layers_;
    ActiveLayers before_;
};

class MoveEdit : public LayerEdit {
public:
    MoveEdit(QString camera, int from, int to) : camera_(std::move(camera)), from_(from), to_(to) {}

    bool apply(LayerManager& document) override {
        result_ = document.moveLayer(camera_, from_, to_);
        return result_ >= 0;
    }

    bool revert(LayerManager& document) override {
        return document.moveLayer(camera_, result_, from_) >= 0;
    }

private:
    QString camera_;
    int from_;
    int to_;
};

class MoveToCameraEdit : public LayerEdit {
public:
    MoveToCameraEdit(QString camera, int from, QString target, int to)
        : camera_(std::move(camera)), target_(std::move(target)), from_(from), to_(to) {}

    bool apply(LayerManager& document) override {
        before_.remember(document, {camera_, target_});
        result_ = document.moveLayerToCamera(camera_, from_, target_, to_);
        return result_ >= 0;
    }

    bool revert(LayerManager& document) override {
        const LayerManager::ChangeGroup group(document);
        auto layer = document.takeLayer(target_, result_);
        if (!layer)
            return false;
        layer->setActive(false);
        document.insertLayer(camera_, from_, std::move(layer));
        before_.restore(document);
        return true;
    }

private:
    QString camera_;
    QString target_;
    int from_;
    int to_;
    ActiveLayers before_;
};

class MoveAllEdit : public LayerEdit {
public:
    MoveAllEdit(QString camera, QString target)
        : camera_(std::move(camera)), target_(std::move(target)) {}

    bool apply(LayerManager& document) override {
        before_.remember(document, {camera_, target_});
        if (camera_ == target_)
            return false;
        const LayerManager::ChangeGroup group(document);
        const int active = document.activeLayerIndex(camera_);
        first_ = document.cameraLayerCount(target_);
        moved_ = 0;
        for (int i = document.cameraLayerCount(camera_) - 1; i >= 0; --i) {
            if (document.moveLayerToCamera(camera_, i, target_, first_) < 0) {
                revert(document);
                return false;
            }
            ++moved_;
        }
        if (active >= 0)
            document.setActiveLayer(target_, first_ + active, true);
        return true;
    }

    bool revert(LayerManager& document) override {
        if (document.cameraLayerCount(target_) < first_ + moved_)
            return false;
        const LayerManager::ChangeGroup group(document);
        for (int i = 0; i < moved_; ++i) {
            auto layer = document.takeLayer(target_, first_);
            layer->setActive(false);
            document.insertLayer(camera_, -1, std::move(layer));
        }
        before_.restore(document);
        return true;
    }

private:
    QString camera_;
    QString target_;
    int first_ = 0; ///< where the moved layers begin in the target
    int moved_ = 0;
    ActiveLayers before_;
};

class ActivateEdit : public LayerEdit {
public:
    ActivateEdit(QString camera, int index) : camera_(std::move(camera)), index_(index) {}

    bool apply(LayerManager& document) override {
        if (document.currentCamera() == camera_ && document.activeLayerIndex(camera_) == index_)
            return false;
        before_.remember(document, {camera_});
        if (!document.setActiveLayer(camera_, index_, true))
            return false;
        result_ = index_;
        return true;
    }

    bool revert(LayerManager& document) override {
        before_.restore(document);
        return true;
    }

private:
    QString camera_;
    int index_;
    ActiveLayers before_;
};

/// Exchanges one property of a layer with a value.
template <typename Value> class PropertyEdit : public LayerEdit {
public:
    using Get = std::function<Value(const LayerManager&)>;
    using Set = std::function<void(LayerManager&, const Value&)>;

    PropertyEdit(Value value, Get get, Set set)
        : value_(std::move(value)), get_(std::move(get)), set_(std::move(set)) {}

    bool apply(LayerManager& document) override {
        before_ = get_(document);
        set_(document, value_);
        return true;
    }

    bool revert(LayerManager& document) override {
        set_(document, before_);
        return true;
    }

private:
    Value value_;
    Value before_{};
    Get get_;
    Set set_;
};

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
    return std::make_unique<PropertyEdit<QString>>(
        name, [=](const LayerManager& d) { return d.layerName(camera, index); },
        [=](LayerManager& d, const QString& value) { d.renameLayer(camera, index, value); });
}

std::unique_ptr<LayerEdit> setVisible(const QString& camera, int index, bool visible) {
    return std::make_unique<PropertyEdit<bool>>(
        visible, [=](const LayerManager& d) { return d.layerVisible(camera, index); },
        [=](LayerManager& d, bool value) { d.setLayerVisible(camera, index, value); });
}

std::unique_ptr<LayerEdit> setOpacity(const QString& camera, int index, float opacity) {
    return std::make_unique<PropertyEdit<float>>(
        opacity, [=](const LayerManager& d) { return d.layerOpacity(camera, index); },
        [=](LayerManager& d, float value) { d.setLayerOpacity(camera, index, value); });
}

std::unique_ptr<LayerEdit> setState(const QString& camera, int index, int state) {
    return std::make_unique<PropertyEdit<int>>(
        state, [=](const LayerManager& d) { return d.layerState(camera, index); },
        [=](LayerManager& d, int value) { d.setLayerState(camera, index, value); });
}

} // namespace layer_edit

} // namespace vellum
