// host/coverage.md lists what the host has: nothing more, nothing less.
#include "host_ui/UiTest.h"
#include "script/Commands.h"
#include "support/Paths.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QSet>

#include <gmock/gmock.h>

using testing::IsEmpty;

namespace {

using Names = std::vector<std::string>;

QString textOf(const QString& path) {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return QString::fromUtf8(file.readAll());
}

/// Names in back-quotes in the first column of the tables whose first heading is `kind`, but for
/// those that the second column calls missing.
QSet<QString> listed(const QString& kind) {
    static const QRegularExpression quoted("`([^`]+)`");
    QSet<QString> names;
    QString heading;
    for (const QString& line : textOf(support::sourcePath("host/coverage.md")).split('\n')) {
        const QStringList cells = line.split('|');
        if (cells.size() < 4) {
            heading.clear();
            continue;
        }
        if (heading.isEmpty())
            heading = cells.at(1).trimmed();
        if (heading != kind || cells.at(2).trimmed() == "missing")
            continue;
        for (auto match = quoted.globalMatch(cells.at(1)); match.hasNext();)
            names.insert(match.next().captured(1).section("::", 0, 0));
    }
    return names;
}

QString apiFolder() {
    return support::sourcePath("host/include/maya");
}

class Coverage : public uitest::UiTest {};

} // namespace

TEST_F(Coverage, EveryHeaderIsListedAndEveryListedClassDeclared) {
    const QSet<QString> classes = listed("class");
    Names unlisted, undeclared;
    QString declarations;
    for (const QString& name : QDir(apiFolder()).entryList({"*.h"}, QDir::Files)) {
        declarations += textOf(apiFolder() + '/' + name);
        if (!classes.contains(name.chopped(2)))
            unlisted.push_back(name.toStdString());
    }
    for (const QString& name : classes) {
        const QRegularExpression declaration("\\b(class|struct|namespace)\\s+(\\w+\\s+)?" + name +
                                             "\\b");
        if (!QFile::exists(apiFolder() + '/' + name + ".h") && !declarations.contains(declaration))
            undeclared.push_back(name.toStdString());
    }
    EXPECT_THAT(unlisted, IsEmpty());
    EXPECT_THAT(undeclared, IsEmpty());
}

TEST_F(Coverage, EveryCommandIsListedAndEveryListedOneExists) {
    const QSet<QString> commands = listed("command");
    Names unlisted, unregistered;
    for (const std::string& name : host::script::commandNames()) {
        if (name != "recordCtx" && // of the tests themselves
            !commands.contains(QString::fromStdString(name)))
            unlisted.push_back(name);
    }
    for (const QString& name : commands + listed("procedure")) {
        if (run("exists \"" + name.toStdString() + "\"").toInt() == 0)
            unregistered.push_back(name.toStdString());
    }
    EXPECT_THAT(unlisted, IsEmpty());
    EXPECT_THAT(unregistered, IsEmpty());
}
