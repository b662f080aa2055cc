#include "plugin/entry/MenuScript.h"

#include "plugin/base/CommandStrings.h"
#include "plugin/base/Names.h"
#include "plugin/base/Script.h"
#include "plugin/base/Settings.h"

#include <QFile>
#include <utility>
#include <vector>

namespace vellum {

namespace {

QString decoded(const QByteArray& latin1) {
    return QString::fromLatin1(latin1);
}

} // namespace

QString menuScript() {
    QFile file(QStringLiteral(":/scripts/Vellum.mel"));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    // In this order. The menu's name is the user's and stands between quotes in the script.
    const std::vector<std::pair<const char*, QString>> replacements{
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
    };
    QString text = decoded(file.readAll());
    for (const auto& [placeholder, value] : replacements)
        text.replace(QLatin1String(placeholder), value);
    return text;
}

bool sourceMenuScript() {
    const QString text = menuScript();
    return !text.isEmpty() && script::execute(text);
}

} // namespace vellum
