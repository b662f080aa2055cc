// docs/commands.md says what the commands do: its examples are run, its tables compared with what
// the commands register.
#include "commands/FrameCommand.h"
#include "commands/LayerCommand.h"
#include "commands/NodeCommand.h"
#include "commands/UtilCommand.h"
#include "script/Interpreter.h"
#include "script/Syntax.h"
#include "script/Value.h"
#include "support/Paths.h"
#include "support/Session.h"
#include "tools/interaction/StrokeCommand.h"

#include <QFile>
#include <QRegularExpression>

#include <algorithm>
#include <map>
#include <set>

namespace vellum::test {
namespace {

struct Example {
    int line = 0; ///< of the page
    QStringList lines;
};

/// A command's part of the page.
struct Section {
    QStringList flags; ///< "-s -long type type", as the table has them
    QStringList modes; ///< "-s create, query"
    QStringList messages;
};

/// Cells of a row of a table; empty for any other line.
QStringList cells(const QString& line) {
    if (!line.startsWith(QLatin1String("| ")))
        return {};
    QStringList parts = line.split(QLatin1Char('|'));
    for (QString& part : parts)
        part = part.trimmed();
    return parts.mid(1, parts.size() - 2);
}

/// What stands in backquotes.
QStringList quotedIn(const QString& text) {
    static const QRegularExpression form(QStringLiteral("`([^`]*)`"));
    QStringList found;
    for (auto match = form.globalMatch(text); match.hasNext();)
        found.append(match.next().captured(1));
    return found;
}

class Page {
public:
    Page() {
        QFile file(support::sourcePath("docs/commands.md"));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly | QIODevice::Text));
        const QStringList lines = QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'));
        for (int i = 0; i < lines.size(); ++i)
            read(lines[i], i + 1);
        EXPECT_FALSE(inExample_) << "an example does not end";
    }

    std::vector<Example> examples;
    std::map<QString, Section> sections; ///< by the title

private:
    void read(const QString& line, int number) {
        if (line.startsWith(QLatin1String("```"))) {
            inExample_ = line == QLatin1String("```mel");
            if (inExample_)
                examples.push_back({number, {}});
        } else if (inExample_) {
            examples.back().lines.append(line);
        } else if (line.startsWith(QLatin1String("## "))) {
            title_ = line.mid(3);
        } else {
            readRow(cells(line));
        }
    }

    void readRow(const QStringList& row) {
        Section& section = sections[title_];
        if (row.size() == 5 && row[0].startsWith(QLatin1Char('`'))) {
            QStringList flag = quotedIn(row[0]) + quotedIn(row[1]);
            for (QString& name : flag) {
                if (!name.startsWith(QLatin1Char('-')))
                    name.prepend(QLatin1Char('-')); // both forms name the same flag
            }
            for (const QString& argument : row[2].split(QStringLiteral(", ")))
                flag.append(argument.section(QLatin1Char(' '), 0, 0));
            flag.removeAll(QString());
            section.flags.append(flag.join(QLatin1Char(' ')));
            section.modes.append(flag[0] + QLatin1Char(' ') + row[3]);
        } else if (row.size() == 2) {
            section.messages += quotedIn(row[0]).filter(QStringLiteral("[Vellum2]"));
        }
    }

    QString title_;
    bool inExample_ = false;
};

class CommandsPage : public Session {
protected:
    void SetUp() override {
        Session::SetUp();
        errors.clear();
    }

    /// As on the first day: empty scene, settings of the factory.
    void startAfresh() {
        ASSERT_TRUE(run(QStringLiteral("file -force -new; currentTime 1")));
        unloadPlugin();
        QFile::remove(text(QStringLiteral("internalVar -userPrefDir")) +
                      QStringLiteral("vellum2.ini"));
        loadPlugin();
        errors.clear();
    }

    void runExample(const Example& example) {
        QStringList script;
        int line = example.line;
        for (const QString& written : example.lines) {
            ++line;
            const QString answer = written.trimmed();
            if (!answer.startsWith(QLatin1String("// "))) {
                script.append(written);
                continue;
            }
            SCOPED_TRACE("docs/commands.md:" + std::to_string(line));
            answers(script.join(QLatin1Char('\n')), answer);
            script.clear();
        }
        SCOPED_TRACE("docs/commands.md:" + std::to_string(line));
        if (!script.isEmpty())
            answers(script.join(QLatin1Char('\n')), QString());
    }

    /// Runs the script; the last statement must answer like this, all before it do their work.
    void answers(const QString& script, const QString& answer) {
        errors.clear();
        host::script::Value value;
        const bool done = host::script::run(script.toStdString(), &value);
        QString got;
        if (!errors.isEmpty())
            got = QStringLiteral("// Error: %1 //").arg(errors.join(QStringLiteral(" // ")));
        else if (answer.startsWith(QLatin1String("// Result: ")))
            got = QStringLiteral("// Result: %1 //").arg(QString::fromStdString(value.display()));
        if (answer == QLatin1String("// (fails without a message)")) {
            EXPECT_FALSE(done) << script.toStdString();
            EXPECT_FALSE(got.contains(QLatin1String("[Vellum2]"))) << got.toStdString();
        } else {
            EXPECT_EQ(got.toStdString(), answer.toStdString()) << script.toStdString();
            EXPECT_EQ(done, errors.isEmpty()) << script.toStdString();
        }
        for (const QString& error : errors)
            said.insert(error);
        host::script::run("refresh");
    }

    std::set<QString> said; ///< all errors of all examples

    const Page page;
};

QString typeName(host::script::ArgKind kind) {
    using host::script::ArgKind;
    switch (kind) {
    case ArgKind::Boolean:
        return QStringLiteral("boolean");
    case ArgKind::Int:
        return QStringLiteral("integer");
    case ArgKind::Unsigned:
        return QStringLiteral("unsigned");
    case ArgKind::Float:
        return QStringLiteral("float");
    case ArgKind::String:
        return QStringLiteral("string");
    default:
        return QStringLiteral("?");
    }
}

TEST_F(CommandsPage, ExamplesAnswerAsWritten) {
    ASSERT_GE(page.examples.size(), 10U);
    for (const Example& example : page.examples) {
        startAfresh();
        runExample(example);
    }
    // Messages that no example brings about need what an example cannot have: a fault of Maya,
    // frames at the end of time, changes behind the undo queue, a host without a view.
    const QRegularExpression rare(QStringLiteral(
        "Failed to create|have changed since|Failed to undo|Layer does not exist for camera: |"
        "bounds|Time range is|Cannot paste frames at|more than|There are no frames|Camera not "
        "specified"));
    for (const auto& [title, section] : page.sections) {
        for (const QString& message : section.messages) {
            const QRegularExpression form(
                QRegularExpression::anchoredPattern(QRegularExpression::escape(message).replace(
                    QRegularExpression(QStringLiteral("\\\\?%[12]")), QStringLiteral(".+"))));
            const bool shown = std::any_of(said.begin(), said.end(), [&](const QString& error) {
                return form.match(error).hasMatch();
            });
            EXPECT_TRUE(shown || rare.match(message).hasMatch())
                << title.toStdString() << ": no example says " << message.toStdString();
        }
    }
}

TEST_F(CommandsPage, TablesAreTheFlagsAsRegistered) {
    const std::map<QString, MSyntax> commands{
        {QStringLiteral("rvVellumNode"), NodeCommand::newSyntax()},
        {QStringLiteral("rvVellumLayer"), LayerCommand::newSyntax()},
        {QStringLiteral("rvVellumFrame"), FrameCommand::newSyntax()},
        {QStringLiteral("rvVellumStroke"), StrokeCommand::newSyntax()},
        {QStringLiteral("rvVellumUtil"), UtilCommand::newSyntax()},
    };
    for (const auto& [name, syntax] : commands) {
        SCOPED_TRACE(name.toStdString());
        ASSERT_EQ(page.sections.count(name), 1U);
        const Section& section = page.sections.at(name);
        const auto& data = host::script::SyntaxData::of(syntax);
        QStringList registered;
        for (const host::script::FlagSyntax& flag : data.flags) {
            QStringList words{QString::fromStdString(flag.shortName),
                              QString::fromStdString(flag.longName)};
            for (const auto kind : flag.arguments)
                words.append(typeName(kind));
            registered.append(words.join(QLatin1Char(' ')));
        }
        EXPECT_EQ(section.flags.join(QLatin1Char('\n')).toStdString(),
                  registered.join(QLatin1Char('\n')).toStdString());
        for (const QString& mode : section.modes) {
            SCOPED_TRACE(mode.toStdString());
            EXPECT_TRUE(data.canQuery || !mode.contains(QLatin1String("query")));
            EXPECT_TRUE(data.canEdit || !mode.contains(QLatin1String("edit")));
        }
    }
    EXPECT_EQ(page.sections.count(QStringLiteral("rvVlDrawCtx")), 1U);
}

} // namespace
} // namespace vellum::test
