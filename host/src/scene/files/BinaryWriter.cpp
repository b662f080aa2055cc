#include "scene/files/BinaryWriter.h"

#include <maya/MPxData.h>

namespace host {

namespace {

void addTexts(ChunkFields& fields, const std::vector<std::string>& texts) {
    fields.number(std::uint32_t(texts.size()));
    for (const std::string& text : texts)
        fields.text(text);
}

void addTokens(ChunkFields& fields, const std::vector<Token>& tokens) {
    fields.number(std::uint32_t(tokens.size()));
    for (const Token& token : tokens)
        fields.number(token.quoted ? 1 : 0).text(token.text);
}

std::uint32_t switchBits(const std::optional<bool>& value, std::uint32_t given, std::uint32_t on) {
    return value ? given | (*value ? on : 0u) : 0u;
}

} // namespace

BinaryWriter::BinaryWriter(QIODevice& device) : chunks_(device) {
}

void BinaryWriter::begin(const std::string& fileName) {
    chunks_.begin();
    chunks_.write(chunks::head, ChunkFields().text(fileName).text("2024").bytes());
}

void BinaryWriter::requirement(const Requirement& requirement) {
    ChunkFields fields;
    fields.text(requirement.plugin).text(requirement.version);
    addTexts(fields, requirement.nodeTypes);
    addTexts(fields, requirement.dataTypes);
    chunks_.write(chunks::required, fields.bytes());
}

void BinaryWriter::units(const Units& units) {
    chunks_.write(chunks::units,
                  ChunkFields().text(units.linear).text(units.angle).text(units.time).bytes());
}

void BinaryWriter::fileInfo(const std::string& key, const std::string& value) {
    chunks_.write(chunks::info, ChunkFields().text(key).text(value).bytes());
}

void BinaryWriter::createNode(const NodeRecord& node) {
    chunks_.write(chunks::node, ChunkFields()
                                    .text(node.type)
                                    .text(node.name)
                                    .text(node.parent)
                                    .number(node.shared ? 1 : 0)
                                    .bytes());
}

void BinaryWriter::selectNode(const std::string& name) {
    chunks_.write(chunks::select, ChunkFields().text(name).bytes());
}

void BinaryWriter::addAttr(const AddAttrRecord& attribute) {
    ChunkFields fields;
    addTokens(fields, attribute.arguments);
    chunks_.write(chunks::addAttr, fields.bytes());
}

void BinaryWriter::setAttr(const AttrRecord& attribute) {
    using namespace chunks;
    std::uint32_t bits = switchBits(attribute.keyable, keyableGiven, keyableOn) |
                         switchBits(attribute.locked, lockedGiven, lockedOn) |
                         switchBits(attribute.channelBox, channelBoxGiven, channelBoxOn);
    if (attribute.hasValue)
        bits |= valueGiven;
    ChunkFields fields;
    fields.text(attribute.plug).number(bits).text(attribute.type);
    addTokens(fields, attribute.values);
    if (!attribute.hints.empty())
        addTokens(fields, attribute.hints);
    chunks_.write(chunks::setAttr, fields.bytes());
}

bool BinaryWriter::setData(const std::string& plug, const std::string& type, MPxData& data) {
    std::ostream& stream = chunks_.open(chunks::data);
    const std::string prefix = ChunkFields().text(plug).text(type).bytes();
    stream.write(prefix.data(), std::streamsize(prefix.size()));
    const bool ok = bool(data.writeBinary(stream));
    return chunks_.close() && ok;
}

bool BinaryWriter::setRawData(const std::string& plug, const std::string& type,
                              const std::string& bytes) {
    std::ostream& stream = chunks_.open(chunks::data);
    const std::string prefix = ChunkFields().text(plug).text(type).bytes();
    stream.write(prefix.data(), std::streamsize(prefix.size()));
    stream.write(bytes.data(), std::streamsize(bytes.size()));
    return chunks_.close();
}

void BinaryWriter::connect(const std::string& source, const std::string& destination,
                           const std::vector<Token>& flags) {
    ChunkFields fields;
    fields.text(source).text(destination);
    if (!flags.empty())
        addTokens(fields, flags);
    chunks_.write(chunks::connect, fields.bytes());
}

void BinaryWriter::statement(const std::string& text) {
    chunks_.write(chunks::statement, ChunkFields().text(text).bytes());
}

void BinaryWriter::end(const std::string&) {
    chunks_.write(chunks::end, {});
    chunks_.flush();
}

} // namespace host
