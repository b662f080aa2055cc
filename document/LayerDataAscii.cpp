#include "document/Changes.h"
#include "document/IntTime.h"
#include "document/LayerDataFormat.h"
#include "document/LayerDataLosses.h"
#include "document/LayerManager.h"
#include "plugin/base/CommandStrings.h"
#include "plugin/base/MayaStrings.h"
#include "plugin/base/Report.h"
#include "tools/raster/PngCheck.h"

#include <maya/MArgList.h>
#include <maya/MTime.h>

#include <cstring>
#include <limits>
#include <locale>
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
    for (int i = 0; i < layer.frameCount(); ++i)
        writeFrame(out, *layer.frameAt(i));
    out << kLineBreak;
}

/// Takes one argument after the other. Every failure is reported; after one of them counts are not
/// believed any more, and what comes next is told by its shape.
class ArgumentReader {
public:
    ArgumentReader(const MArgList& args, unsigned& index) : args_(args), index_(index) {}

    bool isAtEnd() const { return index_ >= args_.length(); }
    unsigned index() const { return index_; }
    void goBackTo(unsigned index) { index_ = index; }
    bool inDoubt() const { return inDoubt_; }

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
            if (status == MS::kSuccess)
                value = fromMaya(text);
        });
    }

    bool count(int& value, const char* message) {
        return integer(value, message) && (value >= 0 || refuseLast(message));
    }

    /// The last argument taken has a value that cannot be.
    bool refuseLast(const char* message) { return fail(message, index_ - 1); }
    /// The next argument is not what belongs here.
    bool refuseNext(const char* message) { return fail(message, index_); }

    /// Whether a time and a picture come next.
    bool isAtFrame() const { return isTime(index_) && isPicture(index_ + 1); }
    bool isAtLayer() const { return isLayer(index_); }
    bool isAtCamera() const {
        const bool isEmpty = isInteger(index_ + 1, 0, 0) && isInteger(index_ + 2, -1, -1);
        return isEmpty || (isInteger(index_ + 1, 1) && isInteger(index_ + 2, -1) &&
                           (isLayer(index_ + 3) || isMissingLayer(index_ + 3)));
    }

    /// After damage: goes on to the next place whose shape is known, or to the end.
    void findSense() {
        while (!isAtEnd() && !isAtFrame() && !isAtLayer() && !isAtCamera())
            ++index_;
    }

private:
    template <typename Get> bool take(const char* message, Get get) {
        MStatus status = MS::kFailure;
        if (!isAtEnd())
            get(status);
        if (status != MS::kSuccess)
            return fail(message, index_);
        ++index_;
        return true;
    }

    bool fail(const char* message, unsigned at) {
        inDoubt_ = true;
        loss(QString::fromLatin1(message).replace(QLatin1String("%1"), QString::number(at)));
        return false;
    }

    bool isTime(unsigned at) const {
        MStatus status = MS::kFailure;
        if (at < args_.length())
            args_.asTime(at, &status);
        return status == MS::kSuccess;
    }
    /// A picture in full is thousands of characters; its beginning is the same for all.
    bool isPicture(unsigned at) const {
        constexpr char beginning[] = "89504e470d0a1a0a";
        MStatus status = MS::kFailure;
        MString text;
        if (at < args_.length())
            text = args_.asString(at, &status);
        return status == MS::kSuccess &&
               std::strncmp(text.asChar(), beginning, sizeof beginning - 1) == 0;
    }
    bool isInteger(unsigned at, int lowest, int highest = std::numeric_limits<int>::max()) const {
        MStatus status = MS::kFailure;
        int value = 0;
        if (at < args_.length())
            value = args_.asInt(at, &status);
        return status == MS::kSuccess && value >= lowest && value <= highest;
    }
    bool isNumber(unsigned at) const {
        MStatus status = MS::kFailure;
        if (at < args_.length())
            args_.asDouble(at, &status);
        return status == MS::kSuccess;
    }
    bool isMissingLayer(unsigned at) const {
        MStatus status = MS::kFailure;
        const MString name = at < args_.length() ? args_.asString(at, &status) : MString();
        return fromMaya(name) == missingLayerName() && isInteger(at + 1, -1, -1);
    }
    bool isLayer(unsigned at) const {
        return isInteger(at + 1, 0) && isInteger(at + 2, 0, 1) && isNumber(at + 3) &&
               isInteger(at + 4, numberOf(LayerState::Animated), numberOf(LayerState::Locked));
    }

    const MArgList& args_;
    unsigned& index_;
    bool inDoubt_ = false;
};

constexpr char kInvalidVersion[] = "Invalid version";
constexpr char kInvalidLayerCount[] = "Invalid layer count (%1)";
constexpr char kInvalidFrameCount[] = "Invalid frame count (%1)";
constexpr char kInvalidFrameTime[] = "Invalid frame time (%1)";
constexpr char kInvalidDrawData[] = "Invalid draw data (%1)";

/// False when there is no frame here. One whose picture does not load is reported and skipped.
bool readFrame(ArgumentReader& reader, Layer& layer, int ordinal) {
    const unsigned start = reader.index();
    MTime time;
    QString hex;
    if (!reader.time(time, kInvalidFrameTime) || !reader.string(hex, kInvalidDrawData))
        return false;
    const QByteArray png = canvasPng(QByteArray::fromHex(hex.toUtf8()));
    if (!png.isEmpty()) {
        keepFrame(layer, Frame::fromPng(time, png));
        return true;
    }
    const unsigned behind = reader.index();
    reader.goBackTo(start);
    if (reader.isAtLayer() || reader.isAtCamera()) { // fewer frames than their count says
        return reader.refuseNext(kInvalidFrameTime);
    }
    reader.goBackTo(start + 1);
    if (reader.isAtFrame()) { // the picture is gone altogether
        return reader.refuseNext(kInvalidDrawData);
    }
    reader.goBackTo(behind);
    lossOfPicture(layer, ordinal);
    return true;
}

/// As many as the layer says, and after damage all that follow: the count may be what is damaged,
/// or a frame may have fallen into pieces.
void readFrames(ArgumentReader& reader, Layer& layer, int frameCount) {
    for (int i = 0;; ++i) {
        if (reader.inDoubt() || i >= frameCount) {
            if (!reader.isAtFrame())
                return;
            if (!reader.inDoubt())
                reader.refuseNext("More frames than their count says (%1)");
        }
        if (!readFrame(reader, layer, i))
            reader.findSense();
    }
}

struct LayerHead {
    QString name;
    int frameCount = 0;
    bool visible = true;
    double opacity = 1.0;
    LayerState state = LayerState::Animated;
    bool isMissing = false; ///< only the mark of a layer that could not be written
};

/// False when something of it is damaged; the rest then keeps its usual value.
bool readHead(ArgumentReader& reader, LayerHead& head) {
    if (!reader.string(head.name, "Invalid layer name (%1)") ||
        !reader.integer(head.frameCount, kInvalidFrameCount)) {
        return false;
    }
    if (head.frameCount < 0) {
        head.isMissing = head.name == missingLayerName();
        return head.isMissing || reader.refuseLast(kInvalidFrameCount);
    }
    constexpr char invalidState[] = "Invalid layer state (%1)";
    int state = 0;
    if (!reader.boolean(head.visible, "Invalid layer visibility (%1)") ||
        !reader.decimal(head.opacity, "Invalid opacity (%1)") ||
        !reader.integer(state, invalidState)) {
        return false;
    }
    const auto known = layerStateOf(state);
    if (!known)
        return reader.refuseLast(invalidState);
    head.state = *known;
    return true;
}

/// A layer whose head is damaged is made when drawings of it follow.
void readLayer(ArgumentReader& reader, LayerManager& manager, const QString& camera) {
    LayerHead head;
    if (!readHead(reader, head)) {
        reader.findSense();
        if (!reader.isAtFrame())
            return;
    }
    if (head.isMissing) {
        report::warning(QStringLiteral("Skipping invalid layer"));
        return;
    }
    auto owned = std::make_unique<Layer>(head.name);
    Layer& layer = *owned;
    layer.setVisible(head.visible);
    layer.setOpacity(static_cast<float>(head.opacity));
    layer.setState(head.state);
    manager.insertLayer(camera, -1, std::move(owned));
    readFrames(reader, layer, head.frameCount);
}

/// The layers of a camera, as many as it says; after damage all up to the next camera.
void readLayers(ArgumentReader& reader, LayerManager& manager, const QString& camera, int count) {
    for (int i = 0; reader.inDoubt() || i < count; ++i) {
        if (reader.inDoubt() && reader.isAtFrame()) {
            // Drawings whose layer is not to be told.
            auto found = std::make_unique<Layer>(manager.uniqueLayerName(recoveredLayerName()));
            Layer& layer = *found;
            manager.insertLayer(camera, -1, std::move(found));
            readFrames(reader, layer, 0);
        } else if (reader.inDoubt() && (reader.isAtCamera() || !reader.isAtLayer())) {
            return;
        } else {
            readLayer(reader, manager, camera);
        }
    }
}

QString readCamera(ArgumentReader& reader, LayerManager& manager) {
    QString camera;
    int layerCount = 0;
    int activeIndex = -1;
    if (!reader.string(camera, "Invalid camera name (%1)") ||
        !reader.count(layerCount, kInvalidLayerCount) ||
        !reader.integer(activeIndex, "Invalid active layer index (%1)")) {
        reader.findSense();
    }
    readLayers(reader, manager, camera, layerCount);
    const int count = manager.cameraLayerCount(camera);
    if (activeIndex >= 0 && (reader.inDoubt() ? activeIndex < count : count > 0))
        manager.setActiveLayer(camera, activeIndex, true);
    return camera;
}

/// The cameras, as many as the document says; after damage, or when something follows, all.
void readCameras(ArgumentReader& reader, LayerManager& manager, int count) {
    QString camera;
    for (int i = 0; i < count && !reader.inDoubt(); ++i) {
        if (i > 0 && reader.isAtLayer() && !reader.isAtCamera()) {
            reader.refuseNext("More layers than their count says (%1)");
            break;
        }
        camera = readCamera(reader, manager);
    }
    while (!reader.isAtEnd()) {
        if (!reader.inDoubt())
            reader.refuseNext("Unexpected data behind the last layer (%1)");
        reader.findSense();
        if (reader.isAtCamera()) {
            camera = readCamera(reader, manager);
        } else {
            readLayers(reader, manager, camera, 0);
        }
    }
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
        for (int i = 0; i < count; ++i)
            writeLayer(out, *manager.layer(camera, i));
    }
    return MS::kSuccess;
}

MStatus readAscii(LayerManager& manager, const MArgList& args, unsigned& index) {
    ArgumentReader reader(args, index);
    if (reader.isAtEnd())
        return MS::kFailure;
    const ChangeGroup oneChange;
    int version = 0;
    const bool hasVersion = reader.integer(version, kInvalidVersion);
    if (hasVersion && version <= 0) {
        loss(QString::fromLatin1(kInvalidVersion));
        return MS::kFailure;
    }
    bool master = false;
    QString currentCamera;
    int cameraCount = 0;
    if (hasVersion && reader.boolean(master, "Failed to get master (%1)") &&
        reader.string(currentCamera, "Invalid camera name (%1)")) {
        reader.count(cameraCount, kInvalidLayerCount);
    }
    if (master)
        manager.setMaster(true);
    readCameras(reader, manager, cameraCount);
    tellOfDroppedFrames();
    if (!currentCamera.isEmpty())
        manager.setCurrentCamera(currentCamera);
    return reader.inDoubt() ? MS::kFailure : MS::kSuccess;
}

} // namespace vellum::layer_data
