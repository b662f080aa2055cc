#include "foundation/Events.h"

#include <algorithm>
#include <map>

namespace host {
namespace {

// Listeners by id. One may add or remove others, or itself, while it is called.
template <class Function> class Listeners {
public:
    explicit Listeners(int firstId = 1) : last_(firstId - 1) {}

    int add(Function listener) {
        all_.emplace(++last_, std::move(listener));
        return last_;
    }
    void remove(int id) { all_.erase(id); }
    std::size_t size() const { return all_.size(); }

    template <class... Arguments> void call(Arguments&&... arguments) {
        std::vector<int> ids;
        for (const auto& [id, listener] : all_)
            ids.push_back(id);
        for (int id : ids) {
            const auto found = all_.find(id);
            if (found == all_.end())
                continue;
            const Function listener = found->second;
            listener(arguments...);
        }
    }

private:
    std::map<int, Function> all_;
    int last_;
};

constexpr int kFirstMessageId = 1 << 24; // above all ids of events

Listeners<std::function<void(const std::string&)>>& eventListeners() {
    static Listeners<std::function<void(const std::string&)>> listeners;
    return listeners;
}

// Called with the number of the message and the verdict so far.
Listeners<std::function<void(int, bool&)>>& messageListeners() {
    static Listeners<std::function<void(int, bool&)>> listeners(kFirstMessageId);
    return listeners;
}

Listeners<std::function<void()>>& changeListeners() {
    static Listeners<std::function<void()>> listeners;
    return listeners;
}

} // namespace

namespace events {

const std::vector<std::string>& names() {
    static const std::vector<std::string> all = {
        "dbTraceChanged",
        "resourceLimitStateChange",
        "linearUnitChanged",
        "timeUnitChanged",
        "angularUnitChanged",
        "Undo",
        "undoSupressed",
        "Redo",
        "customEvaluatorChanged",
        "serialExecutorFallback",
        "timeChanged",
        "currentContainerChange",
        "quitApplication",
        "idleHigh",
        "idle",
        "idleVeryLow",
        "RecentCommandChanged",
        "ToolChanged",
        "PostToolChanged",
        "ToolDirtyChanged",
        "ToolSettingsChanged",
        "DisplayRGBColorChanged",
        "animLayerRebuild",
        "animLayerRefresh",
        "animLayerAnimationChanged",
        "animLayerLockChanged",
        "animLayerBaseLockChanged",
        "animLayerGhostChanged",
        "cteEventKeyingTargetForClipChanged",
        "teEditorPrefsChanged",
        "DisplayColorChanged",
        "displayLayerChange",
        "displayLayerManagerChange",
        "renderLayerChange",
        "MenuModeChanged",
        "currentSoundNodeChanged",
        "playbackRangeAboutToChange",
        "playbackRangeChanged",
        "playbackRangeSliderChanged",
        "playbackSpeedChanged",
        "playbackModeChanged",
        "playbackByChanged",
        "SelectionChanged",
        "PreSelectionChangedTriggered",
        "LiveListChanged",
        "ActiveViewChanged",
        "SelectModeChanged",
        "SelectTypeChanged",
        "SelectPreferenceChanged",
        "DisplayPreferenceChanged",
        "DagObjectCreated",
        "NameChanged",
        "NewSceneOpened",
        "PreFileNewOrOpened",
        "PreFileNew",
        "PostSceneRead",
        "SceneOpened",
        "PreFileOpened",
        "SceneImported",
        "PreFileImported",
        "SceneSaved",
        "PostFileSaved",
        "PreFileSaved",
        "workspaceChanged",
        "cameraChange",
        "cameraDisplayAttributesChange",
    };
    return all;
}

bool isKnown(const std::string& name) {
    return std::find(names().begin(), names().end(), name) != names().end();
}

void emit(const std::string& name) {
    eventListeners().call(name);
    changes::notify();
}

int listen(std::function<void(const std::string&)> listener) {
    return eventListeners().add(std::move(listener));
}

int listen(const std::string& name, std::function<void()> listener) {
    return listen([name, listener = std::move(listener)](const std::string& event) {
        if (event == name)
            listener();
    });
}

void removeListener(int id) {
    if (id >= kFirstMessageId)
        messageListeners().remove(id);
    else
        eventListeners().remove(id);
}
std::size_t listenerCount() {
    return eventListeners().size() + messageListeners().size();
}

} // namespace events

namespace messages {

int listen(int message, std::function<void()> listener) {
    return messageListeners().add([message, listener = std::move(listener)](int told, bool&) {
        if (told == message)
            listener();
    });
}

int listenCheck(int message, std::function<bool()> listener) {
    return messageListeners().add([message, listener = std::move(listener)](int asked, bool& ok) {
        if (asked == message)
            ok = listener() && ok;
    });
}

bool ask(int message) {
    bool allowed = true;
    messageListeners().call(message, allowed);
    return allowed;
}

void tell(int message) {
    ask(message);
}

} // namespace messages

namespace changes {

int listen(std::function<void()> listener) {
    return changeListeners().add(std::move(listener));
}
void removeListener(int id) {
    changeListeners().remove(id);
}
void notify() {
    changeListeners().call();
}

} // namespace changes
} // namespace host
