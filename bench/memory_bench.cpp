// What a long film costs: resident memory and seconds for opening, for saving unchanged and for
// saving after one frame changed, next to decoding or encoding every frame once in the same run.
#include "bench/BenchDocument.h"
#include "document/BaseNodeLayerData.h"
#include "document/FrameCache.h"
#include "tools/raster/PngCodec.h"

#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <fstream>
#include <map>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using namespace vellum;

std::vector<bench::Points> theStrokes;

double residentMegabytes() {
    std::ifstream status("/proc/self/statm");
    double size = 0.0;
    double resident = 0.0;
    status >> size >> resident;
    return resident * static_cast<double>(sysconf(_SC_PAGESIZE)) / 1e6;
}

/// A film on disk and what handling each of its frames once costs.
struct Film {
    std::string file;
    unsigned bytes = 0;
    double decodeAll = 0.0;
    double encodeAll = 0.0;
};

void save(BaseNodeLayerData& data, const std::string& file) {
    std::ofstream out(file, std::ios::binary);
    if (data.writeBinary(out) != MS::kSuccess || !out.flush()) {
        std::fprintf(stderr, "could not write the film\n");
        std::exit(1);
    }
}

void open(BaseNodeLayerData& data, const Film& film) {
    std::ifstream in(film.file, std::ios::binary);
    if (data.readBinary(in, film.bytes) != MS::kSuccess) {
        std::fprintf(stderr, "could not read the film\n");
        std::exit(1);
    }
}

void drawFilm(const std::string& file, int frames) {
    BaseNodeLayerData data;
    data.createLayerManager();
    LayerManager& manager = *data.layerManager();
    manager.addLayer(bench::kCamera, 0, "Ink");
    for (int frame = 1; frame <= frames; ++frame) {
        bench::goTo(manager, frame);
        manager.addFrameAt(bench::kCamera, frame);
        bench::sketch(manager, theStrokes, frame, 12);
    }
    save(data, file);
}

/// In a process of its own, so that what drawing took is not counted here.
template <typename Work> void apart(Work work) {
    std::fflush(stdout);
    const pid_t child = fork();
    if (child == 0) {
        work();
        std::fflush(stdout);
        _exit(0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    if (status != 0) {
        std::fprintf(stderr, "preparing the film failed\n");
        std::exit(1);
    }
}

void measureFrames(const Film& film, const std::string& result) {
    BaseNodeLayerData data;
    open(data, film);
    const Layer& layer = *data.layerManager()->layer(bench::kCamera, 0);
    double decode = 0.0;
    double encode = 0.0;
    for (int i = 0; i < layer.frameCount(); ++i) {
        const QByteArray png = layer.frameAt(i)->pngBytes();
        QImage image;
        QByteArray again;
        decode += bench::seconds([&] { pngToImage(png, image); });
        encode += bench::seconds([&] { imageToPng(image, again); });
    }
    std::ofstream(result) << decode << ' ' << encode;
}

const Film& film(int frames) {
    static QTemporaryDir folder;
    static std::map<int, Film> films;
    const auto known = films.find(frames);
    if (known != films.end())
        return known->second;
    Film& made = films[frames];
    made.file = folder.filePath(QString::number(frames)).toStdString();
    apart([&] { drawFilm(made.file, frames); });
    made.bytes = static_cast<unsigned>(std::ifstream(made.file, std::ios::ate).tellg());
    const std::string measured = made.file + ".seconds";
    apart([&] { measureFrames(made, measured); });
    std::ifstream(measured) >> made.decodeAll >> made.encodeAll;
    return made;
}

void reportFilm(benchmark::State& state, const Film& of, double memoryBefore) {
    state.counters["file_MB"] = of.bytes / 1e6;
    state.counters["grown_MB"] = residentMegabytes() - memoryBefore;
    state.counters["resident_MB"] = residentMegabytes();
    state.counters["decoded_frames"] = FrameCache::decodedCount();
}

/// Packed size, the decoded pictures of the budget and what a heap leaves between them.
void checkMemory(benchmark::State& state, const Film& of, double memoryBefore) {
    const double budget = FrameCache::kDefaultBudget * 4.0 * 1024 * 1024 / 1e6;
    const double limit = 1.2 * (of.bytes / 1e6 + budget) + 10.0;
    state.counters["limit_MB"] = limit;
    if (residentMegabytes() - memoryBefore > limit)
        state.SkipWithError("holds more than its packed size and the budget");
}

/// How many times faster than the work that handles every frame.
void setRatio(benchmark::State& state, const char* name, double all, double spent) {
    state.counters[name] = all / (spent / static_cast<double>(state.iterations()));
}

void BM_Open(benchmark::State& state) {
    const Film& one = film(static_cast<int>(state.range(0)));
    const double before = residentMegabytes();
    double spent = 0.0;
    std::unique_ptr<BaseNodeLayerData> data;
    for (auto _ : state) {
        data = std::make_unique<BaseNodeLayerData>();
        spent += bench::seconds([&] { open(*data, one); });
    }
    reportFilm(state, one, before);
    checkMemory(state, one, before);
    setRatio(state, "x_faster_than_decoding_all", one.decodeAll, spent);
}

std::string contents(const std::string& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

void saveBenchmark(benchmark::State& state, bool changeOne) {
    const Film& one = film(static_cast<int>(state.range(0)));
    const std::string target = one.file + ".saved";
    const double before = residentMegabytes();
    BaseNodeLayerData data;
    open(data, one);
    LayerManager& manager = *data.layerManager();
    double spent = 0.0;
    int frame = 1;
    for (auto _ : state) {
        if (changeOne) {
            state.PauseTiming();
            frame = frame % static_cast<int>(state.range(0)) + 1;
            bench::goTo(manager, frame);
            bench::sketch(manager, theStrokes, 3, 1);
            state.ResumeTiming();
        }
        spent += bench::seconds([&] { save(data, target); });
    }
    reportFilm(state, one, before);
    checkMemory(state, one, before);
    if ((contents(target) == contents(one.file)) == changeOne)
        state.SkipWithError("what was saved is not what was drawn");
    setRatio(state, "x_faster_than_encoding_all", one.encodeAll, spent);
}

void BM_SaveUnchanged(benchmark::State& state) {
    saveBenchmark(state, false);
}

void BM_SaveOneChanged(benchmark::State& state) {
    saveBenchmark(state, true);
}

/// Every frame shown once, as by scrubbing through, and then saved.
void BM_SaveAfterShowingAll(benchmark::State& state) {
    const Film& one = film(static_cast<int>(state.range(0)));
    const double before = residentMegabytes();
    BaseNodeLayerData data;
    open(data, one);
    LayerManager& manager = *data.layerManager();
    for (int frame = 1; frame <= state.range(0); ++frame) {
        bench::goTo(manager, frame);
        manager.compositeCamera(bench::kCamera);
    }
    double spent = 0.0;
    for (auto _ : state)
        spent += bench::seconds([&] { save(data, one.file + ".saved"); });
    reportFilm(state, one, before);
    checkMemory(state, one, before);
    setRatio(state, "x_faster_than_encoding_all", one.encodeAll, spent);
}

} // namespace

BENCHMARK(BM_Open)->Arg(50)->Arg(200)->Arg(500)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SaveUnchanged)
    ->Arg(50)
    ->Arg(200)
    ->Arg(500)
    ->Iterations(3)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SaveOneChanged)
    ->Arg(50)
    ->Arg(200)
    ->Arg(500)
    ->Iterations(5)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SaveAfterShowingAll)->Arg(500)->Iterations(1)->Unit(benchmark::kMillisecond);

int main(int argc, char** argv) {
    const std::string tablet = bench::tabletFile(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    theStrokes = bench::strokes(tablet);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
