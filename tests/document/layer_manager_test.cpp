// Layers of cameras: names, order, activity, moves, messages; long random sequences against a
// trivial model.
#include "document/Changes.h"
#include "document/DocumentEnvironment.h"
#include "document/Drawing.h"
#include "document/IntTime.h"
#include "plugin/base/Settings.h"
#include "support/FrameChanges.h"
#include "support/Seed.h"
#include "support/Sure.h"
#include "tools/raster/PngCodec.h"

#include <maya/MAnimControl.h>

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <random>

using namespace vellum;
using drawing::CleanScene;
using support::sure;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class Observer : public DocumentEnvironment, public ChangeListener {
public:
    Observer() {
        setDocumentEnvironment(this);
        setChangeListener(this);
    }
    ~Observer() override {
        setDocumentEnvironment(nullptr);
        setChangeListener(nullptr);
    }

    void changed(Changes told, const std::vector<LayerManager*>& drawings) override {
        ASSERT_EQ(drawings.size(), 1U);
        changes += told.testFlag(Change::Layers) ? 1 : 0;
        if (told.testFlag(Change::ActiveOpacity)) {
            LayerManager& manager = *drawings.front();
            opacities.push_back(manager.activeLayer(manager.currentCamera())->opacity());
        }
    }
    bool cameraExists(const QString& camera) const override { return camera != "gone"; }
    QString currentCamera() const override { return viewed; }
    bool isPlaying() const override { return playing; }

    int changes = 0;
    std::vector<float> opacities;
    QString viewed;
    bool playing = false;
};

QStringList names(const LayerManager& manager, const QString& camera) {
    QStringList result;
    for (int i = 0; i < manager.cameraLayerCount(camera); ++i) {
        result += manager.layerName(camera, i);
    }
    return result;
}

} // namespace

TEST(LayerManager, NamesAreUniqueOverAllCameras) {
    const CleanScene scene;
    LayerManager manager;
    EXPECT_EQ(manager.addLayer("cam", -1, ""), 0);
    EXPECT_EQ(manager.addLayer("other", -1, "Layer"), 0);
    EXPECT_EQ(manager.addLayer("cam", 0, "Ink"), 0);
    EXPECT_EQ(manager.addLayer("other", 99, "Ink"), 1);
    EXPECT_EQ(manager.addLayer("", 0, "Ink"), -1);
    EXPECT_EQ(manager.insertLayer("cam", 0, nullptr), -1);
    EXPECT_EQ(names(manager, "cam"), (QStringList{"Ink", "Layer"}));
    EXPECT_EQ(names(manager, "other"), (QStringList{"Layer 1", "Layer 2"}));
    manager.renameLayer("cam", 1, "Ink");
    manager.renameLayer("other", 0, "Roughs");
    manager.renameLayer("other", 1, "Layer 2");
    manager.renameLayer("other", 7, "Nothing");
    EXPECT_EQ(names(manager, "cam"), (QStringList{"Ink", "Layer 3"}))
        << "the number goes behind Layer, whatever was asked for";
    EXPECT_EQ(names(manager, "other"), (QStringList{"Roughs", "Layer 2"}));
    EXPECT_EQ(manager.totalLayerCount(), 4);
}

TEST(LayerManager, NewLayersTakeTheStateOfTheSettingWhenItIsOne) {
    const CleanScene scene;
    LayerManager manager;
    for (const auto& [setting, state] : {std::pair{1, 1}, {2, 2}, {3, 0}, {-1, 0}}) {
        settings().defaultLayerState = setting;
        const int index = manager.addLayer("cam", -1, "");
        EXPECT_EQ(numberOf(manager.layerState("cam", index)), state) << setting;
    }
}

TEST(LayerManager, TheLayerBelowTheDeletedActiveOneBecomesActive) {
    const CleanScene scene;
    const struct {
        int active, deleted, activeAfter;
    } cases[] = {{0, 0, 0}, {2, 2, 1}, {1, 1, 0}, {2, 0, 1}, {0, 2, 0}};
    for (const auto& one : cases) {
        LayerManager manager;
        for (int i = 0; i < 3; ++i) {
            manager.addLayer("cam", -1, "");
        }
        manager.setActiveLayer("cam", one.active, false);
        ASSERT_TRUE(manager.takeLayer("cam", one.deleted));
        EXPECT_EQ(manager.activeLayerIndex("cam"), one.activeAfter) << one.deleted;
    }
    LayerManager manager;
    manager.addLayer("cam", -1, "");
    EXPECT_EQ(manager.takeLayer("cam", 1), nullptr);
    ASSERT_TRUE(manager.takeLayer("cam", 0));
    EXPECT_EQ(manager.activeLayerIndex("cam"), -1);
    EXPECT_EQ(manager.compositeCamera("cam"), nullptr);
    EXPECT_TRUE(manager.cameras().isEmpty());
    manager.addLayer("cam", -1, "");
    std::vector<std::unique_ptr<Layer>> taken;
    manager.deleteAllLayers("cam", taken);
    EXPECT_EQ(taken.size(), 1U);
    EXPECT_TRUE(manager.cameras().isEmpty()) << "saved as if it had never been";
}

TEST(LayerManager, RefusalsSayWhyAndChangeNothing) {
    const CleanScene scene;
    const Observer observer;
    LayerManager manager;
    manager.addLayer("cam", -1, "A");
    manager.addLayer("cam", -1, "B");
    drawing::Messages messages;
    EXPECT_EQ(manager.moveLayer("cam", 2, 0), -1);
    EXPECT_EQ(manager.moveLayer("nobody", 0, 0), -1);
    EXPECT_EQ(manager.moveLayerToCamera("cam", -1, "other", 0), -1);
    EXPECT_EQ(manager.moveLayerToCamera("cam", 0, "gone", 0), -1);
    EXPECT_FALSE(manager.setActiveLayer("cam", 2, true));
    EXPECT_FALSE(manager.setActiveLayer("cam", -1, true));
    EXPECT_THAT(
        messages.take(),
        ElementsAre("[Vellum2] Invalid layer: cam (2)", "[Vellum2] Invalid layer: nobody (0)",
                    "[Vellum2] Invalid layer: cam (-1)", "[Vellum2] Camera does not exist: gone",
                    "[Vellum2] Invalid layer index: 2", "[Vellum2] Invalid layer index: -1"));
    EXPECT_EQ(names(manager, "cam"), (QStringList{"A", "B"}));
    EXPECT_EQ(manager.activeLayerIndex("cam"), 0);
    EXPECT_TRUE(manager.setActiveLayer("empty", -1, false));
    EXPECT_EQ(manager.layerName("cam", 9), "");
    EXPECT_EQ(manager.layerOpacity("cam", 9), 0.0F);
    EXPECT_EQ(manager.layerState("cam", 9), LayerState::Animated);
    EXPECT_FALSE(manager.layerVisible("cam", 9));
    EXPECT_FALSE(layerStateOf(3) || layerStateOf(-1));
    EXPECT_THAT(messages.take(), IsEmpty());
}

TEST(LayerManager, MovesCarryActivityWithinACameraAndDropItBetweenCameras) {
    const CleanScene scene;
    LayerManager manager;
    for (const char* name : {"A", "B", "C"}) {
        manager.addLayer("cam", -1, name);
    }
    manager.addLayer("other", -1, "X");
    EXPECT_EQ(manager.moveLayer("cam", 0, 99), 2);
    EXPECT_EQ(names(manager, "cam"), (QStringList{"B", "C", "A"}));
    EXPECT_EQ(manager.activeLayerIndex("cam"), 2);
    EXPECT_EQ(manager.moveLayer("cam", 2, -5), 0);
    EXPECT_EQ(names(manager, "cam"), (QStringList{"A", "B", "C"}));

    EXPECT_EQ(manager.moveLayerToCamera("cam", 0, "other", 0), 0);
    EXPECT_EQ(names(manager, "other"), (QStringList{"A", "X"}));
    EXPECT_EQ(manager.activeLayerIndex("other"), 1) << "X stays the active one";
    EXPECT_EQ(manager.activeLayerIndex("cam"), 0);
    EXPECT_EQ(manager.moveLayerToCamera("cam", 0, "new", 5), 0);
    EXPECT_EQ(manager.activeLayerIndex("new"), 0) << "a camera's only layer is active";

    std::vector<std::unique_ptr<Layer>> taken;
    manager.deleteAllLayers("other", taken);
    ASSERT_EQ(taken.size(), 2U);
    EXPECT_EQ(taken[1]->name(), "X");
    for (auto& layer : taken) {
        manager.insertLayer("other", -1, std::move(layer));
    }
    EXPECT_EQ(manager.activeLayerIndex("other"), 0) << "one layer is active, not two";
    EXPECT_FALSE(sure(manager.layer("other", 1)).isActive());
}

TEST(LayerManager, CurrentCameraFollowsTheViewAndRemembersTheLastOne) {
    const CleanScene scene;
    Observer observer;
    LayerManager manager;
    manager.addLayer("cam", -1, "");
    EXPECT_EQ(manager.currentCamera(), "cam") << "the first layer of the document";
    manager.addLayer("other", -1, "");
    EXPECT_EQ(manager.currentCamera(), "cam");
    manager.setActiveLayer("other", 0, true);
    EXPECT_EQ(manager.currentCamera(), "other");
    EXPECT_EQ(manager.previousCamera(), "cam");
    observer.viewed = "persp";
    observer.changes = 0;
    manager.RefreshActiveCamera();
    manager.RefreshActiveCamera();
    EXPECT_EQ(observer.changes, 1);
    observer.viewed.clear();
    manager.RefreshActiveCamera();
    EXPECT_EQ(manager.currentCamera(), "persp");
    EXPECT_EQ(manager.previousCamera(), "other");
}

TEST(LayerManager, TellsOthersOnceAnOperation) {
    const CleanScene scene;
    Observer observer;
    LayerManager manager;
    const auto steps = [&](auto operation) {
        observer.changes = 0;
        operation();
        return observer.changes;
    };
    EXPECT_EQ(steps([&] { manager.addLayer("cam", -1, ""); }), 1);
    EXPECT_EQ(steps([&] { manager.addLayer("other", -1, ""); }), 1);
    EXPECT_EQ(steps([&] { manager.moveLayerToCamera("cam", 0, "other", 0); }), 1);
    EXPECT_EQ(steps([&] { manager.takeLayer("other", 0); }), 1);
    EXPECT_EQ(steps([&] { manager.setLayerVisible("other", 0, false); }), 1);
    EXPECT_EQ(steps([&] { manager.renameLayer("other", 0, "Z"); }), 1);
    EXPECT_EQ(steps([&] { manager.setLayerOpacity("other", 0, 0.5F); }), 0);
    EXPECT_EQ(steps([&] { manager.setActiveLayer("other", 9, true); }), 0);
    EXPECT_THAT(observer.opacities, IsEmpty()) << "other is not the current camera";
    manager.setCurrentCamera("other");
    manager.setLayerOpacity("other", 0, 2.0F);
    EXPECT_THAT(observer.opacities, ElementsAre(1.0F));
}

TEST(LayerManager, ATimeChangeTouchesOnlyLayersWhosePictureChanges) {
    const CleanScene scene;
    Observer observer;
    LayerManager manager;
    manager.insertLayer("cam", -1, drawing::layerWith("A", {1, 5}, 1));
    manager.insertLayer("cam", -1, drawing::layerWith("B", {1, 9}, 10));
    drawing::goTo(manager, 1);
    manager.compositeCamera("cam");
    EXPECT_FALSE(manager.needsRedraw("cam"));
    drawing::goTo(manager, 4);
    EXPECT_FALSE(manager.needsRedraw("cam"));
    drawing::goTo(manager, 5);
    EXPECT_TRUE(sure(manager.layer("cam", 0)).isDirty());
    EXPECT_FALSE(sure(manager.layer("cam", 1)).isDirty());
    EXPECT_TRUE(manager.needsRedraw("cam"));

    // Markers that were refreshed have brought the active layer up to date, others have not.
    drawing::goTo(manager, 5);
    MAnimControl::setCurrentTime(fromIntTime(1));
    QList<int> times;
    manager.collectFrameTimes("cam", times);
    EXPECT_EQ(times, (QList<int>{1, 5}));
    EXPECT_EQ(sure(manager.layer("cam", 0)).currentIndex(), 0);
    manager.timeChanged(1, true);
    EXPECT_EQ(sure(manager.layer("cam", 0)).currentIndex(), 0);
    manager.timeChanged(5, true);
    EXPECT_EQ(sure(manager.layer("cam", 0)).currentIndex(), 1);
    drawing::goTo(manager, 5);

    manager.compositeCamera("cam");
    observer.playing = true;
    manager.timeChanged(5);
    EXPECT_EQ(manager.modifiedCameras(), QStringList{"cam"}) << "playback has just started";
    manager.compositeCamera("cam");
    manager.timeChanged(5);
    EXPECT_THAT(manager.modifiedCameras(), IsEmpty());
}

TEST(LayerManager, TakingAnEarlierFrameKeepsWhatIsShownNow) {
    const CleanScene scene;
    LayerManager manager;
    manager.addLayer("cam", 0, "");
    for (const int time : {1, 10})
        manager.addFrameAt("cam", time);
    MAnimControl::setCurrentTime(MTime(15, MTime::uiUnit()));
    manager.timeChanged(15);
    ASSERT_TRUE(manager.takeFrameAt("cam", 1));
    ASSERT_NE(manager.currentFrame("cam"), nullptr);
    EXPECT_EQ(sure(manager.currentFrame("cam")).intTime(), 10);
}

TEST(LayerManager, ExchangesTheCurrentPictureWithUndoBytes) {
    const CleanScene scene;
    LayerManager manager;
    QByteArray bytes;
    imageToPng(drawing::marked(9), bytes);
    const QByteArray nine = bytes;
    EXPECT_FALSE(manager.replaceActiveImage("cam", bytes));
    manager.insertLayer("cam", -1, drawing::layerWith("A", {5, 6}, 1));
    EXPECT_FALSE(manager.replaceActiveImage("cam", bytes)) << "nothing is shown at frame 1";
    EXPECT_EQ(bytes, nine);
    drawing::goTo(manager, 6);
    for (const int expected : {9, 2, 9}) {
        ASSERT_TRUE(manager.replaceActiveImage("cam", bytes));
        EXPECT_EQ(drawing::markOf(*manager.compositeCamera("cam")), expected);
    }
    bytes = "damaged";
    ASSERT_TRUE(manager.replaceActiveImage("cam", bytes));
    EXPECT_EQ(bytes, nine);
    EXPECT_EQ(drawing::markOf(sure(manager.currentFrame("cam")).image()), 0);
    EXPECT_EQ(drawing::markOf(sure(sure(manager.layer("cam", 0)).frameAt(0)).image()), 1);
}

namespace {

/// The rules again, as plainly as possible.
struct Model {
    struct ModelLayer {
        QString name;
        std::map<int, int> marks; // time -> mark
    };
    struct ModelCamera {
        std::vector<ModelLayer> layers;
        int active = -1;
    };
    std::map<QString, ModelCamera> cameras;

    int shown(const ModelLayer& layer, int time) const {
        int mark = -1;
        for (const auto& [at, one] : layer.marks) {
            mark = at <= time ? one : mark;
        }
        return mark;
    }
};

struct Pair {
    LayerManager document;
    Model model;
    std::mt19937 random;
    int time = 1;
    int lastMark = 0;

    int upTo(int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); }

    void step() {
        const QString camera = upTo(2) ? "cam" : "other";
        Model::ModelCamera& plain = model.cameras[camera];
        const int count = static_cast<int>(plain.layers.size());
        switch (upTo(count == 0 ? 1 : 7)) {
        case 0:
            add(camera, plain);
            break;
        case 1:
            take(camera, plain, upTo(count));
            break;
        case 2:
            move(camera, plain, upTo(count), upTo(count + 4) - 2);
            break;
        case 3:
            plain.active = upTo(count);
            document.setActiveLayer(camera, plain.active, false);
            break;
        case 4:
            addFrame(camera, plain);
            break;
        case 5:
            takeFrame(camera, plain);
            break;
        default:
            time = upTo(40) - 20;
            drawing::goTo(document, time);
        }
    }

    void add(const QString& camera, Model::ModelCamera& plain) {
        const QString name = QString::number(++lastMark);
        const int at = upTo(static_cast<int>(plain.layers.size()) + 1);
        document.addLayer(camera, at, name);
        plain.layers.insert(plain.layers.begin() + at, {name, {}});
        plain.active = plain.layers.size() == 1 ? 0 : plain.active + (at <= plain.active ? 1 : 0);
    }

    void take(const QString& camera, Model::ModelCamera& plain, int index) {
        document.takeLayer(camera, index);
        plain.layers.erase(plain.layers.begin() + index);
        if (plain.layers.empty()) {
            plain.active = -1;
        } else if (index == plain.active) {
            plain.active = std::max(plain.active - 1, 0);
        } else if (index < plain.active) {
            --plain.active;
        }
    }

    void move(const QString& camera, Model::ModelCamera& plain, int from, int to) {
        const QString active = plain.layers[static_cast<std::size_t>(plain.active)].name;
        document.moveLayer(camera, from, to);
        const auto layer = plain.layers[static_cast<std::size_t>(from)];
        plain.layers.erase(plain.layers.begin() + from);
        to = std::clamp(to, 0, static_cast<int>(plain.layers.size()));
        plain.layers.insert(plain.layers.begin() + to, layer);
        for (std::size_t i = 0; i < plain.layers.size(); ++i) {
            plain.active = plain.layers[i].name == active ? static_cast<int>(i) : plain.active;
        }
    }

    void addFrame(const QString& camera, Model::ModelCamera& plain) {
        const int at = upTo(40) - 20;
        auto& marks = plain.layers[static_cast<std::size_t>(plain.active)].marks;
        const bool added = document.addFrameAt(camera, at) >= 0;
        ASSERT_EQ(added, marks.emplace(at, ++lastMark).second);
        if (added) {
            ASSERT_TRUE(test::putFrame(document, camera, document.activeLayerIndex(camera),
                                       drawing::frameWith(at, drawing::marked(lastMark))));
        }
    }

    void takeFrame(const QString& camera, Model::ModelCamera& plain) {
        const int at = upTo(40) - 20;
        auto& marks = plain.layers[static_cast<std::size_t>(plain.active)].marks;
        const auto frame = document.takeFrameAt(camera, at);
        ASSERT_EQ(frame ? drawing::markOf(frame->image()) : -1, marks.count(at) ? marks[at] : -1);
        marks.erase(at);
    }

    void compare() {
        for (const auto& [camera, plain] : model.cameras) {
            SCOPED_TRACE(camera.toStdString());
            ASSERT_EQ(document.cameraLayerCount(camera), static_cast<int>(plain.layers.size()));
            ASSERT_EQ(document.activeLayerIndex(camera), plain.active);
            for (std::size_t i = 0; i < plain.layers.size(); ++i) {
                const Layer& layer = *document.layer(camera, static_cast<int>(i));
                SCOPED_TRACE("layer " + std::to_string(i));
                ASSERT_EQ(layer.name(), plain.layers[i].name);
                ASSERT_EQ(layer.frameCount(), static_cast<int>(plain.layers[i].marks.size()));
                const QImage shown = test::pictureOf(layer);
                ASSERT_EQ(shown.isNull() ? -1 : drawing::markOf(shown),
                          model.shown(plain.layers[i], time));
            }
        }
    }
};

} // namespace

TEST(LayerManager, RandomSequencesEqualAModel) {
    const unsigned seed = support::seed();
    for (unsigned run = 0; run < 8; ++run) {
        SCOPED_TRACE("seed " + std::to_string(seed + run));
        const CleanScene scene;
        Pair pair;
        pair.random.seed(seed + run);
        for (int i = 0; i < 60; ++i) {
            pair.step();
            if (i % 6 == 0) {
                pair.compare();
            }
            if (HasFatalFailure()) {
                return;
            }
        }
    }
}
