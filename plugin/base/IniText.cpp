#include "plugin/base/IniText.h"

#include <QRegularExpression>
#include <QString>

#include <algorithm>

namespace vellum::ini {

namespace {

bool isLineEnd(char c) {
    return c == '\n' || c == '\r';
}

/// Finds where lines end: quoted and escaped ends of lines do not count.
class Lines {
public:
    explicit Lines(const QByteArray& text)
        : text_(text), at_(text.startsWith("\xef\xbb\xbf") ? 3 : 0) {}

    /// The next line that is not empty, without its comment; false at the end of the text.
    bool next(QByteArray& line) {
        while (at_ < text_.size()) {
            const int start = at_;
            const int end = skipLine();
            line = text_.mid(start, end - start).trimmed();
            if (!line.isEmpty())
                return true;
        }
        return false;
    }

    bool areWhole() const { return whole_; }

private:
    /// Goes behind a line; where what counts of it ends.
    int skipLine() {
        const int start = at_;
        bool quoted = false;
        for (; at_ < text_.size(); ++at_) {
            const char c = text_[at_];
            if (c == '\\') {
                ++at_;
                if (isPair(at_))
                    ++at_;
            } else if (c == '"') {
                quoted = !quoted;
            } else if (!quoted && (isLineEnd(c) || c == ';')) {
                break;
            }
        }
        int end = at_;
        if (quoted || at_ > text_.size()) {
            end = at_ = start;
            whole_ = false;
        }
        while (at_ < text_.size() && !isLineEnd(text_[at_]))
            ++at_;
        ++at_;
        return end;
    }

    bool isPair(int at) const {
        return at + 1 < text_.size() && isLineEnd(text_[at]) && isLineEnd(text_[at + 1]) &&
               text_[at] != text_[at + 1];
    }

    const QByteArray& text_;
    int at_;
    bool whole_ = true;
};

/// Harmless between brackets, in the way QSettings escapes names.
QByteArray sectionName(const QByteArray& written) {
    QByteArray name;
    for (const char c : written.trimmed()) {
        if (c == '"' || c == '\\' || c == ';' || isLineEnd(c))
            name += '%' + QByteArray(1, c).toHex().toUpper();
        else
            name += c;
    }
    return name;
}

int digit(char c) {
    if (c >= '0' && c <= '9')
        return c - '0';
    c = static_cast<char>(c | 0x20);
    return c >= 'a' && c <= 'f' ? c - 'a' + 10 : 16;
}

/// What QSettings makes of escapes, with neither quotes nor space nor control characters.
QString bare(const QByteArray& value) {
    QString result;
    for (int i = 0; i < value.size();) {
        char16_t c = static_cast<unsigned char>(value[i++]);
        if (c == '\\' && i < value.size()) {
            const char kind = value[i++];
            const int base = kind == 'x' ? 16 : 8;
            c = kind == '\\' ? u'\\' : u'\0'; // the others stand for nothing that matters here
            if (kind == 'x' || (kind >= '0' && kind <= '7')) {
                i -= kind == 'x' ? 0 : 1;
                for (; i < value.size() && digit(value[i]) < base; ++i)
                    c = static_cast<char16_t>(c * base + digit(value[i]));
            }
        }
        if (c > u' ' && c != u'"')
            result += QChar(c);
    }
    return result;
}

} // namespace

Text parse(const QByteArray& text) {
    Text result;
    Lines lines(text);
    for (QByteArray line; lines.next(line);) {
        const int equals = static_cast<int>(line.indexOf('='));
        if (line.startsWith('[')) {
            const int end = static_cast<int>(line.indexOf(']'));
            result.isWhole &= end == line.size() - 1;
            result.sections.push_back({sectionName(line.mid(1, end < 0 ? -1 : end - 1)), {}});
        } else if (equals > 0) {
            if (result.sections.empty())
                result.sections.push_back({"General", {}});
            result.sections.back().entries.push_back({line.left(equals).trimmed(), line});
        } else {
            result.isWhole = false;
        }
    }
    result.isWhole &= lines.areWhole();
    return result;
}

Section& sectionNamed(std::vector<Section>& sections, const QByteArray& name) {
    const auto found = std::find_if(sections.begin(), sections.end(),
                                    [&](const Section& one) { return one.name == name; });
    if (found != sections.end())
        return *found;
    sections.push_back({name, {}});
    return sections.back();
}

QByteArray toText(const std::vector<Section>& sections) {
    QByteArray text;
    for (const Section& section : sections) {
        text += (text.isEmpty() ? "[" : "\n[") + section.name + "]\n";
        for (const Entry& entry : section.entries)
            text += entry.text + '\n';
    }
    return text;
}

bool isPlain(const Entry& entry) {
    const QByteArray value = entry.text.mid(entry.text.indexOf('=') + 1).trimmed();
    const QString content = bare(value);
    if (!content.contains(QLatin1String("@Variant(")) &&
        !content.contains(QLatin1String("@DateTime(")))
        return true;
    // One value, of type QColor, as QSettings writes it.
    static const QRegularExpression color(
        QLatin1String(R"re(^(?:"@Variant\(\\0\\0\\0\\x43(?![0-9a-fA-F])(?:\\.|[^"\\])*\)"|)re"
                      R"re(@Variant\(\\0\\0\\0\\x43(?![0-9a-fA-F])(?:\\.|[^"\\,])*\))$)re"));
    return color.match(QString::fromLatin1(value)).hasMatch();
}

} // namespace vellum::ini
