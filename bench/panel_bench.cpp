// The layer manager's list after one change of the drawing, against a tree widget that is filled
// anew with the same rows. Both are shown, and all that follows in the event loop counts.
#include "BenchDocument.h"
#include "ui/MainWindow.h"
#include "ui/StartUp.h"
#include "ui/layers/CameraList.h"
#include "ui/layers/LayerListing.h"

#include <QApplication>
#include <QTreeWidget>
#include <QWidget>

#include <benchmark/benchmark.h>

using vellum::LayerManager;

namespace {

struct Lists {
    LayerManager document;
    QStringList cameras;
    int layers = 0; ///< of each camera

    Lists(int cameraCount, int layerCount) : layers(layerCount / cameraCount) {
        for (int i = 0; i < cameraCount; ++i) {
            cameras.append(QStringLiteral("camera%1").arg(i, 2, 10, QLatin1Char('0')));
            for (int layer = 0; layer < layers; ++layer)
                document.insertLayer(
                    cameras[i], -1,
                    std::make_unique<vellum::Layer>(QStringLiteral("Layer %1").arg(layer)));
        }
    }
};

void fill(QTreeWidget& tree, const vellum::LayerListing& listing) {
    tree.clear();
    QList<QTreeWidgetItem*> sections;
    for (const vellum::CameraSection& section : listing.sections) {
        auto* camera = new QTreeWidgetItem({section.camera});
        for (const vellum::LayerRow& row : section.rows)
            camera->addChild(new QTreeWidgetItem({row.visible ? QStringLiteral("V") : QString(),
                                                  QString::number(row.state), row.name}));
        sections.append(camera);
    }
    tree.addTopLevelItems(sections);
    tree.expandAll();
}

void settle() {
    for (int i = 0; i < 3; ++i)
        QApplication::processEvents();
}

enum Kind { Nothing, Rename, Visibility, Active, Move, AddAndDelete };

/// The change number `round`; it ends where it began after two.
void change(Lists& lists, Kind kind, int round) {
    const QString& camera = lists.cameras[lists.cameras.size() / 2];
    const int middle = lists.layers / 2;
    const bool odd = round % 2 != 0;
    LayerManager& document = lists.document;
    switch (kind) {
    case Nothing:
        break;
    case Rename:
        document.restoreLayerName(camera, middle, QStringLiteral("name %1").arg(round));
        break;
    case Visibility:
        document.setLayerVisible(camera, middle, odd);
        break;
    case Active:
        document.setActiveLayer(camera, odd ? middle : middle + 1, true);
        break;
    case Move:
        document.moveLayer(camera, middle, odd ? middle + 1 : middle - 1);
        break;
    case AddAndDelete:
        if (odd)
            document.takeLayer(camera, middle);
        else
            document.insertLayer(camera, middle,
                                 std::make_unique<vellum::Layer>(QStringLiteral("new")));
        break;
    }
}

/// `ms`: of one refresh; `vs_tree`: how many of them the tree's refilling takes.
void BM_Refresh(benchmark::State& state) {
    const auto kind = static_cast<Kind>(state.range(0));
    Lists lists(20, static_cast<int>(state.range(1)));
    vellum::CameraList panel(nullptr);
    QTreeWidget tree;
    tree.setColumnCount(3);
    for (QWidget* widget : {static_cast<QWidget*>(&panel), static_cast<QWidget*>(&tree)}) {
        widget->resize(260, 500);
        widget->show();
    }
    const auto listing = [&] { return vellum::listLayers(lists.document, lists.cameras); };
    const double first = bench::seconds([&] {
        panel.showListing(listing());
        settle();
    });
    fill(tree, listing());
    settle();
    double ours = 0.0;
    double trees = 0.0;
    int rounds = 0;
    for (auto _ : state) {
        change(lists, kind, ++rounds);
        ours += bench::seconds([&] {
            panel.showListing(listing());
            settle();
        });
        trees += bench::seconds([&] {
            fill(tree, listing());
            settle();
        });
    }
    state.counters["ms"] = 1e3 * ours / rounds;
    state.counters["vs_tree"] = trees / ours;
    state.counters["first_ms"] = 1e3 * first;
}

void kinds(benchmark::internal::Benchmark* bench) {
    for (const int layers : {500, 10000}) {
        for (const Kind kind : {Nothing, Rename, Visibility, Active, Move, AddAndDelete})
            bench->Args({kind, layers});
    }
}

} // namespace

BENCHMARK(BM_Refresh)
    ->ArgNames({"change", "layers"})
    ->Apply(kinds)
    ->Iterations(20)
    ->Unit(benchmark::kMillisecond);

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    host::startUp();
    const host::MainWindow mainWindow; // whose colours the panels take
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
