// Undoable changes of a document's layers. Each names cameras and layers by what identifies them
// (document/LayerAddress.h) and finds them when used, so that what was changed behind the undo
// queue is never mistaken for them. Main thread only.
#pragma once

#include <QString>
#include <memory>

namespace vellum {

class LayerManager;

class LayerEdit {
public:
    virtual ~LayerEdit() = default;

    /// Does the change, the first time and again after revert(). False, changing nothing, when it
    /// is refused.
    bool apply(LayerManager& document);
    /// Takes it back; only after a successful apply(). False, after reporting, when the camera has
    /// the layers it changed no more; nothing has changed then.
    bool revert(LayerManager& document);

    /// Index that the command returns; -1 for none.
    int result() const { return result_; }

protected:
    virtual bool doFirst(LayerManager& document) = 0;
    virtual bool doAgain(LayerManager& document) = 0;
    virtual bool takeBack(LayerManager& document) = 0;

    int result_ = -1;

private:
    bool done_ = false; ///< once
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
/// Above the target's own layers, in their order; the target becomes current. All of them or none.
std::unique_ptr<LayerEdit> moveAll(const QString& camera, const QString& target);
/// Refused when the layer is the active one of the current camera already.
std::unique_ptr<LayerEdit> activate(const QString& camera, int index);
std::unique_ptr<LayerEdit> rename(const QString& camera, int index, const QString& name);
std::unique_ptr<LayerEdit> setVisible(const QString& camera, int index, bool visible);
std::unique_ptr<LayerEdit> setOpacity(const QString& camera, int index, float opacity);
std::unique_ptr<LayerEdit> setState(const QString& camera, int index, int state);

} // namespace layer_edit

} // namespace vellum
