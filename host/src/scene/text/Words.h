#pragma once
#include <string>

// Texts and numbers as the words of statements: in scene files, and in scripts.
namespace host {

// `text` between double quotes with \" \\ \n \t \r escaped, so that it reads back as itself in a
// scene file and in a script.
std::string quote(const std::string& text);
// The shortest decimal form that reads back as the same number.
std::string formatNumber(double value);
std::string formatNumber(float value);
// The whole of `text` as a finite or infinite number; also yes/no, on/off, true/false.
bool parseNumber(const std::string& text, double& value);

} // namespace host
