// The verdict on picture bytes equals what decoding them would say, and costs nothing for pictures
// of other sizes.
#include "raster/ForeignPictures.h"
#include "support/Seed.h"
#include "tools/raster/PngCheck.h"
#include "tools/raster/PngCodec.h"

#include <QImage>

#include <gtest/gtest.h>
#include <random>

using namespace vellum;
using drawing::encoded;
using drawing::forged;

namespace {

bool qtLoads(const QByteArray& bytes) {
    QImage image;
    return pngHeaderSize(bytes) == QSize(1024, 1024) && image.loadFromData(bytes, "PNG") &&
           image.size() == QSize(1024, 1024);
}

QByteArray rawRows(int rows, char filter) {
    return (QByteArray(1, filter) + QByteArray(4 * 1024, '\0')).repeated(rows);
}

} // namespace

TEST(PngCheck, ProvesOwnPicturesWithoutDecoding) {
    for (unsigned seed = 1; seed < 4; ++seed) {
        EXPECT_TRUE(pngProvenGood(encoded(drawing::scribble(seed)))) << "seed " << seed;
    }
    EXPECT_TRUE(pngProvenGood(encoded(drawing::marked(1))));
    EXPECT_TRUE(pngProvenGood(forged(1024, 1024, rawRows(1024, 4))));
}

TEST(PngCheck, TellsUnusualAndForgedPicturesAsDecodingDoes) {
    const drawing::QuietQt quiet;
    const QImage picture = drawing::scribble(1);
    const drawing::ForeignPicture cases[] = {
        {"empty", {}},
        {"other bytes", "not a picture at all, but long enough"},
        {"no pixels", forged(1024, 1024, {})},
        {"half the rows", forged(1024, 1024, rawRows(512, 0))},
        {"unknown filter", forged(1024, 1024, rawRows(1024, 5))},
        {"one column less", encoded(picture.copy(0, 0, 1023, 1024))},
        {"twice as high", encoded(QImage(1024, 2048, QImage::Format_RGBA8888))},
    };
    for (const auto& one : cases) {
        EXPECT_TRUE(canvasPng(one.png).isEmpty()) << one.kind;
        EXPECT_FALSE(qtLoads(one.png)) << one.kind;
    }
}

TEST(PngCheck, GivesForeignPicturesInItsOwnForm) {
    const QByteArray usual = encoded(drawing::scribble(1));
    EXPECT_EQ(canvasPng(usual).constData(), usual.constData());
    for (const auto& one : drawing::foreignPictures(drawing::scribble(1))) {
        SCOPED_TRACE(one.kind);
        const QByteArray own = canvasPng(one.png);
        EXPECT_NE(own, one.png);
        EXPECT_TRUE(pngProvenGood(own));
        const QImage read = QImage::fromData(own);
        EXPECT_EQ(read.convertToFormat(QImage::Format_RGBA8888),
                  QImage::fromData(one.png).convertToFormat(QImage::Format_RGBA8888));
        EXPECT_EQ(own, encoded(read));
    }
}

TEST(PngCheck, RefusesHugeClaimsAndBombsCheaply) {
    // Decoding the first would ask for 14 GB; inflating the second whole for 200 MB.
    EXPECT_TRUE(canvasPng(forged(60000, 60000, rawRows(10, 0))).isEmpty());
    const QByteArray bomb = forged(1024, 1024, QByteArray(200 << 20, '\0'));
    EXPECT_LT(bomb.size(), 1 << 20);
    EXPECT_FALSE(pngProvenGood(bomb));
}

TEST(PngCheck, AgreesWithDecodingOnDamagedPictures) {
    const unsigned seed = support::seed();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    const drawing::QuietQt quiet;
    const QByteArray good = encoded(drawing::scribble(seed));
    int refused = 0;
    for (int round = 0; round < 150; ++round) {
        QByteArray bytes = good;
        const auto anywhere = [&] { return static_cast<int>(random() % unsigned(bytes.size())); };
        switch (random() % 4) {
        case 0:
            bytes.truncate(anywhere());
            break;
        case 1:
            bytes.remove(anywhere(), 1 + static_cast<int>(random() % 50));
            break;
        case 2: // the header, where every bit counts
            bytes[static_cast<int>(random() % 45)] = static_cast<char>(random());
            break;
        default:
            for (int flips = 1 + static_cast<int>(random() % 3); flips > 0; --flips) {
                const int at = anywhere();
                bytes[at] = static_cast<char>(bytes[at] ^ (1 << random() % 8));
            }
        }
        const bool loads = !canvasPng(bytes).isEmpty();
        ASSERT_EQ(loads, qtLoads(bytes)) << "round " << round;
        refused += loads ? 0 : 1;
    }
    EXPECT_GT(refused, 75) << "the damage does not damage";
}
