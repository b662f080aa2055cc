#include "app/Options.h"

#include <QRegularExpression>

#include <functional>
#include <map>

namespace host {

namespace {

QSize parseSize(const std::string& text) {
    static const QRegularExpression form(QStringLiteral("^([0-9]{1,5})x([0-9]{1,5})\\z"));
    const auto match = form.match(QString::fromStdString(text));
    const QSize size(match.captured(1).toInt(), match.captured(2).toInt());
    if (size.isEmpty())
        throw UsageError{"--size needs WIDTHxHEIGHT, not '" + text + "'"};
    return size;
}

void check(const Options& options) {
    if (options.batch && !options.replay.empty())
        throw UsageError{"--replay needs a window; it cannot be used with --batch"};
    if (options.batch && !options.screenshot.empty())
        throw UsageError{"--screenshot needs a window; it cannot be used with --batch"};
    if (options.batch && options.size)
        throw UsageError{"--size needs a window; it cannot be used with --batch"};
}

} // namespace

Options Options::parse(const std::vector<std::string>& arguments) {
    Options options;
    using Take = std::function<void(const std::string&)>;
    const std::map<std::string, Take> withValue = {
        {"--plugin", [&](const std::string& v) { options.plugins.push_back(v); }},
        {"--open", [&](const std::string& v) { options.open = v; }},
        {"--script",
         [&](const std::string& v) {
             options.scripts.push_back({true, v});
         }},
        {"--command",
         [&](const std::string& v) {
             options.scripts.push_back({false, v});
         }},
        {"--replay", [&](const std::string& v) { options.replay = v; }},
        {"--renderer",
         [&](const std::string& v) {
             if (v != "vp2" && v != "legacy")
                 throw UsageError{"--renderer is vp2 or legacy, not '" + v + "'"};
             options.renderer = v;
         }},
        {"--size", [&](const std::string& v) { options.size = parseSize(v); }},
        {"--screenshot", [&](const std::string& v) { options.screenshot = v; }},
    };
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        std::string name = arguments[i];
        if (name == "--batch" || name == "--help") {
            (name == "--batch" ? options.batch : options.help) = true;
            continue;
        }
        std::optional<std::string> value;
        const std::size_t equals = name.find('=');
        if (name.rfind("--", 0) == 0 && equals != std::string::npos) {
            value = name.substr(equals + 1);
            name.erase(equals);
        }
        const auto option = withValue.find(name);
        if (option == withValue.end())
            throw UsageError{
                (name.rfind('-', 0) == 0 ? "unknown option '" : "unexpected argument '") +
                arguments[i] + "'"};
        if (!value && i + 1 < arguments.size())
            value = arguments[++i];
        if (!value || value->empty())
            throw UsageError{name + " needs a value"};
        option->second(*value);
    }
    if (!options.help)
        check(options);
    return options;
}

std::string Options::usage() {
    return R"(Usage: vellum-host [OPTION]...

Opens the host's window, or works without one, and does in this order: load the
plug-ins, open the scene, run the scripts, replay the session, take the picture.
The window stays open afterwards unless a picture was asked for or a script quits.

  --batch             work without a window and end when everything is done
  --plugin FILE       load a plug-in (may be given several times)
  --open FILE         open a scene (.ma or .mb)
  --script FILE       run a MEL file (may be given several times, in order)
  --command TEXT      run MEL text (may be given several times, in order)
  --replay FILE       play a recorded pointer and tablet session
  --renderer NAME     vp2 (the default) or legacy
  --size WxH          size of the window in logical pixels
  --screenshot FILE   write a picture of the window and quit
  --help              show this text

The exit code is 0, 1 when a step failed, or 2 for a wrong command line.
)";
}

} // namespace host
