// Forms of a frame: bytes that stay valid, pictures that are given back within the budget.
#include "document/Drawing.h"
#include "document/FrameCache.h"
#include "document/IntTime.h"
#include "support/Sure.h"
#include "tools/raster/PngCodec.h"

#include <gtest/gtest.h>

using namespace vellum;
using drawing::CleanScene;
using support::sure;

// The linker gives calls of imageToPng to the first of these, and calls of the second to it
// (--wrap in CMakeLists.txt): nothing else lets an encoder fail that writes to memory.
namespace {
bool encodingFails = false;
}
void encodeUnlessItFails(const QImage& image, QByteArray& bytes) asm(
    "__wrap__ZN6vellum10imageToPngERK6QImageR10QByteArray");
void reallyEncode(const QImage& image,
                  QByteArray& bytes) asm("__real__ZN6vellum10imageToPngERK6QImageR10QByteArray");

void encodeUnlessItFails(const QImage& image, QByteArray& bytes) {
    bytes.clear();
    if (!encodingFails)
        reallyEncode(image, bytes);
}

namespace {
class FailingEncoder {
public:
    FailingEncoder() { encodingFails = true; }
    ~FailingEncoder() { encodingFails = false; }
    FailingEncoder(const FailingEncoder&) = delete;
    FailingEncoder& operator=(const FailingEncoder&) = delete;
};
} // namespace

TEST(Frame, BytesStayTheSameObjectUntilThePictureChanges) {
    const CleanScene scene;
    QByteArray png;
    imageToPng(drawing::scribble(1), png);
    const auto frame = Frame::fromPng(fromIntTime(3), png);
    EXPECT_FALSE(frame->isDecoded());
    EXPECT_EQ(frame->image(), drawing::scribble(1));
    EXPECT_EQ(frame->pngBytes().constData(), png.constData());
    const auto copy = frame->copy();
    EXPECT_FALSE(copy->isDecoded());
    EXPECT_EQ(copy->pngBytes().constData(), png.constData());

    const quint64 revision = frame->revision();
    EXPECT_TRUE(frame->setImage(drawing::marked(7)));
    EXPECT_NE(frame->revision(), revision);
    frame->pack();
    EXPECT_EQ(drawing::markOf(frame->image()), 7);
    EXPECT_EQ(copy->image(), drawing::scribble(1)) << "a copy is independent";
    EXPECT_NE(copy->revision(), frame->revision());
}

TEST(Frame, BlankOnesAreWrittenAsATransparentCanvas) {
    const CleanScene scene;
    const Frame frame(fromIntTime(1));
    QImage written;
    ASSERT_TRUE(pngToImage(frame.pngBytes(), written));
    EXPECT_EQ(drawing::markOf(written), 0);
    EXPECT_EQ(drawing::markOf(frame.image()), 0);
    EXPECT_FALSE(Frame(fromIntTime(1)).setImage(QImage(10, 10, QImage::Format_RGBA8888)));
}

TEST(Frame, BytesThatDoNotDecodeAreReportedOnceAndKept) {
    const CleanScene scene;
    QByteArray png;
    imageToPng(drawing::scribble(1), png);
    png.truncate(png.size() / 2);
    const auto frame = Frame::fromPng(fromIntTime(12), png);
    drawing::Messages messages;
    const drawing::QuietQt quiet;
    EXPECT_EQ(drawing::markOf(frame->image()), 0);
    frame->pack();
    EXPECT_EQ(drawing::markOf(frame->image()), 0);
    EXPECT_EQ(messages.take(),
              (std::vector<std::string>{"[Vellum2] Failed to decode the drawing at frame 12"}));
    EXPECT_EQ(frame->pngBytes(), png);
}

TEST(Frame, APictureThatCannotBeEncodedStaysDecoded) {
    const CleanScene scene;
    FrameCache::packAll();
    const int before = FrameCache::decodedCount();
    FrameCache::setBudget(before + 1);
    auto frame = drawing::frameWith(1, drawing::marked(3));
    {
        const FailingEncoder failing;
        frame->pack();
        EXPECT_TRUE(frame->isDecoded());
        EXPECT_TRUE(frame->pngBytes().isEmpty());
        const auto other = drawing::frameWith(2, drawing::marked(4)); // asks for its place
        EXPECT_EQ(drawing::markOf(frame->image()), 3);
        EXPECT_EQ(drawing::markOf(other->image()), 4);
        EXPECT_EQ(drawing::markOf(frame->copy()->image()), 3) << "nor is a copy blank";
    }
    // Better a picture that is written late than none.
    EXPECT_FALSE(frame->pngBytes().isEmpty());
    frame->pack();
    EXPECT_FALSE(frame->isDecoded());
    EXPECT_EQ(drawing::markOf(frame->image()), 3);
}

TEST(Frame, MoreThanTheBudgetIsPackedLeastRecentlyUsedFirst) {
    const CleanScene scene;
    FrameCache::packAll();
    const int before = FrameCache::decodedCount();
    FrameCache::setBudget(before + 4);
    std::vector<std::unique_ptr<Frame>> frames;
    for (int i = 0; i < 10; ++i) {
        frames.push_back(drawing::frameWith(i, drawing::marked(i + 1)));
    }
    const auto decoded = [&] {
        std::string pattern;
        for (const auto& frame : frames) {
            pattern += frame->isDecoded() ? 'D' : '.';
        }
        return pattern;
    };
    EXPECT_EQ(decoded(), "......DDDD");
    frames[6]->image();
    frames[0]->image();
    EXPECT_EQ(decoded(), "D.....D.DD") << "7 was used longest ago";
    const Frame::Hold hold = frames[8]->hold();
    FrameCache::packAll();
    EXPECT_EQ(decoded(), "........D.") << "what is on display stays";
    FrameCache::setBudget(before + 1);
    frames[1]->image();
    EXPECT_EQ(decoded(), ".D......D.") << "and is not paid for by what is being used";
    for (int i = 0; i < 10; ++i) {
        EXPECT_EQ(drawing::markOf(frames[static_cast<std::size_t>(i)]->image()), i + 1);
    }
    frames.clear();
    EXPECT_EQ(FrameCache::decodedCount(), before);
}

TEST(Frame, APictureHandedOutOutlivesItsForm) {
    const CleanScene scene;
    const auto frame = drawing::frameWith(1, drawing::marked(3));
    const QImage share = frame->image();
    frame->pack();
    EXPECT_EQ(drawing::markOf(share), 3);
    const QImage again = frame->image();
    frame->setImage(drawing::marked(4));
    EXPECT_EQ(drawing::markOf(again), 3);
}

TEST(Document, ALongFilmShownFrameByFrameKeepsToTheBudget) {
    const CleanScene scene;
    FrameCache::packAll();
    FrameCache::setBudget(8);
    LayerManager manager;
    std::vector<int> times;
    for (int time = 1; time <= 30; ++time) {
        times.push_back(time);
    }
    manager.insertLayer("shotCam", 0, drawing::layerWith("A", times, 1));
    manager.insertLayer("shotCam", 1, drawing::layerWith("B", {1}, 500));
    for (int time = 1; time <= 30; ++time) {
        SCOPED_TRACE("time " + std::to_string(time));
        drawing::goTo(manager, time);
        manager.compositeCamera("shotCam");
        EXPECT_LE(FrameCache::decodedCount(), 8);
        EXPECT_TRUE(sure(sure(manager.layer("shotCam", 0)).currentFrame()).isHeld());
        EXPECT_TRUE(sure(sure(manager.layer("shotCam", 1)).frameAt(0)).isDecoded());
    }
}

TEST(Document, OnlyTheCamerasShownLastKeepTheirPicturesDecoded) {
    const CleanScene scene;
    LayerManager manager;
    const auto camera = [](int i) { return QStringLiteral("camera%1").arg(i); };
    constexpr int cameras = 7;
    for (int i = 0; i < cameras; ++i)
        manager.insertLayer(camera(i), 0, drawing::layerWith("A", {1}, i + 1));
    drawing::goTo(manager, 1);
    for (int i = 0; i < cameras; ++i)
        manager.compositeCamera(camera(i));
    const auto decoded = [&] {
        FrameCache::packAll();
        std::string pattern;
        for (int i = 0; i < cameras; ++i)
            pattern += sure(sure(manager.layer(camera(i), 0)).frameAt(0)).isDecoded() ? 'D' : '.';
        return pattern;
    };
    EXPECT_EQ(decoded(), "...DDDD") << "as many as Maya has panels at once";
    manager.setLayerOpacity(camera(1), 0, 0.5F);
    manager.compositeCamera(camera(1));
    EXPECT_EQ(decoded(), ".D..DDD") << "the one shown longest ago goes";
}
