#include <maya/MString.h>
#include <maya/MStringArray.h>

#include <cerrno>
#include <charconv>
#include <climits>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <ostream>
#include <sstream>

namespace {

const std::string& emptyText() {
    static const std::string empty;
    return empty;
}

std::string formatted(double value, int precision = -1) {
    std::ostringstream out;
    out.imbue(std::locale::classic());
    if (precision >= 0) {
        out.setf(std::ios::fixed);
        out.precision(precision);
    } else {
        out.precision(10);
    }
    out << value;
    return out.str();
}

std::string toUtf8(const wchar_t* text) {
    std::string out;
    for (; text && *text; ++text) {
        const auto c = static_cast<unsigned long>(*text);
        if (c < 0x80) {
            out += static_cast<char>(c);
        } else if (c < 0x800) {
            out += static_cast<char>(0xC0 | (c >> 6));
            out += static_cast<char>(0x80 | (c & 0x3F));
        } else if (c < 0x10000) {
            out += static_cast<char>(0xE0 | (c >> 12));
            out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
            out += static_cast<char>(0x80 | (c & 0x3F));
        } else {
            out += static_cast<char>(0xF0 | (c >> 18));
            out += static_cast<char>(0x80 | ((c >> 12) & 0x3F));
            out += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
            out += static_cast<char>(0x80 | (c & 0x3F));
        }
    }
    return out;
}

std::wstring toWide(const std::string& text) {
    std::wstring out;
    for (std::size_t i = 0; i < text.size();) {
        const auto lead = static_cast<unsigned char>(text[i]);
        const int extra = lead < 0x80 ? 0 : lead < 0xE0 ? 1 : lead < 0xF0 ? 2 : 3;
        unsigned long c = extra == 0 ? lead : lead & (0x3F >> extra);
        for (int k = 1; k <= extra && i + k < text.size(); ++k)
            c = (c << 6) | (static_cast<unsigned char>(text[i + k]) & 0x3F);
        out += static_cast<wchar_t>(c);
        i += 1 + extra;
    }
    return out;
}

// The whole text as one number; false when there is anything else in it.
bool parseDouble(const std::string& text, double& value) {
    const char* begin = text.c_str();
    char* end = nullptr;
    value = std::strtod(begin, &end);
    return end != begin && *end == '\0';
}

} // namespace

MString::MString() = default;
MString::MString(const char* text) {
    set(text);
}
MString::MString(const char* text, int length) {
    set(text, length);
}
MString::MString(const wchar_t* text) {
    setWChar(text);
}
MString::MString(const MString& other) = default;
MString::~MString() = default;

const std::string& MString::bytes() const {
    return text_ ? *text_ : emptyText();
}

std::string& MString::writable() {
    wide_.reset();
    if (!text_)
        text_ = std::make_shared<std::string>();
    else if (text_.use_count() > 1)
        text_ = std::make_shared<std::string>(*text_);
    return *text_;
}

MStatus MString::set(const char* text) {
    wide_.reset();
    text_ = text && *text ? std::make_shared<std::string>(text) : nullptr;
    return MS::kSuccess;
}

MStatus MString::set(const char* text, int length) {
    wide_.reset();
    text_ = text && length > 0 ? std::make_shared<std::string>(text, text + length) : nullptr;
    return MS::kSuccess;
}

MStatus MString::set(double value) {
    return set(formatted(value).c_str());
}
MStatus MString::set(double value, int precision) {
    return set(formatted(value, precision).c_str());
}
MStatus MString::setUTF8(const char* text) {
    return set(text);
}
MStatus MString::setWChar(const wchar_t* text) {
    return set(toUtf8(text).c_str());
}

const char* MString::asChar() const {
    return bytes().c_str();
}
const char* MString::asChar(int& length) const {
    length = static_cast<int>(bytes().size());
    return bytes().c_str();
}
const char* MString::asUTF8() const {
    return asChar();
}
const char* MString::asUTF8(int& length) const {
    return asChar(length);
}
const wchar_t* MString::asWChar() const {
    if (!wide_)
        wide_ = std::make_shared<std::wstring>(toWide(bytes()));
    return wide_->c_str();
}

unsigned int MString::length() const {
    return static_cast<unsigned int>(bytes().size());
}
unsigned int MString::numChars() const {
    unsigned int count = 0;
    for (char c : bytes())
        count += (static_cast<unsigned char>(c) & 0xC0) != 0x80;
    return count;
}
void MString::clear() {
    text_.reset();
    wide_.reset();
}

MString& MString::operator=(const MString& other) = default;
MString& MString::operator=(const char* text) {
    set(text);
    return *this;
}
MString& MString::operator=(double value) {
    set(value);
    return *this;
}
MString& MString::operator+=(const MString& other) {
    const std::shared_ptr<std::string> kept = other.text_; // appending to itself
    if (kept)
        writable() += *kept;
    return *this;
}
MString& MString::operator+=(const char* text) {
    if (text)
        writable() += text;
    return *this;
}
MString& MString::operator+=(double value) {
    return *this += formatted(value).c_str();
}
MString& MString::operator+=(int value) {
    return *this += std::to_string(value).c_str();
}
MString& MString::operator+=(unsigned int value) {
    return *this += std::to_string(value).c_str();
}

MString MString::operator+(const MString& other) const {
    return MString(*this) += other;
}
MString MString::operator+(const char* text) const {
    return MString(*this) += text;
}
MString MString::operator+(double value) const {
    return MString(*this) += value;
}
MString MString::operator+(int value) const {
    return MString(*this) += value;
}
MString operator+(const char* left, const MString& right) {
    return MString(left) += right;
}

bool MString::operator==(const MString& other) const {
    return bytes() == other.bytes();
}
bool MString::operator==(const char* text) const {
    return bytes() == (text ? text : "");
}
bool MString::operator!=(const MString& other) const {
    return !(*this == other);
}
bool MString::operator!=(const char* text) const {
    return !(*this == text);
}

int MString::index(char c) const {
    const std::size_t at = bytes().find(c);
    return at == std::string::npos ? -1 : static_cast<int>(at);
}
int MString::rindex(char c) const {
    const std::size_t at = bytes().rfind(c);
    return at == std::string::npos ? -1 : static_cast<int>(at);
}
int MString::indexW(const MString& text) const {
    const std::size_t at = toWide(bytes()).find(toWide(text.bytes()));
    return at == std::string::npos ? -1 : static_cast<int>(at);
}

MString MString::substring(int start, int end) const {
    const int last = static_cast<int>(bytes().size()) - 1;
    start = start < 0 ? 0 : start;
    end = end > last ? last : end;
    if (start > end)
        return {};
    return MString(bytes().c_str() + start, end - start + 1);
}

MStatus MString::split(char separator, MStringArray& out) const {
    out.clear();
    std::size_t begin = 0;
    const std::string& text = bytes();
    while (begin <= text.size()) {
        std::size_t end = text.find(separator, begin);
        end = end == std::string::npos ? text.size() : end;
        if (end > begin)
            out.append(MString(text.c_str() + begin, static_cast<int>(end - begin)));
        begin = end + 1;
    }
    return MS::kSuccess;
}

MStatus MString::substitute(const MString& oldText, const MString& newText) {
    if (oldText.length() == 0)
        return MS::kFailure;
    const std::string from = oldText.bytes();
    const std::string to = newText.bytes();
    std::string& text = writable();
    for (std::size_t at = text.find(from); at != std::string::npos;
         at = text.find(from, at + to.size()))
        text.replace(at, from.size(), to);
    return MS::kSuccess;
}

MString& MString::toUpperCase() {
    for (char& c : writable()) {
        if (c >= 'a' && c <= 'z')
            c = static_cast<char>(c - 'a' + 'A');
    }
    return *this;
}

MString& MString::toLowerCase() {
    for (char& c : writable()) {
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
    }
    return *this;
}

bool MString::isDouble() const {
    double value = 0.0;
    return parseDouble(bytes(), value);
}
double MString::asDouble() const {
    return std::strtod(bytes().c_str(), nullptr);
}
bool MString::isFloat() const {
    double value = 0.0;
    return parseDouble(bytes(), value) && std::abs(value) <= std::numeric_limits<float>::max();
}
float MString::asFloat() const {
    return static_cast<float>(asDouble());
}

bool MString::isInt() const {
    const std::string& text = bytes();
    int value = 0;
    const char* begin = text.data() + (!text.empty() && text[0] == '+' ? 1 : 0);
    const auto [end, code] = std::from_chars(begin, text.data() + text.size(), value);
    return code == std::errc() && end == text.data() + text.size();
}
int MString::asInt() const {
    const long value = std::strtol(bytes().c_str(), nullptr, 10);
    return value > INT_MAX ? INT_MAX : value < INT_MIN ? INT_MIN : static_cast<int>(value);
}
bool MString::isShort() const {
    return isInt() && asInt() >= SHRT_MIN && asInt() <= SHRT_MAX;
}
short MString::asShort() const {
    return static_cast<short>(asInt());
}
bool MString::isUnsigned() const {
    const std::string& text = bytes();
    unsigned int value = 0;
    const auto [end, code] = std::from_chars(text.data(), text.data() + text.size(), value);
    return code == std::errc() && end == text.data() + text.size();
}
unsigned int MString::asUnsigned() const {
    return static_cast<unsigned int>(std::strtoul(bytes().c_str(), nullptr, 10));
}

std::ostream& operator<<(std::ostream& out, const MString& text) {
    return out << text.bytes();
}
