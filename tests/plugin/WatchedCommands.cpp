#include "plugin/WatchedCommands.h"

#include "commands/FrameCommand.h"
#include "commands/LayerCommand.h"
#include "commands/NodeCommand.h"
#include "commands/UtilCommand.h"
#include "document/IntTime.h"
#include "document/LayerManager.h"
#include "foundation/Idle.h"
#include "foundation/UndoQueue.h"
#include "node/BaseNode.h"
#include "node/NodeSearch.h"
#include "plugin/base/Settings.h"
#include "plugin/session/Cameras.h"
#include "plugin/session/Panels.h"
#include "plugin/session/PluginState.h"
#include "plugin/session/Timeline.h"
#include "script/Commands.h"
#include "script/Interpreter.h"
#include "script/PluginCommands.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QCryptographicHash>

#include <map>

namespace vellum::test {

namespace {

struct Watch {
    QStringList log;
    int calls = 0;
    MStatus status;
};

Watch& watch() {
    static Watch one;
    return one;
}

void note(const QString& what) {
    watch().log.append(what);
}

template <class Command> class Watched : public Command {
public:
    static void* creator() { return new Watched; }
    MStatus doIt(const MArgList& args) override {
        ++watch().calls;
        return watch().status = Command::doIt(args);
    }
};

class PanelLog : public Panels {
public:
    bool show(Panel panel) override { return noted("show %1", static_cast<int>(panel)); }
    bool open(Dialog dialog) override { return noted("open %1", static_cast<int>(dialog)); }
    bool openLayerProperties(const QString& camera, int layer) override {
        note(QStringLiteral("properties %1 %2").arg(camera).arg(layer));
        return true;
    }
    void refreshToolbox() override { note(QStringLiteral("toolbox")); }
    void refreshToolOptions() override { note(QStringLiteral("options")); }
    void refreshLayerManager(LayerManager&) override { note(QStringLiteral("layers")); }
    bool clearLayerManager() override { return noted("no layers %1", 0); }
    std::optional<QColor> toolboxColor() override { return QColor(9, 8, 7); }
    std::optional<QString> chooseCamera(const QStringList&, const QString&) override {
        note(QStringLiteral("choose"));
        return QStringLiteral("shotCam");
    }
    bool resetInterface() override { return noted("reset %1", 0); }

private:
    static bool noted(const char* what, int number) {
        note(QString::fromLatin1(what).arg(number));
        return true;
    }
};

class MarkerLog : public TimelineMarkers {
public:
    void setFrameTimes(const QList<int>&) override {}
    void setMarkersVisible(bool visible) override {
        shown_ = visible;
        note(visible ? QStringLiteral("markers") : QStringLiteral("no markers"));
    }
    bool areMarkersVisible() const override { return shown_; }
    void setEnabled(bool) override {}
    void timeChanged() override {}
    std::optional<RangeMove> rangeMove() const override { return std::nullopt; }

private:
    bool shown_ = false;
};

PanelLog panelLog;
MarkerLog markerLog;

template <class Command> void add(const char* name) {
    ASSERT_TRUE(host::script::registerPluginCommand(name, Watched<Command>::creator,
                                                    Command::newSyntax, "linked"));
}

constexpr const char* kCommands[] = {"rvVellumNode", "rvVellumLayer", "rvVellumFrame",
                                     "rvVellumUtil"};
constexpr const char* kContexts[] = {"rvVlDrawCtx", "rvVlTransformCtx"};

/// The menu's procedures, played: their arguments are noted. The menu shows what the views will.
void playProcedure(const char* name, const std::vector<host::script::Type>& parameters) {
    host::script::defineProcedure(
        name, parameters, [name](const std::vector<host::script::Value>& arguments) {
            QString text = QString::fromLatin1(name).mid(4);
            for (const auto& argument : arguments)
                text += QLatin1Char(' ') + QString::fromStdString(argument.toString());
            const auto known = lastActiveDrawing(); // without a look of the test's own
            if (known && !known->modifiedCameras().isEmpty())
                note(QStringLiteral("display"));
            note(text);
            return host::script::Value();
        });
}

/// PNG of a canvas of one colour, another one for every number.
QByteArray picture(int number) {
    static std::map<int, QByteArray> made;
    QByteArray& bytes = made[number];
    if (bytes.isEmpty()) {
        QImage image(1024, 1024, QImage::Format_RGBA8888);
        image.fill(QColor(number % 256, number / 256 + 1, 7));
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::WriteOnly);
        image.save(&buffer, "PNG");
    }
    return bytes;
}

QString layerText(const Layer& layer) {
    QString text = QStringLiteral("%1 %2%3 %4 %5 shows %6:")
                       .arg(layer.name(), layer.isActive() ? QStringLiteral("active ") : QString(),
                            layer.isVisible() ? QStringLiteral("visible") : QString())
                       .arg(static_cast<double>(layer.opacity()))
                       .arg(numberOf(layer.state()))
                       .arg(layer.currentIndex());
    for (int i = 0; i < layer.frameCount(); ++i) {
        const Frame& frame = *layer.frameAt(i);
        const QByteArray digest =
            QCryptographicHash::hash(frame.pngBytes(), QCryptographicHash::Md5).toHex().left(6);
        text += QStringLiteral(" %1=%2").arg(frame.intTime()).arg(QString::fromLatin1(digest));
    }
    return text + QLatin1Char('\n');
}

} // namespace

QString Outcome::text() const {
    return QStringLiteral("%1 %2 <%3> <%4> <%5> %6")
        .arg(reached)
        .arg(static_cast<int>(status.statusCode()))
        .arg(result, said, log)
        .arg(steps);
}

void WatchedCommands::SetUp() {
    LinkedClasses::SetUp();
    add<NodeCommand>("rvVellumNode");
    add<LayerCommand>("rvVellumLayer");
    add<FrameCommand>("rvVellumFrame");
    add<UtilCommand>("rvVellumUtil");
    contextName = QStringLiteral("selectSuperContext");
    for (const char* name : kContexts) {
        host::script::registerCommand(name, [this, name](const host::script::CommandCall&) {
            note(QStringLiteral("make ") + QString::fromLatin1(name));
            return host::script::Value(contextName.toStdString());
        });
    }
    using host::script::Type;
    playProcedure("rvVlUpdateMainMenu", {Type::Int, Type::Int, Type::Int, Type::Int});
    playProcedure("rvVlCreateFloatingViewport", {Type::String});
    setDocumentEnvironment(this);
    connectPanels(&panelLog);
    pluginState().timeline = &markerLog;
    pluginState().interactive = true;
    pluginState().menuSourced = true;
    ASSERT_TRUE(run(QStringLiteral("camera; rename camera1 shotCam; currentTime 12;"
                                   "select -clear; flushUndo")));
}

void WatchedCommands::TearDown() {
    setDocumentEnvironment(nullptr);
    resetPluginState();
    for (const char* name : kCommands)
        EXPECT_TRUE(host::script::unregisterPluginCommand(name)) << name;
    for (const char* name : kContexts)
        EXPECT_TRUE(host::script::unregisterCommand(name)) << name;
    LinkedClasses::TearDown();
}

void WatchedCommands::addLayer(const char* name, const char* camera,
                               std::initializer_list<int> times) {
    static int pictures = 0;
    const QString on = QString::fromLatin1(camera);
    const int index = document()->addLayer(on, -1, QString::fromLatin1(name));
    std::vector<std::unique_ptr<Frame>> frames;
    for (const int time : times)
        frames.push_back(Frame::fromPng(fromIntTime(time), picture(++pictures)));
    ASSERT_TRUE(document()->exchangeFrames(on, index, {}, frames));
}

void WatchedCommands::makeDrawing() {
    addLayer("a", "persp", {1, 12});
    addLayer("b", "persp", {10, 13, 20});
    addLayer("c", "persp", {});
    addLayer("d", "shotCam", {5});
    document()->setLayerOpacity(QStringLiteral("persp"), 0, 0.3F);
    document()->setLayerVisible(QStringLiteral("persp"), 2, false);
    ASSERT_TRUE(document()->setActiveLayer(QStringLiteral("persp"), 1, true));
    ASSERT_TRUE(run(QStringLiteral("flushUndo")));
}

Outcome WatchedCommands::call(const QString& line) {
    watch() = Watch();
    errors.clear();
    // The display is up to date.
    if (const BaseNode* node = activeNode()) {
        for (const QString& camera : node->layerManager()->cameras())
            node->layerManager()->compositeCamera(camera);
    }
    const std::size_t before = host::undoQueue().undoCount();
    host::script::Value value;
    host::script::run(line.toStdString(), &value);
    Outcome outcome;
    outcome.steps = host::undoQueue().undoCount() - before;
    outcome.reached = watch().calls > 0;
    outcome.status = watch().status;
    outcome.result =
        QString::fromStdString(host::script::typeName(value.type()) + (": " + value.display()));
    const QString prefix = QStringLiteral("[Vellum2] ");
    QStringList own = errors.filter(prefix);
    own.removeDuplicates();
    outcome.said = own.join(QStringLiteral(" | ")).remove(prefix);
    outcome.log = watch().log.join(QStringLiteral(", "));
    return outcome;
}

QString WatchedCommands::logOf(const QString& script) {
    watch() = Watch();
    errors.clear();
    EXPECT_TRUE(script.isEmpty() || run(script)) << allErrors().toStdString();
    host::idle::drainAll();
    return watch().log.join(QStringLiteral(", "));
}

QString WatchedCommands::logOfNextMoment() {
    watch() = Watch();
    QCoreApplication::processEvents();
    return watch().log.join(QStringLiteral(", "));
}

void WatchedCommands::fails(const QString& line, const QString& message,
                            MStatus::MStatusCode status) {
    SCOPED_TRACE(line.toStdString());
    const QString before = everything();
    const Outcome outcome = call(line);
    EXPECT_TRUE(outcome.reached) << allErrors().toStdString();
    EXPECT_EQ(outcome.status.statusCode(), status);
    EXPECT_EQ(outcome.said.toStdString(), message.toStdString());
    EXPECT_EQ(outcome.result.toStdString(), "void: ");
    EXPECT_EQ(everything().toStdString(), before.toStdString());
}

QString WatchedCommands::drawing() const {
    const BaseNode* node = activeNode();
    if (!node)
        return QStringLiteral("none");
    const auto all = node->layerManager();
    QString text = all->currentCamera() + QStringLiteral(" after ") + all->previousCamera() +
                   QLatin1Char('\n');
    for (const QString& camera : all->cameras()) {
        for (int i = 0; i < all->cameraLayerCount(camera); ++i)
            text +=
                QStringLiteral("%1 %2: ").arg(camera).arg(i) + layerText(*all->layer(camera, i));
    }
    return text;
}

QString WatchedCommands::settingsText() const {
    const Settings& now = settings();
    QString text;
    for (const int number : {numberOf(now.activeTool), now.ghostPrevCount, now.ghostNextCount,
                             now.defaultLayerState, numberOf(now.timelineFrameDisplay)})
        text += QString::number(number) + QLatin1Char(' ');
    for (const bool on : {now.ghostPrev, now.ghostNext, now.ghostColorOverride})
        text += on ? QLatin1Char('1') : QLatin1Char('0');
    for (const ToolOptions& tool : now.toolOptions)
        text += QStringLiteral(" %1 %2 %3 %4 ")
                    .arg(tool.size)
                    .arg(tool.opacity)
                    .arg(tool.hardness)
                    .arg(tool.tabletEnabled ? 1 : 0) +
                tool.fontFamily;
    for (const QColor& color :
         {now.activeColor, now.ghostColorOverridePrev, now.ghostColorOverrideNext})
        text += QLatin1Char(' ') + color.name(QColor::HexArgb);
    return text + QLatin1Char('\n');
}

QString WatchedCommands::everything() {
    const QString scene = text(QStringLiteral(
        "string $vlNow = stringArrayToString(`ls -selection`, \" \") + \" of \" +"
        "stringArrayToString(`ls`, \" \") + \" at \" + `currentTime -q` + \" with \" +"
        "`currentCtx`"));
    const host::UndoQueue& queue = host::undoQueue();
    return drawing() + settingsText() + scene +
           QStringLiteral(" %1 %2 %3 %4")
               .arg(queue.undoCount())
               .arg(queue.redoCount())
               .arg(QString::fromStdString(queue.undoLabel()),
                    QString::fromStdString(queue.redoLabel()));
}

void WatchedCommands::undo() {
    errors.clear();
    EXPECT_TRUE(run(QStringLiteral("undo"))) << allErrors().toStdString();
}

void WatchedCommands::redo() {
    errors.clear();
    EXPECT_TRUE(run(QStringLiteral("redo"))) << allErrors().toStdString();
}

void WatchedCommands::goBackAndForth(const QString& before) {
    const auto now = [this] {
        return (drawing() + text(QStringLiteral("$vlNow = stringArrayToString(`ls -sl`, \" \")")) +
                text(QStringLiteral("$vlNow = \" at \" + `currentTime -q`")))
            .toStdString();
    };
    const std::string after = now();
    undo();
    const std::string back = now();
    EXPECT_EQ(drawing().toStdString(), before.toStdString());
    for (int i = 0; i < 3; ++i) {
        redo();
        EXPECT_EQ(now(), after) << "redone " << i;
        undo();
        EXPECT_EQ(now(), back) << "undone " << i;
    }
    redo();
}

QString WatchedCommands::currentCamera() const {
    return vellum::currentCamera();
}

bool WatchedCommands::cameraExists(const QString& camera) const {
    const bool counts = camera == QStringLiteral("shotCam");
    if (counts && camerasLeft > 0)
        --camerasLeft;
    else if (counts && camerasLeft == 0)
        return false;
    return vellum::cameraExists(camera);
}

} // namespace vellum::test
