#include "document/Changes.h"
#include "document/IntTime.h"
#include "document/LayerDataFormat.h"
#include "document/LayerDataLosses.h"
#include "document/LayerManager.h"
#include "tools/raster/PngCheck.h"

#include <QtEndian>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <istream>
#include <limits>
#include <ostream>
#include <vector>

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
    std::int32_t bits = 0;
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

constexpr char kPngSignature[] = "\x89PNG\r\n\x1a\n";
constexpr int kSignatureSize = sizeof kPngSignature - 1;
constexpr int kFrameHeadSize = 8;  // time and number of bytes
constexpr int kLayerTailSize = 13; // what follows the name of a layer

/// Reads within a part of a stream. The first thing that is not there, or contradicts itself, makes
/// everything after it fail too; what was read since the last mark can then be taken back.
class PartReader {
public:
    PartReader(std::istream& in, unsigned length) : in_(in), left_(length) {}

    bool isGood() const { return good_; }
    bool fail() {
        good_ = false;
        return false;
    }
    unsigned left() const { return left_; }

    void mark() { sinceMark_.clear(); }

    /// What was read since the mark and all that is left of the part.
    QByteArray takeBack() {
        QByteArray all;
        for (const QByteArray& piece : sinceMark_)
            all += piece;
        mark();
        in_.clear();
        good_ = true;
        constexpr unsigned piece = 1 << 20;
        while (good_ && left_ > 0) {
            const auto before = static_cast<int>(all.size());
            const unsigned now = std::min(left_, piece);
            all.resize(before + static_cast<int>(now));
            in_.read(all.data() + before, now);
            all.resize(before + static_cast<int>(in_.gcount()));
            left_ -= now;
            good_ = bool(in_);
        }
        mark();
        good_ = false;
        return all;
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
        float value = 0.0F;
        std::memcpy(&value, &bits, sizeof value);
        return value;
    }

    /// A number of things that take at least so many bytes each.
    int count(unsigned smallest) {
        const std::int32_t value = integer();
        if (value < 0 || static_cast<unsigned>(value) > left_ / smallest)
            fail();
        return good_ ? value : 0;
    }

    /// A count and that many bytes. The count may exceed the stream although it fits the part:
    /// memory grows only as bytes really come.
    QByteArray bytes() {
        int missing = count(1);
        QByteArray result;
        while (good_ && missing > 0) {
            constexpr int piece = 1 << 20;
            const int now = std::min(missing, piece);
            const auto before = static_cast<int>(result.size());
            result.resize(before + now);
            readTo(result.data() + before, static_cast<unsigned>(now));
            missing -= now;
        }
        sinceMark_.push_back(result);
        return good_ ? result : QByteArray();
    }

    /// Anything but UTF-8 is no text but something else whose length was misread.
    QString string() {
        const QByteArray utf8 = bytes();
        QString text = QString::fromUtf8(utf8);
        if (text.toUtf8() != utf8)
            fail();
        return text;
    }

private:
    void read(char* to, unsigned size) {
        const unsigned before = left_;
        readTo(to, size);
        sinceMark_.push_back(QByteArray(to, static_cast<int>(before - left_)));
    }

    void readTo(char* to, unsigned size) {
        if (!good_ || size > left_) {
            good_ = false;
            return;
        }
        in_.read(to, size);
        left_ -= static_cast<unsigned>(in_.gcount());
        if (!in_)
            good_ = false;
    }

    std::istream& in_;
    unsigned left_;
    bool good_ = true;
    std::vector<QByteArray> sinceMark_;
};

/// Where the picture that begins at `at` ends; -1 when its parts do not lead to an end.
int endOfPicture(const QByteArray& bytes, int at) {
    int part = at + kSignatureSize;
    while (bytes.size() - part >= 12) {
        const auto length = qFromBigEndian<quint32>(bytes.constData() + part);
        if (length > static_cast<quint32>(bytes.size() - part - 12))
            return -1;
        const bool isLast = std::memcmp(bytes.constData() + part + 4, "IEND", 4) == 0;
        part += 12 + static_cast<int>(length);
        if (isLast)
            return part;
    }
    return -1;
}

/// Finds the drawings in what is left of damaged data. Each picture tells where it begins and ends;
/// right before it stand its time and size, and before the first of a layer the layer's head.
class Salvage {
public:
    Salvage(const QByteArray& bytes, LayerManager& manager, QString camera, Layer* layer)
        : bytes_(bytes), manager_(manager), camera_(std::move(camera)), layer_(layer) {}

    /// `atHead`: the damage is in the head of a camera or layer, not among the frames of one.
    void run(bool atHead) {
        for (int at = find(0); at >= 0; at = find(behind_)) {
            const int start = at - kFrameHeadSize;
            if (start > behind_ || !layer_)
                chooseLayer(start, atHead);
            takeFrame(at, start);
            atHead = false;
        }
    }

private:
    int find(int from) const {
        return static_cast<int>(
            bytes_.indexOf(QByteArray::fromRawData(kPngSignature, kSignatureSize), from));
    }
    std::int32_t integer(int at) const {
        return qFromLittleEndian<std::int32_t>(bytes_.constData() + at);
    }

    /// A text that ends `tail` bytes before `end`; its place in `start`.
    bool textBefore(int end, int tail, QString& text, int& start) const {
        constexpr int longest = 4096;
        for (int length = 0; length <= longest; ++length) {
            start = end - tail - length - 4;
            if (start < behind_)
                return false;
            if (integer(start) == length) {
                text = QString::fromUtf8(bytes_.mid(start + 4, length));
                return !text.contains(QChar::ReplacementCharacter);
            }
        }
        return false;
    }

    /// The layer whose head ends at `end`; with its camera, when that has its head before it.
    bool readHead(int end) {
        QString name;
        int start = 0;
        if (!textBefore(end, kLayerTailSize, name, start))
            return false;
        const int tail = end - kLayerTailSize;
        const auto visible = static_cast<unsigned char>(bytes_.at(tail + 4));
        const std::int32_t bits = integer(tail + 5);
        float opacity = 0.0F;
        std::memcpy(&opacity, &bits, sizeof opacity);
        const auto state = layerStateOf(integer(tail + 9));
        if (visible > 1 || !(opacity >= 0.0F && opacity <= 1.0F) || !state)
            return false;
        QString camera;
        int cameraStart = 0;
        if (textBefore(start, 8, camera, cameraStart) && integer(start - 8) > 0 &&
            integer(start - 4) >= -1 && integer(start - 4) < integer(start - 8)) {
            camera_ = camera;
        }
        makeLayer(name);
        layer_->setVisible(visible == 1);
        layer_->setOpacity(opacity);
        layer_->setState(*state);
        return true;
    }

    void chooseLayer(int start, bool atHead) {
        if (!readHead(start) && (atHead || !layer_))
            makeLayer(manager_.uniqueLayerName(recoveredLayerName()));
    }

    void makeLayer(const QString& name) {
        auto made = std::make_unique<Layer>(name);
        layer_ = made.get();
        manager_.insertLayer(camera_, -1, std::move(made));
    }

    void takeFrame(int at, int start) {
        const int end = endOfPicture(bytes_, at);
        const bool isWhole = end >= 0 && start >= behind_;
        const QByteArray png = isWhole ? canvasPng(bytes_.mid(at, end - at)) : QByteArray();
        if (!png.isEmpty()) {
            keepFrame(*layer_, Frame::fromPng(fromIntTime(integer(start)), png));
        } else {
            lossOfPicture(*layer_, layer_->frameCount());
        }
        behind_ = end < 0 ? at + kSignatureSize : end;
    }

    const QByteArray bytes_;
    LayerManager& manager_;
    QString camera_;
    Layer* layer_;
    int behind_ = 0; ///< everything before is dealt with
};

/// The way through undamaged data. Where it fails, the rest is searched for drawings.
class DocumentReader {
public:
    DocumentReader(PartReader& reader, LayerManager& manager)
        : reader_(reader), manager_(manager) {}

    void read() {
        reader_.integer(); // version: every one so far has this form
        if (reader_.boolean())
            manager_.setMaster(true);
        const QString currentCamera = reader_.string();
        const int cameraCount = reader_.count(12);
        for (int i = 0; i < cameraCount && reader_.isGood(); ++i)
            readCamera();
        if (reader_.isGood())
            reader_.mark();
        if (!reader_.isGood() || reader_.left() > 0)
            salvage();
        tellOfDroppedFrames();
        if (reader_.isGood() ? !currentCamera.isEmpty()
                             : manager_.cameras().contains(currentCamera)) {
            manager_.setCurrentCamera(currentCamera);
        }
    }

private:
    void readCamera() {
        reader_.mark();
        layer_ = nullptr;
        camera_ = reader_.string();
        const int layerCount = reader_.count(8);
        const std::int32_t activeIndex = reader_.integer();
        for (int i = 0; i < layerCount && reader_.isGood(); ++i)
            readLayer();
        if (activeIndex >= 0 && activeIndex < manager_.cameraLayerCount(camera_))
            manager_.setActiveLayer(camera_, activeIndex, true);
    }

    void readLayer() {
        reader_.mark();
        const QString name = reader_.string();
        const std::int32_t frameCount = reader_.integer();
        if (frameCount < 0) {
            // The mark of a layer that could not be written; anything else is damage.
            if (name != QStringLiteral("UNKNOWN"))
                reader_.fail();
            return;
        }
        const bool visible = reader_.boolean();
        const float opacity = reader_.decimal();
        const std::int32_t state = reader_.integer();
        if (!reader_.isGood() ||
            static_cast<unsigned>(frameCount) > reader_.left() / kFrameHeadSize) {
            reader_.fail();
            return;
        }
        auto owned = std::make_unique<Layer>(name);
        layer_ = owned.get();
        layer_->setVisible(visible);
        layer_->setOpacity(opacity);
        layer_->setState(layerStateOf(state).value_or(LayerState::Animated));
        manager_.insertLayer(camera_, -1, std::move(owned));
        amongFrames_ = true;
        for (int i = 0; i < frameCount && reader_.isGood(); ++i)
            readFrame(i);
        amongFrames_ = !reader_.isGood();
    }

    void readFrame(int ordinal) {
        reader_.mark();
        const std::int32_t time = reader_.integer();
        const QByteArray png = reader_.bytes();
        if (!reader_.isGood())
            return;
        const bool isOne =
            png.isEmpty() || (png.startsWith(kPngSignature) && endOfPicture(png, 0) == png.size());
        if (!isOne) { // its size is wrong, or this is no frame at all
            reader_.fail();
            return;
        }
        const QByteArray own = canvasPng(png);
        if (own.isEmpty()) {
            lossOfPicture(*layer_, ordinal);
        } else {
            keepFrame(*layer_, Frame::fromPng(fromIntTime(time), own));
        }
    }

    void salvage() {
        loss(reader_.isGood() ? QStringLiteral("Unexpected data behind the last layer")
                              : QStringLiteral("Damaged layer data; the drawings that are whole "
                                               "are kept"));
        Salvage(reader_.takeBack(), manager_, camera_, layer_).run(!amongFrames_);
    }

    PartReader& reader_;
    LayerManager& manager_;
    QString camera_;
    Layer* layer_ = nullptr;   ///< the last one made for the camera
    bool amongFrames_ = false; ///< of that layer
};

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
        for (int i = 0; i < count; ++i)
            writeLayer(out, *manager.layer(camera, i));
    }
    return out ? MS::kSuccess : MS::kFailure;
}

MStatus readBinary(LayerManager& manager, std::istream& in, unsigned length) {
    const ChangeGroup oneChange;
    PartReader reader(in, length);
    DocumentReader(reader, manager).read();
    return reader.isGood() && in ? MS::kSuccess : MS::kFailure;
}

} // namespace vellum::layer_data
