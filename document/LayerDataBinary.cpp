#include "document/Changes.h"
#include "document/IntTime.h"
#include "document/LayerDataFormat.h"
#include "document/LayerManager.h"
#include "tools/raster/PngCheck.h"

#include <QtEndian>
#include <algorithm>
#include <cstdint>
#include <cstring>
#include <istream>
#include <limits>
#include <ostream>

namespace vellum::layer_data {

namespace {

constexpr std::int32_t kFormatVersion = 1;

void writeInt(std::ostream& out, std::int32_t value) {
    char bytes[4];
    qToLittleEndian(value, bytes);
    out.write(bytes, sizeof bytes);
}

void writeBool(std::ostream& out, bool value) {
    out.put(value ? '\1' : '\0');
}

void writeFloat(std::ostream& out, float value) {
    std::int32_t bits;
    static_assert(sizeof bits == sizeof value && std::numeric_limits<float>::is_iec559);
    std::memcpy(&bits, &value, sizeof bits);
    writeInt(out, bits);
}

void writeBytes(std::ostream& out, const QByteArray& bytes) {
    writeInt(out, static_cast<std::int32_t>(bytes.size()));
    out.write(bytes.constData(), bytes.size());
}

void writeString(std::ostream& out, const QString& text) {
    writeBytes(out, text.toUtf8());
}

void writeLayer(std::ostream& out, const Layer& layer) {
    writeString(out, layer.name());
    writeInt(out, layer.frameCount());
    writeBool(out, layer.isVisible());
    writeFloat(out, layer.opacity());
    writeInt(out, numberOf(layer.state()));
    for (int i = 0; i < layer.frameCount(); ++i) {
        const Frame& frame = *layer.frameAt(i);
        writeInt(out, frame.intTime());
        writeBytes(out, frame.pngBytes());
    }
}

/// Reads within a part of a stream. The first thing that is not there, or contradicts itself, makes
/// everything after it fail too.
class PartReader {
public:
    PartReader(std::istream& in, unsigned length) : in_(in), left_(length) {}

    bool isGood() const { return good_; }
    bool fail() {
        good_ = false;
        return false;
    }

    std::int32_t integer() {
        char bytes[4] = {};
        read(bytes, sizeof bytes);
        return good_ ? qFromLittleEndian<std::int32_t>(bytes) : 0;
    }

    bool boolean() {
        char byte = 0;
        read(&byte, 1);
        return byte == 1;
    }

    float decimal() {
        const std::int32_t bits = integer();
        float value;
        std::memcpy(&value, &bits, sizeof value);
        return value;
    }

    /// A number of things; each takes at least one byte, so loops over it end with the bytes.
    int count() {
        const std::int32_t value = integer();
        if (value < 0) {
            fail();
        }
        return good_ ? value : 0;
    }

    /// A count and that many bytes. The count may exceed the stream although it fits the part:
    /// memory grows only as bytes really come.
    QByteArray bytes() {
        int missing = count();
        if (static_cast<unsigned>(missing) > left_) {
            fail();
        }
        QByteArray result;
        while (good_ && missing > 0) {
            constexpr int piece = 1 << 20;
            const int now = std::min(missing, piece);
            const auto before = static_cast<int>(result.size());
            result.resize(before + now);
            read(result.data() + before, static_cast<unsigned>(now));
            missing -= now;
        }
        return good_ ? result : QByteArray();
    }

    QString string() { return QString::fromUtf8(bytes()); }

    /// Whatever the contents were, the stream stands behind the part afterwards.
    void skipRest() {
        if (left_ > 0 && in_) {
            in_.ignore(left_);
            if (static_cast<unsigned>(in_.gcount()) < left_) {
                good_ = false;
            }
        }
        left_ = 0;
    }

private:
    void read(char* to, unsigned size) {
        if (!good_ || size > left_) {
            good_ = false;
            return;
        }
        in_.read(to, size);
        left_ -= static_cast<unsigned>(in_.gcount());
        if (!in_) {
            good_ = false;
        }
    }

    std::istream& in_;
    unsigned left_;
    bool good_ = true;
};

void readFrame(PartReader& reader, Layer& layer) {
    const std::int32_t time = reader.integer();
    const QByteArray png = reader.bytes();
    if (reader.isGood() && pngLoads(png)) {
        layer.addFrame(Frame::fromPng(fromIntTime(time), png));
    }
}

void readLayer(PartReader& reader, LayerManager& manager, const QString& camera) {
    const QString name = reader.string();
    const std::int32_t frameCount = reader.integer();
    if (frameCount < 0) {
        // The mark of a layer that could not be written; anything else is damage.
        if (name != QStringLiteral("UNKNOWN")) {
            reader.fail();
        }
        return;
    }
    const bool visible = reader.boolean();
    const float opacity = reader.decimal();
    const std::int32_t state = reader.integer();
    if (!reader.isGood()) {
        return;
    }
    auto owned = std::make_unique<Layer>(name);
    Layer& layer = *owned;
    layer.setVisible(visible);
    layer.setOpacity(opacity);
    layer.setState(layerStateOf(state).value_or(LayerState::Animated));
    manager.insertLayer(camera, -1, std::move(owned));
    for (int i = 0; i < frameCount && reader.isGood(); ++i) {
        readFrame(reader, layer);
    }
}

void readCamera(PartReader& reader, LayerManager& manager) {
    const QString camera = reader.string();
    const int layerCount = reader.count();
    const std::int32_t activeIndex = reader.integer();
    for (int i = 0; i < layerCount && reader.isGood(); ++i) {
        readLayer(reader, manager, camera);
    }
    if (reader.isGood() && activeIndex >= 0 && activeIndex < manager.cameraLayerCount(camera)) {
        manager.setActiveLayer(camera, activeIndex, true);
    }
}

void readDocument(PartReader& reader, LayerManager& manager) {
    reader.integer(); // version: every one so far has this form
    if (reader.boolean()) {
        manager.setMaster(true);
    }
    const QString currentCamera = reader.string();
    const int cameraCount = reader.count();
    for (int i = 0; i < cameraCount && reader.isGood(); ++i) {
        readCamera(reader, manager);
    }
    if (reader.isGood() && !currentCamera.isEmpty()) {
        manager.setCurrentCamera(currentCamera);
    }
}

} // namespace

MStatus writeBinary(const LayerManager& manager, std::ostream& out) {
    writeInt(out, kFormatVersion);
    writeBool(out, manager.isMaster());
    writeString(out, manager.currentCamera());
    const QStringList cameras = manager.cameras();
    writeInt(out, static_cast<std::int32_t>(cameras.size()));
    for (const QString& camera : cameras) {
        const int count = manager.cameraLayerCount(camera);
        writeString(out, camera);
        writeInt(out, count);
        writeInt(out, manager.activeLayerIndex(camera));
        for (int i = 0; i < count; ++i) {
            writeLayer(out, *manager.layer(camera, i));
        }
    }
    return out ? MS::kSuccess : MS::kFailure;
}

MStatus readBinary(LayerManager& manager, std::istream& in, unsigned length) {
    const ChangeGroup oneChange;
    PartReader reader(in, length);
    readDocument(reader, manager);
    reader.skipRest();
    return reader.isGood() && in ? MS::kSuccess : MS::kFailure;
}

} // namespace vellum::layer_data
