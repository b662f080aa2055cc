#include "document/LayerManager.h"

#include "document/Changes.h"
#include "document/DocumentEnvironment.h"
#include "document/IntTime.h"
#include "document/SceneCamera.h"
#include "plugin/base/Report.h"
#include "tools/raster/PixelRows.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace vellum {

LayerManager::LayerManager() = default;
LayerManager::~LayerManager() {
    forgetChanges(*this);
}

void LayerManager::changeStep() {
    tell(Change::Layers, this);
}

const LayerStack* LayerManager::find(const QString& camera) const {
    const auto found = cameras_.find(camera);
    return found == cameras_.end() ? nullptr : &found->second;
}

LayerStack* LayerManager::find(const QString& camera) {
    return const_cast<LayerStack*>(std::as_const(*this).find(camera));
}

Layer* LayerManager::find(const QString& camera, int index) const {
    return isValidLayer(camera, index) ? (*find(camera))[static_cast<std::size_t>(index)].get()
                                       : nullptr;
}

Layer* LayerManager::findActive(const QString& camera) const {
    const LayerStack* layers = find(camera);
    return layers ? activeOf(*layers) : nullptr;
}

QStringList LayerManager::cameras() const {
    QStringList names;
    for (const auto& [name, layers] : cameras_)
        names.append(name);
    return names;
}

int LayerManager::cameraLayerCount(const QString& camera) const {
    const LayerStack* layers = find(camera);
    return layers ? static_cast<int>(layers->size()) : 0;
}

int LayerManager::totalLayerCount() const {
    int count = 0;
    for (const auto& [name, layers] : cameras_)
        count += static_cast<int>(layers.size());
    return count;
}

bool LayerManager::isValidLayer(const QString& camera, int index) const {
    return index >= 0 && index < cameraLayerCount(camera);
}

const Layer* LayerManager::layer(const QString& camera, int index) const {
    return find(camera, index);
}

int LayerManager::activeLayerIndex(const QString& camera) const {
    const int count = cameraLayerCount(camera);
    for (int index = 0; index < count; ++index) {
        if (layer(camera, index)->isActive())
            return index;
    }
    return -1;
}

const Layer* LayerManager::activeLayer(const QString& camera) const {
    return findActive(camera);
}

QString LayerManager::uniqueLayerName(const QString& name) const {
    const auto isTaken = [this](const QString& candidate) {
        for (const auto& [camera, layers] : cameras_) {
            for (const auto& one : layers) {
                if (one->name() == candidate)
                    return true;
            }
        }
        return false;
    };
    const QString base = QStringLiteral("Layer");
    QString candidate = name.isEmpty() ? base : name;
    // The number always goes behind "Layer", whatever name was asked for.
    for (int number = 1; isTaken(candidate); ++number)
        candidate = QStringLiteral("%1 %2").arg(base).arg(number);
    return candidate;
}

int LayerManager::addLayer(const QString& camera, int index, const QString& name) {
    if (camera.isEmpty())
        return -1;
    auto added = std::make_unique<Layer>(uniqueLayerName(name));
    return insertLayer(camera, index, std::move(added));
}

int LayerManager::insertLayer(const QString& camera, int index, std::unique_ptr<Layer> layer) {
    if (!layer)
        return -1;
    const ChangeGroup group;
    LayerStack& layers = cameras_[camera];
    const int count = static_cast<int>(layers.size());
    const int at = index < 0 || index >= count ? count : index;
    // It may have been away while time went on.
    layer->updateCurrentIndex(currentIntTime());
    layer->markDirty();
    layer->setActive(layer->isActive() && activeLayerIndex(camera) < 0);
    layers.insert(layers.begin() + at, std::move(layer));
    if (count == 0) {
        const bool firstOfDocument = cameras_.size() == 1;
        if (firstOfDocument) {
            setActiveLayer(camera, 0, true);
        } else {
            layers.front()->setActive(true);
        }
    }
    markCameraModified(camera);
    changeStep();
    return at;
}

std::unique_ptr<Layer> LayerManager::takeLayer(const QString& camera, int index) {
    if (!isValidLayer(camera, index))
        return nullptr;
    const ChangeGroup group;
    const int active = activeLayerIndex(camera);
    LayerStack& layers = *find(camera);
    auto taken = std::move(layers[static_cast<std::size_t>(index)]);
    layers.erase(layers.begin() + index);
    markCameraModified(camera);
    if (layers.empty()) {
        cameras_.erase(camera);
        pictures_.drop(camera);
    } else if (active == index) {
        setActiveLayer(camera, std::max(active - 1, 0), false);
    }
    changeStep();
    return taken;
}

void LayerManager::deleteAllLayers(const QString& camera,
                                   std::vector<std::unique_ptr<Layer>>& out) {
    LayerStack* layers = find(camera);
    if (!layers)
        return;
    std::move(layers->begin(), layers->end(), std::back_inserter(out));
    markCameraModified(camera);
    cameras_.erase(camera);
    pictures_.drop(camera);
    changeStep();
}

bool LayerManager::reportInvalidLayer(const QString& camera, int index) const {
    if (isValidLayer(camera, index))
        return false;
    report::error(QStringLiteral("Invalid layer: %1 (%2)").arg(camera, QString::number(index)));
    return true;
}

int LayerManager::moveLayer(const QString& camera, int from, int to) {
    if (reportInvalidLayer(camera, from))
        return -1;
    LayerStack& layers = *find(camera);
    const int target = std::clamp(to, 0, static_cast<int>(layers.size()) - 1);
    const auto begin = layers.begin();
    if (from < target) {
        std::rotate(begin + from, begin + from + 1, begin + target + 1);
    } else {
        std::rotate(begin + target, begin + from, begin + from + 1);
    }
    markCameraModified(camera);
    changeStep();
    return target;
}

int LayerManager::moveLayerToCamera(const QString& camera, int index, const QString& newCamera,
                                    int newIndex) {
    if (!requireSceneCamera(newCamera) || reportInvalidLayer(camera, index))
        return -1;
    const ChangeGroup group;
    auto moved = takeLayer(camera, index);
    moved->setActive(false);
    return insertLayer(newCamera, newIndex, std::move(moved));
}

LayerStack LayerManager::takeLayers(const QString& camera, const std::vector<quint64>& ids) {
    LayerStack taken;
    LayerStack* layers = find(camera);
    if (!layers)
        return taken;
    const auto leaves = [&ids](const auto& layer) {
        return std::find(ids.begin(), ids.end(), layer->id()) != ids.end();
    };
    const auto first = std::stable_partition(
        layers->begin(), layers->end(), [&leaves](const auto& layer) { return !leaves(layer); });
    std::move(first, layers->end(), std::back_inserter(taken));
    layers->erase(first, layers->end());
    markCameraModified(camera);
    if (layers->empty()) {
        cameras_.erase(camera);
        pictures_.drop(camera);
    } else if (activeLayerIndex(camera) < 0) {
        layers->back()->setActive(true);
    }
    return taken;
}

void LayerManager::moveLayers(const std::vector<CameraMove>& moves) {
    const ChangeGroup group;
    std::vector<LayerStack> taken;
    taken.reserve(moves.size());
    for (const CameraMove& move : moves)
        taken.push_back(takeLayers(move.from, move.layers));
    for (std::size_t i = 0; i < moves.size(); ++i) {
        if (taken[i].empty())
            continue;
        LayerStack& layers = cameras_[moves[i].to];
        const bool isActiveAmongThem = activeOf(taken[i]) != nullptr;
        for (auto& layer : taken[i]) {
            const bool wants =
                isActiveAmongThem ? layer->isActive() : layer->id() == moves[i].active;
            layer->setActive(wants && !activeOf(layers));
            layer->markDirty();
            layers.push_back(std::move(layer));
        }
        if (!activeOf(layers))
            layers.back()->setActive(true);
        markCameraModified(moves[i].to);
    }
    const auto renamed = [&moves](const QString& camera) {
        const auto found = std::find_if(moves.begin(), moves.end(), [&](const CameraMove& move) {
            return move.isRename && move.from == camera;
        });
        return found == moves.end() ? camera : found->to;
    };
    currentCamera_ = renamed(currentCamera_);
    previousCamera_ = renamed(previousCamera_);
    stroke_.setCamera(renamed(stroke_.camera()));
    changeStep();
}

void LayerManager::renameLayer(const QString& camera, int index, const QString& name) {
    Layer* found = find(camera, index);
    if (found && found->name() != name) {
        found->setName(uniqueLayerName(name));
        changeStep();
    }
}

void LayerManager::restoreLayerName(const QString& camera, int index, const QString& name) {
    if (Layer* found = find(camera, index)) {
        found->setName(name);
        changeStep();
    }
}

void LayerManager::setLayerOpacity(const QString& camera, int index, float opacity) {
    Layer* found = find(camera, index);
    if (!found)
        return;
    const float before = found->opacity();
    found->setOpacity(opacity);
    if (found->opacity() != before) {
        const bool isTarget = camera == currentCamera_ && found->isActive();
        tell(isTarget ? Change::Opacity | Change::ActiveOpacity : Change::Opacity, this);
    }
}

void LayerManager::setLayerState(const QString& camera, int index, LayerState state) {
    if (Layer* found = find(camera, index)) {
        found->setState(state);
        changeStep();
    }
}

void LayerManager::setLayerVisible(const QString& camera, int index, bool visible) {
    if (Layer* found = find(camera, index)) {
        found->setVisible(visible);
        changeStep();
    }
}

QString LayerManager::layerName(const QString& camera, int index) const {
    const Layer* found = layer(camera, index);
    return found ? found->name() : QString();
}

float LayerManager::layerOpacity(const QString& camera, int index) const {
    const Layer* found = layer(camera, index);
    return found ? found->opacity() : 0.0F;
}

LayerState LayerManager::layerState(const QString& camera, int index) const {
    const Layer* found = layer(camera, index);
    return found ? found->state() : LayerState::Animated;
}

bool LayerManager::layerVisible(const QString& camera, int index) const {
    const Layer* found = layer(camera, index);
    return found && found->isVisible();
}

bool LayerManager::setActiveLayer(const QString& camera, int index, bool makeCurrentCamera) {
    const int count = cameraLayerCount(camera);
    if (index >= count || (index < 0 && count > 0)) {
        report::error(QStringLiteral("Invalid layer index: %1").arg(index));
        return false;
    }
    if (LayerStack* layers = find(camera)) {
        if (activeLayerIndex(camera) != index) {
            markCameraModified(camera); // the ghosts are those of the active layer
        }
        for (int i = 0; i < count; ++i)
            (*layers)[static_cast<std::size_t>(i)]->setActive(i == index);
    }
    if (makeCurrentCamera)
        adoptCamera(camera);
    changeStep();
    return true;
}

bool LayerManager::adoptCamera(const QString& camera) {
    if (camera == currentCamera_)
        return false;
    previousCamera_ = std::exchange(currentCamera_, camera);
    return true;
}

void LayerManager::setCurrentCamera(const QString& camera) {
    if (adoptCamera(camera))
        changeStep();
}

void LayerManager::restoreCurrentCamera(const QString& current, const QString& previous) {
    setCurrentCamera(current);
    previousCamera_ = previous;
}

void LayerManager::RefreshActiveCamera() {
    const QString camera = documentEnvironment().currentCamera();
    // Without an active view (batch mode, all panels torn off) the last camera stays.
    if (!camera.isEmpty())
        setCurrentCamera(camera);
}

void LayerManager::tintImage(QImage& image, const QColor& color) {
    for (int y = 0; y < image.height(); ++y) {
        rows::tint(image.scanLine(y), image.width(), static_cast<quint8>(color.red()),
                   static_cast<quint8>(color.green()), static_cast<quint8>(color.blue()));
    }
}

} // namespace vellum
