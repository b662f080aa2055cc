#include "document/TimelineModel.h"

#include <algorithm>
#include <utility>

namespace timeline_model {

PlainLayer* Model::active(const QString& camera) {
    PlainCamera& found = drawing.cameras[camera];
    return found.active < 0 ? nullptr : &found.layers[static_cast<std::size_t>(found.active)];
}

QString Model::uniqueName(const QString& wanted) const {
    std::set<QString> taken;
    for (const auto& [name, camera] : drawing.cameras)
        for (const PlainLayer& layer : camera.layers)
            taken.insert(layer.name);
    QString name = wanted.isEmpty() ? "Layer" : wanted;
    for (int i = 1; taken.count(name) > 0; ++i)
        name = "Layer " + QString::number(i);
    return name;
}

void Model::makeCurrent(const QString& camera) {
    if (camera != drawing.current)
        drawing.previous = std::exchange(drawing.current, camera);
}

void Model::insertLayer(const QString& camera, int at, const PlainLayer& layer) {
    std::size_t before = 0;
    for (const auto& [name, one] : drawing.cameras)
        before += one.layers.size();
    PlainCamera& target = drawing.cameras[camera];
    target.layers.insert(target.layers.begin() + at, layer);
    if (target.layers.size() == 1)
        target.active = 0;
    else if (at <= target.active)
        ++target.active;
    if (before == 0)
        makeCurrent(camera);
}

PlainLayer Model::takeLayer(const QString& camera, int index) {
    PlainCamera& source = drawing.cameras[camera];
    const PlainLayer taken = source.layers[static_cast<std::size_t>(index)];
    source.layers.erase(source.layers.begin() + index);
    if (index < source.active || (index == source.active && source.active > 0))
        --source.active;
    if (source.layers.empty())
        source.active = -1;
    return taken;
}

int Model::shown(const PlainLayer& layer) const {
    int index = -1;
    for (const auto& [moment, mark] : layer.frames)
        index += whole(moment) <= frame() ? 1 : 0;
    return index;
}

std::vector<Moment> Model::within(const PlainLayer& layer, int first, int last) const {
    std::vector<Moment> found;
    for (const auto& [moment, mark] : layer.frames)
        if (whole(moment) >= first && whole(moment) <= last)
            found.push_back(moment);
    return found;
}

bool Model::has(const PlainLayer& layer, int frame) const {
    return !within(layer, frame, frame).empty();
}

Refusal Model::refusal(const QString& camera, const char* lockedMessage) {
    const PlainLayer* layer = active(camera);
    if (!layer)
        return QString("An active layer does not exist.");
    if (layer->state == 2)
        return QString(lockedMessage);
    return std::nullopt;
}

Refusal Model::insert(const QString& camera, int first, int last) {
    if (drawing.cameras[camera].layers.empty())
        insertLayer(camera, 0, {uniqueName(""), 0, {}});
    else if (const Refusal why = refusal(camera, "Cannot add frames to a locked layer"))
        return why;
    PlainLayer& layer = *active(camera);
    for (int time = first; time <= last; ++time)
        if (!has(layer, time))
            layer.frames[time * unit] = 0;
    return std::nullopt;
}

Refusal Model::duplicate(const QString& camera) {
    if (const Refusal why = refusal(camera, "Cannot duplicate frames on a locked layer"))
        return why;
    PlainLayer& layer = *active(camera);
    if (has(layer, frame()) || (layer.state == 1 && shown(layer) >= 0))
        return QString("A frame already exists at the current time.");
    std::optional<int> mark;
    for (const auto& [moment, one] : layer.frames)
        if (whole(moment) < frame())
            mark = one;
    if (!mark)
        return QString();
    layer.frames[now] = *mark;
    return std::nullopt;
}

Refusal Model::remove(const QString& camera, int first, int last) {
    if (const Refusal why = refusal(camera, "Cannot remove frames from a locked layer"))
        return why;
    for (const Moment moment : within(*active(camera), first, last))
        active(camera)->frames.erase(moment);
    return std::nullopt;
}

Refusal Model::copy(const QString& camera, int first, int last) {
    const PlainLayer* layer = active(camera);
    if (!layer)
        return QString("An active layer does not exist.");
    clipboard.clear();
    for (const Moment moment : within(*layer, first, last))
        clipboard[(whole(moment) - first) * unit] = layer->frames.at(moment);
    return std::nullopt;
}

Refusal Model::cut(const QString& camera, int first, int last) {
    if (const Refusal why = refusal(camera, "Cannot cut frames from a locked layer"))
        return why;
    copy(camera, first, last);
    return remove(camera, first, last);
}

Refusal Model::paste(const QString& camera, int start) {
    if (const Refusal why = refusal(camera, "Cannot paste frames to a locked layer"))
        return why;
    for (const auto& [moment, mark] : clipboard) {
        const int time = whole(moment) + start;
        remove(camera, time, time);
        active(camera)->frames[time * unit] = mark;
    }
    return std::nullopt;
}

Refusal Model::clear(const QString& camera, int first, int last) {
    if (const Refusal why = refusal(camera, "Cannot remove frames from a locked layer"))
        return why;
    for (const Moment moment : within(*active(camera), first, last))
        active(camera)->frames[moment] = 0;
    return std::nullopt;
}

Refusal Model::step(bool forward) {
    const PlainLayer* layer = active(drawing.current);
    std::optional<Moment> target;
    if (layer && !layer->frames.empty()) {
        target = forward ? layer->frames.begin()->first : layer->frames.rbegin()->first;
        if (forward) {
            for (auto it = layer->frames.rbegin(); it != layer->frames.rend(); ++it)
                if (whole(it->first) > frame())
                    target = it->first;
        } else {
            for (const auto& [moment, mark] : layer->frames)
                if (whole(moment) < frame())
                    target = moment;
        }
    }
    if (target && whole(*target) != frame())
        now = *target;
    else if (forward)
        return QString();
    return std::nullopt;
}

Refusal Model::move(const QString& camera, int offset, int first, int last) {
    if (const Refusal why = refusal(camera, "Cannot move frames on a locked layer"))
        return why;
    PlainLayer& layer = *active(camera);
    std::set<int> targets;
    const std::vector<Moment> moving = within(layer, first, last);
    for (const Moment moment : moving) {
        const int target = whole(moment) + offset;
        if (has(layer, target) || !targets.insert(target).second)
            return QString("Move Failed. A frame already exists at time %1").arg(target);
    }
    std::map<Moment, int> moved;
    for (const Moment moment : moving) {
        moved[(whole(moment) + offset) * unit] = layer.frames[moment];
        layer.frames.erase(moment);
    }
    layer.frames.insert(moved.begin(), moved.end());
    return std::nullopt;
}

Refusal Model::retime(int first, int last, int count, bool relative, bool moveToNext) {
    if (drawing.current.isEmpty())
        return QString("Camera not specified");
    if (const Refusal why = refusal(drawing.current, "Cannot retime frames on a locked layer"))
        return why;
    PlainLayer& layer = *active(drawing.current);
    if (layer.frames.empty())
        return QString("There are no frames to retime");
    std::vector<std::pair<Moment, int>> frames(layer.frames.begin(), layer.frames.end());
    const int n = static_cast<int>(frames.size());
    const auto time = [&](int i) { return whole(frames[static_cast<std::size_t>(i)].first); };
    int start = first, end = last + 1, show = n - 1;
    for (int i = 0; i < n; ++i)
        start = time(i) <= first ? time(i) : start;
    for (int i = n - 1; i >= 0; --i)
        end = time(i) > last ? time(i) : end;
    for (int i = n - 1; i >= 0; --i)
        if (time(i) > start)
            show = moveToNext ? i : std::max(i - 1, 0);
    int shift = 0, before = 0;
    layer.frames.clear();
    for (int i = 0; i < n; ++i) {
        const int gap = time(i) < start || time(i) >= end || i == n - 1 ? 0
                        : relative                                      ? count
                                   : time(i) + count - time(i + 1);
        int changed = time(i) + shift;
        if (i > 0 && changed <= before) {
            shift += before + 1 - changed;
            changed = before + 1;
        }
        before = changed;
        shift += gap;
        const auto& [moment, mark] = frames[static_cast<std::size_t>(i)];
        const Moment at = changed == time(i) ? moment : changed * unit;
        layer.frames[at] = mark;
        now = i == show ? at : now;
    }
    return std::nullopt;
}

} // namespace timeline_model
