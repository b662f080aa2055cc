#include "app/SessionTarget.h"

#include <QStringList>

#include <cmath>
#include <stdexcept>

namespace host {

namespace {

/// The words of a target, one after the other.
class Words {
public:
    Words(const std::vector<SessionWord>& words, std::size_t first) : words_(words), at_(first) {}

    bool atEnd() const { return at_ >= words_.size(); }

    bool take(const char* word) {
        const bool there = !atEnd() && words_[at_].is(word);
        at_ += there ? 1 : 0;
        return there;
    }

    QString quoted(const char* what) {
        if (atEnd() || !words_[at_].quoted || words_[at_].text.isEmpty())
            throw std::runtime_error(std::string(what) + " in quotes is missing");
        return words_[at_++].text;
    }

    bool startsNumber() const {
        return !atEnd() && !words_[at_].quoted && !words_[at_].text.isEmpty() &&
               (words_[at_].text.at(0).isDigit() || words_[at_].text.at(0) == '-');
    }

    double number(bool* percent = nullptr) {
        QString word = atEnd() ? QString() : words_[at_++].text;
        if (percent && (*percent = word.endsWith('%')))
            word.chop(1);
        bool ok = false;
        const double value = word.toDouble(&ok);
        if (!ok || !std::isfinite(value))
            throw std::runtime_error("'" + word.toStdString() + "' is not a number");
        return value;
    }

    [[noreturn]] void unexpected() const {
        throw std::runtime_error("unexpected '" + words_[at_].text.toStdString() + "'");
    }

private:
    const std::vector<SessionWord>& words_;
    std::size_t at_;
};

SessionTarget::Spot readSpot(Words& words) {
    bool percentX = false, percentY = false;
    const double x = words.number(&percentX);
    const double y = words.number(&percentY);
    if (percentX != percentY)
        throw std::runtime_error("a place has two pixels or two percentages");
    return {{x, y}, percentX};
}

} // namespace

SessionTarget SessionTarget::read(const std::vector<SessionWord>& words, std::size_t first) {
    Words rest(words, first);
    SessionTarget target;
    if (!rest.take("on"))
        throw std::runtime_error("'on' and a name are missing");
    if (rest.take("frame")) {
        target.kind = Kind::TimeSlider;
        target.frame = rest.number();
    } else {
        target.name = rest.quoted("a name");
        if (rest.startsNumber()) {
            const double ordinal = rest.number();
            if (ordinal < 1 || ordinal != std::floor(ordinal))
                throw std::runtime_error("things are counted from 1");
            target.ordinal = int(ordinal);
        }
        if (rest.take("in"))
            target.window = rest.quoted("a window");
        if (rest.take("at"))
            target.spot = readSpot(rest);
    }
    if (!rest.atEnd())
        rest.unexpected();
    return target;
}

std::vector<SessionTarget> SessionTarget::readMenuPath(const QString& path) {
    std::vector<SessionTarget> entries;
    QString menu;
    for (const QString& part : path.split(QStringLiteral(" > "))) {
        SessionTarget entry;
        entry.kind = Kind::MenuEntry;
        entry.name = part.trimmed();
        entry.window = menu;
        if (entry.name.isEmpty())
            throw std::runtime_error("an entry of a menu is missing");
        menu = entry.name;
        entries.push_back(entry);
    }
    return entries;
}

} // namespace host
