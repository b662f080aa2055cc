#include "scene/files/AsciiWriter.h"

#include "scene/text/StatementText.h"
#include "scene/text/Words.h"

#include <maya/MPxData.h>

#include <algorithm>

namespace host {

namespace {

std::string oneLine(std::string text) {
    std::replace(text.begin(), text.end(), '\n', ' ');
    std::replace(text.begin(), text.end(), '\r', ' ');
    return text;
}

} // namespace

AsciiWriter::AsciiWriter(QIODevice& device) : device_(device), buffer_(device), out_(&buffer_) {
}

void AsciiWriter::check() {
    if (!out_ || buffer_.failed())
        throw FileError(device_.errorString().toStdString());
}

void AsciiWriter::begin(const std::string& fileName) {
    out_ << "//Maya ASCII 2024 scene\n"
         << "//Name: " << oneLine(fileName) << "\n"
         << "//Codeset: UTF-8\n";
    check();
}

// The release comes behind the references to other files, which stand at the very top.
void AsciiWriter::writeRelease() {
    if (!releaseWritten_)
        out_ << "requires maya \"2024\";\n";
    releaseWritten_ = true;
}

void AsciiWriter::requirement(const Requirement& requirement) {
    writeRelease();
    out_ << "requires";
    for (const std::string& type : requirement.nodeTypes)
        out_ << " -nodeType " << quote(type);
    for (const std::string& type : requirement.dataTypes)
        out_ << " -dataType " << quote(type);
    out_ << ' ' << quote(requirement.plugin) << ' ' << quote(requirement.version) << ";\n";
    check();
}

void AsciiWriter::units(const Units& units) {
    writeRelease();
    out_ << "currentUnit -l " << units.linear << " -a " << units.angle << " -t " << units.time
         << ";\n";
    check();
}

void AsciiWriter::fileInfo(const std::string& key, const std::string& value) {
    out_ << "fileInfo " << quote(key) << ' ' << quote(value) << ";\n";
    check();
}

void AsciiWriter::createNode(const NodeRecord& node) {
    out_ << "createNode " << node.type;
    if (node.shared)
        out_ << " -s";
    out_ << " -n " << quote(node.name);
    if (!node.parent.empty())
        out_ << " -p " << quote(node.parent);
    out_ << ";\n";
    check();
}

void AsciiWriter::selectNode(const std::string& name) {
    out_ << statementText({word("select"), word("-ne"), nameToken(name)}) << '\n';
    check();
}

void AsciiWriter::writeTokens(const std::vector<Token>& tokens) {
    for (const Token& token : tokens)
        out_ << ' ' << (token.quoted ? quote(token.text) : token.text);
}

void AsciiWriter::addAttr(const AddAttrRecord& attribute) {
    out_ << "\taddAttr";
    writeTokens(attribute.arguments);
    out_ << ";\n";
    check();
}

void AsciiWriter::setAttr(const AttrRecord& attribute) {
    out_ << statementText(attributeTokens(attribute)) << '\n';
    check();
}

bool AsciiWriter::setData(const std::string& plug, const std::string& type, MPxData& data) {
    out_ << "\tsetAttr " << quote(plug) << " -type " << quote(type) << ' ';
    check();
    // A stream of its own: what the data do to its formatting ends with it.
    std::ostream stream(&buffer_);
    const bool ok = bool(data.writeASCII(stream));
    out_ << ";\n";
    check();
    return ok && stream;
}

bool AsciiWriter::setRawData(const std::string&, const std::string&, const std::string&) {
    return false;
}

void AsciiWriter::connect(const std::string& source, const std::string& destination,
                          const std::vector<Token>& flags) {
    out_ << "connectAttr " << quote(source) << ' ' << quote(destination);
    writeTokens(flags);
    out_ << ";\n";
    check();
}

void AsciiWriter::statement(const std::string& text) {
    out_ << text << '\n';
    check();
}

void AsciiWriter::end(const std::string& fileName) {
    out_ << "// End of " << oneLine(fileName) << "\n";
    out_.flush();
    check();
}

} // namespace host
