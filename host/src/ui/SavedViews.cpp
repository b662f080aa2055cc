#include "ui/SavedViews.h"

#include "foundation/UndoQueue.h"
#include "render/Views.h"
#include "scene/core/SceneState.h"
#include "ui/ModelPanel.h"

#include <QRegularExpression>

#include <maya/MDagPath.h>
#include <maya/MFnDagNode.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MPlug.h>
#include <maya/MQtUtil.h>
#include <maya/MSelectionList.h>

namespace host::savedViews {

namespace {

const char* const nodeName = "uiConfigurationScriptNode";
constexpr int kInterfaceScript = 3; ///< scriptType "UI Configuration"

QString statement(const QString& panel, const QString& camera) {
    return QStringLiteral("if (`modelPanel -exists \"%1\"`) lookThroughModelPanel \"%2\" \"%1\";\n")
        .arg(panel, camera);
}

/// What statement() makes.
const QRegularExpression& pattern() {
    static const QRegularExpression made(
        QStringLiteral("^if \\(`modelPanel -exists \"([^\"\\n]+)\"`\\) "
                       "lookThroughModelPanel \"([^\"\\n]+)\" \"\\1\";\\n?"),
        QRegularExpression::MultilineOption);
    return made;
}

MObject findNode() {
    MSelectionList list;
    MObject node;
    if (!list.add(nodeName) || !list.getDependNode(0, node) || !node.hasFn(MFn::kScript))
        return MObject::kNullObj;
    return node;
}

MPlug scriptOf(const MObject& node) {
    return MFnDependencyNode(node).findPlug("before", true);
}

QString statements() {
    QString text;
    for (const View* view : Views::instance().all()) {
        const MDagPath camera = view->camera();
        if (!ModelPanel::of(view) || !camera.isValid())
            continue;
        const MFnDagNode transform(camera.transform());
        text += statement(QString::fromStdString(view->panelName()),
                          MQtUtil::toQString(transform.partialPathName()));
    }
    return text;
}

} // namespace

void store() {
    const UndoSuspender noUndo;
    const bool modified = sceneModified(); // a save that fails leaves it as it was
    MObject node = findNode();
    const QString before =
        node.isNull() ? QString() : MQtUtil::toQString(scriptOf(node).asString());
    QString after = before;
    after.remove(pattern());
    const QString ours = statements();
    if (!after.isEmpty() && !after.endsWith('\n') && !ours.isEmpty())
        after += '\n';
    after += ours;
    if (after == before)
        return;
    if (node.isNull()) {
        MFnDependencyNode made;
        node = made.create("script", nodeName);
        made.findPlug("scriptType", true).setInt(kInterfaceScript);
    }
    scriptOf(node).setString(MQtUtil::toMString(after));
    setSceneModified(modified);
}

void recall() {
    const MObject node = findNode();
    if (node.isNull())
        return;
    auto found = pattern().globalMatch(MQtUtil::toQString(scriptOf(node).asString()));
    while (found.hasNext()) {
        const QRegularExpressionMatch match = found.next();
        if (ModelPanel* panel = ModelPanel::find(match.captured(1)))
            panel->lookThrough(match.captured(2));
    }
}

} // namespace host::savedViews
