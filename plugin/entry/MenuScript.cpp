#include "plugin/entry/MenuScript.h"

#include "plugin/base/CommandStrings.h"
#include "plugin/base/Names.h"
#include "plugin/base/Script.h"
#include "plugin/base/Settings.h"
#include "plugin/base/ToolTable.h"

#include <QFile>
#include <QStringList>

#include <utility>
#include <vector>

namespace vellum {

namespace {

using Replacements = std::vector<std::pair<const char*, QString>>;

QString decoded(const QByteArray& latin1) {
    return QString::fromLatin1(latin1);
}

/// One after the other, each wherever it occurs.
QString filledIn(QString text, const Replacements& replacements) {
    for (const auto& [placeholder, value] : replacements)
        text.replace(QLatin1String(placeholder), value);
    return text;
}

/// A line that begins with {EACH_TOOL} becomes one line for each tool, in the order of the table.
QString withToolLines(const QString& script) {
    const QLatin1String mark("{EACH_TOOL}");
    QStringList lines;
    for (const QString& line : script.split(QLatin1Char('\n'))) {
        if (!line.startsWith(mark)) {
            lines.append(line);
            continue;
        }
        for (const ToolInfo& info : kTools)
            lines.append(filledIn(
                line.mid(mark.size()),
                {{"{TOOL_NAME}", decoded(info.name)},
                 {"{TOOL_FLAG}", decoded(info.toolFlag.longName)},
                 {"{TOOL_NUMBER}", QString::number(numberOf(info.tool))},
                 {"{TOOL_IS_FIRST}",
                  &info == &kTools.front() ? QStringLiteral("true") : QStringLiteral("false")}}));
    }
    return lines.join(QLatin1Char('\n'));
}

} // namespace

QString menuScript() {
    QFile file(QStringLiteral(":/scripts/Vellum.mel"));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    // In this order. The menu's name is the user's and stands between quotes in the script.
    const Replacements replacements{
        {"{MAIN_MENU_NAME}", command::escape(settings().mainMenuName)},
        {"{NODE_CMD}", QString::fromLatin1(kNodeCommand)},
        {"{LAYER_CMD}", QString::fromLatin1(kLayerCommand)},
        {"{FRAME_CMD}", QString::fromLatin1(kFrameCommand)},
        {"{UTIL_CMD}", QString::fromLatin1(kUtilCommand)},
        {"{FUNC_CREATE_MAIN_MENU}", QStringLiteral("rvVlCreateMainMenu")},
        {"{FUNC_DELETE_MAIN_MENU}", QStringLiteral("rvVlDeleteMainMenu")},
        {"{FUNC_UPDATE_MAIN_MENU}", QStringLiteral("rvVlUpdateMainMenu")},
        {"{FUNC_CREATE_FLOATING_VIEWPORT}", QStringLiteral("rvVlCreateFloatingViewport")},
        {"{FUNC_VIEWPORT_LOOK_THROUGH}", QStringLiteral("rvVlViewportLookThrough")},
        {"{FUNC_VIEWPORT_CREATE_CAMERA}", QStringLiteral("rvVlViewportCreateCamera")},
        {"{FUNC_DELETE_ACTIVE_LAYER}", QStringLiteral("rvVlDeleteActiveLayer")},
        {"{FUNC_DELETE_ACTIVE_CAMERA_LAYERS}", QStringLiteral("rvVlDeleteActiveCameraLayers")},
        {"{FUNC_DELETE_ALL_NODES}", QStringLiteral("rvVlDeleteAllNodes")},
        {"{NODE_TYPE_NAME}", QString::fromLatin1(kNodeTypeName)},
        {"{FLOATING_CAMERA}", QString::fromLatin1(kFloatingCamera)},
    };
    return filledIn(withToolLines(decoded(file.readAll())), replacements);
}

bool sourceMenuScript() {
    const QString text = menuScript();
    return !text.isEmpty() && script::execute(text);
}

} // namespace vellum
