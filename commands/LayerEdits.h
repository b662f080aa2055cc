// Undoable changes of a document's layers. Each names cameras and layers by what identifies them
// and finds them when used. Main thread only.
#pragma once

#include <QString>
#include <map>
#include <memory>

namespace vellum {

class LayerManager;

class LayerEdit {
public:
    virtual ~LayerEdit() = default;

    /// Does the change, the first time and again after revert(). False, after the document
    /// reported why, when nothing was changed.
    virtual bool apply(LayerManager& document) = 0;
    /// Takes it back; only after a successful apply(). False, changing nothing, when the layers it
    /// changed are not where it left them.
    virtual bool revert(LayerManager& document) = 0;

    /// Index that the command returns; -1 for none.
    int result() const { return result_; }

protected:
    int result_ = -1;
};

/// Which camera was current and which layers were active, to be brought back by revert().
class ActiveLayers {
public:
    /// The current camera and `cameras`.
    void remember(const LayerManager& document, std::initializer_list<QString> cameras);
    void restore(LayerManager& document) const;

private:
    QString currentCamera_;
    std::map<QString, int> indexes_;
};

namespace layer_edit {

/// state < 0: the state of new layers. makeActive: on top of the stack and the drawing target.
std::unique_ptr<LayerEdit> add(const QString& camera, const QString& name, int state);
std::unique_ptr<LayerEdit> insert(const QString& camera, int index, const QString& name, int state);
std::unique_ptr<LayerEdit> remove(const QString& camera, int index);
std::unique_ptr<LayerEdit> removeAll(const QString& camera);
std::unique_ptr<LayerEdit> move(const QString& camera, int from, int to);
std::unique_ptr<LayerEdit> moveToCamera(const QString& camera, int from, const QString& target,
                                        int to);
/// Above the target's own layers, in their order; the target becomes current.
std::unique_ptr<LayerEdit> moveAll(const QString& camera, const QString& target);
/// Refused when the layer is the active one of the current camera already.
std::unique_ptr<LayerEdit> activate(const QString& camera, int index);
std::unique_ptr<LayerEdit> rename(const QString& camera, int index, const QString& name);
std::unique_ptr<LayerEdit> setVisible(const QString& camera, int index, bool visible);
std::unique_ptr<LayerEdit> setOpacity(const QString& camera, int index, float opacity);
std::unique_ptr<LayerEdit> setState(const QString& camera, int index, int state);

} // namespace layer_edit

} // namespace vellum
