#include "document/Changes.h"

#include <algorithm>
#include <utility>

namespace vellum {

namespace {

ChangeListener* connected = nullptr;
int openGroups = 0;
Changes collected;
std::vector<LayerManager*> collectedDrawings;

void deliver() {
    const Changes changes = std::exchange(collected, Changes());
    const std::vector<LayerManager*> drawings = std::exchange(collectedDrawings, {});
    if (connected && changes)
        connected->changed(changes, drawings);
}

} // namespace

ChangeListener::~ChangeListener() = default;

void tell(Changes changes, LayerManager* drawing) {
    const ChangeGroup group;
    collected |= changes;
    auto& drawings = collectedDrawings;
    if (drawing && std::find(drawings.begin(), drawings.end(), drawing) == drawings.end())
        drawings.push_back(drawing);
}

ChangeGroup::ChangeGroup() {
    ++openGroups;
}

ChangeGroup::~ChangeGroup() {
    if (--openGroups == 0)
        deliver();
}

void forgetChanges(const LayerManager& drawing) {
    auto& drawings = collectedDrawings;
    drawings.erase(std::remove(drawings.begin(), drawings.end(), &drawing), drawings.end());
}

void setChangeListener(ChangeListener* listener) {
    connected = listener;
}

} // namespace vellum
