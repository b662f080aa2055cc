#include "scene/files/AsciiTokens.h"
#include "scene/files/ChunkFile.h"
#include "scene/text/Words.h"

#include <QBuffer>

#include <cmath>
#include <cstring>
#include <gtest/gtest.h>
#include <random>

namespace host {
namespace {

std::vector<std::string> hostileTexts() {
    std::vector<std::string> texts = {"",
                                      "plain",
                                      "say \"hi\"",
                                      "back\\slash\\",
                                      "\\\"",
                                      "line\nbreak\r\n\ttab",
                                      "semi;colon // no comment /* nor this */",
                                      "$var `system(\"x\")` {}",
                                      "\xd0\x9a\xd0\xb0\xd0\xbc\xd0\xb5\xd1\x80\xd0\xb0",
                                      "\xe3\x82\xab\xe3\x83\xa1\xe3\x83\xa9\xf0\x9f\x8e\xa5",
                                      std::string("nul\0within", 10)};
    std::mt19937 random(7);
    for (int i = 0; i < 200; ++i) {
        std::string text(random() % 40, ' ');
        for (char& c : text)
            c = char(random() % 256);
        texts.push_back(text);
    }
    return texts;
}

std::vector<Statement> scanAll(const QByteArray& text, int* problems = nullptr) {
    QByteArray copy = text;
    QBuffer buffer(&copy);
    buffer.open(QIODevice::ReadOnly);
    AsciiScanner scanner(buffer);
    std::vector<Statement> statements;
    Statement statement;
    for (;;) {
        switch (scanner.next(statement)) {
        case AsciiScanner::Result::Statement:
            statements.push_back(statement);
            break;
        case AsciiScanner::Result::Damaged:
            if (problems)
                ++*problems;
            break;
        case AsciiScanner::Result::Truncated:
            if (problems)
                ++*problems;
            return statements;
        case AsciiScanner::Result::End:
            return statements;
        }
    }
}

TEST(AsciiTokens, AnyTextSurvivesQuotingWhereverTheBlocksOfTheFileEnd) {
    QByteArray file;
    const std::vector<std::string> texts = hostileTexts();
    for (const std::string& text : texts)
        file += QByteArray::fromStdString("fileInfo " + quote(text) + ";\n");
    // Shifting the whole moves every kind of character across the edge of the reader's block.
    for (int shift = 65536 - 160; shift < 65536; ++shift) {
        const auto statements = scanAll(QByteArray(shift, ' ') + file);
        ASSERT_EQ(statements.size(), texts.size()) << shift;
        for (std::size_t i = 0; i < texts.size(); ++i) {
            ASSERT_EQ(statements[i].tokens.size(), 2u) << shift << " " << i;
            ASSERT_EQ(statements[i].tokens[1].text, texts[i]) << shift << " " << i;
        }
    }
}

TEST(AsciiTokens, NumbersReadBackToTheLastBit) {
    std::mt19937_64 random(11);
    for (int i = 0; i < 20000; ++i) {
        const std::uint64_t bits = random();
        double value = 0;
        std::memcpy(&value, &bits, sizeof value);
        if (!std::isfinite(value))
            continue;
        double back = 1;
        ASSERT_TRUE(parseNumber(formatNumber(value), back)) << formatNumber(value);
        ASSERT_EQ(back, value) << bits;
    }
    double value = 0;
    for (const char* text : {"", "-", "1x", "1 ", "0x", "one", "--1", "1e"})
        EXPECT_FALSE(parseNumber(text, value)) << text;
    EXPECT_TRUE(parseNumber("+2.5", value) && value == 2.5);
    EXPECT_TRUE(parseNumber("0x1F", value) && value == 31);
    EXPECT_TRUE(parseNumber("yes", value) && value == 1);
}

TEST(AsciiTokens, CommentsLinesAndBlanks) {
    const auto statements = scanAll("//Maya ASCII 2024 scene\n/* two\nlines */ a  1\n\t\"x;y\";\n"
                                    "b;;  ;// trailing \"quote\nc -k off;// End of x\n");
    ASSERT_EQ(statements.size(), 3u);
    EXPECT_EQ(statements[0].line, 3u);
    ASSERT_EQ(statements[0].tokens.size(), 3u);
    EXPECT_EQ(statements[0].tokens[2].text, "x;y");
    EXPECT_TRUE(statements[0].tokens[2].quoted);
    EXPECT_EQ(statements[2].line, 6u);
    EXPECT_EQ(statements[2].tokens[1].text, "-k");
}

TEST(AsciiTokens, ReadingGoesOnAfterDamage) {
    const QByteArray before = "createNode a -n \"x\";\n";
    const QByteArray after = "createNode b -n \"y\";\n";
    for (const QByteArray& damage :
         {QByteArray("\tsetAttr \".s\" -type \"string\" \"open;\n"),
          QByteArray("\tsetAttr \".ld\" 1 \"abc\n\t\t2 \"def\"\n\t\t3 \"ghi\";\n"),
          "\tsetAttr \"" + QByteArray(70000, 'x') + "\n\t\"" + QByteArray(70000, 'y') + "\";\n"}) {
        SCOPED_TRACE(damage.left(20).toStdString());
        int problems = 0;
        const auto statements = scanAll(before + damage + after, &problems);
        EXPECT_EQ(problems, 1);
        ASSERT_GE(statements.size(), 2u);
        EXPECT_EQ(statements.front().tokens[1].text, "a");
        EXPECT_EQ(statements.back().tokens[1].text, "b");
    }
    int problems = 0;
    EXPECT_EQ(scanAll(before + "createNode b -n \"y", &problems).size(), 1u);
    EXPECT_EQ(scanAll(before + "createNode b -n", &problems).size(), 1u);
    EXPECT_EQ(scanAll(before + "/* never closed", &problems).size(), 1u);
    EXPECT_EQ(problems, 3);
}

QByteArray smallChunkFile() {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    ChunkWriter writer(buffer);
    writer.begin();
    writer.write(chunkId("AAAA"), "first");
    std::ostream& stream = writer.open(chunkId("BBBB"));
    for (int i = 0; i < 9000; ++i)
        stream << "0123456789";
    EXPECT_TRUE(writer.close());
    writer.write(chunkId("CCCC"), "");
    writer.flush();
    return bytes;
}

// Everything read, or "" and `damage` set.
std::string readChunks(QByteArray bytes, bool& damage) {
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    ChunkReader reader(buffer);
    damage = !reader.begin();
    std::string all;
    Chunk chunk;
    while (!damage || !all.empty()) {
        const auto result = reader.next(chunk);
        if (result == ChunkReader::Result::End)
            break;
        if (result == ChunkReader::Result::Damaged || !reader.intact(chunk)) {
            damage = true;
            all += "?";
            continue;
        }
        all.append(chunk.id.begin(), chunk.id.end());
        all += reader.payload(chunk).substr(0, 5);
    }
    return all;
}

TEST(ChunkFile, EveryFlippedBitAndEveryCutIsNoticedAndTheRestIsFound) {
    const QByteArray whole = smallChunkFile();
    bool damage = true;
    EXPECT_EQ(readChunks(whole, damage), "AAAAfirstBBBB01234CCCC");
    EXPECT_FALSE(damage);
    std::mt19937 random(3);
    for (int round = 0; round < 600; ++round) {
        // Most flips go to the headers, which are few bytes of the whole.
        const int at = round < 400 ? round % 60 : int(random() % unsigned(whole.size()));
        QByteArray flipped = whole;
        flipped[at] = char(flipped[at] ^ (1 << (random() % 8)));
        const std::string found = readChunks(flipped, damage);
        EXPECT_TRUE(damage) << "byte " << at;
        if (at >= 12 && at < 32 + 5) { // the first chunk
            EXPECT_NE(found.find("BBBB01234CCCC"), std::string::npos) << at << " " << found;
        }
        const int cut = int(random() % unsigned(whole.size()));
        const std::string kept = readChunks(whole.left(cut), damage);
        EXPECT_EQ(kept.find("CCCC"), std::string::npos) << cut;
    }
}

TEST(ChunkFile, FieldsNeverPromiseMoreThanThereIs) {
    ChunkFields fields;
    fields.number(3).text("one").text("").text("\xc3\xa9");
    ChunkParser good(fields.bytes());
    EXPECT_EQ(good.count(4), 3u);
    for (const char* text : {"one", "", "\xc3\xa9"})
        EXPECT_EQ(good.text(), text);
    EXPECT_FALSE(good.failed());

    for (std::uint32_t count : {4u, 0x7fffffffu, 0xffffffffu}) {
        SCOPED_TRACE("count " + std::to_string(count));
        const std::string bytes = ChunkFields().number(count).text("ab").bytes();
        ChunkParser asCount(bytes);
        EXPECT_EQ(asCount.count(4), 0u);
        EXPECT_TRUE(asCount.failed());
        const std::string text = ChunkFields().number(count).number(1).bytes().substr(0, 7);
        ChunkParser asText(text);
        EXPECT_EQ(asText.text(), "");
        EXPECT_TRUE(asText.failed());
        EXPECT_EQ(asText.number(), 0u);
    }
}

TEST(DeviceStream, AReaderSeesItsRangeOnly) {
    QByteArray bytes;
    for (int i = 0; i < 200000; ++i)
        bytes += char(i % 251);
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    buffer.seek(1000);
    DeviceReadBuffer range(buffer, 150000);
    std::istream in(&range);
    std::string all(300000, '\0');
    in.read(all.data(), 70000);
    EXPECT_EQ(in.tellg(), std::streampos(70000));
    for (int i = 0; i < 10; ++i)
        EXPECT_EQ(in.get(), (1000 + 70000 + i) % 251);
    in.seekg(-5, std::ios::end);
    EXPECT_EQ(in.get(), (1000 + 149995) % 251);
    in.read(all.data(), 300000);
    EXPECT_EQ(in.gcount(), 4);
    EXPECT_TRUE(in.eof());
    in.clear();
    in.seekg(150001);
    EXPECT_TRUE(in.fail());
    in.clear();
    in.seekg(0);
    EXPECT_EQ(in.get(), 1000 % 251);
}

} // namespace
} // namespace host
