#pragma once

#include <maya/MStatus.h>
#include <maya/MTypes.h>

#include <iosfwd>
#include <memory>
#include <string>

class MStringArray;

/// Text in UTF-8, which is also the host's system encoding. Copies share their bytes until one of
/// them is written to.
class MString {
public:
    MString();
    MString(const char* text);
    MString(const char* text, int length);
    MString(const wchar_t* text);
    MString(const MString& other);
    ~MString();

    MStatus set(const char* text);
    MStatus set(const char* text, int length);
    MStatus set(double value);
    MStatus set(double value, int precision);
    MStatus setUTF8(const char* text);
    MStatus setWChar(const wchar_t* text);

    const char* asChar() const;
    const char* asChar(int& length) const;
    const char* asUTF8() const;
    const char* asUTF8(int& length) const;
    const wchar_t* asWChar() const;

    /// Bytes without the terminator.
    unsigned int length() const;
    unsigned int numChars() const;
    void clear();

    MString& operator=(const MString& other);
    MString& operator=(const char* text);
    MString& operator=(double value);
    MString& operator+=(const MString& other);
    MString& operator+=(const char* text);
    MString& operator+=(double value);
    MString& operator+=(int value);
    MString& operator+=(unsigned int value);
    MString operator+(const MString& other) const;
    MString operator+(const char* text) const;
    MString operator+(double value) const;
    MString operator+(int value) const;
    bool operator==(const MString& other) const;
    bool operator==(const char* text) const;
    bool operator!=(const MString& other) const;
    bool operator!=(const char* text) const;

    int index(char c) const;  ///< first position of the byte, -1 without
    int rindex(char c) const; ///< last position of the byte, -1 without
    int indexW(const MString& text) const;
    MString substring(int start, int end) const;            ///< both ends included, in bytes
    MStatus split(char separator, MStringArray& out) const; ///< empty parts are left out
    MStatus substitute(const MString& oldText, const MString& newText);
    MString& toUpperCase();
    MString& toLowerCase();

    bool isShort() const;
    short asShort() const;
    bool isInt() const;
    int asInt() const;
    bool isUnsigned() const;
    unsigned int asUnsigned() const;
    bool isFloat() const;
    float asFloat() const;
    bool isDouble() const;
    double asDouble() const;

    friend MString operator+(const char* left, const MString& right);
    friend std::ostream& operator<<(std::ostream& out, const MString& text);

private:
    std::string& writable();
    const std::string& bytes() const;

    std::shared_ptr<std::string> text_; ///< null is the empty string
    mutable std::shared_ptr<std::wstring> wide_;
};

MString operator+(const char* left, const MString& right);
std::ostream& operator<<(std::ostream& out, const MString& text);
