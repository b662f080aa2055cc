// The document in scene files: both forms whole, every message, and hostile contents.
#include "document/BaseNodeLayerData.h"
#include "document/Drawing.h"
#include "document/FrameCache.h"
#include "document/IntTime.h"
#include "raster/ForeignPictures.h"
#include "support/Seed.h"
#include "support/Sure.h"
#include "tools/raster/PngCodec.h"

#include <maya/MArgList.h>
#include <maya/MString.h>

#include <cstring>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <locale>
#include <map>
#include <random>
#include <sstream>

using namespace vellum;
using drawing::CleanScene;
using support::firstOf;
using support::sure;
using testing::ElementsAre;

namespace {

using Tokens = std::vector<std::string>;

/// What a scene file reader makes of text: words, and strings without their escapes.
Tokens tokens(const std::string& text) {
    Tokens result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (std::isspace(static_cast<unsigned char>(text[i]))) {
            continue;
        }
        std::string token;
        if (text[i] == '"') {
            while (text.at(++i) != '"') {
                char c = text[i];
                if (c == '\\') {
                    c = text.at(++i);
                    c = c == 'n' ? '\n' : c == 't' ? '\t' : c == 'r' ? '\r' : c;
                }
                token += c;
            }
        } else {
            while (i < text.size() && !std::isspace(static_cast<unsigned char>(text[i]))) {
                token += text[i++];
            }
        }
        result.push_back(token);
    }
    return result;
}

MStatus read(BaseNodeLayerData& data, const Tokens& words) {
    MArgList args;
    args.addArg(MString("before")); // what stands before the data's own tokens is not theirs
    for (const std::string& word : words) {
        args.addArg(MString(word.c_str()));
    }
    unsigned index = 1;
    const MStatus status = data.readASCII(args, index);
    EXPECT_LE(index, args.length());
    if (status == MS::kSuccess) {
        EXPECT_EQ(index, args.length());
    }
    return status;
}

std::string ascii(BaseNodeLayerData& data) {
    std::ostringstream out;
    EXPECT_EQ(data.writeASCII(out), MS::kSuccess);
    return out.str();
}

std::string binary(BaseNodeLayerData& data) {
    std::ostringstream out;
    EXPECT_EQ(data.writeBinary(out), MS::kSuccess);
    return out.str();
}

/// Reads `bytes` as the data, with other bytes behind them that are not the data's.
MStatus readBytes(BaseNodeLayerData& data, const std::string& bytes) {
    std::istringstream in(bytes + "behind");
    const MStatus status = data.readBinary(in, static_cast<unsigned>(bytes.size()));
    std::string rest;
    in >> rest;
    EXPECT_EQ(rest, "behind") << "the reader left its part of the stream";
    return status;
}

/// Everything that files keep, as text.
std::string described(const LayerManager& manager) {
    std::ostringstream out;
    out << manager.isMaster() << '|' << manager.currentCamera().toStdString() << '\n';
    for (const QString& camera : manager.cameras()) {
        out << camera.toStdString() << ' ' << manager.activeLayerIndex(camera) << '\n';
        for (int i = 0; i < manager.cameraLayerCount(camera); ++i) {
            const Layer& layer = *manager.layer(camera, i);
            out << "  " << layer.name().toStdString() << ' ' << layer.isVisible() << ' '
                << layer.opacity() << ' ' << numberOf(layer.state()) << " at "
                << layer.currentIndex() << ':';
            for (int f = 0; f < layer.frameCount(); ++f) {
                out << ' ' << layer.frameAt(f)->intTime() << '='
                    << drawing::markOf(layer.frameAt(f)->image());
            }
            out << '\n';
        }
    }
    return out.str();
}

const char* const kNames[] = {
    "plain",        "two words", "say \"hi\"", "back\\slash", "line\nbreak\ttab", "Карандаш 鉛筆 ✎",
    "\"; quit; \"", "`evil`$x",  "",           "UNKNOWN"};

void fill(BaseNodeLayerData& data) {
    data.createLayerManager();
    LayerManager& manager = *data.layerManager();
    manager.setMaster(true);
    int mark = 1;
    for (int i = 0; i < 10; ++i) {
        const QString name = QString::fromUtf8(kNames[i]);
        const QString camera = QString::fromUtf8(kNames[i / 2]);
        auto layer = drawing::layerWith(name, {-3 - i, 0, 2 + i}, mark);
        layer->addFrameAt(100);
        layer->setOpacity(0.125F * static_cast<float>(i % 9));
        layer->setState(LayerState(i % 3));
        layer->setVisible(i % 4 != 0);
        manager.insertLayer(camera, -1, std::move(layer));
        mark += 10;
    }
    manager.insertLayer("plain", -1, drawing::layerWith("plain", {}, 1)); // a name used before
    manager.setActiveLayer("plain", 1, true);
    manager.setCurrentCamera(QString::fromUtf8(kNames[2]));
}

std::string hexOf(const QImage& image) {
    QByteArray png;
    imageToPng(image, png);
    return png.toHex().toStdString();
}

std::string int32(int value) {
    std::string bytes(4, '\0');
    std::memcpy(bytes.data(), &value, 4);
    return bytes;
}

} // namespace

TEST(LayerData, BothFormsKeepEverything) {
    const CleanScene scene;
    BaseNodeLayerData data;
    fill(data);
    const std::string before = described(*data.layerManager());
    BaseNodeLayerData fromAscii;
    ASSERT_EQ(read(fromAscii, tokens(ascii(data))), MS::kSuccess);
    EXPECT_EQ(described(*fromAscii.layerManager()), before);
    BaseNodeLayerData fromBinary;
    ASSERT_EQ(readBytes(fromBinary, binary(data)), MS::kSuccess);
    EXPECT_EQ(described(*fromBinary.layerManager()), before);
    EXPECT_EQ(ascii(fromBinary), ascii(data));
    EXPECT_EQ(binary(fromAscii), binary(data));
}

TEST(LayerData, HasExactlyThisForm) {
    const CleanScene scene;
    BaseNodeLayerData data;
    data.createLayerManager();
    EXPECT_EQ(ascii(data), "1 0 \"\" 0\n\t\t");
    EXPECT_EQ(binary(data), int32(1) + '\0' + int32(0) + int32(0));

    LayerManager& manager = *data.layerManager();
    manager.setMaster(true);
    auto layer = drawing::layerWith("Ink", {7}, 5);
    layer->setOpacity(0.5F);
    layer->setState(LayerState::Static);
    manager.insertLayer("cam", -1, std::move(layer));
    std::ostringstream time;
    time << fromIntTime(7);
    const std::string hex = hexOf(drawing::marked(5));
    EXPECT_EQ(ascii(data), "1 1 \"cam\" 1\n\t\t\"cam\" 1 0\n\t\t\"Ink\" 1 1 0.5 1\n\t\t" +
                               time.str() + " \"" + hex + "\"\n\t\t");
    const QByteArray png = QByteArray::fromHex(QByteArray::fromStdString(hex));
    const std::string half("\0\0\0\x3F", 4); // 0.5 in single precision
    EXPECT_EQ(binary(data), int32(1) + '\1' + int32(3) + "cam" + int32(1) + int32(3) + "cam" +
                                int32(1) + int32(0) + int32(3) + "Ink" + int32(1) + '\1' + half +
                                int32(1) + int32(7) + int32(png.size()) + png.toStdString());
}

TEST(LayerData, WritingNeitherDecodesNorEncodesWhatDidNotChange) {
    const CleanScene scene;
    BaseNodeLayerData data;
    fill(data);
    BaseNodeLayerData opened;
    ASSERT_EQ(readBytes(opened, binary(data)), MS::kSuccess);
    LayerManager& manager = *opened.layerManager();
    const Frame& first = sure(sure(manager.layer("plain", 0)).frameAt(0));
    const char* bytes = first.pngBytes().constData();
    binary(opened);
    ascii(opened);
    for (const QString& camera : manager.cameras()) {
        for (int i = 0; i < manager.cameraLayerCount(camera); ++i) {
            for (int f = 0; f < sure(manager.layer(camera, i)).frameCount(); ++f) {
                EXPECT_FALSE(sure(sure(manager.layer(camera, i)).frameAt(f)).isDecoded())
                    << camera.toStdString() << ", layer " << i << ", frame " << f;
            }
        }
    }
    EXPECT_EQ(first.pngBytes().constData(), bytes);
}

TEST(LayerData, ForeignPicturesAreWrittenBackInOurOwnForm) {
    const CleanScene scene;
    const QImage canvas = drawing::marked(3);
    const std::vector<drawing::ForeignPicture> kinds = drawing::foreignPictures(canvas);
    BaseNodeLayerData data;
    data.createLayerManager();
    auto owned = std::make_unique<Layer>("Ink");
    Layer& layer = *owned;
    data.layerManager()->insertLayer("cam", -1, std::move(owned));
    int time = 1;
    for (const auto& one : kinds)
        layer.addFrame(Frame::fromPng(fromIntTime(time++), one.png));
    layer.addFrame(Frame::fromPng(fromIntTime(time), drawing::encoded(canvas)));
    BaseNodeLayerData fromWords;
    ASSERT_EQ(read(fromWords, tokens(ascii(data))), MS::kSuccess);
    // In bytes a picture ends with itself.
    layer.takeFrameAt(time - 1);
    BaseNodeLayerData fromBytes;
    ASSERT_EQ(readBytes(fromBytes, binary(data)), MS::kSuccess);

    for (BaseNodeLayerData* opened : {&fromWords, &fromBytes}) {
        SCOPED_TRACE(opened == &fromWords ? "words" : "bytes");
        const Layer& shown = *opened->layerManager()->layer("cam", 0);
        std::string words = ascii(*opened);
        for (std::size_t i = 0; i < kinds.size(); ++i) {
            SCOPED_TRACE(kinds[i].kind);
            const Frame* frame = shown.frameAtMoment(fromIntTime(static_cast<int>(i) + 1));
            if (!frame) {
                EXPECT_STREQ(kinds[i].kind, "bytes after the end");
                continue;
            }
            EXPECT_EQ(frame->image(),
                      QImage::fromData(kinds[i].png).convertToFormat(QImage::Format_RGBA8888));
            EXPECT_EQ(words.find(kinds[i].png.toHex().toStdString()), std::string::npos);
            EXPECT_NE(words.find(hexOf(frame->image())), std::string::npos);
        }
        EXPECT_NE(words.find(hexOf(canvas)), std::string::npos) << "our own is as it was";
    }
}

TEST(LayerData, NumbersDoNotDependOnTheLocale) {
    struct Commas : std::numpunct<char> {
        char do_decimal_point() const override { return ','; }
        char do_thousands_sep() const override { return '.'; }
        std::string do_grouping() const override { return "\1"; }
    };
    const CleanScene scene;
    BaseNodeLayerData data;
    fill(data);
    std::ostringstream out;
    const std::locale commas(std::locale::classic(), new Commas);
    out.imbue(commas);
    data.writeASCII(out);
    EXPECT_EQ(out.str(), ascii(data));
    EXPECT_EQ(out.getloc(), commas);
}

TEST(LayerData, WithoutADocumentOrAStream) {
    BaseNodeLayerData data;
    std::ostringstream out;
    EXPECT_EQ(data.writeASCII(out), MS::kFailure);
    EXPECT_EQ(out.str(), "-1");
    EXPECT_EQ(data.writeBinary(out), MS::kFailure);
    EXPECT_EQ(out.str(), "-1");
    EXPECT_EQ(read(data, {}), MS::kFailure);
    out.setstate(std::ios::badbit);
    EXPECT_EQ(data.writeBinary(out), MS::kFailure);
    EXPECT_EQ(data.typeId(), MTypeId(0x11A887));
    EXPECT_EQ(data.name(), MString("rvLayerData"));
}

TEST(LayerData, CopiesShareOneDocument) {
    BaseNodeLayerData data;
    data.createLayerManager();
    BaseNodeLayerData copy;
    copy.copy(data);
    copy.layerManager()->addLayer("cam", 0, "A");
    EXPECT_EQ(data.layerManager()->layerName("cam", 0), "A");
    const auto document = data.layerManager();
    data.createLayerManager();
    EXPECT_EQ(data.layerManager(), document);
}

TEST(LayerData, EachBrokenTokenHasItsMessage) {
    const CleanScene scene;
    const std::string hex = hexOf(drawing::marked(1));
    const Tokens good = {"1",   "1", "cam", "1",   "cam", "1",     "0",
                         "Ink", "1", "1",   "0.5", "0",   "3film", hex};
    BaseNodeLayerData whole;
    ASSERT_EQ(read(whole, good), MS::kSuccess);
    ASSERT_EQ(sure(whole.layerManager()->layer("cam", 0)).frameTimes(), QList<int>{3});
    const struct {
        std::size_t at;
        const char* bad; // null: the tokens end here
        std::string message;
    } cases[] = {
        {0, "0", "Invalid version"},
        {0, "-1", "Invalid version"},
        {0, "x", "Invalid version"},
        {1, "x", "Failed to get master (2)"},
        {1, nullptr, "Failed to get master (2)"},
        {3, "many", "Invalid layer count (4)"},
        {3, "-2", "Invalid layer count (4)"},
        {3, nullptr, "Invalid layer count (4)"},
        {4, nullptr, "Invalid camera name (5)"},
        {3, "2147483647", "Invalid camera name (15)"},
        {5, "x", "Invalid layer count (6)"},
        {5, "-1", "Invalid layer count (6)"},
        {6, "x", "Invalid active layer index (7)"},
        {7, nullptr, "Invalid layer name (8)"},
        {5, "2000000000", "Invalid layer name (15)"},
        {8, "x", "Invalid frame count (9)"},
        {8, "-1", "Invalid frame count (9)"},
        {9, "maybe", "Invalid layer visibility (10)"},
        {10, "x", "Invalid opacity (11)"},
        {11, "x", "Invalid layer state (12)"},
        {11, "3", "Invalid layer state (12)"},
        {11, "-1", "Invalid layer state (12)"},
        {12, "noon", "Invalid frame time (13)"},
        {8, "2000000000", "Invalid frame time (15)"},
        {13, nullptr, "Invalid draw data (14)"},
    };
    drawing::Messages messages;
    for (const auto& one : cases) {
        Tokens words = good;
        if (one.bad) {
            words[one.at] = one.bad;
        } else {
            words.resize(one.at);
        }
        BaseNodeLayerData data;
        EXPECT_EQ(read(data, words), MS::kFailure) << one.message;
        EXPECT_EQ(firstOf(messages.take()), "[Vellum2] " + one.message);
        // The one drawing, when it is whole, comes back whatever else is damaged.
        const bool isRefused = one.at == 0 && one.message == "Invalid version" && one.bad[0] != 'x';
        const bool isWhole = one.bad && one.at != 12 && !isRefused;
        const LayerManager& manager = *data.layerManager();
        ASSERT_EQ(manager.cameraLayerCount("cam"), isWhole || one.at >= 12) << one.message;
        if (manager.cameraLayerCount("cam") == 1) {
            EXPECT_EQ(sure(manager.layer("cam", 0)).frameCount(), isWhole) << one.message;
            EXPECT_EQ(sure(manager.layer("cam", 0)).name(), "Ink") << one.message;
        }
    }
}

TEST(LayerData, OddContentsAreReadAsFarAsTheyMakeSense) {
    const CleanScene scene;
    const drawing::QuietQt quiet;
    drawing::Messages messages;
    const std::string good = hexOf(drawing::marked(1));
    const std::string second = hexOf(drawing::marked(2));
    const std::string small = hexOf(drawing::marked(3).copy(0, 0, 512, 512));
    const std::string dropped =
        "[Vellum2] Drawings dropped, because their layer has another one at "
        "their frame: 1 (In at 3)";
    BaseNodeLayerData data;
    EXPECT_EQ(read(data, {"9",     "0",   "",      "1",  "cam",   "3",  "99",    "UNKNOWN",
                          "-1",    "In",  "5",     "1",  "1.5",   "1",  "3film", good,
                          "4film", small, "5film", "",   "6film", "zz", "3film", second,
                          "In",    "0",   "0",     "-7", "2"}),
              MS::kSuccess);
    EXPECT_THAT(messages.take(), ElementsAre("[Vellum2] Skipping invalid layer",
                                             "[Vellum2] Failed to load draw data: In (1)",
                                             "[Vellum2] Failed to load draw data: In (2)",
                                             "[Vellum2] Failed to load draw data: In (3)",
                                             "[Vellum2] Invalid layer index: 99", dropped));
    EXPECT_EQ(described(*data.layerManager()),
              "0|cam\ncam 0\n  In 1 1 1 at -1: 3=1\n  In 0 0 2 at -1:\n");

    // The same in bytes; a state out of range is animated, and bytes left over are damage.
    const QByteArray png = QByteArray::fromHex(QByteArray::fromStdString(good));
    const QByteArray other = QByteArray::fromHex(QByteArray::fromStdString(small));
    const auto frame = [](int time, const QByteArray& bytes) {
        return int32(time) + int32(static_cast<int>(bytes.size())) + bytes.toStdString();
    };
    const std::string layer = int32(2) + "In" + int32(3) + '\1' + std::string("\0\0\xC0\x3F", 4) +
                              int32(3) + frame(3, png) + frame(4, other) + frame(3, png);
    BaseNodeLayerData fromBytes;
    EXPECT_EQ(readBytes(fromBytes, int32(0) + '\2' + int32(0) + int32(1) + int32(3) + "cam" +
                                       int32(2) + int32(99) + int32(7) + "UNKNOWN" + int32(-1) +
                                       layer + "more"),
              MS::kFailure);
    EXPECT_EQ(described(*fromBytes.layerManager()), "0|cam\ncam 0\n  In 1 1 0 at -1: 3=1\n");
    EXPECT_THAT(messages.take(),
                ElementsAre("[Vellum2] Failed to load draw data: In (1)",
                            "[Vellum2] Unexpected data behind the last layer", dropped));
}

TEST(LayerData, DrawingsThatMeetInACoarserUnitAreToldTogether) {
    const CleanScene scene;
    drawing::Messages messages;
    BaseNodeLayerData data;
    data.createLayerManager();
    std::vector<int> times;
    for (int time = 1; time <= 30; ++time)
        times.push_back(time);
    data.layerManager()->insertLayer("cam", -1, drawing::layerWith("Ink", {1, 2, 3, 4, 5, 6}, 1));
    data.layerManager()->insertLayer("cam", -1, drawing::layerWith("Alone", {1, 7}, 10));
    data.layerManager()->insertLayer("cam", -1, drawing::layerWith("Fill", times, 20));
    MTime::setUIUnit(MTime::k6FPS); // four of film's frames have one number
    BaseNodeLayerData fromBytes;
    EXPECT_EQ(readBytes(fromBytes, binary(data)), MS::kSuccess);
    BaseNodeLayerData fromWords;
    EXPECT_EQ(read(fromWords, tokens(ascii(data))), MS::kSuccess);
    const std::string told = "[Vellum2] Drawings dropped, because their layer has another one at "
                             "their frame: 26 (Ink at 0, 1; Fill at 0, 1, 2, 3, 4, 5, 6, 7)";
    EXPECT_THAT(messages.take(), ElementsAre(told, told));
    for (const BaseNodeLayerData* read : {&fromBytes, &fromWords}) {
        EXPECT_EQ(sure(read->layerManager()->layer("cam", 0)).frameTimes(), (QList<int>{0, 1}));
        EXPECT_EQ(sure(read->layerManager()->layer("cam", 1)).frameTimes(), (QList<int>{0, 1}));
        EXPECT_EQ(sure(read->layerManager()->layer("cam", 2)).frameCount(), 8);
    }
}

namespace {

/// Two cameras with two layers each and two drawings in each of those: marks 1 to 8.
void fillForDamage(BaseNodeLayerData& data) {
    data.createLayerManager();
    for (int i = 0; i < 4; ++i) {
        data.layerManager()->insertLayer(
            i < 2 ? "left" : "right", -1,
            drawing::layerWith(QStringLiteral("Layer %1").arg(i), {3, 7}, 1 + 2 * i));
    }
}

/// The drawings of a document by their bytes, with the name of their layer.
std::map<QByteArray, QString> pictures(const LayerManager& manager) {
    std::map<QByteArray, QString> found;
    for (const QString& camera : manager.cameras()) {
        for (int i = 0; i < manager.cameraLayerCount(camera); ++i) {
            const Layer& layer = *manager.layer(camera, i);
            for (int f = 0; f < layer.frameCount(); ++f) {
                found[layer.frameAt(f)->pngBytes()] = layer.name();
            }
        }
    }
    return found;
}

/// How many of the drawings are gone, or in a layer that is not theirs.
int missing(const LayerManager& manager, const std::map<QByteArray, QString>& all, bool anyLayer) {
    const std::map<QByteArray, QString> found = pictures(manager);
    return static_cast<int>(std::count_if(all.begin(), all.end(), [&](const auto& one) {
        const auto same = found.find(one.first);
        return same == found.end() || (!anyLayer && same->second != one.second);
    }));
}

} // namespace

TEST(LayerData, OneDamagedWordCostsOneDrawingAtMost) {
    const unsigned seed = support::seed();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    const CleanScene scene;
    const drawing::QuietQt quiet;
    BaseNodeLayerData data;
    fillForDamage(data);
    const Tokens words = tokens(ascii(data));
    const auto all = pictures(*data.layerManager());
    const auto isPicture = [](const std::string& word) { return word.size() > 100; };
    for (std::size_t at = 1; at < words.size(); ++at) {
        Tokens damaged = words;
        const auto here = damaged.begin() + static_cast<std::ptrdiff_t>(at);
        switch (random() % 5) {
        case 0:
            damaged.erase(here);
            break;
        case 1: // a quote within it, as the host's scanner reads that
            *here = words[at].substr(0, words[at].size() / 2);
            damaged.insert(here + 1, {words[at].substr(words[at].size() / 2), " "});
            break;
        case 2:
            *here = isPicture(words[at]) ? words[at].substr(0, words[at].size() - 40) : "?";
            break;
        case 3:
            damaged.insert(here, {"stray", "7"});
            break;
        default:
            *here = std::to_string(random() % 9);
        }
        BaseNodeLayerData salvaged;
        read(salvaged, damaged);
        EXPECT_LE(missing(*salvaged.layerManager(), all, true), 1) << at << " of " << words.size();
        // The words of a drawing say nothing about where others belong.
        if (isPicture(words[at])) {
            EXPECT_LE(missing(*salvaged.layerManager(), all, false), 1) << at;
        }
    }
    // A cut leaves everything before it.
    for (std::size_t length = 4; length < words.size(); length += 3) {
        BaseNodeLayerData cut;
        read(cut, Tokens(words.begin(), words.begin() + static_cast<std::ptrdiff_t>(length)));
        const auto whole = std::count_if(
            words.begin(), words.begin() + static_cast<std::ptrdiff_t>(length), isPicture);
        EXPECT_EQ(8 - missing(*cut.layerManager(), all, false), whole);
    }
}

TEST(LayerData, OneFlippedBitCostsOneDrawingAtMost) {
    const unsigned seed = support::seed();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    const CleanScene scene;
    const drawing::QuietQt quiet;
    drawing::Messages messages;
    BaseNodeLayerData data;
    fillForDamage(data);
    const std::string whole = binary(data);
    const auto all = pictures(*data.layerManager());
    std::vector<std::size_t> places; // most of them not within a picture
    bool inPicture = false;
    for (std::size_t i = 0; i < whole.size(); ++i) {
        inPicture = inPicture || whole.compare(i, 4, "\x89PNG") == 0;
        if (random() % (inPicture ? 3000 : 3) == 0) {
            places.push_back(i);
        }
        inPicture = inPicture && whole.compare(i - 3, 4, "\xAE\x42\x60\x82") != 0;
    }
    for (const std::size_t at : places) {
        std::string bytes = whole;
        bytes[at] ^= static_cast<char>(1 << random() % 8);
        BaseNodeLayerData salvaged;
        readBytes(salvaged, bytes);
        const int lost = missing(*salvaged.layerManager(), all, true);
        EXPECT_LE(lost, 1) << "byte " << at;
        // Nothing is lost in silence.
        if (lost > 0) {
            EXPECT_FALSE(messages.take().empty()) << "byte " << at;
        }
    }
}

TEST(LayerData, BytesCutOffAnywhereFailAndKeepWhatCameBefore) {
    const CleanScene scene;
    BaseNodeLayerData data;
    data.createLayerManager();
    data.layerManager()->insertLayer("cam", -1, drawing::layerWith("Ink", {1, 2}, 1));
    data.layerManager()->insertLayer("cam", -1, drawing::layerWith("Fill", {1}, 9));
    const std::string whole = binary(data);
    int layers = 0;
    for (std::size_t length = 0; length < whole.size(); length += length < 64 ? 1 : 997) {
        SCOPED_TRACE("length " + std::to_string(length));
        BaseNodeLayerData part;
        ASSERT_EQ(readBytes(part, whole.substr(0, length)), MS::kFailure) << length;
        EXPECT_GE(part.layerManager()->totalLayerCount(), layers);
        layers = part.layerManager()->totalLayerCount();

        BaseNodeLayerData shortStream; // the stream ends before the length it was given
        std::istringstream in(whole.substr(0, length));
        ASSERT_EQ(shortStream.readBinary(in, static_cast<unsigned>(whole.size())), MS::kFailure);
    }
    EXPECT_EQ(layers, 2);
}

TEST(LayerData, HostileCountsAndLengthsFailAtOnce) {
    const CleanScene scene;
    const std::string start = int32(1) + '\1';
    const std::string camera = start + int32(0) + int32(1) + int32(3) + "cam";
    const std::string layer = camera + int32(1) + int32(0) + int32(1) + "A";
    const std::string options = '\1' + int32(0) + int32(0);
    for (const int bad : {-1, -2147483647 - 1, 1000000, 2147483647}) {
        for (const std::string& bytes :
             {start + int32(bad), start + int32(0) + int32(bad), camera + int32(bad) + int32(0),
              (layer + int32(bad)).append(options),
              (layer + int32(1)).append(options) + int32(5) + int32(bad)}) {
            BaseNodeLayerData data;
            EXPECT_EQ(readBytes(data, bytes), MS::kFailure) << bad << " after " << bytes.size();
        }
    }
    // A length that the part could hold but the stream does not: nothing of that size is allocated.
    BaseNodeLayerData data;
    std::istringstream in(start + int32(2000000000) + "few");
    EXPECT_EQ(data.readBinary(in, 2100000000U), MS::kFailure);
}

TEST(LayerData, DamagedBytesNeverDoHarm) {
    const unsigned seed = support::seed();
    SCOPED_TRACE("seed " + std::to_string(seed));
    const CleanScene scene;
    const drawing::QuietQt quiet;
    std::mt19937 random(seed);
    BaseNodeLayerData data;
    data.createLayerManager();
    for (int i = 0; i < 4; ++i) {
        data.layerManager()->insertLayer(i < 2 ? "cam" : "other", -1,
                                         drawing::layerWith("Ink", {-1, 5}, 1 + 10 * i));
    }
    const std::string whole = binary(data);
    const Tokens words = tokens(ascii(data));
    for (int round = 0; round < 20; ++round) {
        SCOPED_TRACE("round " + std::to_string(round));
        std::string bytes = whole;
        Tokens damaged = words;
        for (int i = 0; i < 4; ++i) {
            bytes[random() % bytes.size()] ^= static_cast<char>(1 << random() % 8);
            std::string& word = damaged[random() % damaged.size()];
            if (!word.empty()) {
                word[random() % word.size()] = static_cast<char>(random() % 127 + 1);
            }
        }
        if (round % 3 == 0) {
            bytes.resize(random() % bytes.size());
            damaged.resize(random() % damaged.size());
        }
        BaseNodeLayerData fromBytes;
        readBytes(fromBytes, bytes);
        BaseNodeLayerData fromWords;
        read(fromWords, damaged);
        // Whatever came of it is a sound document.
        for (BaseNodeLayerData* read : {&fromBytes, &fromWords}) {
            BaseNodeLayerData again;
            ASSERT_EQ(readBytes(again, binary(*read)), MS::kSuccess);
        }
    }
}
