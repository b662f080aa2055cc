// Drawings follow their camera through whatever happens to its name.
#include "foundation/Idle.h"
#include "foundation/Report.h"
#include "support/Seed.h"
#include "support/Session.h"

#include <QTemporaryDir>

#include <random>

namespace vellum::test {
namespace {

class CameraNames : public Session {
protected:
    void SetUp() override {
        Session::SetUp();
        ASSERT_TRUE(run(QStringLiteral(
            "global proc string camOf(int $i) { string $s; for ($s in `ls -type camera`) {"
            " string $p[] = `listRelatives -fullPath -parent $s`;"
            " if (`getAttr ($p[0] + \".tx\")` == $i) return $p[0]; } return \"\"; }"
            "global proc string shortName(int $i) { string $parts[];"
            " tokenize(camOf($i), \"|\", $parts); return $parts[size($parts) - 1]; }")));
    }
    /// Camera number i, told apart by where it stands, with a layer "Li" of its own.
    void add(int i, const QString& name) {
        ASSERT_TRUE(run(QStringLiteral("$made = `camera`; rename $made[0] \"%1\"; setAttr \"%1.tx\""
                                       " %2; if (!`rvVellumNode -ex`) rvVellumNode;"
                                       "rvVellumLayer -add -name \"L%2\" \"%1\"")
                            .arg(name)
                            .arg(i)));
    }
    bool isThere(int i) { return !text(QStringLiteral("$r = camOf(%1)").arg(i)).isEmpty(); }
    QString nameOf(int i) { return text(QStringLiteral("$r = shortName(%1)").arg(i)); }
    QStringList layersOf(const QString& camera) {
        QStringList names;
        const int count = number(QStringLiteral("rvVellumLayer -count \"%1\"").arg(camera));
        for (int i = 0; i < count; ++i)
            names += text(QStringLiteral("rvVellumLayer -qn %1 \"%2\"").arg(i).arg(camera));
        return names;
    }
    QStringList layers(int i) { return layersOf(nameOf(i)); }
    static QStringList only(int i) { return {QStringLiteral("L%1").arg(i)}; }
};

TEST_F(CameraNames, ExchangedTakenOverAndGivenBack) {
    add(11, "a");
    add(12, "b");
    ASSERT_TRUE(run(QStringLiteral("rename a tmp; rename b a; rename tmp b")));
    EXPECT_EQ(nameOf(11), QStringLiteral("b"));
    EXPECT_EQ(layers(11), only(11));
    EXPECT_EQ(layers(12), only(12));
    ASSERT_TRUE(run(QStringLiteral("undo; undo; undo")));
    EXPECT_EQ(nameOf(11), QStringLiteral("a"));
    EXPECT_EQ(layers(11), only(11));

    ASSERT_TRUE(run(QStringLiteral("delete a")));
    ASSERT_TRUE(run(QStringLiteral("rename b \"a\"")));
    EXPECT_EQ(layers(12), (QStringList{"L11", "L12"})) << "merged";
    ASSERT_TRUE(run(QStringLiteral("rename a \"ns:late\"")));
    EXPECT_EQ(layersOf(QStringLiteral("ns:late")), only(12));
    ASSERT_TRUE(run(QStringLiteral("undo")));
    ASSERT_TRUE(run(QStringLiteral("undo; undo"))); // b has its name again, then a is back
    EXPECT_EQ(layers(11), only(11));
    EXPECT_EQ(layers(12), only(12));
    ASSERT_TRUE(run(QStringLiteral("rvVellumLayer -ev off 0 a; undo; undo; redo; redo")));
    EXPECT_TRUE(errors.isEmpty()) << allErrors().toStdString();
}

// Transforms below different ones may have the same name.
TEST_F(CameraNames, ANameSharedWithAnotherCameraIsGivenBack) {
    const auto state = [this](const QString& camera) {
        return layersOf(camera).join(QLatin1Char(' ')) +
               QString::number(number(QStringLiteral("rvVellumLayer -q -active ") + camera)) +
               text(QStringLiteral("rvVellumNode -q -camera"));
    };
    add(11, "a");
    for (const bool otherHasLayers : {false, true}) {
        SCOPED_TRACE(otherHasLayers);
        if (otherHasLayers) {
            ASSERT_TRUE(run(QStringLiteral("rvVellumLayer -add -name T1 top; rvVellumLayer -add "
                                           "-name T2 top; rvVellumLayer -e -active 0 top")));
        }
        ASSERT_TRUE(
            run(QStringLiteral("rvVellumLayer -add -name M a; rvVellumLayer -e -active 0 a; "
                               "group a")));
        const QString before = state("a"), top = state("top");
        ASSERT_TRUE(run(QStringLiteral("rename a top; undo")));
        EXPECT_EQ(state("a"), before);
        EXPECT_EQ(state("top"), top);
        ASSERT_TRUE(run(QStringLiteral("redo; undo; undo; undo; undo")));
        EXPECT_EQ(layersOf("a"), only(11));
    }
    // One that a command has put elsewhere is as good as any there.
    ASSERT_TRUE(run(QStringLiteral("group a; rename a top; rvVellumLayer -move 2 0 -nc persp top;"
                                   "rvVellumLayer -mva front persp; camera -name b; rename b1 b;"
                                   "rvVellumLayer -mva b front; rename b c")));
    EXPECT_EQ(layersOf("c"), only(11));
    EXPECT_TRUE(errors.isEmpty()) << allErrors().toStdString();
}

TEST_F(CameraNames, AreSettledInWhatIsSavedAndImported) {
    const QTemporaryDir directory;
    const QString file = directory.filePath(QStringLiteral("cameras.ma"));
    add(11, "shot");
    ASSERT_TRUE(run(QStringLiteral("rename shot \"hero\"; file -rename \"%1\"; file -f -save;"
                                   "file -f -new; file -f -open \"%1\"")
                        .arg(file)));
    EXPECT_EQ(layersOf(QStringLiteral("hero")), only(11));
    ASSERT_TRUE(run(QStringLiteral("delete vellum; file -i \"%1\"").arg(file)));
    EXPECT_EQ(number(QStringLiteral("objExists hero1")), 1);
    EXPECT_EQ(layersOf(QStringLiteral("hero1")), only(11)) << "its camera had to take a number";
}

TEST_F(CameraNames, ACoarserTimeUnitNamesTheLayersWhoseFramesMeet) {
    add(11, "shot");
    for (int frame = 1; frame <= 6; ++frame)
        ASSERT_TRUE(run(QStringLiteral("currentTime %1; rvVellumFrame -ins shot").arg(frame)));
    QStringList said;
    const int listener =
        host::report::addListener([&](host::report::Level level, const std::string& message) {
            if (level == host::report::Level::Warning)
                said += QString::fromStdString(message);
        });
    ASSERT_TRUE(run(QStringLiteral("currentUnit -time \"12fps\"")));
    EXPECT_EQ(said.join(QLatin1Char('|')).toStdString(),
              "[Vellum2] Layer L11 of shot: in this time unit 2 of its frames share a number with "
              "another one (1, 2).");
    said.clear();
    ASSERT_TRUE(run(QStringLiteral("currentUnit -time film")));
    EXPECT_TRUE(said.isEmpty()) << "nothing was lost";
    host::report::removeListener(listener);
}

TEST_F(CameraNames, RandomRenamesLoseNothing) {
    const unsigned seed = support::seed();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    const auto below = [&random](int count) { return int(random() % unsigned(count)); };
    constexpr int cameras = 4;
    for (int i = 0; i < cameras; ++i)
        add(11 + i, QStringLiteral("c%1").arg(i));
    ASSERT_TRUE(run(QStringLiteral("createNode transform -name group; flushUndo")));
    for (int step = 0; step < 150; ++step) {
        SCOPED_TRACE("step " + std::to_string(step));
        const int i = 11 + below(cameras);
        const QString path = text(QStringLiteral("$r = camOf(%1)").arg(i));
        const QString target = QStringLiteral("c%1").arg(below(5));
        switch (path.isEmpty() ? 5 : below(8)) {
        case 0:
            run(QStringLiteral("delete \"%1\"").arg(path));
            break;
        case 1:
        case 2:
            run(QStringLiteral("catch(`undo`)"));
            break;
        case 3:
            run(QStringLiteral("catch(`redo`)"));
            break;
        case 4:
            run(QStringLiteral("catch(`parent \"%1\" group`)").arg(path));
            break;
        case 5:
            run(QStringLiteral("catch(`undo`); catch(`undo`)"));
            break;
        default:
            run(QStringLiteral("rename \"%1\" \"%2\"").arg(path, target));
            break;
        }
        if (below(3) == 0)
            host::idle::drain();
        for (int c = 11; c < 11 + cameras; ++c) {
            if (isThere(c)) {
                ASSERT_TRUE(layers(c).contains(only(c).first()))
                    << c << ' ' << nameOf(c).toStdString();
            }
        }
    }
}

} // namespace
} // namespace vellum::test
