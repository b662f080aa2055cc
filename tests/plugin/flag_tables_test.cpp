// Every flag of the four script commands, row by row: names and arguments, and which flag of
// several decides.
#include "foundation/UndoQueue.h"
#include "plugin/FlagTables.h"
#include "plugin/WatchedCommands.h"
#include "plugin/base/Settings.h"
#include "plugin/session/PluginState.h"

namespace vellum::test {
namespace {

QString line(const char* text) {
    return QString::fromLatin1(text);
}

class FlagTables : public WatchedCommands {
protected:
    QString write(const Table& table, const QStringList& words) const {
        QStringList all{line(table.command)};
        all += words;
        all.append(line(table.object));
        all.removeAll(QString());
        return all.join(QLatin1Char(' '));
    }

    /// Maya refuses the line itself.
    void doesNotFit(const QString& written, const char* because) {
        SCOPED_TRACE(written.toStdString());
        const QString before = everything();
        const Outcome outcome = call(written);
        EXPECT_FALSE(outcome.reached);
        EXPECT_FALSE(errors.isEmpty());
        EXPECT_TRUE(errors.filter(line(because)).size() == errors.size())
            << allErrors().toStdString();
        EXPECT_EQ(everything().toStdString(), before.toStdString());
    }

    void namesAndArguments(const Table& table) {
        QStringList seen;
        for (const Row& row : table.rows) {
            const QStringList fitting = line(row.fitting).split(QLatin1Char(' '));
            for (const char* name : {row.shortName, row.longName}) {
                const QString flag = line(name);
                EXPECT_FALSE(seen.contains(flag)) << name;
                seen.append(flag);
                oneName(table, flag, row, row.kinds[0] ? fitting : QStringList());
            }
        }
    }

    void oneName(const Table& table, const QString& flag, const Row& row,
                 const QStringList& fitting) {
        const char* mustBe = "must be passed";
        const QString bare = flag.mid(1);
        for (int i = 0; i < fitting.size(); ++i) {
            QStringList short1 = fitting.mid(0, i);
            // The object would stand in for a string that is missing.
            if (row.kinds[i] != 's')
                doesNotFit(write(table, QStringList{flag} + short1), mustBe);
            QStringList wrong = fitting;
            const QStringList misfits = row.kinds[i] == 'u' ? QStringList{line("x"), line("-1")}
                                        : row.kinds[i] == 's'
                                            ? QStringList()
                                            : QStringList{line("x"), line("\"\"")};
            for (const QString& misfit : misfits) {
                wrong[i] = misfit;
                doesNotFit(write(table, QStringList{flag} + wrong), mustBe);
            }
        }
        const QStringList fits = QStringList{flag} + fitting;
        doesNotFit(write(table, fits + fits), "can be used only once");
        doesNotFit(write(table, fits + QStringList{line("surplus")}), "Too many objects or values");
        doesNotFit(write(table, QStringList{bare} + fitting), "Too many objects or values");
        if (!table.modes) {
            doesNotFit(write(table, QStringList{line("-q")} + fits), "Invalid flag '-q'");
            doesNotFit(write(table, QStringList{line("-edit")} + fits), "Invalid flag '-edit'");
        }
    }

    /// All that a line changes and says; afterwards everything is as before.
    QString fingerprint(const QString& written) {
        const QString before = drawing();
        const Outcome outcome = call(written);
        const QString print = written.section(QLatin1Char(' '), 0, 0) + outcome.text() + drawing() +
                              settingsText() + text(line("$vlNow = \" at \" + `currentTime -q`"));
        while (host::undoQueue().canUndo())
            undo();
        EXPECT_EQ(drawing().toStdString(), before.toStdString()) << written.toStdString();
        EXPECT_TRUE(run(line("flushUndo; currentTime 12")));
        resetSettings();
        pluginState().drawContextName.clear();
        pluginState().transformContextName.clear();
        return print;
    }

    /// Of any two flags the one that stands first in `order` decides, wherever it is written.
    void firstOfTwoDecides(const Table& table, const QStringList& order, const QString& mode) {
        QStringList written;
        for (const Row& row : table.rows) {
            if (order.contains(line(row.shortName)))
                written.append(line(row.shortName) +
                               (mode == line("-q") ? QString() : line(" ") + line(row.fitting)));
        }
        ASSERT_EQ(written.size(), order.size());
        QStringList alone;
        for (const QString& flag : written)
            alone.append(fingerprint(write(table, {mode, flag})));
        for (int first = 0; first < written.size(); ++first) {
            for (int second = first + 1; second < written.size(); ++second) {
                const QString both = write(table, {mode, written[second], written[first]});
                EXPECT_EQ(fingerprint(both).toStdString(), alone[first].toStdString())
                    << both.toStdString();
            }
        }
        alone.removeDuplicates();
        EXPECT_GT(alone.size(), 1) << "the flags do different things";
    }

    static QStringList shortNames(const Table& table, const QStringList& without = {}) {
        QStringList names;
        for (const Row& row : table.rows)
            names.append(line(row.shortName));
        for (const QString& name : without)
            names.removeAll(name);
        return names;
    }
};

TEST_F(FlagTables, NamesAndArgumentsOfEveryFlag) {
    makeDrawing();
    ASSERT_TRUE(run(line("select -r persp; currentTime 3")));
    for (const Table* table : {&kNode, &kLayer, &kFrame, &kUtil})
        namesAndArguments(*table);
    doesNotFit(line("rvVellumLayer -count"), "Not enough objects or values");
    doesNotFit(line("rvVellumNode -exists -bogus"), "Invalid flag '-bogus'");
    doesNotFit(line("rvVellumNode -layerName"), "must be passed a string argument");
    doesNotFit(line("rvVellumUtil -textOptions 1 2"), "must be passed");
}

TEST_F(FlagTables, FirstFlagOfTheTableDecides) {
    makeDrawing();
    for (const char* mode : {"", "-e", "-q"})
        firstOfTwoDecides(kUtil, shortNames(kUtil), line(mode));
    firstOfTwoDecides(kLayer,
                      shortNames(kLayer, {line("-act"), line("-n"), line("-nc"), line("-ls")}),
                      QString());
    firstOfTwoDecides(kFrame, shortNames(kFrame, {line("-rel"), line("-mvn")}), QString());
    firstOfTwoDecides(kNode, {line("-ex"), line("-r"), line("-rg")}, QString());
}

} // namespace
} // namespace vellum::test
