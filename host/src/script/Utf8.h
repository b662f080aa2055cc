#pragma once

#include <string>
#include <vector>

/// Strings are UTF-8; positions in script commands count characters.
namespace host::script::utf8 {

/// Byte offsets of the beginnings of the characters, and the end as last entry. A byte that is no
/// valid beginning counts as a character of its own.
inline std::vector<std::size_t> characters(const std::string& text) {
    std::vector<std::size_t> starts;
    for (std::size_t i = 0; i < text.size();) {
        starts.push_back(i);
        const auto lead = static_cast<unsigned char>(text[i]);
        std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : lead >= 0xC0 ? 2 : 1;
        std::size_t next = i + 1;
        while (--length && next < text.size() &&
               (static_cast<unsigned char>(text[next]) & 0xC0) == 0x80)
            ++next;
        i = next;
    }
    starts.push_back(text.size());
    return starts;
}

inline std::size_t length(const std::string& text) {
    return characters(text).size() - 1;
}

} // namespace host::script::utf8
