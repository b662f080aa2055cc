#pragma once
#include "scene/text/SceneRecords.h"

#include <string>
#include <vector>

// Statements of scenes as text.
namespace host {

// The tokens as one statement, with its semicolon.
std::string statementText(const std::vector<Token>& tokens);
// setAttr with its flags and values.
std::vector<Token> attributeTokens(const AttrRecord& attribute);
// How a node is named by select: those every scene has stand bare, with a leading colon.
Token nameToken(const std::string& name);

} // namespace host
