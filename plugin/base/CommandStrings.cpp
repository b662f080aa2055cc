#include "plugin/base/CommandStrings.h"

#include "plugin/base/Names.h"
#include "plugin/base/Settings.h"
#include "plugin/base/ToolTable.h"

namespace vellum::command {

namespace {

// Arguments are joined, never substituted into a format: a name that holds "%1" must stay a name.
QString join(std::initializer_list<QString> parts) {
    QString result;
    for (const QString& part : parts) {
        if (!result.isEmpty())
            result += QLatin1Char(' ');
        result += part;
    }
    return result;
}

QString text(const char* latin1) {
    return QString::fromLatin1(latin1);
}

QString number(int value) {
    return QString::number(value);
}

/// Of 255, with all digits of a double: shortened ones come back a step lower when what is read is
/// scaled and truncated.
QString fraction(int component) {
    return QString::number(component / 255.0, 'g', 17);
}

QString onOff(bool value) {
    return value ? QStringLiteral("1") : QStringLiteral("0");
}

QString components(const QColor& color) {
    return join({number(color.red()), number(color.green()), number(color.blue())});
}

/// "name(a, b, c)"
QString call(const char* procedure, std::initializer_list<QString> arguments) {
    QString result = text(procedure) + QLatin1Char('(');
    bool first = true;
    for (const QString& argument : arguments) {
        if (!first)
            result += QStringLiteral(", ");
        result += argument;
        first = false;
    }
    return result + QLatin1Char(')');
}

QString ifExists(const QString& command) {
    return QStringLiteral("if (`exists ") + command + QStringLiteral("`) ");
}

QString utilEdit(const char* flag, const QString& arguments) {
    return join({text(kUtilCommand), QStringLiteral("-e"), text(flag), arguments});
}

} // namespace

QString escape(const QString& plain) {
    QString result;
    result.reserve(plain.size() + 8);
    for (const QChar c : plain) {
        switch (c.unicode()) {
        case 0:
            break; // would end the C string underneath
        case '\\':
            result += QStringLiteral("\\\\");
            break;
        case '"':
            result += QStringLiteral("\\\"");
            break;
        case '\n':
            result += QStringLiteral("\\n");
            break;
        case '\r':
            result += QStringLiteral("\\r");
            break;
        case '\t':
            result += QStringLiteral("\\t");
            break;
        default:
            result += c;
        }
    }
    return result;
}

QString quote(const QString& plain) {
    return QLatin1Char('"') + escape(plain) + QLatin1Char('"');
}

QString deferred(const QString& command) {
    // The plug-in may have been unloaded by then.
    const QString needed = command.section(QLatin1Char(' '), 0, 0);
    return call("evalDeferred", {quote(ifExists(needed) + command)});
}

QString createNode() {
    return text(kNodeCommand);
}

QString createNodeAndDraw(const QString& camera, const QString& layerName, int layerState) {
    QString create = join({text(kNodeCommand), QStringLiteral("-l")});
    if (!camera.isEmpty())
        create = join({create, QStringLiteral("-c"), quote(camera)});
    if (!layerName.isEmpty())
        create = join({create, QStringLiteral("-ln"), quote(layerName)});
    create = join({create, QStringLiteral("-ls"), number(layerState)});
    return ifExists(text(kNodeCommand)) + QStringLiteral("{ ") + create + QStringLiteral("; ") +
           drawDeferred() + QStringLiteral("; }");
}

QString createNodeWithFrames() {
    return join({text(kNodeCommand), QStringLiteral("-l -f")});
}

QString refreshGhosting() {
    return join({text(kNodeCommand), QStringLiteral("-rg")});
}

QString playbackJob() {
    // The scene may have no drawing, which refreshGhosting() takes for a failure.
    const QString exists = join({text(kNodeCommand), QStringLiteral("-ex")});
    const QString refresh =
        QStringLiteral("if (`") + exists + QStringLiteral("`) ") + refreshGhosting();
    return join(
        {QStringLiteral("scriptJob -cf"), quote(QStringLiteral("playingBack")), quote(refresh)});
}

QString killJob(int job) {
    return join({QStringLiteral("scriptJob -f -k"), number(job)});
}

QString commitStroke(const QString& camera, int addedLayer, bool frameAdded) {
    QString result = text(kStrokeCommand);
    if (addedLayer >= 0)
        result += QStringLiteral(" -la ") + number(addedLayer);
    if (frameAdded)
        result += QStringLiteral(" -fa");
    return result + QLatin1Char(' ') + quote(camera);
}

QString frame(const QString& flag) {
    return join({text(kFrameCommand), flag});
}

QString retimeFrames(int count, bool relative, bool moveToNext) {
    QString result = text(kFrameCommand);
    if (relative)
        result += QStringLiteral(" -relative");
    if (moveToNext)
        result += QStringLiteral(" -moveToNext");
    return result + QStringLiteral(" -retime ") + number(count);
}

QString moveFrames(int offset, int start, int end) {
    return join(
        {text(kFrameCommand), QStringLiteral("-move"), number(offset), number(start), number(end)});
}

QString addLayer(const QString& camera, const QString& name, int state) {
    QString add = join({text(kLayerCommand), QStringLiteral("-add")});
    if (!name.isEmpty())
        add = join({add, QStringLiteral("-n"), quote(name)});
    return join({add, QStringLiteral("-ls"), number(state), quote(camera)});
}

QString setActiveLayer(int index, const QString& camera) {
    return join({text(kLayerCommand), QStringLiteral("-e -active"), number(index), quote(camera)});
}

QString deleteLayer(int index, const QString& camera) {
    return join({text(kLayerCommand), QStringLiteral("-delete"), number(index), quote(camera)});
}

QString moveLayer(int from, int to, const QString& camera) {
    return join(
        {text(kLayerCommand), QStringLiteral("-move"), number(from), number(to), quote(camera)});
}

QString moveLayerToCamera(const QString& target, int from, int to, const QString& camera) {
    return join({text(kLayerCommand), QStringLiteral("-newCamera"), quote(target),
                 QStringLiteral("-move"), number(from), number(to), quote(camera)});
}

QString moveAllLayers(const QString& target, const QString& camera) {
    return join({text(kLayerCommand), QStringLiteral("-moveAll"), quote(target), quote(camera)});
}

QString renameLayer(const QString& name, int index, const QString& camera) {
    return join(
        {text(kLayerCommand), QStringLiteral("-en"), quote(name), number(index), quote(camera)});
}

QString setLayerState(int state, int index, const QString& camera) {
    return join(
        {text(kLayerCommand), QStringLiteral("-es"), number(state), number(index), quote(camera)});
}

QString setLayerVisible(bool visible, int index, const QString& camera) {
    return join(
        {text(kLayerCommand), QStringLiteral("-ev"), onOff(visible), number(index), quote(camera)});
}

QString util(const QString& arguments) {
    return join({text(kUtilCommand), arguments});
}

QString chooseTool(Tool tool) {
    const ToolInfo* info = findTool(tool);
    return info ? util(text(info->toolFlag.longName)) : QString();
}

QString drawDeferred() {
    return deferred(util(QStringLiteral("-draw")));
}

QString transformDeferred() {
    return deferred(util(QStringLiteral("-transform")));
}

QString refreshLayerManagerDeferred() {
    return deferred(util(QStringLiteral("-rlm")));
}

QString drawColor(const QColor& color) {
    return utilEdit("-drawColor", components(color));
}

QString setToolOptions(Tool tool, const ToolOptions& options) {
    const ToolInfo* info = findTool(tool);
    if (!info)
        return {};
    QString arguments =
        join({text(info->optionsFlag.longName), number(options.size), number(options.opacity)});
    if (info->hardness.keep != Keep::Nowhere)
        arguments = join({arguments, number(options.hardness)});
    if (info->tablet.keep != Keep::Nowhere)
        arguments = join({arguments, onOff(options.tabletEnabled)});
    if (info->factoryFont)
        arguments = join({arguments, quote(options.fontFamily)});
    return util(arguments);
}

QString ghostPrevious(int onOffToggle) {
    return utilEdit("-ghostPrevious", number(onOffToggle));
}

QString ghostNext(int onOffToggle) {
    return utilEdit("-ghostNext", number(onOffToggle));
}

QString ghostPreviousCount(int count) {
    return utilEdit("-ghostPreviousCount", number(count));
}

QString ghostNextCount(int count) {
    return utilEdit("-ghostNextCount", number(count));
}

QString ghostColorOverride(bool on) {
    return utilEdit("-ghostColorOverride", onOff(on));
}

QString ghostColorPrevious(const QColor& color) {
    return utilEdit("-ghostColorPrevious", components(color));
}

QString ghostColorNext(const QColor& color) {
    return utilEdit("-ghostColorNext", components(color));
}

QString timelineFrameDisplay(TimelineDisplay mode) {
    return utilEdit("-timelineFrameDisplay", number(numberOf(mode)));
}

QString isBatch() {
    return QStringLiteral("about -batch");
}

QString commandExists(const QString& name) {
    return join({QStringLiteral("exists"), quote(name)});
}

QString preferencesDirectory() {
    return QStringLiteral("internalVar -userPrefDir");
}

QString contextExists(const QString& name) {
    return QStringLiteral("contextInfo -exists ") + quote(name);
}

QString setToolTo(const QString& context) {
    return QStringLiteral("setToolTo ") + quote(context);
}

QString chooseSelectionTool() {
    return setToolTo(QStringLiteral("selectSuperContext"));
}

QString flushUndo() {
    return QStringLiteral("flushUndo");
}

QString focusPanelUnderPointer() {
    return QStringLiteral("setFocus `getPanel -underPointer`");
}

QString timeSliderName() {
    return QStringLiteral("$tempVar = $gPlayBackSlider");
}

QString timeRangeArray() {
    return QStringLiteral("timeControl -q -rangeArray $gPlayBackSlider");
}

QString timeRangeVisible() {
    return QStringLiteral("timeControl -q -rangeVisible $gPlayBackSlider");
}

QString markSceneModified(bool modified) {
    return QStringLiteral("file -modified ") + onOff(modified);
}

QString isSceneModified() {
    return QStringLiteral("file -q -modified");
}

QString createColorSlider(const QString& control, const QString& window, int width) {
    return QStringLiteral("window ") + quote(window) + QStringLiteral("; columnLayout; ") +
           join({QStringLiteral("colorSliderGrp -columnWidth3 0"), number(width),
                 QStringLiteral("0"), quote(control)});
}

QString deleteInterface(const QString& element) {
    // Windows and controls are asked for separately; deleteUI takes either.
    const QString name = quote(element);
    return QStringLiteral("if (`control -exists ") + name +
           QStringLiteral("` || `window -exists ") + name + QStringLiteral("`) deleteUI ") + name;
}

QString colorSliderValue(const QString& control) {
    return QStringLiteral("colorSliderGrp -q -rgbValue ") + quote(control);
}

QString setColorSliderValue(const QString& control, const QColor& color) {
    return join({QStringLiteral("colorSliderGrp -e -rgbValue"), fraction(color.red()),
                 fraction(color.green()), fraction(color.blue()), quote(control)});
}

QString setColorSliderCommand(const QString& control, const QString& command) {
    return join(
        {QStringLiteral("colorSliderGrp -e -changeCommand"), quote(command), quote(control)});
}

QString setColorSliderDragCommand(const QString& control, const QString& command) {
    return join({QStringLiteral("colorSliderGrp -e -dragCommand"), quote(command), quote(control)});
}

QString createMainMenu(bool inAnimationSet) {
    return call("rvVlCreateMainMenu", {onOff(inAnimationSet)});
}

QString deleteMainMenu() {
    return call("rvVlDeleteMainMenu", {});
}

QString updateMainMenu(Tool tool, bool ghostPrev, bool ghostNext, TimelineDisplay mode) {
    return call("rvVlUpdateMainMenu", {number(numberOf(tool)), onOff(ghostPrev), onOff(ghostNext),
                                       number(numberOf(mode))});
}

QString createFloatingView(const QString& sourceCamera) {
    return call("rvVlCreateFloatingViewport", {quote(sourceCamera)});
}

QString deleteActiveLayer() {
    return call("rvVlDeleteActiveLayer", {});
}

QString deleteActiveCameraLayers() {
    return call("rvVlDeleteActiveCameraLayers", {});
}

QString deleteAllNodes() {
    return call("rvVlDeleteAllNodes", {});
}

} // namespace vellum::command
