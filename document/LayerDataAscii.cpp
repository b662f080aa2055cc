#include "document/Changes.h"
#include "document/IntTime.h"
#include "document/LayerDataFormat.h"
#include "document/LayerManager.h"
#include "plugin/base/CommandStrings.h"
#include "plugin/base/MayaStrings.h"
#include "plugin/base/Report.h"
#include "tools/raster/PngCheck.h"

#include <locale>
#include <maya/MArgList.h>
#include <maya/MTime.h>
#include <ostream>

namespace vellum::layer_data {

namespace {

constexpr int kFormatVersion = 1;
constexpr char kLineBreak[] = "\n\t\t";

/// In files, the name of a layer that could not be written; its frame count is negative and nothing
/// follows.
QString missingLayerName() {
    return QStringLiteral("UNKNOWN");
}

/// Numbers are written the same whatever the user's locale.
class ClassicLocale {
public:
    explicit ClassicLocale(std::ostream& out)
        : out_(out), previous_(out.imbue(std::locale::classic())) {}
    ~ClassicLocale() { out_.imbue(previous_); }
    ClassicLocale(const ClassicLocale&) = delete;
    ClassicLocale& operator=(const ClassicLocale&) = delete;

private:
    std::ostream& out_;
    std::locale previous_;
};

void writeString(std::ostream& out, const QString& text) {
    const QByteArray quoted = command::quote(text).toUtf8();
    out.write(quoted.constData(), quoted.size());
}

void writeFrame(std::ostream& out, const Frame& frame) {
    const QByteArray hex = frame.pngBytes().toHex();
    out << kLineBreak << frame.time() << " \"";
    out.write(hex.constData(), hex.size());
    out << '"';
}

void writeLayer(std::ostream& out, const Layer& layer) {
    writeString(out, layer.name());
    out << ' ' << layer.frameCount() << ' ' << (layer.isVisible() ? 1 : 0) << ' ' << layer.opacity()
        << ' ' << numberOf(layer.state());
    for (int i = 0; i < layer.frameCount(); ++i) {
        writeFrame(out, *layer.frameAt(i));
    }
    out << kLineBreak;
}

/// Takes one argument after the other; the first failure is reported and sticks.
class ArgumentReader {
public:
    ArgumentReader(const MArgList& args, unsigned& index) : args_(args), index_(index) {}

    bool isAtEnd() const { return index_ >= args_.length(); }

    /// `message` is shown, with the index of the argument as %1, when there is no such argument or
    /// it is of another type.
    bool integer(int& value, const char* message) {
        return take(message, [&](MStatus& status) { value = args_.asInt(index_, &status); });
    }
    bool boolean(bool& value, const char* message) {
        return take(message, [&](MStatus& status) { value = args_.asBool(index_, &status); });
    }
    bool decimal(double& value, const char* message) {
        return take(message, [&](MStatus& status) { value = args_.asDouble(index_, &status); });
    }
    bool time(MTime& value, const char* message) {
        return take(message, [&](MStatus& status) { value = args_.asTime(index_, &status); });
    }
    bool string(QString& value, const char* message) {
        return take(message, [&](MStatus& status) {
            const MString text = args_.asString(index_, &status);
            if (status == MS::kSuccess) {
                value = fromMaya(text);
            }
        });
    }

    bool count(int& value, const char* message) {
        return integer(value, message) && (value >= 0 || refuseLast(message));
    }

    /// The last argument taken has a value that cannot be.
    bool refuseLast(const char* message) { return fail(message, index_ - 1); }

private:
    template <typename Get> bool take(const char* message, Get get) {
        MStatus status = MS::kFailure;
        if (!isAtEnd()) {
            get(status);
        }
        if (status != MS::kSuccess) {
            return fail(message, index_);
        }
        ++index_;
        return true;
    }

    static bool fail(const char* message, unsigned at) {
        report::error(
            QString::fromLatin1(message).replace(QLatin1String("%1"), QString::number(at)));
        return false;
    }

    const MArgList& args_;
    unsigned& index_;
};

constexpr char kInvalidLayerCount[] = "Invalid layer count (%1)";

bool readFrame(ArgumentReader& reader, Layer& layer, int ordinal) {
    MTime time;
    QString hex;
    if (!reader.time(time, "Invalid frame time (%1)") ||
        !reader.string(hex, "Invalid draw data (%1)")) {
        return false;
    }
    const QByteArray png = QByteArray::fromHex(hex.toUtf8());
    if (pngLoads(png)) {
        layer.addFrame(Frame::fromPng(time, png));
    } else {
        report::error(QStringLiteral("Failed to load draw data: %1 (%2)")
                          .arg(layer.name(), QString::number(ordinal)));
    }
    return true;
}

bool readLayer(ArgumentReader& reader, LayerManager& manager, const QString& camera) {
    QString name;
    int frameCount = 0;
    constexpr char invalidFrameCount[] = "Invalid frame count (%1)";
    if (!reader.string(name, "Invalid layer name (%1)") ||
        !reader.integer(frameCount, invalidFrameCount)) {
        return false;
    }
    if (frameCount < 0) {
        if (name != missingLayerName()) {
            return reader.refuseLast(invalidFrameCount);
        }
        report::warning(QStringLiteral("Skipping invalid layer"));
        return true;
    }
    bool visible = true;
    double opacity = 1.0;
    int state = 0;
    constexpr char invalidState[] = "Invalid layer state (%1)";
    if (!reader.boolean(visible, "Invalid layer visibility (%1)") ||
        !reader.decimal(opacity, "Invalid opacity (%1)") || !reader.integer(state, invalidState)) {
        return false;
    }
    const auto known = layerStateOf(state);
    if (!known) {
        return reader.refuseLast(invalidState);
    }
    auto owned = std::make_unique<Layer>(name);
    Layer& layer = *owned;
    layer.setVisible(visible);
    layer.setOpacity(static_cast<float>(opacity));
    layer.setState(*known);
    manager.insertLayer(camera, -1, std::move(owned));
    for (int i = 0; i < frameCount; ++i) {
        if (!readFrame(reader, layer, i)) {
            return false;
        }
    }
    return true;
}

bool readCamera(ArgumentReader& reader, LayerManager& manager) {
    QString camera;
    int layerCount = 0;
    int activeIndex = -1;
    if (!reader.string(camera, "Invalid camera name (%1)") ||
        !reader.count(layerCount, kInvalidLayerCount) ||
        !reader.integer(activeIndex, "Invalid active layer index (%1)")) {
        return false;
    }
    for (int i = 0; i < layerCount; ++i) {
        if (!readLayer(reader, manager, camera)) {
            return false;
        }
    }
    if (activeIndex >= 0) {
        manager.setActiveLayer(camera, activeIndex, true);
    }
    return true;
}

} // namespace

MStatus writeAscii(const LayerManager& manager, std::ostream& out) {
    const ClassicLocale classic(out);
    out << kFormatVersion << ' ' << (manager.isMaster() ? 1 : 0) << ' ';
    writeString(out, manager.currentCamera());
    const QStringList cameras = manager.cameras();
    out << ' ' << cameras.size() << kLineBreak;
    for (const QString& camera : cameras) {
        const int count = manager.cameraLayerCount(camera);
        writeString(out, camera);
        out << ' ' << count << ' ' << manager.activeLayerIndex(camera) << kLineBreak;
        for (int i = 0; i < count; ++i) {
            writeLayer(out, *manager.layer(camera, i));
        }
    }
    return MS::kSuccess;
}

MStatus readAscii(LayerManager& manager, const MArgList& args, unsigned& index) {
    ArgumentReader reader(args, index);
    if (reader.isAtEnd()) {
        return MS::kFailure;
    }
    const ChangeGroup oneChange;
    int version = 0;
    if (!reader.integer(version, "Invalid version")) {
        return MS::kFailure;
    }
    if (version <= 0) {
        report::error(QStringLiteral("Invalid version"));
        return MS::kFailure;
    }
    bool master = false;
    QString currentCamera;
    int cameraCount = 0;
    if (!reader.boolean(master, "Failed to get master (%1)")) {
        return MS::kFailure;
    }
    if (master) {
        manager.setMaster(true);
    }
    if (!reader.string(currentCamera, "Invalid camera name (%1)") ||
        !reader.count(cameraCount, kInvalidLayerCount)) {
        return MS::kFailure;
    }
    for (int i = 0; i < cameraCount; ++i) {
        if (!readCamera(reader, manager)) {
            return MS::kFailure;
        }
    }
    if (!currentCamera.isEmpty()) {
        manager.setCurrentCamera(currentCamera);
    }
    return MS::kSuccess;
}

} // namespace vellum::layer_data
