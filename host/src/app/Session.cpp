#include "app/Session.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QKeySequence>
#include <QString>
#include <QStringList>

#include <cmath>
#include <optional>
#include <stdexcept>

namespace host {

namespace {

// A plain recording says in which window it was made only in its documentation.
const QSizeF recordedSurface(800, 610);

class Reader {
public:
    explicit Reader(const QString& path) : path_(path) { session_.file = path.toStdString(); }

    Session read();

private:
    [[noreturn]] void fail(const QString& why) const {
        throw std::runtime_error(
            QStringLiteral("%1:%2: %3").arg(path_).arg(line_).arg(why).toStdString());
    }

    void readSetting(const QStringList& words);
    void readSample(const QStringList& words);
    void readStep(double time, const QString& rest);
    void readTablet(SessionStep step, const QStringList& words);
    void readKeys(SessionStep step, const QString& combination);
    bool readPlainStep(SessionStep step, const QString& rest);
    bool readNamedStep(SessionStep step, const QString& rest);
    void readMove(SessionStep step, const std::vector<SessionWord>& words, std::size_t first);
    void readButton(SessionStep step, const std::vector<SessionWord>& words);
    void readPicture(SessionStep step, const std::vector<SessionWord>& words);
    QString theText(const std::vector<SessionWord>& words) const;
    void addClick(SessionStep step);
    void addTyping(SessionStep step, const QString& text);
    void playRecording(double time, const QStringList& words);

    double number(const QString& word) const {
        bool ok = false;
        const double value = word.toDouble(&ok);
        if (!ok || !std::isfinite(value))
            fail(QStringLiteral("'%1' is not a number").arg(word));
        return value;
    }

    QPointF point(const QStringList& words, int index) const {
        if (words.size() < index + 2)
            fail(QStringLiteral("a position is missing"));
        return {number(words.at(index)), number(words.at(index + 1))};
    }

    Qt::MouseButton button(const QString& name) const;
    Qt::Key key(const QString& name) const;

    void add(SessionStep step) {
        step.line = line_;
        if (!session_.steps.empty() && step.time < session_.steps.back().time)
            fail(QStringLiteral("the time goes backwards"));
        session_.steps.push_back(std::move(step));
    }

    QString path_;
    int line_ = 0;
    Session session_;
    bool isSession_ = false;
    bool penDown_ = false;
};

Session Reader::read() {
    QFile file(path_);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        throw std::runtime_error("cannot read " + session_.file + ": " +
                                 file.errorString().toStdString());
    while (!file.atEnd()) {
        ++line_;
        const QString line = QString::fromUtf8(file.readLine()).trimmed();
        if (line.isEmpty() || line.startsWith('#'))
            continue;
        const QStringList words = line.simplified().split(' ');
        bool timed = false;
        const double time = words.at(0).toDouble(&timed);
        if (!timed) {
            readSetting(words);
            continue;
        }
        if (!std::isfinite(time) || time < 0)
            fail(QStringLiteral("'%1' is not a time").arg(words.at(0)));
        if (isSession_)
            readStep(time, line.mid(words.at(0).size()).trimmed());
        else
            readSample(words);
    }
    if (!isSession_)
        session_.surface = recordedSurface;
    if (session_.steps.empty())
        fail(QStringLiteral("there is nothing to replay"));
    return std::move(session_);
}

void Reader::readSetting(const QStringList& words) {
    const QString& name = words.at(0);
    if (name == QLatin1String("vellum-session")) {
        if (words.value(1) != QLatin1String("1"))
            fail(QStringLiteral("only version 1 of the session format is known"));
        if (!session_.steps.empty())
            fail(QStringLiteral("vellum-session must come first"));
        isSession_ = true;
        return;
    }
    if (!isSession_)
        fail(QStringLiteral("neither a tablet recording nor a session: '%1'").arg(name));
    if (name == QLatin1String("space")) {
        const QString space = words.value(1);
        if (space != QLatin1String("view") && space != QLatin1String("window"))
            fail(QStringLiteral("space is 'view' or 'window'"));
        session_.space =
            space == QLatin1String("view") ? Session::Space::View : Session::Space::Window;
        if (words.size() > 2) {
            const QPointF size = point(words, 2);
            if (size.x() <= 0 || size.y() <= 0)
                fail(QStringLiteral("a size must be positive"));
            session_.surface = {size.x(), size.y()};
        }
    } else if (name == QLatin1String("speed")) {
        session_.speed = number(words.value(1));
        if (session_.speed <= 0)
            fail(QStringLiteral("a speed must be positive"));
    } else {
        fail(QStringLiteral("unknown setting '%1'").arg(name));
    }
}

void Reader::readSample(const QStringList& words) {
    if (words.size() != 4)
        fail(QStringLiteral("a sample has four columns: time, x, y, pressure"));
    SessionStep step;
    step.time = number(words.at(0));
    step.position = point(words, 1);
    step.pressure = number(words.at(3));
    if (step.pressure < 0 || step.pressure > 1)
        fail(QStringLiteral("a pressure is between 0 and 1"));
    const bool down = step.pressure > 0;
    using Kind = SessionStep::Kind;
    step.kind = down ? (penDown_ ? Kind::TabletMove : Kind::TabletPress)
                     : (penDown_ ? Kind::TabletRelease : Kind::Move);
    penDown_ = down;
    add(step);
}

Qt::MouseButton Reader::button(const QString& name) const {
    if (name == QLatin1String("left"))
        return Qt::LeftButton;
    if (name == QLatin1String("middle"))
        return Qt::MiddleButton;
    if (name == QLatin1String("right"))
        return Qt::RightButton;
    fail(QStringLiteral("unknown button '%1'").arg(name));
}

Qt::Key Reader::key(const QString& name) const {
    const QString lower = name.toLower();
    if (lower == QLatin1String("ctrl"))
        return Qt::Key_Control;
    if (lower == QLatin1String("shift"))
        return Qt::Key_Shift;
    if (lower == QLatin1String("alt"))
        return Qt::Key_Alt;
    const QKeySequence sequence = QKeySequence::fromString(name, QKeySequence::PortableText);
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    const int found = sequence.count() == 1 ? sequence[0].toCombined() : 0;
#else
    const int found = sequence.count() == 1 ? sequence[0] : 0;
#endif
    if (!found || found == Qt::Key_unknown)
        fail(QStringLiteral("unknown key '%1'").arg(name));
    return static_cast<Qt::Key>(found & ~int(Qt::KeyboardModifierMask));
}

void Reader::readKeys(SessionStep step, const QString& combination) {
    const QStringList names = combination.split('+');
    std::vector<Qt::Key> keys;
    for (const QString& name : names)
        keys.push_back(key(name));
    step.kind = SessionStep::Kind::KeyDown;
    for (const Qt::Key each : keys) {
        step.key = each;
        add(step);
    }
    step.kind = SessionStep::Kind::KeyUp;
    for (auto it = keys.rbegin(); it != keys.rend(); ++it) {
        step.key = *it;
        add(step);
    }
}

void Reader::readTablet(SessionStep step, const QStringList& words) {
    const QString phase = words.value(1);
    using Kind = SessionStep::Kind;
    if (phase == QLatin1String("press"))
        step.kind = Kind::TabletPress;
    else if (phase == QLatin1String("move"))
        step.kind = Kind::TabletMove;
    else if (phase == QLatin1String("release"))
        step.kind = Kind::TabletRelease;
    else
        fail(QStringLiteral("tablet is followed by press, move or release"));
    step.position = point(words, 2);
    if (step.kind != Kind::TabletRelease) {
        step.pressure = number(words.value(4));
        if (step.pressure < 0 || step.pressure > 1)
            fail(QStringLiteral("a pressure is between 0 and 1"));
    }
    step.eraser = words.last() == QLatin1String("eraser");
    add(step);
}

void Reader::playRecording(double time, const QStringList& words) {
    QString name = words.value(1);
    if (name.isEmpty())
        fail(QStringLiteral("play needs a file"));
    if (QFileInfo(name).isRelative())
        name = QFileInfo(path_).dir().filePath(name);
    const double from = words.size() > 2 ? number(words.at(2)) : 0;
    const double to = words.size() > 3 ? number(words.at(3)) : HUGE_VAL;
    if (session_.surface.isEmpty())
        fail(QStringLiteral("play needs 'space view W H' before it, for the recording's size"));
    const Session recording = Session::read(name.toStdString());
    const QSizeF scale(session_.surface.width() / recording.surface.width(),
                       session_.surface.height() / recording.surface.height());
    using Kind = SessionStep::Kind;
    bool down = false;
    for (SessionStep step : recording.steps) {
        if (step.time < from || step.time > to)
            continue;
        if (step.kind == Kind::TabletMove && !down)
            step.kind = Kind::TabletPress; // the piece begins inside a stroke
        if (step.kind == Kind::TabletRelease && !down)
            step.kind = Kind::Move;
        down = step.kind == Kind::TabletPress || step.kind == Kind::TabletMove;
        step.time += time - from;
        step.position = {step.position.x() * scale.width(), step.position.y() * scale.height()};
        add(step);
    }
    if (down) { // …or ends inside one
        SessionStep end = session_.steps.back();
        end.kind = Kind::TabletRelease;
        add(end);
    }
}

void Reader::readStep(double time, const QString& rest) {
    SessionStep step;
    step.time = time;
    if (readPlainStep(step, rest))
        return;
    bool known = false;
    try {
        known = readNamedStep(step, rest);
    } catch (const std::runtime_error& error) {
        fail(QString::fromUtf8(error.what()));
    }
    if (!known)
        fail(QStringLiteral("unknown step '%1'").arg(rest.simplified().section(' ', 0, 0)));
}

/// Steps whose words are numbers and names without blanks. False: it is none of them.
bool Reader::readPlainStep(SessionStep step, const QString& rest) {
    const QStringList words = rest.simplified().split(' ');
    const QString& verb = words.at(0);
    using Kind = SessionStep::Kind;
    if (verb == QLatin1String("tablet")) {
        readTablet(step, words);
    } else if (verb == QLatin1String("key")) {
        readKeys(step, words.value(1));
    } else if (verb == QLatin1String("keydown") || verb == QLatin1String("keyup")) {
        step.kind = verb == QLatin1String("keydown") ? Kind::KeyDown : Kind::KeyUp;
        step.key = key(words.value(1));
        add(step);
    } else if (verb == QLatin1String("wheel")) {
        step.kind = Kind::Wheel;
        step.notches = int(number(words.value(1)));
        add(step);
    } else if (verb == QLatin1String("command")) {
        step.kind = Kind::Command;
        step.script = rest.mid(verb.size()).trimmed().toStdString();
        add(step);
    } else if (verb == QLatin1String("play")) {
        playRecording(step.time, words);
    } else {
        return false;
    }
    return true;
}

/// Steps that may hold names in quotes.
bool Reader::readNamedStep(SessionStep step, const QString& rest) {
    const std::vector<SessionWord> words = splitWords(rest);
    const SessionWord verb = words.empty() ? SessionWord() : words.front();
    if (verb.is("move")) {
        readMove(step, words, 1);
    } else if (verb.is("press") || verb.is("release") || verb.is("click") ||
               verb.is("doubleclick")) {
        readButton(step, words);
    } else if (verb.is("menu")) {
        for (const SessionTarget& entry : SessionTarget::readMenuPath(theText(words))) {
            step.kind = SessionStep::Kind::MoveOnto;
            step.target = entry;
            add(step);
            addClick(step);
        }
    } else if (verb.is("type")) {
        addTyping(step, theText(words));
    } else if (verb.is("picture")) {
        readPicture(step, words);
    } else if (verb.is("place")) {
        if (words.size() != 4 || !words[1].quoted)
            fail(QStringLiteral("place needs a window in quotes and a position"));
        step.kind = SessionStep::Kind::Place;
        step.target.window = words[1].text;
        step.position = {number(words[2].text), number(words[3].text)};
        add(step);
    } else {
        return false;
    }
    return true;
}

/// A position in the session's space, or something that is named.
void Reader::readMove(SessionStep step, const std::vector<SessionWord>& words, std::size_t first) {
    if (words.size() > first && words[first].is("on")) {
        step.kind = SessionStep::Kind::MoveOnto;
        step.target = SessionTarget::read(words, first);
    } else if (words.size() != first + 2) {
        fail(QStringLiteral("a position is missing"));
    } else {
        step.kind = SessionStep::Kind::Move;
        step.position = {number(words[first].text), number(words[first + 1].text)};
    }
    add(step);
}

void Reader::readButton(SessionStep step, const std::vector<SessionWord>& words) {
    step.button = button(words.size() > 1 ? words[1].text : QString());
    if (words.size() > 2) // the pointer goes there first
        readMove(step, words, 2);
    if (words[0].is("press") || words[0].is("release")) {
        step.kind = words[0].is("press") ? SessionStep::Kind::Press : SessionStep::Kind::Release;
        add(step);
        return;
    }
    addClick(step);
    if (words[0].is("doubleclick"))
        addClick(step);
}

void Reader::addClick(SessionStep step) {
    step.kind = SessionStep::Kind::Press;
    add(step);
    step.kind = SessionStep::Kind::Release;
    add(step);
}

void Reader::readPicture(SessionStep step, const std::vector<SessionWord>& words) {
    const bool ofWindow = words.size() == 4 && words[2].is("of") && words[3].quoted;
    if (words.size() != 2 && !ofWindow)
        fail(QStringLiteral("picture needs a file and perhaps 'of' and a window in quotes"));
    step.kind = SessionStep::Kind::Picture;
    step.file = words[1].text;
    if (ofWindow)
        step.target.window = words[3].text;
    add(step);
}

QString Reader::theText(const std::vector<SessionWord>& words) const {
    if (words.size() != 2 || !words[1].quoted || words[1].text.isEmpty())
        fail(QStringLiteral("%1 needs a text in quotes").arg(words[0].text));
    return words[1].text;
}

void Reader::addTyping(SessionStep step, const QString& text) {
    using Kind = SessionStep::Kind;
    for (const QChar c : text) {
        if (c < QLatin1Char(' ') || c > QLatin1Char('~'))
            fail(QStringLiteral("only what stands on every keyboard can be typed"));
        const auto key = static_cast<Qt::Key>(c.toUpper().unicode());
        // Which characters need Shift the keyboard of the day knows; capitals do on all.
        SessionStep shift = step;
        shift.key = Qt::Key_Shift;
        shift.shiftOf = c.isLetter() ? Qt::Key_unknown : key;
        step.key = key;
        const bool shifts = !c.isLower();
        for (const Kind kind : {Kind::KeyDown, Kind::KeyUp}) {
            step.kind = shift.kind = kind;
            if (shifts && kind == Kind::KeyDown)
                add(shift);
            add(step);
            if (shifts && kind == Kind::KeyUp)
                add(shift);
        }
    }
}

} // namespace

Session Session::read(const std::string& path) {
    return Reader(QString::fromStdString(path)).read();
}

} // namespace host
