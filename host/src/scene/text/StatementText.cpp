#include "scene/text/StatementText.h"

#include "scene/text/Words.h"

namespace host {

std::string statementText(const std::vector<Token>& tokens) {
    std::string text;
    for (const Token& token : tokens) {
        text += text.empty() ? "" : " ";
        text += token.quoted ? quote(token.text) : token.text;
    }
    return text + ";";
}

std::vector<Token> attributeTokens(const AttrRecord& attribute) {
    std::vector<Token> tokens = {word("\tsetAttr")};
    const auto add = [&tokens](const char* flag, const std::optional<bool>& value) {
        if (!value)
            return;
        tokens.push_back(word(flag));
        tokens.push_back(word(*value ? "on" : "off"));
    };
    add("-l", attribute.locked);
    add("-k", attribute.keyable);
    add("-cb", attribute.channelBox);
    tokens.insert(tokens.end(), attribute.hints.begin(), attribute.hints.end());
    tokens.push_back(quoted(attribute.plug));
    if (!attribute.hasValue)
        return tokens;
    if (!attribute.type.empty()) {
        tokens.push_back(word("-type"));
        tokens.push_back(quoted(attribute.type));
    }
    tokens.insert(tokens.end(), attribute.values.begin(), attribute.values.end());
    return tokens;
}

Token nameToken(const std::string& name) {
    return {name, name.compare(0, 1, ":") != 0};
}

} // namespace host
