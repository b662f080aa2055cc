#include "ui/MessageText.h"

namespace host {

bool isComplaint(report::Level level) {
    return level == report::Level::Error || level == report::Level::Warning;
}

QString messageText(report::Level level, const std::string& text) {
    QString line = QString::fromStdString(text).simplified();
    switch (level) {
    case report::Level::Error:
        return QStringLiteral("Error: ") + line;
    case report::Level::Warning:
        return QStringLiteral("Warning: ") + line;
    case report::Level::Result:
        return QStringLiteral("// Result: %1 //").arg(line);
    case report::Level::Print:
    case report::Level::Info:
        break;
    }
    return line;
}

QString messageStyle(report::Level level) {
    switch (level) {
    case report::Level::Error:
        return QStringLiteral("background: #7a2b2b; color: #ffffff;");
    case report::Level::Warning:
        return QStringLiteral("background: #6b5a26; color: #ffffff;");
    case report::Level::Print:
    case report::Level::Info:
    case report::Level::Result:
        break;
    }
    return {};
}

} // namespace host
