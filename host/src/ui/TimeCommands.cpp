// timeControl, play.
#include "script/Commands.h"
#include "script/Flags.h"
#include "ui/CommandSupport.h"
#include "ui/MainWindow.h"
#include "ui/Playback.h"
#include "ui/TimeSlider.h"
#include "ui/UiCommands.h"

#include <QEventLoop>

namespace host {

namespace {

using script::ArgKind;
using script::CommandCall;
using script::Flags;
using script::ParsedFlags;
using script::ScriptError;
using script::Value;

Value timeControlCommand(const CommandCall& call) {
    static const Flags syntax = Flags()
                                    .flag("-rng", "-range")
                                    .flag("-ra", "-rangeArray")
                                    .flag("-rv", "-rangeVisible")
                                    .flag("-frf", "-forceRefresh")
                                    .flag("-ex", "-exists")
                                    .flag("-w", "-width", {ArgKind::Int})
                                    .flag("-h", "-height", {ArgKind::Int})
                                    .query()
                                    .edit()
                                    .objects(1, 1);
    const ParsedFlags flags = syntax.parse(call);
    const std::string name = flags.object();
    if (flags.isSet("-exists"))
        return Value(qobject_cast<TimeSlider*>(Elements::instance().find(
                         command::text(name), ElementKind::Control)) != nullptr);
    auto* slider = command::findAs<TimeSlider>(name, ElementKind::Control);
    if (flags.isCreate())
        throw ScriptError("timeControl: there is one time slider only.");
    if (flags.isEdit()) {
        if (flags.isSet("-width") || flags.isSet("-height"))
            throw ScriptError("timeControl: the window decides on the size of the time slider.");
        if (flags.isSet("-forceRefresh"))
            slider->update();
        return {};
    }
    const TimeSlider::Range range = slider->range();
    if (flags.isSet("-rangeArray"))
        return Value(script::Floats{range.start, range.end});
    if (flags.isSet("-range"))
        return Value("\"" + script::formatFloat(range.start) + ":" +
                     script::formatFloat(range.end) + "\"");
    if (flags.isSet("-rangeVisible"))
        return Value(slider->rangeVisible());
    if (flags.isSet("-width"))
        return Value(slider->width());
    if (flags.isSet("-height"))
        return Value(slider->height());
    throw ScriptError("timeControl: a flag to query is needed.");
}

Value playCommand(const CommandCall& call) {
    static const Flags syntax = Flags()
                                    .flag("-f", "-forward", {ArgKind::Boolean})
                                    .flag("-st", "-state", {ArgKind::Boolean})
                                    .flag("-w", "-wait")
                                    .query();
    const ParsedFlags flags = syntax.parse(call);
    Playback& playback = Playback::instance();
    if (flags.isQuery()) {
        if (flags.isSet("-forward"))
            return Value(playback.direction() == Playback::Direction::Forward);
        return Value(playback.isPlaying());
    }
    command::requireInterface("play");
    if (!flags.getBool("-state", true)) {
        playback.stop();
        return {};
    }
    const auto direction = flags.getBool("-forward", true) ? Playback::Direction::Forward
                                                           : Playback::Direction::Backward;
    if (!flags.isSet("-wait")) {
        playback.start(direction);
        return {};
    }
    playback.setOnce(true);
    playback.start(direction);
    QEventLoop loop;
    QObject::connect(&playback, &Playback::stateChanged, &loop, &QEventLoop::quit);
    if (playback.isPlaying())
        loop.exec();
    playback.setOnce(false);
    return {};
}

} // namespace

void registerTimeControlCommands() {
    script::registerCommand("timeControl", timeControlCommand);
    script::registerCommand("play", playCommand);
}

} // namespace host
