#pragma once
#include <QIODevice>

#include <string>

namespace host {

class SceneBuilder;

// Read a whole scene file, from the device's beginning, into the builder. Both go on after
// damage where sense resumes, and say so at the end when the file looks cut off.
void readAsciiScene(QIODevice& device, SceneBuilder& builder);
void readBinaryScene(QIODevice& device, SceneBuilder& builder);
// One statement as it stands in an ASCII file.
void readStatement(const std::string& text, SceneBuilder& builder);

} // namespace host
