#include "scene/text/Words.h"

#include <array>
#include <charconv>
#include <cstdint>

namespace host {

namespace {

template <class Number> std::string shortest(Number value) {
    if (value == Number(0))
        return "0"; // a negative zero reads back as a zero; the sign carries nothing
    std::array<char, 32> text;
    const auto end = std::to_chars(text.data(), text.data() + text.size(), value);
    return std::string(text.data(), end.ptr);
}

} // namespace

std::string quote(const std::string& text) {
    std::string result;
    result.reserve(text.size() + 2);
    result += '"';
    for (const char c : text) {
        switch (c) {
        case '"':
            result += "\\\"";
            break;
        case '\\':
            result += "\\\\";
            break;
        case '\n':
            result += "\\n";
            break;
        case '\t':
            result += "\\t";
            break;
        case '\r':
            result += "\\r";
            break;
        default:
            result += c;
        }
    }
    result += '"';
    return result;
}

std::string formatNumber(double value) {
    return shortest(value);
}

std::string formatNumber(float value) {
    return shortest(value);
}

bool parseNumber(const std::string& text, double& value) {
    if (text == "yes" || text == "on" || text == "true") {
        value = 1;
        return true;
    }
    if (text == "no" || text == "off" || text == "false") {
        value = 0;
        return true;
    }
    const char* first = text.data();
    const char* const last = first + text.size();
    if (first != last && *first == '+')
        ++first;
    if (last - first > 2 && first[0] == '0' && (first[1] == 'x' || first[1] == 'X')) {
        std::uint64_t number = 0;
        const auto end = std::from_chars(first + 2, last, number, 16);
        value = double(number);
        return end.ec == std::errc() && end.ptr == last;
    }
    const auto end = std::from_chars(first, last, value);
    return first != last && end.ec == std::errc() && end.ptr == last;
}

} // namespace host
