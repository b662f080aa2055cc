// The verdict on picture bytes equals what decoding them would say, and costs nothing for pictures
// of other sizes.
#include "raster/Pictures.h"
#include "support/Seed.h"
#include "tools/raster/PngCheck.h"
#include "tools/raster/PngCodec.h"

#include <QBuffer>
#include <QImage>

#include <gtest/gtest.h>
#include <random>
#include <zlib.h>

using namespace vellum;

namespace {

QByteArray encoded(const QImage& image) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes;
}

bool qtLoads(const QByteArray& bytes) {
    QImage image;
    return pngHeaderSize(bytes) == QSize(1024, 1024) && image.loadFromData(bytes, "PNG") &&
           image.size() == QSize(1024, 1024);
}

QByteArray bigEndian(quint32 value) {
    return QByteArray::fromHex(QByteArray::number(value, 16).rightJustified(8, '0'));
}

QByteArray chunk(const QByteArray& type, const QByteArray& data) {
    const QByteArray body = type + data;
    const auto sum =
        crc32(0, reinterpret_cast<const Bytef*>(body.constData()), static_cast<uInt>(body.size()));
    return bigEndian(static_cast<quint32>(data.size())) + body +
           bigEndian(static_cast<quint32>(sum));
}

/// A PNG put together by hand: sizes and pixel data need not agree.
QByteArray forged(quint32 width, quint32 height, const QByteArray& pixels) {
    QByteArray header = bigEndian(width) + bigEndian(height);
    header.append("\x08\x06\x00\x00\x00", 5);
    const QByteArray packed = qCompress(pixels).mid(4);
    return QByteArray("\x89PNG\r\n\x1a\n", 8) + chunk("IHDR", header) + chunk("IDAT", packed) +
           chunk("IEND", {});
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
    const QByteArray good = encoded(picture);
    QByteArray withText = good;
    withText.insert(33, chunk("tEXt", QByteArray("Comment\0hello", 13)));
    const struct {
        const char* what;
        QByteArray bytes;
        bool loads;
    } cases[] = {
        {"empty", {}, false},
        {"other bytes", "not a picture at all, but long enough", false},
        {"8-bit colours only", encoded(picture.convertToFormat(QImage::Format_RGB888)), true},
        {"palette", encoded(picture.convertToFormat(QImage::Format_Indexed8)), true},
        {"16 bits", encoded(picture.convertToFormat(QImage::Format_RGBA64)), true},
        {"a comment", withText, true},
        {"bytes after the end", good + "more", true},
        {"no pixels", forged(1024, 1024, {}), false},
        {"half the rows", forged(1024, 1024, rawRows(512, 0)), false},
        {"unknown filter", forged(1024, 1024, rawRows(1024, 5)), false},
        {"one column less", encoded(picture.copy(0, 0, 1023, 1024)), false},
        {"twice as high", encoded(QImage(1024, 2048, QImage::Format_RGBA8888)), false},
    };
    for (const auto& one : cases) {
        EXPECT_EQ(pngLoads(one.bytes), one.loads) << one.what;
        EXPECT_EQ(pngLoads(one.bytes), qtLoads(one.bytes)) << one.what;
    }
}

TEST(PngCheck, RefusesHugeClaimsAndBombsCheaply) {
    // Decoding the first would ask for 14 GB; inflating the second whole for 200 MB.
    EXPECT_FALSE(pngLoads(forged(60000, 60000, rawRows(10, 0))));
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
        const bool loads = pngLoads(bytes);
        ASSERT_EQ(loads, qtLoads(bytes)) << "round " << round;
        refused += loads ? 0 : 1;
    }
    EXPECT_GT(refused, 75) << "the damage does not damage";
}
